// The geometry of the nine records: where each is, where a press takes it, how it moves and resizes.
#include "Records.h"

#include "annotation/ArrowGeometry.h"
#include "annotation/HitTesting.h"

#include <QSet>
#include <gtest/gtest.h>
#include <limits>

using namespace marrowfin;
using namespace annotation;
using namespace marrowfin::test;

namespace {
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
} // namespace

TEST(Records, aRectangleIsLiveOnItsOutlineOnly) {
    const auto record = box<RectangleAnnotation>(100, 100, 120, 80);
    EXPECT_FALSE(record.hitTest({160, 140}, 6)); // centre
    EXPECT_TRUE(record.hitTest({103, 140}, 6));  // 3 inside
    EXPECT_TRUE(record.hitTest({95, 140}, 6));   // 5 outside
    EXPECT_FALSE(record.hitTest({93, 140}, 6));  // 7 outside
}

TEST(Records, theRectanglesBandIsHalfOpen) {
    const auto record = box<RectangleAnnotation>(100, 100, 120, 80);
    EXPECT_TRUE(record.hitTest({94, 140}, 6));   // the grown minimum edge is in
    EXPECT_FALSE(record.hitTest({226, 140}, 6)); // the grown maximum edge is out
    EXPECT_FALSE(record.hitTest({106, 140}, 6)); // the inner minimum edge belongs to the interior
    EXPECT_TRUE(record.hitTest({214, 140}, 6));  // the inner maximum edge doesn't
}

TEST(Records, aRectangleTooSmallToShrinkIsLiveAllOver) {
    EXPECT_TRUE(box<RectangleAnnotation>(0, 0, 10, 10).hitTest({5, 5}, 6));
}

TEST(Records, anEllipsesBandGrowsWithTheEllipseWhateverTheTolerance) {
    const auto record = box<EllipseAnnotation>(0, 0, 200, 100);
    for (const double tolerance : {0.0, 6.0, 60.0}) {
        EXPECT_TRUE(record.hitTest({200, 50}, tolerance));
        EXPECT_TRUE(record.hitTest({100 + 105, 50}, tolerance));
        EXPECT_FALSE(record.hitTest({100, 50}, tolerance));
        EXPECT_FALSE(record.hitTest({100 + 120, 50}, tolerance));
    }
}

TEST(Records, anEllipseWithoutAnAxisIsNeverHit) {
    EXPECT_FALSE(box<EllipseAnnotation>(10, 10, 0, 50).hitTest({10, 35}, 6));
    EXPECT_FALSE(box<EllipseAnnotation>(10, 10, 50, 0).hitTest({35, 10}, 6));
    EXPECT_FALSE(box<EllipseAnnotation>(10, 10, 0, 0).hitTest({10, 10}, 6));
}

TEST(Records, blurAndHighlightAreLiveInside) {
    EXPECT_TRUE(box<BlurAnnotation>(10, 10, 50, 50).hitTest({35, 35}, 6));
    EXPECT_TRUE(box<HighlightAnnotation>(10, 10, 50, 50).hitTest({4, 35}, 6));
    EXPECT_FALSE(box<HighlightAnnotation>(10, 10, 50, 50).hitTest({3.9, 35}, 6));
}

TEST(Records, aLineIsHitCloserThanTheTolerance) {
    const auto line = segment<LineAnnotation>({0, 0}, {100, 0});
    EXPECT_TRUE(line.hitTest({50, 5.9}, 6));
    EXPECT_FALSE(line.hitTest({50, 6}, 6));
    EXPECT_TRUE(line.hitTest({-5, 0}, 6));
    EXPECT_FALSE(line.hitTest({-6, 0}, 6));
}

TEST(Records, aLineWithoutLengthIsHitAroundItsPoint) {
    const auto line = segment<LineAnnotation>({40, 40}, {40, 40});
    EXPECT_TRUE(line.hitTest({43, 44}, 6));
    EXPECT_FALSE(line.hitTest({44, 45}, 6));
}

TEST(Records, anArrowsHeadHasNoAreaOfItsOwn) {
    const auto arrow = segment<ArrowAnnotation>({0, 0}, {100, 0}, 10); // wings reach about 22 to the side
    EXPECT_TRUE(arrow.hitTest({80, 5}, 6));
    EXPECT_FALSE(arrow.hitTest({70, 15}, 6));
}

