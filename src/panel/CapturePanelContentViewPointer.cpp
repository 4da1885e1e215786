// What the pointer does to a card: hover, click, drag, swipe.
#include "panel/CapturePanelContentView.h"

#include "panel/CardDrag.h"
#include "panel/PanelLayout.h"
#include "settings/HintCounters.h"

#include <QMouseEvent>
#include <QPointer>

namespace marrowfin::panel {

using namespace settings;

namespace {
const QRectF hoverArea(QPointF(haloLeft, haloBottom), cardSize);
constexpr double dragDistance = 4;
} // namespace

void CapturePanelContentView::pointerHover(bool entered) {
    if (hovered == entered)
        return;
    setHovered(entered, HoverSource::Pointer);
    actions.hoverChanged(entered);
}

void CapturePanelContentView::pointerAt(const QPointF& position) {
    pointerHover(contains(hoverArea, host.toLayer(position)));
}

void CapturePanelContentView::enterEvent(QEnterEvent* event) {
    pointerAt(event->position());
}

void CapturePanelContentView::leaveEvent(QEvent*) {
    if (!dragging)
        pointerHover(false);
}

void CapturePanelContentView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !contains(hoverArea, host.toLayer(event->position())))
        return;
    pressPosition = event->position();
    dragStarted = false;
}

void CapturePanelContentView::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton)
        pointerAt(event->position());
    if (!(event->buttons() & Qt::LeftButton) || !pressPosition || dragStarted)
        return;
    if (distance(event->position(), *pressPosition) <= dragDistance)
        return;
    dragStarted = true;
    beginDrag();
}

void CapturePanelContentView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const bool clicked = pressPosition && !dragStarted;
    pressPosition.reset();
    if (clicked)
        actions.openEditor();
}

void CapturePanelContentView::beginDrag() {
    const std::optional<QString> file = exported.file();
    if (!file)
        return;
    const CardDrag drag{*file, {thumbnail.sharp, host.toWidget(captureFrame()), *pressPosition}};
    actions.dragBegan();
    dragging = true;
    const QPointer<CapturePanelContentView> self(this);
    const Drop drop = runCardDrag(*this, drag);
    if (!self)
        return;
    dragging = false;
    pressPosition.reset();
    if (drop == Drop::Completed)
        HintCounters().countCompletedDragOut();
    actions.dragEnded(drop, drag.preview);
}

void CapturePanelContentView::scrolled(const platform::ScrollStep& step) {
    if (step.phase == platform::ScrollPhase::Began)
        swipe.begin();
    if (step.phase != platform::ScrollPhase::Changed)
        return;
    if (const std::optional<int> side = swipe.move(step.delta))
        actions.swipe(*side * swipeDistance);
}

} // namespace marrowfin::panel
