// What the records leave on the picture, pixel by pixel, where a golden alone would hide a fault.
#include "../Canvas.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace annotation;
using namespace marrowfin::test;

namespace {

const QColor field(255, 59, 48);
constexpr int shadowReach = 6; // image points, generously

QRgb at(const QImage& picture, double x, double y) {
    return picture.pixel(static_cast<int>(x), static_cast<int>(y));
}

} // namespace

TEST(Drawing, aBoxLeavesItsInsideAndOutsideUntouchedBeyondItsShadow) {
    auto record = box<RectangleAnnotation>(40, 40, 120, 80);
    record.strokeWidth = 4;
    for (const int density : {1, 2}) {
        const QImage picture = painted({record}, {200, 160}, density);
        const int reach = 2 + shadowReach;
        const QRect inside = QRect(40 + reach, 40 + reach, 120 - 2 * reach, 80 - 2 * reach);
        EXPECT_TRUE(isUntouched(picture, {inside.topLeft() * density, inside.size() * density}));
        const QRect outside = QRect(40 - reach, 40 - reach, 120 + 2 * reach, 80 + 2 * reach);
        const QRect changed = changedArea(canvas({200, 160}, density), picture);
        EXPECT_TRUE(QRect(outside.topLeft() * density, outside.size() * density).contains(changed));
    }
}

TEST(Drawing, aBoxIsStrokedOnItsEdgeWithSharpCorners) {
    auto record = box<RectangleAnnotation>(40, 40, 120, 80);
    record.strokeWidth = 4;
    const QImage picture = painted({record}, {200, 160});
    for (const QPoint inked : {QPoint(38, 38), QPoint(161, 38), QPoint(38, 121), QPoint(161, 121),
                               QPoint(41, 80), QPoint(100, 38), QPoint(100, 121)})
        EXPECT_EQ(picture.pixelColor(inked), red) << inked.x() << "," << inked.y();
    EXPECT_NE(picture.pixelColor(42, 80), red);
    EXPECT_NE(picture.pixelColor(37, 80), red);
}

TEST(Drawing, anEllipseIsInkedAtItsCardinalPointsAndCleanInTheMiddle) {
    const QImage picture = painted({box<EllipseAnnotation>(20, 20, 120, 80)}, {160, 120});
    for (const QPoint cardinal : {QPoint(20, 60), QPoint(139, 60), QPoint(80, 20), QPoint(80, 99)})
        EXPECT_EQ(picture.pixelColor(cardinal), red);
    EXPECT_TRUE(isUntouched(picture, {60, 40, 40, 40}));
    EXPECT_TRUE(isUntouched(picture, {20, 20, 6, 6})) << "the box's corner is outside the ellipse";
}

TEST(Drawing, aPressWithoutADragPaintsNothing) {
    const QList<AnyAnnotation> ink{box<RectangleAnnotation>(50, 50, 0, 0),
                                   box<EllipseAnnotation>(50, 50, 0, 0),
                                   segment<ArrowAnnotation>({50, 50}, {50, 50}),
                                   segment<ArrowAnnotation>({50, 50}, {50.3, 50.4}),
                                   pen({{50, 50}}),
                                   pen({}),
                                   text({50, 50}, QString()),
                                   text({50, 50}, QStringLiteral("\n\n"))};
    for (const AnyAnnotation& one : ink)
        EXPECT_EQ(painted({one}, {100, 100}), canvas({100, 100})) << "record " << one.record().index();
}

TEST(Drawing, aWidthOfZeroStrokesNothing) {
    for (const double width : {0.0, -3.0, std::nan("")}) {
        auto outline = box<RectangleAnnotation>(20, 20, 50, 50);
        outline.strokeWidth = width;
        EXPECT_EQ(painted({outline}, {100, 100}), canvas({100, 100}));
        EXPECT_EQ(painted({segment<LineAnnotation>({20, 20}, {80, 80}, width)}, {100, 100}),
                  canvas({100, 100}));
    }
}

TEST(Drawing, aLineHasRoundEnds) {
    const QImage picture = painted({segment<LineAnnotation>({30, 30}, {90, 30}, 12)}, {120, 60});
    EXPECT_EQ(at(picture, 25, 30), red.rgb()); // within the cap
    EXPECT_NE(at(picture, 25, 25), red.rgb()); // its corner is cut
    EXPECT_EQ(at(picture, 60, 25), red.rgb()); // the stroke's edge
    EXPECT_EQ(at(picture, 94, 29), red.rgb());
}