TEST(Records, aPenStrokeIsHitOnItsSegments) {
    const auto stroke = pen({{0, 0}, {50, 0}, {50, 50}});
    EXPECT_TRUE(stroke.hitTest({52, 30}, 6));
    EXPECT_FALSE(stroke.hitTest({25, 25}, 6));
}

TEST(Records, aPenStrokeOfOnePointIsNeverHitAndHasNoSize) {
    const auto dot = pen({{7, 9}});
    EXPECT_FALSE(dot.hitTest({7, 9}, 6));
    EXPECT_EQ(dot.boundingRect(), QRectF(7, 9, 0, 0));
    EXPECT_EQ(pen({}).boundingRect(), QRectF(0, 0, 0, 0));
    EXPECT_FALSE(pen({}).hitTest({0, 0}, 6));
}

TEST(Records, aBadgeIsHitWithinItsRadiusAndTheTolerance) {
    EXPECT_TRUE(badge({100, 100}).hitTest({121, 100}, 6));
    EXPECT_FALSE(badge({100, 100}).hitTest({122, 100}, 6));
}

TEST(Records, boundingRects) {
    EXPECT_EQ(box<RectangleAnnotation>(1, 2, 3, 4).boundingRect(), QRectF(1, 2, 3, 4));
    EXPECT_EQ(segment<LineAnnotation>({30, 5}, {10, 25}).boundingRect(), QRectF(10, 5, 20, 20));
    EXPECT_EQ(pen({{3, 9}, {-1, 4}, {2, 20}}).boundingRect(), QRectF(-1, 4, 4, 16));
    EXPECT_EQ(badge({50, 60}).boundingRect(), QRectF(34, 44, 32, 32));
}

TEST(Records, anArrowsBoundingRectHasRoomForItsHead) {
    // Width 3: head 13.5, and 3 + 6.75 is less than the least pad.
    EXPECT_EQ(segment<ArrowAnnotation>({0, 0}, {100, 0}, 3).boundingRect(), QRectF(-10, -10, 120, 20));
    // Width 10: head 45, pad 32.5.
    EXPECT_EQ(segment<ArrowAnnotation>({100, 50}, {0, 0}, 10).boundingRect(), QRectF(-32.5, -32.5, 165, 115));
}

TEST(Records, anArrowsHeadIsBoundByStrokeFloorAndLength) {
    EXPECT_DOUBLE_EQ(arrowHeadLength(100, 2), 10);
    EXPECT_DOUBLE_EQ(arrowHeadLength(100, 10), 45);
    EXPECT_DOUBLE_EQ(arrowHeadLength(50, 10), 30);
}

TEST(Records, anArrowsWingsOpenSixtyDegrees) {
    const ArrowGeometry shape = arrowGeometry({0, 0}, {100, 0}, 10);
    EXPECT_NEAR(shape.firstWing.x(), 100 - 45 * std::cos(M_PI / 6), 1e-9);
    EXPECT_NEAR(shape.firstWing.y(), 22.5, 1e-9);
    EXPECT_NEAR(shape.secondWing.y(), -22.5, 1e-9);
    EXPECT_NEAR(shape.shaftEnd.x(), 73, 1e-9);
    EXPECT_NEAR(shape.shaftEnd.y(), 0, 1e-9);
}

TEST(Records, distanceToASegmentEndsAtItsEnds) {
    EXPECT_DOUBLE_EQ(distanceToSegment({3, 4}, {0, 0}, {0, 0}), 5);
    EXPECT_DOUBLE_EQ(distanceToSegment({5, 3}, {0, 0}, {10, 0}), 3);
    EXPECT_DOUBLE_EQ(distanceToSegment({13, 4}, {0, 0}, {10, 0}), 5);
    EXPECT_DOUBLE_EQ(distanceToSegment({-3, -4}, {0, 0}, {10, 0}), 5);
}

TEST(Records, movingMovesEveryPointAndNoSize) {
    AnyAnnotation stroke = pen({{0, 0}, {1, 1}, {2, 4}});
    stroke.translate(10, -20);
    EXPECT_EQ(stroke.as<FreehandAnnotation>()->points, (QList<QPointF>{{10, -20}, {11, -19}, {12, -16}}));

    AnyAnnotation arrow = segment<ArrowAnnotation>({0, 0}, {5, 5});
    arrow.translate(10, -20);
    EXPECT_EQ(arrow.as<ArrowAnnotation>()->startPoint, QPointF(10, -20));
    EXPECT_EQ(arrow.as<ArrowAnnotation>()->endPoint, QPointF(15, -15));

    AnyAnnotation mark = badge({4, 4});
    mark.translate(-100, 0); // off the image is allowed
    EXPECT_EQ(mark.as<NumberAnnotation>()->center, QPointF(-96, 4));
    EXPECT_EQ(mark.as<NumberAnnotation>()->radius, 16);

    AnyAnnotation words = text({4, 4}, QStringLiteral("hi"));
    words.translate(1, 2);
    EXPECT_EQ(words.as<TextAnnotation>()->position, QPointF(5, 6));
    EXPECT_EQ(words.as<TextAnnotation>()->fontSize, 24);

    AnyAnnotation area = box<BlurAnnotation>(1, 2, 3, 4);
    area.translate(10, 10);
    EXPECT_EQ(area.boundingRect(), QRectF(11, 12, 3, 4));
}

