#include "editor/CanvasInteraction.h"

#include "annotation/HighlightDarkness.h"
#include "base/Geometry.h"
#include "base/SystemColors.h"

#include <algorithm>

namespace marrowfin::editor {

using namespace annotation;

namespace {

constexpr double hitReach = 6.0; // view points
constexpr double fixedStrokeWidth = 3.0;
constexpr double badgeRadius = 16.0;

const TextAnnotation* textAnnotationAt(const AnnotationDocument& document, const QPointF& point,
                                       double scale) {
    const double reach = hitReach / scale;
    const QList<AnyAnnotation>& annotations = document.annotations();
    for (auto one = annotations.crbegin(); one != annotations.crend(); ++one)
        if (const auto* text = one->as<TextAnnotation>())
            if (contains(inset(text->boundingRect(), -reach, -reach), point))
                return text;
    return nullptr;
}

TextRequest editAgain(const TextAnnotation& text) {
    return {{text.id, text.position, text.fontSize, text.strokeColor}, text.text};
}

TextRequest newText(const ToolState& tools, const QPointF& baseline) {
    return {{std::nullopt, baseline, tools.fontSize(), tools.strokeColor()}, {}};
}

std::optional<ResizeHandle> handleOfSelectionAt(const AnnotationDocument& document, const QPointF& point,
                                                double scale) {
    const auto& id = document.selectedAnnotationID();
    const AnyAnnotation* selected = id ? document.annotation(*id) : nullptr;
    if (!selected)
        return std::nullopt;
    for (const auto& [handle, rect] : selected->handleRects(scale))
        if (contains(rect, point))
            return handle;
    return std::nullopt;
}

template <class Record>
Record styled(const QColor& color, double width) {
    Record record;
    record.strokeColor = color;
    record.strokeWidth = width;
    return record;
}

template <class Box>
AnyAnnotation boxAt(const QPointF& point, const QColor& color, double width) {
    Box box = styled<Box>(color, width);
    box.setBox({point, QSizeF(0, 0)});
    return box;
}

template <class Segment>
AnyAnnotation segmentAt(const QPointF& point, const ToolState& tools) {
    Segment segment = styled<Segment>(tools.strokeColor(), tools.strokeWidth());
    segment.startPoint = segment.endPoint = point;
    return segment;
}

AnyAnnotation strokeAt(const QPointF& point, const ToolState& tools) {
    auto stroke = styled<FreehandAnnotation>(tools.strokeColor(), tools.strokeWidth());
    stroke.points = {point};
    return stroke;
}

// Nothing for the tools that draw nothing by a drag.
std::optional<AnyAnnotation> makeInProgressAnnotation(const ToolState& tools, const QPointF& point) {
    const QColor& color = tools.strokeColor();
    const double width = tools.strokeWidth();
    switch (tools.currentTool()) {
    case ToolType::rectangle:
        return boxAt<RectangleAnnotation>(point, color, width);
    case ToolType::ellipse:
        return boxAt<EllipseAnnotation>(point, color, width);
    case ToolType::arrow:
        return segmentAt<ArrowAnnotation>(point, tools);
    case ToolType::line:
        return segmentAt<LineAnnotation>(point, tools);
    case ToolType::pen:
        return strokeAt(point, tools);
    case ToolType::highlight:
        return boxAt<HighlightAnnotation>(point, systemColor(SystemColor::yellow), fixedStrokeWidth);
    case ToolType::blur:
        return boxAt<BlurAnnotation>(point, systemColor(SystemColor::gray), fixedStrokeWidth);
    case ToolType::select:
    case ToolType::crop:
    case ToolType::text:
    case ToolType::number:
        break;
    }
    return std::nullopt;
}

// A record dragged from one point to another: the box between them, the segment, or one more point.
struct DragTo {
    QPointF start;
    QPointF point;