TEST(Drawing, anArrowsHeadIsFourAndAHalfStrokesLong) {
    // Width 10: each wing is 45 from the tip, 30 degrees aside.
    const QImage picture = painted({segment<ArrowAnnotation>({20, 60}, {160, 60}, 10)}, {200, 120});
    const auto inkedRows = [&](int x) {
        int count = 0;
        for (int y = 0; y < 120; ++y)
            count += picture.pixelColor(x, y) == red;
        return count;
    };
    const double foot = 160 - 45 * std::cos(M_PI / 6);
    EXPECT_NEAR(inkedRows(static_cast<int>(foot) - 3), 10, 1) << "before the head only the shaft";
    EXPECT_NEAR(inkedRows(static_cast<int>(foot) + 1), 45, 4) << "the widest part of the head";
    EXPECT_NEAR(inkedRows(140), 2 * 20 * std::tan(M_PI / 6), 3);
    EXPECT_EQ(inkedRows(161), 0);
}

TEST(Drawing, aRedArrowOnRedShowsByItsShadowAlone) {
    const QImage before = canvas({200, 120}, 2, field);
    QImage after = before;
    paint(after, {segment<ArrowAnnotation>({20, 60}, {160, 60}, 6)}, 2);
    const QColor beside = after.pixelColor(120, 2 * 60 + 8); // just below the shaft
    EXPECT_LT(beside.red(), 245);
    EXPECT_GT(beside.red(), 170) << "a whisper, not a slab";
    EXPECT_EQ(after.pixelColor(120, 120), field) << "under the shaft the red keeps its value";
}

TEST(Drawing, aPenStrokeOfTwoPointsIsALineWithRoundEnds) {
    const QImage picture = painted({pen({{30, 30}, {90, 30}}, 12)}, {120, 60});
    EXPECT_EQ(picture, painted({segment<LineAnnotation>({30, 30}, {90, 30}, 12)}, {120, 60}));
}

TEST(Drawing, theHighlightKeepsWhatIsBeneathReadable) {
    QImage picture = canvas({90, 30});
    QPainter painter(&picture);
    painter.fillRect(30, 0, 30, 30, Qt::black);
    painter.end();
    auto record = box<HighlightAnnotation>(0, 0, 60, 30);
    record.strokeColor = QColor(255, 204, 0);
    paint(picture, {record});
    EXPECT_EQ(picture.pixelColor(10, 10), QColor(255, 204, 0)) << "on white the marker's hue, no blue left";
    EXPECT_EQ(picture.pixelColor(40, 10), QColor(0, 0, 0)) << "multiplied black stays";
    EXPECT_EQ(picture.pixelColor(70, 10), QColor(255, 255, 255));

    picture = canvas({60, 30}, 1, Qt::black);
    record.backdropIsDark = true;
    paint(picture, {record});
    EXPECT_EQ(picture.pixelColor(10, 10), QColor(255, 204, 0)) << "screened black takes the hue";
}

TEST(Drawing, theFallbackOfABlurIsAGreyPlate) {
    const QImage picture = painted({box<BlurAnnotation>(10, 10, 20, 20)}, {40, 40});
    EXPECT_EQ(changedArea(canvas({40, 40}), picture), QRect(10, 10, 20, 20));
    const QColor plate = picture.pixelColor(20, 20);
    EXPECT_NEAR(plate.red(), 255 - 0.6 * (255 - 142), 1);
}

TEST(Drawing, textStandsUprightAboveItsBaseline) {
    const QImage picture = painted({text({20, 60}, QStringLiteral("PLATFLL"), 24)}, {180, 90});
    const QRect ink = changedArea(canvas({180, 90}), picture);
    EXPECT_EQ(ink.bottom(), 59) << "capitals stand on the baseline";
    EXPECT_NEAR(ink.height(), 24 * 0.727, 1.5) << "and are as high as the face's capitals";
    // Of an L the foot is at the bottom.
    const QImage letter = painted({text({20, 60}, QStringLiteral("L"), 24)}, {60, 90});
    const auto inkInRow = [&](int y) {
        double sum = 0;
        for (int x = 0; x < 60; ++x)
            sum += blackness(letter, x, y);
        return sum;
    };
    EXPECT_GT(inkInRow(58), 2 * inkInRow(45));
}