TEST(Records, handlesAreSquaresOfConstantSizeOnTheScreen) {
    const AnyAnnotation record = box<RectangleAnnotation>(100, 100, 50, 30);
    const HandleRects atHalf = record.handleRects(0.5);
    ASSERT_EQ(atHalf.size(), 8u);
    EXPECT_EQ(atHalf.at(ResizeHandle::topLeft), QRectF(92, 92, 16, 16));
    EXPECT_EQ(atHalf.at(ResizeHandle::bottomRight), QRectF(142, 122, 16, 16));
    EXPECT_EQ(atHalf.at(ResizeHandle::topRight), QRectF(142, 92, 16, 16));
    EXPECT_EQ(atHalf.at(ResizeHandle::bottomLeft), QRectF(92, 122, 16, 16));
    const HandleRects atFull = record.handleRects(1);
    EXPECT_EQ(atFull.at(ResizeHandle::topCenter), QRectF(121, 96, 8, 8));
    EXPECT_EQ(atFull.at(ResizeHandle::bottomCenter), QRectF(121, 126, 8, 8));
    EXPECT_EQ(atFull.at(ResizeHandle::leftCenter), QRectF(96, 111, 8, 8));
    EXPECT_EQ(atFull.at(ResizeHandle::rightCenter), QRectF(146, 111, 8, 8));
}

TEST(Records, onlyBoxesHaveHandlesAndResize) {
    const QList<AnyAnnotation> boxes{box<RectangleAnnotation>(0, 0, 10, 10),
                                     box<EllipseAnnotation>(0, 0, 10, 10), box<BlurAnnotation>(0, 0, 10, 10),
                                     box<HighlightAnnotation>(0, 0, 10, 10)};
    for (const AnyAnnotation& one : boxes) {
        EXPECT_EQ(one.handleRects(1).size(), 8u);
        EXPECT_EQ(one.resized(ResizeHandle::bottomRight, {30, 40}).boundingRect(), QRectF(0, 0, 30, 40));
        EXPECT_EQ(one.resized(ResizeHandle::bottomRight, {30, 40}).id(), one.id());
    }
    const QList<AnyAnnotation> others{segment<ArrowAnnotation>({0, 0}, {9, 9}),
                                      segment<LineAnnotation>({0, 0}, {9, 9}), pen({{0, 0}, {9, 9}}),
                                      badge({5, 5})};
    for (const AnyAnnotation& one : others) {
        EXPECT_TRUE(one.handleRects(1).empty());
        EXPECT_EQ(one.resized(ResizeHandle::bottomRight, {30, 40}), one);
    }
}

TEST(Records, eachHandleMovesItsEdgesAlone) {
    const QRectF from(100, 100, 50, 40);
    const QPointF to(110, 120);
    EXPECT_EQ(resizedRect(ResizeHandle::topLeft, from, to), QRectF(110, 120, 40, 20));
    EXPECT_EQ(resizedRect(ResizeHandle::topRight, from, to), QRectF(100, 120, 10, 20));
    EXPECT_EQ(resizedRect(ResizeHandle::bottomLeft, from, to), QRectF(110, 100, 40, 20));
    EXPECT_EQ(resizedRect(ResizeHandle::bottomRight, from, to), QRectF(100, 100, 10, 20));
    EXPECT_EQ(resizedRect(ResizeHandle::topCenter, from, to), QRectF(100, 120, 50, 20));
    EXPECT_EQ(resizedRect(ResizeHandle::bottomCenter, from, to), QRectF(100, 100, 50, 20));
    EXPECT_EQ(resizedRect(ResizeHandle::leftCenter, from, to), QRectF(110, 100, 40, 40));
    EXPECT_EQ(resizedRect(ResizeHandle::rightCenter, from, to), QRectF(100, 100, 10, 40));
}

