#include "capture/SelectionView.h"

#include "base/Geometry.h"
#include "base/SystemFonts.h"

#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace marrowfin::capture {

namespace {
constexpr double smallestSide = 5.0; // a drag must exceed it in both directions
constexpr double borderWidth = 2.0;
constexpr double labelDistance = 4.0;

QFont labelFont() {
    return monospacedDigitSystemFont(12, QFont::Medium);
}
QColor black(double alpha) {
    return QColor::fromRgbF(0, 0, 0, static_cast<float>(alpha));
}

// The dashes begin at the bottom left and run along the bottom first.
QPainterPath outlineFromBottomLeft(const QRectF& rect) {
    QPainterPath path(rect.bottomLeft());
    path.lineTo(rect.bottomRight());
    path.lineTo(rect.topRight());
    path.lineTo(rect.topLeft());
    path.closeSubpath();
    return path;
}

} // namespace

SelectionView::SelectionView(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
}

QPointF SelectionView::viewPoint(const QMouseEvent& event) const {
    // The view fills its window; the toolkit rounds an event's place in a view, but not in the window, and
    // half points matter at scale 2. A drag can't leave the screen, also when the pointer does.
    const QPointF place = event.scenePosition();
    return {std::clamp(place.x(), 0.0, static_cast<double>(width())),
            std::clamp(height() - place.y(), 0.0, static_cast<double>(height()))};
}

QRectF SelectionView::toWidget(const QRectF& rect) const {
    return {rect.x(), height() - maxY(rect), rect.width(), rect.height()};
}

void SelectionView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    startPoint = viewPoint(*event);
    isDragging = true;
    updateSelection({});
}

void SelectionView::mouseMoveEvent(QMouseEvent* event) {
    if (startPoint && isDragging)
        updateSelection(rectBetween(*startPoint, viewPoint(*event)));
}

void SelectionView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !isDragging)
        return;
    isDragging = false;
    if (currentRect.width() > smallestSide && currentRect.height() > smallestSide) {
        if (onComplete)
            onComplete(currentRect);
    } else if (onCancel) {
        onCancel();
    }
}

void SelectionView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && onCancel)
        onCancel();
    else
        QWidget::keyPressEvent(event);
}

SelectionView::Label SelectionView::label() const {
    Label made;
    made.text = QStringLiteral("%1 × %2")
                    .arg(static_cast<int>(currentRect.width()))
                    .arg(static_cast<int>(currentRect.height()));
    const QFontMetricsF metrics(labelFont());
    const QSizeF size(metrics.horizontalAdvance(made.text), metrics.height());
    const QRectF above(midX(currentRect) - size.width() / 2, maxY(currentRect) + labelDistance,
                       size.width() + 8, size.height() + 4);
    made.rect = toWidget(above);
    made.textRect = toWidget({above.x() + 4, above.y() + 2, size.width(), size.height()});
    return made;
}

QRegion SelectionView::drawnRegion() const {
    if (isEmpty(currentRect))
        return {};
    const QRectF outer = inset(toWidget(currentRect), -borderWidth, -borderWidth);
    const QRectF inner = inset(toWidget(currentRect), borderWidth, borderWidth);
    // The inside of the selection never changes: a large one costs its border alone.
    const QRegion border =
        QRegion(outer.toAlignedRect()) - QRegion(inner.toAlignedRect().adjusted(1, 1, -1, -1));
    return border + label().rect.toAlignedRect().adjusted(-1, -1, 1, 1);
}

void SelectionView::updateSelection(const QRectF& rect) {
    const QRegion before = drawnRegion();
    currentRect = rect;
    update(before + drawnRegion());
}

void SelectionView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    for (const QRect& part : event->region())
        painter.fillRect(part, black(0.5));
    // No hole is cut into the dim: the selection is told by its border alone.
    if (isDragging && !isEmpty(currentRect))
        drawSelection(painter);
}

void SelectionView::drawSelection(QPainter& painter) const {
    QPen pen(Qt::white, borderWidth);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::MiterJoin);
    pen.setDashPattern({4.0 / borderWidth, 4.0 / borderWidth}); // the toolkit counts dashes in pen widths
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(outlineFromBottomLeft(toWidget(currentRect)));

    const Label shown = label();
    painter.fillRect(shown.rect, black(0.7));
    painter.fillRect(shown.textRect, black(0.7)); // the text's own background
    painter.setFont(labelFont());
    painter.setPen(Qt::white);
    painter.drawText(QPointF(shown.textRect.x(), shown.textRect.y() + QFontMetricsF(labelFont()).ascent()),
                     shown.text);
}

} // namespace marrowfin::capture
