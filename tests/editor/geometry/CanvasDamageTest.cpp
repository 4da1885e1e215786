#include "editor/CanvasDamage.h"

#include "annotation/Records.h"

#include <gtest/gtest.h>

namespace marrowfin::editor {

using namespace annotation;
namespace {

using namespace test;

const CanvasFit fit{QRectF(0, 0, 1000, 1000), 1.0};

int area(const QRegion& region) {
    int sum = 0;
    for (const QRect& rect : region)
        sum += rect.width() * rect.height();
    return sum;
}

TEST(CanvasDamage, AnOutlineCostsItsBand) {
    const AnyAnnotation outline = box<RectangleAnnotation>(100, 100, 600, 600);
    const QRegion damage = inkDamage(nullptr, &outline, fit);
    EXPECT_TRUE(damage.contains(QPoint(100, 400)));
    EXPECT_TRUE(damage.contains(QPoint(93, 400))); // its shadow
    EXPECT_FALSE(damage.contains(QPoint(400, 400)));
    EXPECT_LT(area(damage), 600 * 600 / 4);
}

TEST(CanvasDamage, AGrowingStrokeCostsItsEnd) {
    QList<QPointF> points;
    for (int i = 0; i < 500; ++i)
        points.append({100.0 + i, 100.0});
    const FreehandAnnotation before = pen(points);
    FreehandAnnotation longer = before;
    longer.points.append({600, 105});
    const AnyAnnotation a = before;
    const AnyAnnotation b = longer;
    const QRegion damage = inkDamage(&a, &b, fit);
    EXPECT_TRUE(damage.contains(QPoint(600, 105)));
    EXPECT_TRUE(damage.contains(QPoint(585, 100))); // smoothing looks back
    EXPECT_FALSE(damage.contains(QPoint(300, 100)));
}

TEST(CanvasDamage, AStrokeOfTheSamePointsCostsItsEndAtMost) {
    const FreehandAnnotation one = pen({{100, 100}, {300, 100}, {500, 100}});
    FreehandAnnotation again = one;
    again.id = QUuid::createUuid();
    const AnyAnnotation a = one;
    const AnyAnnotation b = again;
    EXPECT_FALSE(inkDamage(&a, &b, fit).contains(QPoint(100, 100)));
}

TEST(CanvasDamage, AMovedStrokeCostsBothPlaces) {
    AnyAnnotation before = pen({{100, 100}, {200, 200}});
    AnyAnnotation after = before;
    after.translate(300, 0);
    const QRegion damage = inkDamage(&before, &after, fit);
    EXPECT_TRUE(damage.contains(QPoint(150, 150)));
    EXPECT_TRUE(damage.contains(QPoint(450, 150)));
    EXPECT_TRUE(inkDamage(&before, &before, fit).isEmpty());
}

TEST(CanvasDamage, AGrowingBlurCostsWhatItGains) {
    AnyAnnotation before = box<BlurAnnotation>(100, 100, 400, 400);
    const AnyAnnotation after = before.resized(ResizeHandle::bottomRight, {520, 510});
    const QRegion damage = inkDamage(&before, &after, fit);
    EXPECT_TRUE(damage.contains(QPoint(510, 300)));
    EXPECT_FALSE(damage.contains(QPoint(300, 300)));
}

TEST(CanvasDamage, ListsAreComparedRecordByRecord) {
    const QList<AnyAnnotation> before{badge({100, 100}), badge({500, 500})};
    QList<AnyAnnotation> after = before;
    EXPECT_TRUE(inkDamage(before, after, fit).isEmpty());
    after.removeFirst();
    const QRegion removed = inkDamage(before, after, fit);
    EXPECT_TRUE(removed.contains(QPoint(100, 100)));
    after = before;
    after.append(badge({800, 800}));
    const QRegion added = inkDamage(before, after, fit);
    EXPECT_TRUE(added.contains(QPoint(800, 800)));
    EXPECT_FALSE(added.contains(QPoint(500, 500)));
}

TEST(CanvasDamage, ACropThatComesOrGoesDimsTheImage) {
    const QSizeF image(1000, 1000);
    const QRegion comes = cropDamage(std::nullopt, QRectF(100, 100, 50, 50), image, fit);
    EXPECT_TRUE(comes.contains(QPoint(900, 900)));
    const QRegion moves = cropDamage(QRectF(100, 100, 50, 50), QRectF(110, 100, 50, 50), image, fit);
    EXPECT_FALSE(moves.contains(QPoint(900, 900)));
    EXPECT_TRUE(moves.contains(QPoint(163, 125)));
    EXPECT_TRUE(cropDamage(QRectF(1, 1, 5, 5), QRectF(1, 1, 5, 5), image, fit).isEmpty());
}

TEST(CanvasDamage, InkFarOffIsNoTrouble) {
    const AnyAnnotation far = badge({1e12, -1e12});
    EXPECT_FALSE(inkDamage(nullptr, &far, fit).intersects(QRect(0, 0, 1000, 1000)));
    const AnyAnnotation nowhere = badge({std::nan(""), 0});
    EXPECT_FALSE(inkDamage(nullptr, &nowhere, fit).intersects(QRect(0, 0, 1000, 1000)));
}

} // namespace
} // namespace marrowfin::editor
