// Pictures, coordinates and amounts that nobody draws: a defined picture or a stated refusal, and no hang.
#include "../Canvas.h"

#include "annotation/AnnotationDocument.h"
#include "annotation/HighlightDarkness.h"
#include "annotation/ImageCompositor.h"
#include "annotation/SelectionChrome.h"
#include "annotation/TextLayout.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace marrowfin;
using namespace annotation;
using namespace imaging;
using namespace marrowfin::test;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
const double notANumber = std::nan("");

QList<AnyAnnotation> allNine(QPointF at, double extent) {
    auto highlight = box<HighlightAnnotation>(at.x(), at.y(), extent, extent);
    highlight.strokeColor = QColor(255, 204, 0);
    return {box<RectangleAnnotation>(at.x(), at.y(), extent, extent),
            box<EllipseAnnotation>(at.x(), at.y(), extent, extent),
            segment<ArrowAnnotation>(at, at + QPointF(extent, extent)),
            segment<LineAnnotation>(at, at + QPointF(extent, extent)),
            pen({at, at + QPointF(extent, 0), at + QPointF(extent, extent)}),
            text(at, QStringLiteral("words\nwords")),
            box<BlurAnnotation>(at.x(), at.y(), extent, extent),
            highlight,
            badge(at)};
}

QImage flattened(const QList<AnyAnnotation>& ink, const Image& base) {
    AnnotationDocument document(base);
    for (const AnyAnnotation& one : ink)
        document.add(one);
    return ImageCompositor::composite(document).pixels();
}

Image plain(int width, int height) {
    QImage pixels(width, height, QImage::Format_RGB32);
    pixels.fill(Qt::white);
    return Image::captured(pixels);
}

} // namespace

TEST(Hostile, picturesOfAnyShapeFlatten) {
    for (const QSize size : {QSize(1, 1), QSize(1, 30000), QSize(30000, 1)}) {
        const QImage result = flattened(allNine({0, 0}, 50), plain(size.width(), size.height()));
        EXPECT_EQ(result.size(), size);
        EXPECT_EQ(ImageCompositor::blurredImage(result, 24).size(), size);
        isDarkBackdrop(plain(size.width(), size.height()), {0, 0, 1e5, 1e5});
    }
}

TEST(Hostile, aVeryLargePictureFlattensBlursAndCrops) {
    AnnotationDocument document(plain(16384, 16384));
    for (const AnyAnnotation& one : allNine({16000, 16000}, 300))
        document.add(one);
    document.add(segment<LineAnnotation>({0, 0}, {16384, 16384}));
    document.add(box<EllipseAnnotation>(10, 10, 16360, 16360));
    const QImage result = ImageCompositor::composite(document).pixels();
    ASSERT_EQ(result.size(), QSize(16384, 16384));
    EXPECT_EQ(result.pixelColor(8000, 8000), red);
    EXPECT_EQ(result.pixelColor(8192, 10), red);
    EXPECT_EQ(isDarkBackdrop(document.baseImage(), {0, 0, 16384, 16384}), false);
    document.crop({8000, 8000, 100, 100});
    EXPECT_EQ(document.baseImage().size(), QSizeF(100, 100));
}

