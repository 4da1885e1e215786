// What is painted in strips, or aside, has the pixels of what is painted in one piece.
#include "chrome/Strips.h"
#include "chrome/Paths.h"

#include <QLinearGradient>
#include <QPainter>
#include <gtest/gtest.h>

namespace marrowfin::chrome {

namespace {
constexpr int side = 420;

// How something is put onto a device.
struct Axes {
    const char* name;
    QTransform transform;
    double opacity;
};
std::ostream& operator<<(std::ostream& out, const Axes& axes) {
    return out << axes.name;
}

// Noise, half of it translucent.
QImage noise(int width, int height) {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    quint32 state = 1;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            state = state * 1664525 + 1013904223;
            const int alpha = state & 0x80000000 ? 255 : static_cast<int>(state >> 23 & 255);
            image.setPixel(x, y,
                           qPremultiply(qRgba(state >> 8 & 255, state >> 16 & 255, state & 255, alpha)));
        }
    return image;
}

class Strips : public testing::TestWithParam<Axes> {
protected:
    using Draw = std::function<void(QPainter&)>;

    // On a device where something is already, clipped to a part of it or not.
    static QImage onto(const Draw& draw, bool clipped) {
        QImage device(side, side, QImage::Format_ARGB32_Premultiplied);
        device.fill(QColor(250, 180, 90, 200));
        QPainter painter(&device);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        if (clipped)
            painter.setClipRect(QRect(7, 20, 390, 360));
        painter.setTransform(GetParam().transform);
        painter.setOpacity(GetParam().opacity);
        draw(painter);
        return device;
    }
    // Rounded: so many pixels may be one of 255 off, where the toolkit rounds an edge or a slope from the
    // first pixel of what it paints at once.
    static void expectTheSame(const Draw& inOnePiece, const Draw& otherwise, int rounded = 0) {
        for (const bool clipped : {false, true}) {
            const QImage expected = onto(inOnePiece, clipped);
            const QRgb middle = expected.pixel(side / 2, side / 2);
            EXPECT_NE(middle, onto([](QPainter&) {}, clipped).pixel(side / 2, side / 2));
            const auto [pixels, by] = difference(onto(otherwise, clipped), expected);
            EXPECT_LE(pixels, rounded) << (clipped ? "clipped" : "unclipped");
            EXPECT_LE(by, 1);
        }
    }
    // How many pixels, and by how much at most.
    static std::pair<int, int> difference(const QImage& a, const QImage& b) {
        int pixels = 0;
        int most = 0;
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x)
                if (a.pixel(x, y) != b.pixel(x, y)) {
                    ++pixels;
                    const QColor one = QColor::fromRgba(a.pixel(x, y));
                    const QColor other = QColor::fromRgba(b.pixel(x, y));
                    most = std::max({most, std::abs(one.alpha() - other.alpha()),
                                     std::abs(one.red() - other.red()), std::abs(one.green() - other.green()),
                                     std::abs(one.blue() - other.blue())});
                }
        return {pixels, most};
    }
    static bool isTurned() { return GetParam().transform.type() > QTransform::TxScale; }
    static QRect whole(const QPainter& painter, const QRectF& rect) {
        return onDevice(painter, rect, QRectF(0, 0, side, side));
    }
    const QRectF box{10.25, 7.5, 180, 190};
    const QColor color{20, 120, 220, 160};
    const QPainterPath outline = roundedRect(box, 24, CornerCurve::Continuous);
};
INSTANTIATE_TEST_SUITE_P(
    EachWay, Strips,
    testing::Values(Axes{"AsItIs", QTransform::fromTranslate(100, 110), 1},
                    Axes{"BetweenPixels", QTransform::fromTranslate(100.3, 109.6), 0.6},
                    Axes{"Larger", QTransform(1.9, 0, 0, -1.9, 13.3, 400.7), 1},
                    Axes{"SmallerAndTranslucent", QTransform(0.83, 0, 0, -0.83, 140.4, 280.1), 0.37},
                    Axes{"Turned", QTransform().translate(210, -60).rotate(40).scale(1.6, 1.4), 1}),
    [](const auto& info) { return info.param.name; });
} // namespace

