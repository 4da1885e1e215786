#include "editor/CanvasCrop.h"

#include "annotation/CropGeometry.h"
#include "base/Geometry.h"

#include <algorithm>

namespace marrowfin::editor {

using namespace annotation;

namespace {
constexpr double handleHitSide =
    16.0; // view points: more than what is drawn, so that a corner is easy to take

QPointF clampedInto(const QSizeF& image, const QPointF& point) {
    return {std::clamp(point.x(), 0.0, image.width()), std::clamp(point.y(), 0.0, image.height())};
}
} // namespace

void CanvasCrop::mouseDown(ToolState& tools, const QPointF& point, const QSizeF& image, double scale) {
    if (const std::optional<QRectF>& pending = tools.cropRect()) {
        const HandleRects rects = handleRects(*pending, handleHitSide / scale);
        const auto hit = std::find_if(allResizeHandles.begin(), allResizeHandles.end(),
                                      [&](ResizeHandle one) { return contains(rects.at(one), point); });
        if (hit != allResizeHandles.end()) {
            state = Resizing{*hit};
            return;
        }
        if (contains(*pending, point)) {
            state = Moving{point, *pending};
            return;
        }
    }
    const QPointF anchor = snappedPoint(clampedInto(image, point), image, cropSnapThreshold(scale));
    state = Defining{anchor};
    tools.setCropRect(QRectF(anchor, QSizeF(0, 0)));
}

void CanvasCrop::mouseDragged(ToolState& tools, const QPointF& point, const QSizeF& image, double scale) {
    const std::optional<double> ratio = aspectRatio(tools.cropAspect(), image);
    const QPointF snapped = snappedPoint(point, image, cropSnapThreshold(scale));
    if (const auto* defining = std::get_if<Defining>(&state))
        tools.setCropRect(constrainedRect(defining->anchor, clampedInto(image, snapped), ratio, image));
    else if (const auto* moving = std::get_if<Moving>(&state))
        move(tools, point, image, scale, *moving);
    else if (const auto* resizing = std::get_if<Resizing>(&state); resizing && tools.cropRect())
        tools.setCropRect(resizedCropRect(resizing->handle, *tools.cropRect(), snapped, ratio, image));
}

void CanvasCrop::move(ToolState& tools, const QPointF& point, const QSizeF& image, double scale,
                      Moving moving) {
    QRectF rect = offset(moving.unsnapped, point.x() - moving.pointer.x(), point.y() - moving.pointer.y());
    rect.moveTo(std::clamp(rect.x(), 0.0, std::max(image.width() - rect.width(), 0.0)),
                std::clamp(rect.y(), 0.0, std::max(image.height() - rect.height(), 0.0)));
    state = Moving{point, rect};
    const SnapDelta snap = moveSnapDelta(rect, image, cropSnapThreshold(scale));
    tools.setCropRect(offset(rect, snap.dx, snap.dy));
}

void CanvasCrop::mouseUp(ToolState& tools) {
    const bool defined = std::holds_alternative<Defining>(state);
    const std::optional<QRectF> rect = tools.cropRect();
    // A click or a small slip leaves no rectangle. What was moved or resized isn't asked.
    if (defined && rect && (rect->width() < minimumDefinedCrop || rect->height() < minimumDefinedCrop))
        tools.setCropRect(std::nullopt);
    state = None{};
}

} // namespace marrowfin::editor
