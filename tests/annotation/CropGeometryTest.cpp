// The crop tool's arithmetic, to the exact value.
#include "annotation/CropGeometry.h"
#include "annotation/CropAspect.h"

#include "base/Geometry.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace annotation;

namespace {

const QSizeF image(640, 400);
constexpr double wide = 16.0 / 9.0;

void expectDelta(const SnapDelta& delta, double dx, double dy) {
    EXPECT_EQ(delta.dx, dx);
    EXPECT_EQ(delta.dy, dy);
}

} // namespace

TEST(CropAspects, titlesNamesAndRatiosInTheOrderOfTheChips) {
    QStringList names, titles;
    for (const CropAspect aspect : allCropAspects) {
        names += rawValue(aspect);
        titles += chipTitle(aspect);
        EXPECT_EQ(cropAspect(rawValue(aspect)), aspect);
    }
    EXPECT_EQ(names.join(u' '), QStringLiteral("freeform original square wide standard classic"));
    EXPECT_EQ(titles.join(u' '), QStringLiteral("Free Original 1:1 16:9 4:3 3:2"));
    EXPECT_EQ(cropAspect(QStringLiteral("golden")), std::nullopt);
    EXPECT_EQ(aspectRatio(CropAspect::freeform, image), std::nullopt);
    EXPECT_EQ(aspectRatio(CropAspect::original, image), 1.6);
    EXPECT_EQ(aspectRatio(CropAspect::original, {0, 400}), std::nullopt);
    EXPECT_EQ(aspectRatio(CropAspect::original, {640, 0}), std::nullopt);
    EXPECT_EQ(aspectRatio(CropAspect::square, image), 1.0);
    EXPECT_EQ(aspectRatio(CropAspect::wide, image), 16.0 / 9.0);
    EXPECT_EQ(aspectRatio(CropAspect::standard, image), 4.0 / 3.0);
    EXPECT_EQ(aspectRatio(CropAspect::classic, image), 1.5);
}

TEST(CropSnap, aPointSnapsPerAxisWithinReach) {
    EXPECT_EQ(snappedPoint({637.5, 203}, image, 6), QPointF(640, 200));
    EXPECT_EQ(snappedPoint({630, 210}, image, 6), QPointF(630, 210));
    EXPECT_EQ(snappedPoint({6, 394}, image, 6), QPointF(0, 400)); // exactly at the threshold
    EXPECT_EQ(snappedPoint({6.001, 206.001}, image, 6), QPointF(6.001, 206.001));
    EXPECT_EQ(snappedPoint({-4, 404}, image, 6), QPointF(0, 400));
}

TEST(CropSnap, theLaterGuideWinsATie) {
    EXPECT_EQ(snappedPoint({2, 6}, {8, 8}, 6), QPointF(4, 8)); // 2 from 0 and from 4; 2 from 4 and from 8
}

TEST(CropSnap, theReachIsSixPointsOfTheScreen) {
    EXPECT_EQ(cropSnapThreshold(0.5), 12.0);
}

TEST(CropSnap, aRectangleSnapsByItsEdgesAndItsMiddle) {
    expectDelta(moveSnapDelta({272, 100, 100, 80}, image, 6), -2, 0);
    expectDelta(moveSnapDelta({3, 316, 100, 80}, image, 6), -3, 4);
    expectDelta(moveSnapDelta({100, 100, 100, 80}, image, 6), 0, 0);
    // As large as the image: all three agree. Two away each: the middle is asked last.
    expectDelta(moveSnapDelta({2, 0, 640, 400}, image, 6), -2, 0);
    expectDelta(moveSnapDelta({2, 0, 636, 400}, image, 6), 0, 0);
}

TEST(ConstrainedRect, isFreeWithoutARatio) {
    EXPECT_EQ(constrainedRect({100, 100}, {50, 180}, std::nullopt, image), QRectF(50, 100, 50, 80));
    EXPECT_EQ(constrainedRect({100, 100}, {50, 180}, 0.0, image), QRectF(50, 100, 50, 80));
    EXPECT_EQ(constrainedRect({100, 100}, {50, 180}, -1.0, image), QRectF(50, 100, 50, 80));
}

TEST(ConstrainedRect, coversTheLargerDemand) {
    EXPECT_EQ(constrainedRect({100, 100}, {150, 180}, 1.0, image), QRectF(100, 100, 80, 80));
    EXPECT_EQ(constrainedRect({100, 100}, {40, 90}, 1.0, image), QRectF(40, 40, 60, 60));
    EXPECT_EQ(constrainedRect({100, 100}, {100, 100}, 1.0, image), QRectF(100, 100, 0, 0));
}

