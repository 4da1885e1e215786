// The fast blur against the exact one, computed plainly in double precision.
#include "annotation/GaussianBlur.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <vector>

using namespace marrowfin;
using namespace annotation;

namespace {

using Plane = std::vector<double>;

std::vector<double> exactKernel(double sigma) {
    const int reach = static_cast<int>(std::ceil(6 * sigma));
    std::vector<double> kernel;
    double total = 0;
    for (int i = -reach; i <= reach; ++i) {
        kernel.push_back(std::exp(-0.5 * i * i / (sigma * sigma)));
        total += kernel.back();
    }
    for (double& weight : kernel)
        weight /= total;
    return kernel;
}

// Along one axis of a plane, edges going on forever.
Plane blurAxis(const Plane& in, int width, int height, bool across, const std::vector<double>& kernel) {
    const int reach = static_cast<int>(kernel.size()) / 2;
    Plane out(in.size());
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            double sum = 0;
            for (int k = -reach; k <= reach; ++k) {
                const int sx = across ? std::clamp(x + k, 0, width - 1) : x;
                const int sy = across ? y : std::clamp(y + k, 0, height - 1);
                sum += kernel[static_cast<size_t>(k + reach)] * in[static_cast<size_t>(sy * width + sx)];
            }
            out[static_cast<size_t>(y * width + x)] = sum;
        }
    }
    return out;
}

double largestError(const QImage& source, const QImage& blurred, double sigma) {
    const int width = source.width();
    const int height = source.height();
    const std::vector<double> kernel = exactKernel(sigma);
    double largest = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        Plane plane;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                plane.push_back((reinterpret_cast<const quint32*>(source.constScanLine(y))[x] >> shift) &
                                255);
        plane = blurAxis(blurAxis(plane, width, height, true, kernel), width, height, false, kernel);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const int ours =
                    (reinterpret_cast<const quint32*>(blurred.constScanLine(y))[x] >> shift) & 255;
                largest = std::max(largest, std::abs(ours - plane[static_cast<size_t>(y * width + x)]));
            }
    }
    return largest;
}

template <class Color>
QImage picture(int width, int height, Color color) {
    QImage pixels(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels.setPixel(x, y, color(x, y));
    return pixels;
}

QImage blurred(const QImage& pixels, double sigma) {
    return gaussianBlurred(pixels, pixels.rect(), pixels.rect(), sigma);
}

const QRgb black = qRgb(0, 0, 0);
const QRgb white = qRgb(255, 255, 255);

} // namespace

TEST(GaussianBlur, isNearTheExactOneOnNoise) {
    std::mt19937 random(3);
    const QImage noise = picture(150, 110, [&](int, int) { return random() & 1 ? white : black; });
    for (const double sigma : {0.4, 1.0, 2.5, 4.9, 5.0, 7.3, 12.0, 24.0})
        EXPECT_LE(largestError(noise, blurred(noise, sigma), sigma), 3) << "sigma " << sigma;
}

TEST(GaussianBlur, isNearTheExactOneOnEdgesAndAtTheBorders) {
    const QImage corner = picture(140, 120, [](int x, int y) { return x > 70 && y > 50 ? white : black; });
    const QImage frame = picture(
        140, 120, [](int x, int y) { return x == 0 || y == 0 || x == 139 || y == 119 ? white : black; });
    for (const double sigma : {12.0, 24.0}) {
        EXPECT_LE(largestError(corner, blurred(corner, sigma), sigma), 3) << "sigma " << sigma;
        EXPECT_LE(largestError(frame, blurred(frame, sigma), sigma), 3) << "sigma " << sigma;
    }
}

TEST(GaussianBlur, isNearTheExactOneOnStripesOfEveryPitch) {
    for (int pitch = 1; pitch <= 20; ++pitch) {
        const QImage stripes = picture(200, 8, [&](int x, int) { return x / pitch % 2 ? white : black; });
        for (const double sigma : {12.0, 24.0})
            EXPECT_LE(largestError(stripes, blurred(stripes, sigma), sigma), 3)
                << "pitch " << pitch << ", sigma " << sigma;
    }
}

TEST(GaussianBlur, isNearTheExactOneOnPicturesOfAnySize) {
    std::mt19937 random(5);
    for (const QSize size : {QSize(1, 1), QSize(2, 1), QSize(1, 90), QSize(3, 3), QSize(7, 33), QSize(8, 8),
                             QSize(9, 16), QSize(17, 5)}) {
        const QImage noise =
            picture(size.width(), size.height(), [&](int, int) { return random() | 0xff000000u; });
        for (const double sigma : {1.0, 6.0, 12.0, 24.0, 48.0})
            EXPECT_LE(largestError(noise, blurred(noise, sigma), sigma), 3)
                << size.width() << "x" << size.height() << ", sigma " << sigma;
    }
}

TEST(GaussianBlur, leavesAPlainAreaPlain) {
    const QImage plain = picture(90, 70, [](int, int) { return qRgb(255, 59, 48); });
    for (const double sigma : {3.0, 12.0, 24.0, 100.0, 1e9})
        EXPECT_EQ(blurred(plain, sigma), plain) << "sigma " << sigma;
}

TEST(GaussianBlur, aPartIsTheSameAsOfTheWhole) {
    std::mt19937 random(9);
    const QImage noise = picture(160, 120, [&](int, int) { return random() | 0xff000000u; });
    const QImage whole = blurred(noise, 12);
    for (const QRect part :
         {QRect(0, 0, 1, 1), QRect(13, 7, 50, 41), QRect(159, 119, 1, 1), QRect(80, 0, 80, 120)})
        EXPECT_EQ(gaussianBlurred(noise, part, noise.rect(), 12), whole.copy(part));
}

TEST(GaussianBlur, onlyTheSourceCounts) {
    QImage pixels = picture(100, 100, [](int, int) { return white; });
    pixels.fill(Qt::black);
    for (int y = 30; y < 70; ++y)
        for (int x = 30; x < 70; ++x)
            pixels.setPixel(x, y, white);
    const QRect inner(30, 30, 40, 40);
    const QImage patch = gaussianBlurred(pixels, inner, inner, 12);
    EXPECT_EQ(patch.pixel(0, 0), white) << "the black around must not bleed in";
}

TEST(GaussianBlur, noColourOutgrowsItsAlpha) {
    std::mt19937 random(11);
    QImage pixels(64, 64, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) {
            const unsigned alpha = random() % 256;
            pixels.setPixel(
                x, y, qPremultiply(qRgba(255, static_cast<int>(random() % 256), 0, static_cast<int>(alpha))));
        }
    const QImage result = blurred(pixels, 12);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) {
            const quint32 pixel = reinterpret_cast<const quint32*>(result.constScanLine(y))[x];
            EXPECT_LE((pixel >> 16) & 255, pixel >> 24);
            EXPECT_LE((pixel >> 8) & 255, pixel >> 24);
        }
}

TEST(GaussianBlur, refusesWhatIsNoSigma) {
    const QImage plain = picture(9, 9, [](int, int) { return white; });
    EXPECT_TRUE(blurred(plain, 0).isNull());
    EXPECT_TRUE(blurred(plain, -1).isNull());
    EXPECT_TRUE(blurred(plain, std::nan("")).isNull());
}
