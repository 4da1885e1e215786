// From a document to its finished picture.
#include "../Canvas.h"

#include "annotation/AnnotationDocument.h"
#include "annotation/ImageCompositor.h"

#include <QColorSpace>
#include <gtest/gtest.h>
#include <random>

using namespace marrowfin;
using namespace annotation;
using namespace imaging;
using namespace marrowfin::test;

namespace {

QImage noise(int width, int height, QImage::Format format = QImage::Format_RGB32) {
    std::mt19937 random(4);
    QImage pixels(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels.setPixel(x, y, random());
    return format == QImage::Format_ARGB32 ? pixels : pixels.convertToFormat(format);
}

QImage halves(int width, int height) {
    QImage pixels(width, height, QImage::Format_RGB32);
    pixels.fill(QColor(220, 20, 20));
    QPainter(&pixels).fillRect(width / 2, 0, width / 2, height, QColor(20, 20, 220));
    return pixels;
}

QImage flattened(const QList<AnyAnnotation>& ink, const Image& base) {
    AnnotationDocument document(base);
    for (const AnyAnnotation& one : ink)
        document.add(one);
    return ImageCompositor::composite(document).pixels();
}

bool sameBytes(const QImage& a, const QImage& b) {
    if (a.size() != b.size() || a.format() != b.format())
        return false;
    const auto rowBytes = static_cast<size_t>(a.width()) * static_cast<size_t>(a.depth()) / 8;
    for (int y = 0; y < a.height(); ++y)
        if (std::memcmp(a.constScanLine(y), b.constScanLine(y), rowBytes) != 0)
            return false;
    return true;
}

} // namespace

TEST(Compositor, withoutInkEveryByteIsTheBases) {
    for (const QImage::Format format :
         {QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_ARGB32_Premultiplied,
          QImage::Format_RGB888, QImage::Format_RGBA64}) {
        const QImage base = noise(64, 48, format);
        EXPECT_TRUE(sameBytes(flattened({}, Image::captured(base)), base));
    }
}

TEST(Compositor, awayFromTheInkEveryPixelIsTheBases) {
    const QImage base = noise(200, 100);
    const QImage result = flattened({badge({40, 40})}, Image::captured(base));
    EXPECT_TRUE(sameBytes(result.copy(80, 0, 120, 100), base.copy(80, 0, 120, 100)));
    EXPECT_NE(result, base);
}

TEST(Compositor, transparentPixelsStayWhatTheyWereAwayFromTheInk) {
    const QImage base = noise(200, 100, QImage::Format_ARGB32_Premultiplied);
    const QImage result = flattened({badge({40, 40})}, Image::captured(base));
    EXPECT_TRUE(sameBytes(result.copy(80, 0, 120, 100), base.copy(80, 0, 120, 100)));
}

TEST(Compositor, keepsTheDensity) {
    AnnotationDocument document(Image::withSize(canvas({320, 200}, 2), {320, 200}));
    auto record = box<RectangleAnnotation>(50, 40, 100, 60);
    record.strokeWidth = 4;
    document.add(record);
    const Image result = ImageCompositor::composite(document);
    EXPECT_EQ(result.size(), QSizeF(320, 200));
    EXPECT_EQ(result.pixels().size(), QSize(640, 400));
    EXPECT_EQ(result.pixels().pixelColor(2 * 50, 2 * 70), red); // the outline at twice its coordinates
    EXPECT_EQ(result.pixels().pixelColor(2 * 150, 2 * 70), red);
    EXPECT_EQ(result.pixels().pixelColor(2 * 100, 2 * 70), QColor(Qt::white));
}

TEST(Compositor, paintsWhatTheCanvasPaints) {
    const QList<AnyAnnotation> ink{box<EllipseAnnotation>(20, 20, 60, 40),
                                   text({30, 90}, QStringLiteral("same")), badge({120, 40}, 3)};
    const QImage result = flattened(ink, Image::withSize(canvas({160, 120}, 2), {160, 120}));
    EXPECT_TRUE(sameBytes(result, painted(ink, {160, 120}, 2)));
}

TEST(Compositor, paintsByZIndex) {
    AnnotationDocument document(Image::captured(canvas({80, 80})));
    auto below = badge({40, 40}, 1);
    below.strokeColor = Qt::blue;
    document.add(below);
    document.add(badge({40, 40}, 2));
    EXPECT_EQ(ImageCompositor::composite(document).pixels().pixelColor(40, 27), red);
}

TEST(Compositor, aBlurMixesColoursAndKeepsTheirHues) {
    const QImage base = halves(200, 100);
    const QImage result = flattened({box<BlurAnnotation>(40, 20, 120, 60)}, Image::captured(base));
    const QColor left = result.pixelColor(45, 50);
    const QColor right = result.pixelColor(154, 50);
    EXPECT_GT(left.red(), left.blue());
    EXPECT_GT(right.blue(), right.red());
    const auto contrast = [](const QImage& picture) {
        return picture.pixelColor(95, 50).red() - picture.pixelColor(104, 50).red();
    };
    EXPECT_LT(contrast(result), contrast(base) / 2);
}

TEST(Compositor, aBlurTouchesNothingOutsideItsBox) {
    const QImage base = noise(200, 100);
    QImage result = flattened({box<BlurAnnotation>(40, 20, 120, 60)}, Image::captured(base));
    EXPECT_EQ(changedArea(base, result), QRect(40, 20, 120, 60));
}

TEST(Compositor, aBlursSlantedEdgesBlend) {
    QImage stripes(200, 200, QImage::Format_RGB32);
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 200; ++x)
            stripes.setPixel(x, y, x % 2 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
    const QImage result = flattened({box<BlurAnnotation>(70.5, 70.25, 50, 50)}, Image::captured(stripes));
    EXPECT_EQ(changedArea(stripes, result), QRect(70, 70, 51, 51));
    EXPECT_NEAR(result.pixelColor(90, 90).red(), 127, 2); // inside
    EXPECT_NEAR(result.pixelColor(70, 90).red(), 64, 2);  // black half covered by grey
    EXPECT_NEAR(result.pixelColor(90, 70).red(), 95, 2);  // black covered by three quarters
    EXPECT_NEAR(result.pixelColor(120, 90).red(), 64, 2);
}

TEST(Compositor, aBlurHasTwelvePointsOfSigmaAtAnyDensity) {
    for (const int density : {1, 2}) {
        QImage edge(400 * density, 100 * density, QImage::Format_RGB32);
        edge.fill(Qt::black);
        QPainter(&edge).fillRect(200 * density, 0, 200 * density, 100 * density, Qt::white);
        const QImage result =
            flattened({box<BlurAnnotation>(100, 0, 200, 100)}, Image::withSize(edge, {400, 100}));
        for (const int away : {-30, -12, -4, 0, 4, 12, 30}) { // points from the edge
            const int x = (200 + away) * density;
            const double sigmas = (x + 0.5 - 200 * density) / (12 * density);
            EXPECT_NEAR(result.pixelColor(x, 50 * density).red(), 255 * 0.5 * std::erfc(-sigmas / M_SQRT2),
                        2);
        }
    }
}

TEST(Compositor, aBlurSmearsInkBelowAndNotAbove) {
    const Image base = Image::captured(canvas({200, 100}));
    const auto blur = box<BlurAnnotation>(50, 20, 100, 60);
    const auto arrow = segment<ArrowAnnotation>({20, 50}, {180, 50}, 4);
    const QImage smeared = flattened({arrow, blur}, base);
    EXPECT_NE(smeared.pixelColor(100, 50), red);
    EXPECT_EQ(smeared.pixelColor(35, 50), red) << "outside the box the arrow is sharp";
    const QImage sharp = flattened({blur, arrow}, base);
    EXPECT_EQ(sharp.pixelColor(100, 50), red);
}

TEST(Compositor, aBlurTooSmallOrOutsideDoesNothing) {
    const QImage base = noise(60, 60);
    for (const QRectF& rect : {QRectF(10, 10, 0.9, 20), QRectF(10, 10, 20, 0), QRectF(100, 100, 20, 20),
                               QRectF(-50, 0, 50, 50), QRectF(60, 0, 5, 5)}) {
        const QImage result = flattened(
            {box<BlurAnnotation>(rect.x(), rect.y(), rect.width(), rect.height())}, Image::captured(base));
        EXPECT_TRUE(sameBytes(result, base));
    }
}

TEST(Compositor, aBlurAtThePicturesEdgeDoesNotFade) {
    const QImage base = canvas({100, 100}, 1, QColor(200, 100, 50));
    EXPECT_EQ(flattened({box<BlurAnnotation>(-20, -20, 80, 80)}, Image::captured(base)), base);
}

TEST(Compositor, blurredImageKeepsExtentEdgesAndColourSpace) {
    QImage base = canvas({80, 60}, 1, QColor(10, 200, 90));
    base.setColorSpace(QColorSpace(QColorSpace::DisplayP3));
    const QImage blurred = ImageCompositor::blurredImage(base, 24);
    EXPECT_EQ(blurred, base);
    EXPECT_EQ(blurred.colorSpace(), base.colorSpace());
    EXPECT_TRUE(ImageCompositor::blurredImage(QImage(), 24).isNull());
    EXPECT_TRUE(ImageCompositor::blurredImage(base, 0).isNull());
}

TEST(Compositor, theLiveBlurIsTheFilesBlurOfTheBase) {
    const QImage base = noise(200, 150);
    const QImage live = ImageCompositor::blurredImage(base, 12);
    const QImage file = flattened({box<BlurAnnotation>(60, 50, 60, 40)}, Image::captured(base));
    for (int y = 50; y < 90; ++y)
        for (int x = 60; x < 120; ++x)
            ASSERT_NEAR(qGreen(live.pixel(x, y)), qGreen(file.pixel(x, y)), 2);
}

TEST(Compositor, theColourSpaceGoesIntoThePictureAndItsFiles) {
    QImage base = canvas({60, 40});
    const QColorSpace space(QColorSpace::DisplayP3);
    base.setColorSpace(space);
    AnnotationDocument document(Image::captured(base));
    document.add(badge({20, 20}));
    const Image result = ImageCompositor::composite(document);
    EXPECT_EQ(result.pixels().colorSpace(), space);
    for (const ImageFormat format : {ImageFormat::png, ImageFormat::jpeg}) {
        const auto bytes = ImageCompositor::encodeImage(result, format, 0.9);
        ASSERT_TRUE(bytes.has_value());
        const QImage read = QImage::fromData(*bytes);
        EXPECT_EQ(read.size(), base.size());
        EXPECT_TRUE(read.colorSpace().isValid());
        EXPECT_EQ(read.colorSpace().primaries(), QColorSpace::Primaries::DciP3D65);
    }
}

TEST(Compositor, encodingGivesTheFormatAskedForOrNothing) {
    const Image image = Image::captured(noise(40, 30));
    const auto png = ImageCompositor::encodeImage(image, ImageFormat::png, 0);
    ASSERT_TRUE(png.has_value());
    EXPECT_EQ(QImage::fromData(*png).convertToFormat(QImage::Format_RGB32), image.pixels());
    const auto good = ImageCompositor::encodeImage(image, ImageFormat::jpeg, 1.0);
    const auto bad = ImageCompositor::encodeImage(image, ImageFormat::jpeg, 0.1);
    ASSERT_TRUE(good && bad);
    EXPECT_TRUE(good->startsWith("\xFF\xD8"));
    EXPECT_GT(good->size(), 2 * bad->size());
    EXPECT_EQ(ImageCompositor::encodeImage({}, ImageFormat::png, 1), std::nullopt);
}

TEST(Compositor, aCroppedDocumentEndsAtItsNewEdges) {
    const QImage base = noise(400, 300);
    AnnotationDocument document(Image::captured(base));
    document.add(badge({200, 150}, 1));
    document.add(badge({20, 20}, 2)); // outside the crop
    document.crop({100, 60, 300, 200});
    const QImage result = ImageCompositor::composite(document).pixels();
    EXPECT_EQ(result.size(), QSize(300, 200));
    EXPECT_EQ(result.pixelColor(100, 78), red) << "the badge at its carried place";
    EXPECT_TRUE(sameBytes(result.copy(150, 0, 150, 200), base.copy(250, 60, 150, 200)));
    EXPECT_EQ(document.annotations().size(), 2);
}

TEST(Compositor, aDocumentWithoutPixelsFlattensToNothing) {
    EXPECT_TRUE(ImageCompositor::composite(AnnotationDocument{Image()}).isNull());
    for (const QSizeF size : {QSizeF(0, 10), QSizeF(10, 0), QSizeF(-5, 10), QSizeF(std::nan(""), 10)})
        EXPECT_TRUE(
            ImageCompositor::composite(AnnotationDocument{Image::withSize(noise(10, 10), size)}).isNull());
}
