// Rules that the crop's and the handles' arithmetic keeps for any numbers. Seeded; the seed is printed on
// failure.
#include "annotation/AnyAnnotation.h"
#include "annotation/CropGeometry.h"
#include "base/Geometry.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

using namespace marrowfin;
using namespace annotation;

namespace {

constexpr int cases = 5000;

// Numbers of one case, all from its seed.
class Dice {
public:
    explicit Dice(unsigned seed) : random(seed) {}
    double between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    }
    QPointF point(QSizeF in) { return {between(0, in.width()), between(0, in.height())}; }
    QPointF anywhere() { return {between(-3000, 6000), between(-3000, 6000)}; }
    QSizeF image() { return {std::round(between(1, 4000)), std::round(between(1, 3000))}; }
    QRectF rectIn(QSizeF in) { return rectBetween(point(in), point(in)); }
    double ratio() { return std::exp(between(-2, 2)); }
    ResizeHandle handle() { return allResizeHandles[std::uniform_int_distribution<size_t>(0, 7)(random)]; }

private:
    std::mt19937 random;
};

void forSeeds(const std::function<void(Dice&)>& check) {
    for (unsigned seed = 0; seed < cases && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Dice dice(seed);
        check(dice);
    }
}

void expectInside(const QRectF& rect, QSizeF image) {
    const double slack = 1e-9 * std::max(image.width(), image.height());
    EXPECT_GE(rect.left(), -slack);
    EXPECT_GE(rect.top(), -slack);
    EXPECT_LE(maxX(rect), image.width() + slack);
    EXPECT_LE(maxY(rect), image.height() + slack);
}

void expectRatio(const QRectF& rect, double ratio) {
    EXPECT_NEAR(rect.width(), rect.height() * ratio, 1e-9 * std::max(1.0, rect.width()));
}

} // namespace

TEST(CropProperties, aConstrainedRectFromInsideStaysInsideAndOnItsRatio) {
    forSeeds([](Dice& dice) {
        const QSizeF image = dice.image();
        const QPointF anchor = dice.point(image);
        const double ratio = dice.ratio();
        const QRectF rect = constrainedRect(anchor, dice.anywhere(), ratio, image);
        expectInside(rect, image);
        expectRatio(rect, ratio);
        EXPECT_GE(rect.width(), 0);
        const bool keepsAnchor = (rect.left() == anchor.x() || std::abs(maxX(rect) - anchor.x()) < 1e-9) &&
                                 (rect.top() == anchor.y() || std::abs(maxY(rect) - anchor.y()) < 1e-9);
        EXPECT_TRUE(keepsAnchor);
    });
}

TEST(CropProperties, aResizedRectIsStandardisedAndKeepsTheEdgesTheHandleDoesNotOwn) {
    forSeeds([](Dice& dice) {
        const QRectF from = dice.rectIn({4000, 3000});
        const ResizeHandle handle = dice.handle();
        const QRectF rect = resizedRect(handle, from, dice.anywhere());
        EXPECT_GE(rect.width(), 0);
        EXPECT_GE(rect.height(), 0);
        if (handle == ResizeHandle::leftCenter || handle == ResizeHandle::rightCenter) {
            EXPECT_EQ(rect.top(), from.top());
            EXPECT_EQ(rect.height(), from.height());
        }
        if (handle == ResizeHandle::topCenter || handle == ResizeHandle::bottomCenter) {
            EXPECT_EQ(rect.left(), from.left());
            EXPECT_EQ(rect.width(), from.width());
        }
    });
}

TEST(CropProperties, aCropDraggedByACornerStaysInTheImage) {
    forSeeds([](Dice& dice) {
        const QSizeF image = dice.image();
        const QRectF from = dice.rectIn(image);
        const double ratio = dice.ratio();
        for (const ResizeHandle corner : {ResizeHandle::topLeft, ResizeHandle::topRight,
                                          ResizeHandle::bottomLeft, ResizeHandle::bottomRight}) {
            const QPointF to = dice.anywhere();
            expectInside(resizedCropRect(corner, from, to, std::nullopt, image), image);
            const QRectF held = resizedCropRect(corner, from, to, ratio, image);
            expectInside(held, image);
            expectRatio(held, ratio);
        }
    });
}

