// The shadow against a plain one in double precision: same place, same softness, at any density and any turn
// of the painter, whatever the shape leaves empty.
#include "../Canvas.h"

#include "annotation/InkPen.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

using namespace marrowfin;
using namespace annotation;
using namespace marrowfin::test;

namespace {

using Plane = std::vector<double>;

// The alpha of what is painted on nothing.
Plane alphaOf(QSize size, const std::function<void(QPainter&)>& paint) {
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(painter);
    painter.end();
    Plane alpha;
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            alpha.push_back(qAlpha(picture.pixel(x, y)) / 255.0);
    return alpha;
}

// A Gaussian of this sigma, moved by the offset.
Plane shadowOf(const Plane& ink, QSize size, double sigma, QPointF offset) {
    const int reach =
        static_cast<int>(std::ceil(5 * sigma)) + static_cast<int>(std::hypot(offset.x(), offset.y())) + 1;
    const auto blurred = [&](const Plane& in, int stepX, int stepY, double shift) {
        std::vector<double> weights;
        double total = 0;
        for (int k = -reach; k <= reach; ++k) {
            weights.push_back(std::exp(-0.5 * (k - shift) * (k - shift) / (sigma * sigma)));
            total += weights.back();
        }
        Plane out(in.size());
        for (int y = 0; y < size.height(); ++y)
            for (int x = 0; x < size.width(); ++x)
                for (int k = -reach; k <= reach; ++k) {
                    const int sx = x - k * stepX;
                    const int sy = y - k * stepY;
                    if (sx >= 0 && sy >= 0 && sx < size.width() && sy < size.height())
                        out[static_cast<size_t>(y * size.width() + x)] +=
                            weights[static_cast<size_t>(k + reach)] / total *
                            in[static_cast<size_t>(sy * size.width() + sx)];
                }
        return out;
    };
    return blurred(blurred(ink, 1, 0, offset.x()), 0, 1, offset.y());
}

// The record's alpha with its shadow must be the bare ink's over 32% of the blurred ink's.
template <class Record>
void expectShadow(const Record& record, const QTransform& transform, double sigma, QPointF offset,
                  const std::function<void(QPainter&)>& bare) {
    const QSize size(240, 200);
    const Plane ours = alphaOf(size, [&](QPainter& painter) {
        painter.setTransform(transform);
        record.draw(painter);
    });
    const Plane ink = alphaOf(size, [&](QPainter& painter) {
        painter.setTransform(transform);
        painter.setRenderHint(QPainter::Antialiasing);
        bare(painter);
    });
    const Plane shadow = shadowOf(ink, size, sigma, offset);
    double largest = 0;
    for (size_t i = 0; i < ours.size(); ++i)
        largest = std::max(largest, std::abs(ours[i] - (ink[i] + (1 - ink[i]) * 0.32 * shadow[i])));
    EXPECT_LT(largest, 2.5 / 255);
}

void expectBoxShadow(const QTransform& transform, double sigma, QPointF offset) {
    const auto record = box<RectangleAnnotation>(20, 20, 50, 30);
    expectShadow(record, transform, sigma, offset, [&](QPainter& painter) {
        painter.setPen(inkPen(record, Qt::FlatCap, Qt::MiterJoin));
        painter.drawRect(record.box());
    });
}

void expectLineShadow(const QTransform& transform, double sigma, QPointF offset) {
    const auto record = segment<LineAnnotation>({15, 20}, {75, 60}, 5);
    expectShadow(record, transform, sigma, offset, [&](QPainter& painter) {
        painter.setPen(inkPen(record, Qt::RoundCap, Qt::MiterJoin));
        painter.drawLine(record.startPoint, record.endPoint);
    });
}

} // namespace

TEST(InkShadow, fallsOnePointDownWithTwoPointsOfBlurAtAnyDensity) {
    for (const double density : {0.73, 1.0, 1.5, 2.0}) {
        SCOPED_TRACE(density);
        expectBoxShadow(QTransform::fromScale(density, density), density, {0, density});
        expectLineShadow(QTransform::fromScale(density, density), density, {0, density});
    }
}

TEST(InkShadow, fallsDownTheImageThroughAFlip) {
    // A painter whose y grows upwards: down the image is up the device.
    expectBoxShadow(QTransform(2, 0, 0, -2, 0, 190), 2, {0, -2});
    expectLineShadow(QTransform(2, 0, 0, -2, 0, 190), 2, {0, -2});
}

TEST(InkShadow, turnsWithThePainter) {
    QTransform turned;
    turned.translate(110, 10);
    turned.rotate(30);
    turned.scale(1.5, 1.5);
    const double angle = 30 * M_PI / 180;
    expectBoxShadow(turned, 1.5, {-1.5 * std::sin(angle), 1.5 * std::cos(angle)});
}

TEST(InkShadow, anEllipseAndAPenStrokeHaveNoHolesInTheirs) {
    const auto ellipse = box<EllipseAnnotation>(10, 10, 90, 70);
    expectShadow(ellipse, QTransform::fromScale(2, 2), 2, {0, 2}, [&](QPainter& painter) {
        painter.setPen(inkPen(ellipse, Qt::FlatCap, Qt::MiterJoin));
        painter.drawEllipse(ellipse.box());
    });
    QList<QPointF> points;
    for (int i = 0; i < 80; ++i)
        points.append({10.0 + i, 50 + 30 * std::sin(i / 5.0)});
    const auto stroke = pen(points, 4);
    // The bare stroke as the record has it, without the layer: ink over nothing is the ink where it is
    // opaque.
    const QSize size(240, 200);
    const Plane alpha = alphaOf(size, [&](QPainter& painter) {
        painter.scale(2, 2);
        stroke.draw(painter);
    });
    int shadowed = 0;
    for (const double value : alpha)
        shadowed += value > 0.02 && value < 0.3;
    EXPECT_GT(shadowed, 1500);
}

TEST(InkShadow, theWholeBadgeCastsOne) {
    const auto record = badge({40, 40}, 8);
    expectShadow(record, QTransform::fromScale(2, 2), 2, {0, 2}, [&](QPainter& painter) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::red);
        painter.drawEllipse(record.center, record.radius,
                            record.radius); // the digits add nothing to the outline
    });
}

TEST(InkShadow, isTheSameWhereverTheRecordIsCutByTheEdge) {
    const AnyAnnotation record = box<EllipseAnnotation>(20, 20, 100, 60);
    const QImage whole = painted({record}, {160, 120});
    AnyAnnotation moved = record;
    moved.translate(-50, -45);
    QImage cut = painted({moved}, {60, 40});
    EXPECT_EQ(cut, whole.copy(50, 45, 60, 40));
}

TEST(InkShadow, staysWithinSixPointsOfTheInk) {
    for (const int density : {1, 2, 4}) {
        const auto record = segment<LineAnnotation>({40, 40}, {100, 40}, 4);
        const QRect changed = changedArea(canvas({140, 80}, density), painted({record}, {140, 80}, density));
        const QRectF reach = QRectF(38, 38, 64, 4).adjusted(-6, -6, 6, 6);
        EXPECT_TRUE(QRectF(reach.topLeft() * density, reach.size() * density).contains(changed));
    }
}