TEST(Records, aHandleDraggedThroughTheOppositeEdgeFlipsTheBox) {
    EXPECT_EQ(resizedRect(ResizeHandle::rightCenter, {100, 100, 50, 50}, {80, 0}), QRectF(80, 100, 20, 50));
    EXPECT_EQ(resizedRect(ResizeHandle::topLeft, {100, 100, 50, 50}, {170, 190}), QRectF(150, 150, 20, 40));
}

TEST(Records, theUnionForwardsTheCommonFields) {
    auto record = box<RectangleAnnotation>(0, 0, 1, 1);
    record.strokeWidth = 5;
    AnyAnnotation any = record;
    EXPECT_EQ(any.id(), record.id);
    EXPECT_EQ(any.strokeColor(), red);
    EXPECT_EQ(any.strokeWidth(), 5);
    EXPECT_EQ(any.zIndex(), 0);
    any.setZIndex(7);
    EXPECT_EQ(any.as<RectangleAnnotation>()->zIndex, 7);
    EXPECT_EQ(any.as<EllipseAnnotation>(), nullptr);
}

TEST(Records, theCasesStandInTheirOrder) {
    EXPECT_EQ(AnyAnnotation(RectangleAnnotation{}).record().index(), 0u);
    EXPECT_EQ(AnyAnnotation(EllipseAnnotation{}).record().index(), 1u);
    EXPECT_EQ(AnyAnnotation(ArrowAnnotation{}).record().index(), 2u);
    EXPECT_EQ(AnyAnnotation(LineAnnotation{}).record().index(), 3u);
    EXPECT_EQ(AnyAnnotation(FreehandAnnotation{}).record().index(), 4u);
    EXPECT_EQ(AnyAnnotation(TextAnnotation{}).record().index(), 5u);
    EXPECT_EQ(AnyAnnotation(BlurAnnotation{}).record().index(), 6u);
    EXPECT_EQ(AnyAnnotation(HighlightAnnotation{}).record().index(), 7u);
    EXPECT_EQ(AnyAnnotation(NumberAnnotation{}).record().index(), 8u);
}

TEST(Records, everyRecordIsBornWithItsOwnIdAndKeepsItInCopies) {
    const RectangleAnnotation a, b;
    EXPECT_NE(a.id, b.id);
    EXPECT_FALSE(a.id.isNull());
    const RectangleAnnotation copy = a;
    EXPECT_EQ(copy.id, a.id);
}

TEST(Records, handlesCanBeListedAndHashed) {
    QSet<ResizeHandle> seen;
    for (const ResizeHandle handle : allResizeHandles)
        seen.insert(handle);
    EXPECT_EQ(seen.size(), 8);
    EXPECT_EQ(allResizeHandles.front(), ResizeHandle::topLeft);
    EXPECT_EQ(allResizeHandles.back(), ResizeHandle::rightCenter);
}

TEST(Records, paintOrderIsByZIndexAndStable) {
    QList<AnyAnnotation> ink;
    for (const qint64 z : {3, 1, 1, 0}) {
        AnyAnnotation one = badge({0, 0}, ink.size());
        one.setZIndex(z);
        ink.append(one);
    }
    const QList<AnyAnnotation> ordered = inPaintOrder(ink);
    EXPECT_EQ(ordered, (QList<AnyAnnotation>{ink[3], ink[1], ink[2], ink[0]}));
    EXPECT_EQ(ink[0].zIndex(), 3); // the list itself stays as it was
}

TEST(Records, coordinatesThatAreNoNumbersAreNeverHit) {
    const QPointF nowhere(notANumber, notANumber);
    EXPECT_FALSE(box<RectangleAnnotation>(notANumber, notANumber, notANumber, notANumber).hitTest({5, 5}, 6));
    EXPECT_FALSE(box<EllipseAnnotation>(notANumber, 0, 10, 10).hitTest({5, 5}, 6));
    EXPECT_FALSE(segment<LineAnnotation>(nowhere, nowhere).hitTest({5, 5}, 6));
    EXPECT_FALSE(segment<ArrowAnnotation>(nowhere, {1, 1}).hitTest({5, 5}, 6));
    EXPECT_FALSE(pen({nowhere, nowhere}).hitTest({5, 5}, 6));
    EXPECT_FALSE(badge(nowhere).hitTest({5, 5}, 6));
    EXPECT_FALSE(box<BlurAnnotation>(0, 0, 10, 10).hitTest(nowhere, 6));
}