TEST(Hostile, inkFarDownAScrolledPageIsWhatItIsAtTheTop) {
    constexpr int farDown = 50'000;
    constexpr int edge = 32'768; // where numbers of 16 bits end
    for (const int down : {edge - 60, farDown}) {
        const QList<AnyAnnotation> below = allNine({40, down + 40.0}, 120);
        const QList<AnyAnnotation> above = allNine({40, 40}, 120);
        for (qsizetype i = 0; i < below.size(); ++i) {
            const QImage page = flattened({below[i]}, plain(240, 60'000));
            const QImage top = flattened({above[i]}, plain(240, 240));
            EXPECT_EQ(page.copy(0, down, 240, 240), top) << "record " << i << " at " << down;
        }
    }
}

TEST(Hostile, inkAlongAWholeScrolledPageReachesItsEnd) {
    const QImage page = flattened(
        {segment<LineAnnotation>({100, 0}, {100, 60'000}), box<RectangleAnnotation>(20, 10, 200, 59'980)},
        plain(240, 60'000));
    for (const int y : {100, 32'000, 32'767, 32'768, 33'000, 59'900}) {
        EXPECT_EQ(page.pixelColor(100, y), red) << y;
        EXPECT_EQ(page.pixelColor(20, y), red) << y;
        EXPECT_EQ(page.pixelColor(220, y), red) << y;
    }
    EXPECT_EQ(page.pixelColor(150, 59'990), red);
}

TEST(Hostile, aNullImageIsRefusedEverywhere) {
    EXPECT_TRUE(ImageCompositor::composite(AnnotationDocument{Image()}).isNull());
    EXPECT_TRUE(ImageCompositor::cropImage({}, {0, 0, 5, 5}).isNull());
    EXPECT_TRUE(ImageCompositor::blurredImage({}, 12).isNull());
    EXPECT_EQ(ImageCompositor::encodeImage({}, ImageFormat::jpeg, 0.5), std::nullopt);
    EXPECT_EQ(isDarkBackdrop({}, {0, 0, 5, 5}), std::nullopt);
}

TEST(Hostile, coordinatesThatAreNoNumbersOrFarAwayPaintNothing) {
    const Image base = plain(100, 100);
    for (const double odd : {notANumber, infinity, -infinity, 1e300, -1e300, 1e9}) {
        for (const AnyAnnotation& one : allNine({odd, odd}, 40)) {
            EXPECT_EQ(flattened({one}, base), base.pixels()) << odd << ", record " << one.record().index();
            QImage picture = canvas({100, 100});
            QPainter painter(&picture);
            drawSelectionChrome(one, 1, painter);
            painter.end();
            EXPECT_EQ(picture, base.pixels());
            EXPECT_FALSE(one.hitTest({50, 50}, 6));
        }
    }
    for (const double odd : {notANumber, infinity})
        for (const AnyAnnotation& one : allNine({20, 20}, odd))
            flattened({one}, base); // some of it may show
}

TEST(Hostile, anUnusualPainterPaintsNothingOrSomething) {
    QImage picture = canvas({50, 50});
    for (const QTransform& transform :
         {QTransform::fromScale(0, 0), QTransform::fromScale(1e-9, 1e-9), QTransform::fromScale(1e6, 1e6),
          QTransform(1, 1, 1, 1, 0, 0), QTransform::fromTranslate(1e7, 0), QTransform::fromScale(-1, -1)}) {
        QPainter painter(&picture);
        painter.setTransform(transform);
        for (const AnyAnnotation& one : allNine({5, 5}, 30))
            one.draw(painter);
    }
}

TEST(Hostile, absurdDensitiesFlatten) {
    for (const QSizeF size : {QSizeF(1, 1), QSizeF(1e-3, 1e-3), QSizeF(1e6, 1e6), QSizeF(1, 1e5)}) {
        QImage pixels(300, 200, QImage::Format_RGB32);
        pixels.fill(Qt::white);
        const QImage result = flattened(allNine({0, 0}, 40), Image::withSize(pixels, size));
        EXPECT_EQ(result.size(), QSize(300, 200));
    }
}

TEST(Hostile, aStrokeOfAHundredThousandPointsPaints) {
    std::mt19937 random(2);
    QList<QPointF> points;
    QPointF at(400, 300);
    for (int i = 0; i < 100000; ++i) {
        at += QPointF(static_cast<int>(random() % 7) - 3, static_cast<int>(random() % 7) - 3);
        points.append(at = {std::clamp(at.x(), 0.0, 799.0), std::clamp(at.y(), 0.0, 599.0)});
    }
    EXPECT_NE(flattened({pen(points)}, plain(800, 600)), plain(800, 600).pixels());
    // Points far apart from each other, where stepping along the way would never end: refused.
    for (QPointF& point : points)
        point = {static_cast<double>(random() % 16000), static_cast<double>(random() % 16000)};
    EXPECT_FALSE(pen(points).hitTest({-100, -100}, 6));
    EXPECT_EQ(flattened({pen(points)}, plain(800, 600)), plain(800, 600).pixels());
}

TEST(Hostile, aTextOfAHundredThousandCharactersIsMeasuredAndPainted) {
    const QString oneLine(100000, u'w');
    const QRectF wide = text({0, 30}, oneLine).boundingRect();
    EXPECT_NEAR(wide.width() / text({0, 30}, QStringLiteral("w")).boundingRect().width(), 100000, 100);
    EXPECT_NE(flattened({text({0, 30}, oneLine)}, plain(200, 60)), plain(200, 60).pixels());

    QString manyLines;
    for (int i = 0; i < 50000; ++i)
        manyLines += QStringLiteral("w\n");
    const TextLayout layout(manyLines, 24);
    EXPECT_EQ(layout.lineCount(), 50001);
    EXPECT_EQ(layout.positionAt(layout.caretRect(99999).center()), 99999);
    EXPECT_NE(flattened({text({0, 30}, manyLines)}, plain(200, 60)), plain(200, 60).pixels());
}

TEST(Hostile, charactersThatAreNoneArePaintedOrLeftOut) {
    const QString odd = QString(QChar(0xD800)) + QChar(0xFFFF) + QChar(0x0000) + QChar(0x202E) +
                        QChar(0x200D) + QString(500, QChar(0x0301)) + QStringLiteral("\t\r\n\v\f");
    const TextLayout layout(odd, 24);
    EXPECT_EQ(layout.lineCount(), 2);
    for (int i = 0; i <= odd.size(); ++i)
        EXPECT_TRUE(std::isfinite(layout.caretRect(i).x()));
    flattened({text({5, 30}, odd)}, plain(200, 60));
}

TEST(Hostile, aDocumentOfTenThousandRecordsFlattensSelectsAndUndoes) {
    std::mt19937 random(8);
    AnnotationDocument document(plain(1000, 800));
    for (int i = 0; i < 10000; ++i) {
        const QPointF at(static_cast<double>(random() % 1000), static_cast<double>(random() % 800));
        document.add(allNine(at, 20)[i % 9]);
    }
    EXPECT_EQ(document.undoStack().size(), 50);
    document.selectAnnotation({500, 400}, 6);
    document.moveSelected(5, 5);
    EXPECT_EQ(ImageCompositor::composite(document).pixels().size(), QSize(1000, 800));
    document.undo();
    EXPECT_EQ(document.annotations().size(), 9999);
}

TEST(Hostile, badgesOfAnyNumberAndRadius) {
    for (const qint64 number :
         {std::numeric_limits<qint64>::min(), qint64(-5), std::numeric_limits<qint64>::max()})
        EXPECT_NE(flattened({badge({50, 50}, number)}, plain(100, 100)), plain(100, 100).pixels());
    for (const double radius : {0.0, -3.0, notANumber, infinity, 1e9, 1e-9, 5000.0}) {
        NumberAnnotation record = badge({50, 50}, 5);
        record.radius = radius;
        EXPECT_EQ(flattened({record}, plain(100, 100)).size(), QSize(100, 100));
    }
}