TEST(ConstrainedRect, stopsAtTheEdgeOnItsAspect) {
    const QRectF rect = constrainedRect({600, 200}, {700, 210}, wide, image);
    EXPECT_NEAR(maxX(rect), 640, 1e-9);
    EXPECT_NEAR(rect.width() / rect.height(), wide, 1e-12);
    EXPECT_EQ(rect.topLeft(), QPointF(600, 200));
    const QRectF upwards = constrainedRect({300, 30}, {310, -100}, 1.0, image);
    EXPECT_EQ(upwards, QRectF(300, 0, 30, 30));
}

TEST(ResizedCrop, aCornerWorksFromTheOppositeCornerAndFlips) {
    const QRectF from(100, 100, 100, 100);
    EXPECT_EQ(resizedCropRect(ResizeHandle::topLeft, from, {50, 60}, std::nullopt, image),
              QRectF(50, 60, 150, 140));
    EXPECT_EQ(resizedCropRect(ResizeHandle::topLeft, from, {250, 260}, std::nullopt, image),
              QRectF(200, 200, 50, 60));
    EXPECT_EQ(resizedCropRect(ResizeHandle::topRight, from, {300, 50}, 1.0, image), QRectF(100, 0, 200, 200));
    EXPECT_EQ(resizedCropRect(ResizeHandle::bottomLeft, from, {50, 120}, 1.0, image),
              QRectF(50, 100, 150, 150));
    EXPECT_EQ(resizedCropRect(ResizeHandle::bottomRight, from, {900, 900}, std::nullopt, image),
              QRectF(100, 100, 540, 300));
}

TEST(ResizedCrop, anEdgeWithoutARatioMovesThatEdge) {
    const QRectF from(100, 100, 100, 100);
    EXPECT_EQ(resizedCropRect(ResizeHandle::rightCenter, from, {900, 10}, std::nullopt, image),
              QRectF(100, 100, 540, 100));
    EXPECT_EQ(resizedCropRect(ResizeHandle::topCenter, from, {0, -50}, std::nullopt, image),
              QRectF(100, 0, 100, 200));
}

TEST(ResizedCrop, anEdgeOnARatioKeepsTheFarEdgeAndTheMiddle) {
    const QRectF from(200, 150, 160, 90);
    const QRectF up = resizedCropRect(ResizeHandle::topCenter, from, {0, 60}, wide, image);
    EXPECT_DOUBLE_EQ(midX(up), 280);
    EXPECT_DOUBLE_EQ(maxY(up), 240);
    EXPECT_DOUBLE_EQ(up.height(), 180);
    EXPECT_DOUBLE_EQ(up.width(), 320);
    const QRectF down = resizedCropRect(ResizeHandle::bottomCenter, from, {0, 240 + 45}, wide, image);
    EXPECT_EQ(down, QRectF(160, 150, 240, 135));
    const QRectF left = resizedCropRect(ResizeHandle::leftCenter, from, {280, 0}, 1.0, image);
    EXPECT_EQ(left, QRectF(280, 155, 80, 80));
    const QRectF right = resizedCropRect(ResizeHandle::rightCenter, from, {300, 0}, 1.0, image);
    EXPECT_EQ(right, QRectF(200, 145, 100, 100));
}

TEST(ResizedCrop, anEdgeOnARatioShrinksAtTheSideOfTheImage) {
    // The middle is 100 from the left side, so the width stops at 200 and the height with it.
    const QRectF rect = resizedCropRect(ResizeHandle::topCenter, {60, 250, 80, 80}, {100, 0}, 1.0, image);
    EXPECT_EQ(rect, QRectF(0, 130, 200, 200));
}

TEST(ResizedCrop, anEdgeOnARatioDraggedThroughItsFarEdgeCanLeaveTheImage) {
    // The top edge pulled below the bottom one: the rectangle stays above its far edge, and grows upwards.
    const QRectF rect = resizedCropRect(ResizeHandle::topCenter, {300, 20, 40, 40}, {320, 400}, 1.0, image);
    EXPECT_EQ(rect, QRectF(150, -280, 340, 340));
}

TEST(FittedCrop, keepsAreaAndMiddle) {
    const QRectF rect = fittedCropRect({200, 100, 100, 225}, 1.0, image);
    EXPECT_EQ(rect, QRectF(175, 137.5, 150, 150));
}

TEST(FittedCrop, isLeftAloneWithoutARatioOrAnArea) {
    EXPECT_EQ(fittedCropRect({1, 2, 30, 40}, std::nullopt, image), QRectF(1, 2, 30, 40));
    EXPECT_EQ(fittedCropRect({1, 2, 0, 40}, 1.0, image), QRectF(1, 2, 0, 40));
}

TEST(FittedCrop, staysInsideTheImage) {
    const QRectF high = fittedCropRect({0, 0, 640, 400}, 1.0, image);
    EXPECT_EQ(high, QRectF(120, 0, 400, 400));
    const QRectF corner = fittedCropRect({600, 0, 40, 400}, 1.0, image);
    EXPECT_DOUBLE_EQ(maxX(corner), 640);
    EXPECT_NEAR(corner.width() * corner.height(), 16000, 1e-6);
}
