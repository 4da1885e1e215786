#include "annotation/AnyAnnotation.h"

#include <algorithm>

namespace marrowfin::annotation {

namespace {
constexpr double handleSide = 8.0; // view points
} // namespace

const Ink& AnyAnnotation::ink() const {
    return std::visit([](const Ink& ink) -> const Ink& { return ink; }, held);
}

Ink& AnyAnnotation::ink() {
    return std::visit([](Ink& ink) -> Ink& { return ink; }, held);
}

const BoxInk* AnyAnnotation::boxInk() const {
    return const_cast<AnyAnnotation*>(this)->boxInk();
}

BoxInk* AnyAnnotation::boxInk() {
    return std::visit(
        []<class R>(R& record) -> BoxInk* {
            if constexpr (std::derived_from<R, BoxInk>)
                return &record;
            else
                return nullptr;
        },
        held);
}

QRectF AnyAnnotation::boundingRect() const {
    return std::visit([](const auto& record) { return record.boundingRect(); }, held);
}

void AnyAnnotation::draw(QPainter& painter) const {
    std::visit([&](const auto& record) { record.draw(painter); }, held);
}

bool AnyAnnotation::hitTest(const QPointF& point, double tolerance) const {
    return std::visit([&](const auto& record) { return record.hitTest(point, tolerance); }, held);
}

void AnyAnnotation::translate(double dx, double dy) {
    std::visit([&](auto& record) { record.translate(dx, dy); }, held);
}

HandleRects AnyAnnotation::handleRects(double scale) const {
    const BoxInk* box = boxInk();
    return box ? marrowfin::annotation::handleRects(box->box(), handleSide / scale) : HandleRects();
}

AnyAnnotation AnyAnnotation::resized(ResizeHandle handle, const QPointF& point) const {
    AnyAnnotation result = *this;
    if (BoxInk* box = result.boxInk())
        box->setBox(resizedRect(handle, box->box(), point));
    return result;
}

QList<AnyAnnotation> inPaintOrder(QList<AnyAnnotation> annotations) {
    const auto below = [](const AnyAnnotation& a, const AnyAnnotation& b) { return a.zIndex() < b.zIndex(); };
    // Insertion order nearly always is paint order, and then the copy stays shared.
    if (!std::is_sorted(annotations.cbegin(), annotations.cend(), below))
        std::stable_sort(annotations.begin(), annotations.end(), below);
    return annotations;
}

} // namespace marrowfin::annotation