TEST_P(Strips, APictureIsTheSame) {
    const QImage picture = noise(70, 90);
    expectTheSame([&](QPainter& painter) { painter.drawImage(box, picture); },
                  [&](QPainter& painter) {
                      paintInStrips(painter, whole(painter, box), {}, Edges::Blended,
                                    [&] { painter.drawImage(box, picture); });
                  },
                  isTurned() ? 3 : 0);
}

TEST_P(Strips, AGradientIsTheSame) {
    QLinearGradient gradient(box.topLeft(), box.bottomRight());
    gradient.setColorAt(0, color);
    gradient.setColorAt(1, QColor(255, 255, 255, 0));
    gradient.setColorAt(0.6, Qt::white);
    expectTheSame([&](QPainter& painter) { painter.fillRect(box, gradient); },
                  [&](QPainter& painter) {
                      paintInStrips(painter, whole(painter, box), {}, Edges::Blended,
                                    [&] { painter.fillRect(box, gradient); });
                  },
                  3);
}

TEST_P(Strips, AFillIsTheSame) {
    for (const QColor& fill : {color, QColor(20, 120, 220)})
        expectTheSame([&](QPainter& painter) { painter.fillPath(outline, fill); },
                      [&](QPainter& painter) { fillPath(painter, outline, fill, whole(painter, box)); });
}

TEST_P(Strips, AStrokeIsTheSame) {
    const QPen pen(color, 200); // so wide that it covers the middle
    const QRectF reach = box.adjusted(-100, -100, 100, 100);
    expectTheSame([&](QPainter& painter) { painter.strokePath(outline, pen); },
                  [&](QPainter& painter) { strokePath(painter, outline, pen, whole(painter, reach)); });
}

TEST(StripsOf, ADeviceWithAHoleCoverTheRestOnceAndAreLow) {
    const QRect device(-3, 5, 120, 700);
    const std::vector<QRect> holes{
        {}, {20, 60, 50, 500}, {-10, 0, 60, 400}, {100, 650, 50, 90}, {500, 0, 9, 9}};
    for (const QRect& hole : holes)
        for (const auto& [edges, mostRows] : {std::pair(Edges::Whole, 95), std::pair(Edges::Blended, 31)}) {
            QRegion covered;
            for (const QRect& strip : strips(device, hole, edges)) {
                EXPECT_LE(strip.height(), mostRows);
                EXPECT_FALSE(covered.intersects(strip));
                covered |= strip;
            }
            EXPECT_TRUE((covered ^ (QRegion(device) - hole)).isEmpty());
        }
    EXPECT_TRUE(strips(device, device, Edges::Whole).empty());
    EXPECT_TRUE(strips({}, {}, Edges::Whole).empty());
}

TEST(StripsOf, WhatIsInsideOnTheDeviceAreWholePixels) {
    QImage device(100, 100, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&device);
    painter.setTransform(QTransform(2, 0, 0, -2, 0.5, 90));
    EXPECT_EQ(insideOnDevice(painter, {10, 10, 20, 15}), QRect(21, 40, 39, 30));
    EXPECT_TRUE(insideOnDevice(painter, {10, 10, 0.3, 15}).isEmpty());
    EXPECT_TRUE(insideOnDevice(painter, {}).isEmpty());
    EXPECT_TRUE(insideOnDevice(painter, {10, 10, -4, 15}).isEmpty());
}

// Every value of a channel with every alpha, as the toolkit multiplies them.
TEST(KeepOnly, MultipliesAsTheToolkitDoes) {
    QImage image(256, 256, QImage::Format_ARGB32_Premultiplied);
    QImage mask(256, 256, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < 256; ++y)
        for (int x = 0; x < 256; ++x) {
            image.setPixel(x, y, qRgba(x, x / 2, 255 - x, 255));
            mask.setPixel(x, y, qRgba(0, 0, 0, y));
        }
    QImage expected = image;
    QPainter painter(&expected);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, mask);
    painter.end();
    QImage place(300, 300, QImage::Format_ARGB32_Premultiplied);
    QPainter like(&place);
    like.translate(30, 40);
    keepOnly(image, like, QRect(30, 40, 256, 256), [&](QPainter& to) { to.drawImage(0, 0, mask); });
    EXPECT_TRUE(image == expected);
}

} // namespace marrowfin::chrome