TEST(CropProperties, aCropDraggedByAnEdgeOnARatioKeepsTheFarEdgeAndTheMiddle) {
    forSeeds([](Dice& dice) {
        const QSizeF image = dice.image();
        const QRectF from = dice.rectIn(image);
        const double ratio = dice.ratio();
        const QPointF to = dice.anywhere();
        const QRectF top = resizedCropRect(ResizeHandle::topCenter, from, to, ratio, image);
        expectRatio(top, ratio);
        EXPECT_NEAR(midX(top), midX(from), 1e-9);
        EXPECT_NEAR(maxY(top), maxY(from), 1e-9);
        EXPECT_GE(top.left(), -1e-9);
        EXPECT_LE(maxX(top), image.width() + 1e-9);
        const QRectF right = resizedCropRect(ResizeHandle::rightCenter, from, to, ratio, image);
        expectRatio(right, ratio);
        EXPECT_NEAR(midY(right), midY(from), 1e-9);
        EXPECT_EQ(right.left(), from.left());
    });
}

TEST(CropProperties, aFittedCropKeepsItsAreaOrFitsTheImage) {
    forSeeds([](Dice& dice) {
        const QSizeF image = dice.image();
        const QRectF from = dice.rectIn(image);
        const double ratio = dice.ratio();
        const QRectF fitted = fittedCropRect(from, ratio, image);
        if (isEmpty(from))
            return;
        expectRatio(fitted, ratio);
        expectInside(fitted, image);
        const double area = from.width() * from.height();
        const bool fillsAnAxis = std::abs(fitted.width() - image.width()) < 1e-6 ||
                                 std::abs(fitted.height() - image.height()) < 1e-6;
        if (!fillsAnAxis)
            EXPECT_NEAR(fitted.width() * fitted.height(), area, 1e-9 * area + 1e-9);
        else
            EXPECT_LE(fitted.width() * fitted.height(), area * (1 + 1e-9));
    });
}

TEST(CropProperties, aSnapMovesByAtMostTheThresholdAndOnlyOntoAGuide) {
    forSeeds([](Dice& dice) {
        const QSizeF image = dice.image();
        const double threshold = dice.between(0, 20);
        const QPointF point = dice.point(image);
        const QPointF snapped = snappedPoint(point, image, threshold);
        EXPECT_LE(std::abs(snapped.x() - point.x()), threshold);
        const bool onGuide =
            snapped.x() == 0 || snapped.x() == image.width() / 2 || snapped.x() == image.width();
        EXPECT_TRUE(onGuide || snapped.x() == point.x());
        const QRectF rect = dice.rectIn(image);
        const SnapDelta delta = moveSnapDelta(rect, image, threshold);
        EXPECT_LE(std::abs(delta.dx), threshold);
        EXPECT_LE(std::abs(delta.dy), threshold);
        if (delta.dx != 0) {
            const QRectF moved = offset(rect, delta.dx, 0);
            const double nearest = std::min({std::abs(moved.left()), std::abs(maxX(moved) - image.width()),
                                             std::abs(midX(moved) - image.width() / 2)});
            EXPECT_LT(nearest, 1e-9);
        }
    });
}

TEST(CropProperties, movingARecordAndThePressTogetherChangesNoHit) {
    forSeeds([](Dice& dice) {
        QList<AnyAnnotation> records;
        const auto addBox = [&](auto record) {
            record.setBox(QRectF(std::round(dice.between(0, 500)), std::round(dice.between(0, 500)),
                                 std::round(dice.between(0, 300)), std::round(dice.between(0, 300))));
            records.append(record);
        };
        addBox(RectangleAnnotation{});
        addBox(EllipseAnnotation{});
        addBox(BlurAnnotation{});
        addBox(HighlightAnnotation{});
        LineAnnotation line;
        line.startPoint = dice.point({500, 500});
        line.endPoint = dice.point({500, 500});
        records.append(line);
        ArrowAnnotation arrow;
        arrow.startPoint = dice.point({500, 500});
        arrow.endPoint = dice.point({500, 500});
        records.append(arrow);
        FreehandAnnotation stroke;
        for (int i = 0; i < 8; ++i)
            stroke.points.append(dice.point({500, 500}));
        records.append(stroke);
        NumberAnnotation number;
        number.center = dice.point({500, 500});
        records.append(number);
        const QPointF by(std::round(dice.between(-900, 900)), std::round(dice.between(-900, 900)));
        for (const AnyAnnotation& record : records) {
            const QPointF press =
                dice.point({600, 600}) + QPointF(0.137, 0.291); // never on a record's very edge
            AnyAnnotation moved = record;
            moved.translate(by.x(), by.y());
            EXPECT_EQ(moved.hitTest(press + by, 6), record.hitTest(press, 6)) << record.record().index();
        }
    });
}