    void operator()(BoxInk& box) const { box.setBox(rectBetween(start, point)); }
    void operator()(SegmentInk& segment) const { segment.endPoint = point; }
    void operator()(FreehandAnnotation& stroke) const { stroke.points.append(point); }
    void operator()(Ink&) const {}
};

template <class Record>
bool dragIf(AnyAnnotation& annotation, const DragTo& drag) {
    auto* record = annotation.as<Record>();
    if (record)
        drag(*record);
    return record != nullptr;
}

} // namespace

std::optional<TextRequest> CanvasInteraction::mouseDown(AnnotationDocument& document, ToolState& tools,
                                                        const QPointF& point, double scale,
                                                        ClickCount clicks) {
    reset(); // the release before may have gone elsewhere, to a dialog that came up meanwhile
    dragStart = point;
    switch (tools.currentTool()) {
    case ToolType::select:
        return pressToSelect(document, point, scale, clicks);
    case ToolType::text: {
        const TextAnnotation* text = textAnnotationAt(document, point, scale);
        return text ? editAgain(*text) : newText(tools, point);
    }
    case ToolType::number:
        placeNumber(document, tools, point);
        break;
    default:
        state.kind = InteractionState::Kind::drawing;
        inProgress = makeInProgressAnnotation(tools, point);
        break;
    }
    return std::nullopt;
}

std::optional<TextRequest> CanvasInteraction::pressToSelect(AnnotationDocument& document,
                                                            const QPointF& point, double scale,
                                                            ClickCount clicks) {
    if (clicks == ClickCount::Double)
        if (const TextAnnotation* text = textAnnotationAt(document, point, scale))
            return editAgain(*text);
    if (const auto handle = handleOfSelectionAt(document, point, scale)) {
        document.pushUndoSnapshot(); // the whole drag is one step
        state = {InteractionState::Kind::resizing, *handle};
        return std::nullopt;
    }
    const bool hit = document.selectAnnotation(point, hitReach / scale).has_value();
    state.kind = hit ? InteractionState::Kind::moving : InteractionState::Kind::idle;
    return std::nullopt;
}

void CanvasInteraction::placeNumber(AnnotationDocument& document, const ToolState& tools,
                                    const QPointF& point) {
    auto badge = styled<NumberAnnotation>(tools.strokeColor(), fixedStrokeWidth);
    badge.number = document.takeNumber();
    badge.zIndex = document.takeZIndex(); // adding takes another one
    badge.center = point;
    badge.radius = badgeRadius;
    document.add(badge);
}

void CanvasInteraction::mouseDragged(AnnotationDocument& document, const QPointF& point) {
    switch (state.kind) {
    case InteractionState::Kind::moving:
        document.moveSelected(point.x() - dragStart.x(), point.y() - dragStart.y());
        dragStart = point;
        break;
    case InteractionState::Kind::resizing:
        document.resizeSelected(state.handle, point);
        break;
    case InteractionState::Kind::drawing:
        updateInProgress(point);
        break;
    case InteractionState::Kind::idle:
        break;
    }
}

void CanvasInteraction::updateInProgress(const QPointF& point) {
    if (!inProgress)
        return;
    const DragTo drag{dragStart, point};
    dragIf<RectangleAnnotation>(*inProgress, drag) || dragIf<EllipseAnnotation>(*inProgress, drag) ||
        dragIf<HighlightAnnotation>(*inProgress, drag) || dragIf<BlurAnnotation>(*inProgress, drag) ||
        dragIf<ArrowAnnotation>(*inProgress, drag) || dragIf<LineAnnotation>(*inProgress, drag) ||
        dragIf<FreehandAnnotation>(*inProgress, drag);
}

void CanvasInteraction::mouseUp(AnnotationDocument& document) {
    if (state.kind == InteractionState::Kind::drawing && inProgress) {
        AnyAnnotation finished = *std::exchange(inProgress, std::nullopt);
        // Asked once, of the base image alone; an image that can't say leaves the marker a light page's.
        if (auto* highlight = finished.as<HighlightAnnotation>())
            highlight->backdropIsDark =
                isDarkBackdrop(document.baseImage(), highlight->box()).value_or(highlight->backdropIsDark);
        document.add(std::move(finished));
    }
    state.kind = InteractionState::Kind::idle;
}

void CanvasInteraction::reset() {
    state = {};
    inProgress.reset();
}

} // namespace marrowfin::editor
