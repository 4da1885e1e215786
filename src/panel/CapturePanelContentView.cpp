#include "panel/CapturePanelContentView.h"

#include "base/SystemColors.h"
#include "panel/PanelLayout.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolButton>

namespace marrowfin {

namespace {
const QRectF cardRect(haloLeft, haloTop, cardSize.width(), cardSize.height());
constexpr double cardRadius = 18;
} // namespace

CapturePanelContentView::CapturePanelContentView(const Image& image, PanelActions wishes)
    : actions(std::move(wishes)) {
    setAttribute(Qt::WA_TranslucentBackground);
    resize(windowSize.toSize());
    setMouseTracking(true);
    setAccessibleName(QStringLiteral("Capture"));
    const QSizeF room = inset(cardRect, 10, 10).size();
    if (!image.isNull() && image.size().width() > 0 && image.size().height() > 0) {
        const double scale =
            std::min({room.width() / image.size().width(), room.height() / image.size().height(), 1.0});
        fitted = (image.size() * scale).toSize().expandedTo({1, 1});
        thumbnail = image.pixels().scaled(fitted * 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    closeButton = new QToolButton(this);
    closeButton->setText(QStringLiteral("\u2715"));
    closeButton->setAutoRaise(true);
    closeButton->setFocusPolicy(Qt::NoFocus);
    closeButton->setToolTip(QStringLiteral("Close"));
    closeButton->setAccessibleName(QStringLiteral("Close"));
    closeButton->setGeometry(QRectF(cardRect.right() - 34, cardRect.top() + 8, 26, 26).toRect());
    connect(closeButton, &QToolButton::clicked, this, [this] { actions.close(); });
}

QRegion CapturePanelContentView::cardRegion() const {
    return QRegion(cardRect.toRect());
}

QRegion CapturePanelContentView::cardOutline() const {
    QPainterPath path;
    path.addRoundedRect(cardRect, cardRadius, cardRadius);
    return QRegion(path.toFillPolygon().toPolygon());
}

void CapturePanelContentView::paintEvent(QPaintEvent*) {
    const bool dark = platform::services().appearance.colorScheme() == ColorScheme::Dark;
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setPen(QColor(dark ? 90 : 200, dark ? 90 : 200, dark ? 90 : 200));
    painter.setBrush(dark ? QColor(40, 40, 40) : QColor(246, 246, 246));
    painter.drawRoundedRect(cardRect.adjusted(0.5, 0.5, -0.5, -0.5), cardRadius, cardRadius);
    if (thumbnail.isNull())
        return;
    QRectF target{QPointF(), QSizeF(fitted)};
    target.moveCenter(cardRect.center());
    painter.drawImage(target, thumbnail);
}

void CapturePanelContentView::mousePressEvent(QMouseEvent* event) {
    pressed = event->button() == Qt::LeftButton;
}

void CapturePanelContentView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && std::exchange(pressed, false))
        actions.openEditor();
}

void CapturePanelContentView::enterEvent(QEnterEvent* event) {
    setHovered(cardRect.contains(event->position()));
}

void CapturePanelContentView::mouseMoveEvent(QMouseEvent* event) {
    setHovered(cardRect.contains(event->position()));
}

void CapturePanelContentView::leaveEvent(QEvent*) {
    setHovered(false);
}

void CapturePanelContentView::setHovered(bool hovered) {
    if (std::exchange(isHovered, hovered) != hovered)
        actions.hoverChanged(hovered);
}

} // namespace marrowfin