TEST(Drawing, twoLinesLandInTheirTwoBoxesAndNowhereElse) {
    const auto record = text({20, 40}, QStringLiteral("Hidden\nwords"), 24);
    const QRectF bounds = record.boundingRect();
    const QImage picture = painted({record}, {200, 120});
    const QRect ink = changedArea(canvas({200, 120}), picture);
    EXPECT_TRUE(bounds.toAlignedRect().contains(ink));
    const double lineHeight = bounds.height() / 2;
    const auto inkBetween = [&](double top, double bottom) {
        int count = 0;
        for (int y = static_cast<int>(top); y < bottom; ++y)
            for (int x = 0; x < 200; ++x)
                count += picture.pixelColor(x, y) == red;
        return count;
    };
    EXPECT_GT(inkBetween(bounds.top(), bounds.top() + lineHeight), 100);
    EXPECT_GT(inkBetween(bounds.top() + lineHeight, bounds.bottom()), 100);
}

TEST(Drawing, textHasNoShadow) {
    const QImage picture = painted({text({20, 40}, QStringLiteral("l"), 40)}, {60, 60});
    // Red on white only ever takes green and blue away: a shadow would take red too.
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 60; ++x)
            EXPECT_EQ(picture.pixelColor(x, y).red(), 255);
}

TEST(Drawing, aBadgesDigitsAreCentredByTheirInk) {
    for (const qint64 number : {1, 4, 7, 8, 12, 27}) {
        auto record = badge({40, 40}, number);
        const int density = 4;
        const QImage picture = painted({record}, {80, 80}, density);
        QRectF bounds;
        for (int py = 24 * density; py < 56 * density; ++py)
            for (int px = 24 * density; px < 56 * density; ++px)
                if (picture.pixelColor(px, py) == Qt::white && std::hypot(px - 160, py - 160) < 15 * density)
                    bounds |= QRectF(px, py, 1, 1);
        EXPECT_NEAR(bounds.center().x(), 160, 1) << number;
        EXPECT_NEAR(bounds.center().y(), 160, 1) << number;
        EXPECT_EQ(picture.pixelColor(160, 26 * density), red) << "the disc";
    }
}

TEST(Drawing, aBadgeIsTheSameAtAnyStrokeWidth) {
    auto thin = badge({40, 40}, 3);
    auto thick = thin;
    thick.strokeWidth = 20;
    EXPECT_EQ(painted({thin}, {80, 80}), painted({thick}, {80, 80}));
}

TEST(Drawing, leavesThePainterAsItWas) {
    QImage picture = canvas({100, 100});
    QPainter painter(&picture);
    painter.translate(5, 5);
    painter.setPen(Qt::green);
    const QTransform before = painter.transform();
    for (const AnyAnnotation& one :
         {AnyAnnotation(badge({40, 40})), AnyAnnotation(text({10, 30}, QStringLiteral("a"))),
          AnyAnnotation(box<HighlightAnnotation>(0, 0, 10, 10)),
          AnyAnnotation(box<BlurAnnotation>(0, 0, 10, 10))})
        one.draw(painter);
    EXPECT_EQ(painter.transform(), before);
    EXPECT_EQ(painter.pen().color(), QColor(Qt::green));
    EXPECT_EQ(painter.compositionMode(), QPainter::CompositionMode_SourceOver);
    EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
}

TEST(Drawing, keepsToThePaintersClip) {
    for (const AnyAnnotation& one :
         {AnyAnnotation(box<RectangleAnnotation>(20, 20, 60, 60)), AnyAnnotation(badge({50, 50})),
          AnyAnnotation(text({10, 60}, QStringLiteral("clipped"), 30)),
          AnyAnnotation(box<HighlightAnnotation>(0, 0, 100, 100))}) {
        QImage picture = canvas({100, 100});
        QPainter painter(&picture);
        painter.setClipRect(30, 15, 25, 40);
        one.draw(painter);
        painter.end();
        EXPECT_TRUE(QRect(30, 15, 25, 40).contains(changedArea(canvas({100, 100}), picture)));
        EXPECT_NE(picture, canvas({100, 100}));
    }
}
