#include "chrome/EditorButton.h"

#include "base/ColorAlpha.h"
#include "chrome/ClearPicture.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

#include <QPaintEvent>
#include <QPainter>

namespace marrowfin::chrome {

namespace {
constexpr double hoverSeconds = 0.12;
constexpr double pressedOpacity = 0.6;
const QString ringKey = QStringLiteral("ring");
} // namespace

EditorButton::EditorButton(Hover hoverStyle, const QString& name, const QString& toolTip, QWidget* parent)
    : QAbstractButton(parent), hover(hoverStyle), scheme(platform::services().appearance.colorScheme()),
      host(*this), background(host.root().add()) {
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(name);
    setToolTip(toolTip);
    connect(this, &QAbstractButton::toggled, this, &EditorButton::wasToggled);
    connect(&platform::services().appearance, &platform::Appearance::changed, this, [this] {
        scheme = platform::services().appearance.colorScheme();
        restyle(Change::AtOnce);
    });
}

void EditorButton::setAlphaValue(double value) {
    if (alpha == value)
        return;
    alpha = value;
    update();
}

QColor EditorButton::backgroundColor() const {
    return std::get<QColor>(background.presented(Property::BackgroundColor));
}

void EditorButton::setCornerRadius(double value, CornerCurve curve) {
    radius = value;
    background.setCornerRadius(value, curve);
}

void EditorButton::restyle(Change change) {
    const QColor wanted = wantedBackground();
    if (change == Change::Animated)
        background.addAnimation(ringKey, Animation::basic(Property::BackgroundColor,
                                                          background.presented(Property::BackgroundColor),
                                                          wanted, hoverSeconds, TimingFunction::linear()));
    else
        background.removeAnimation(ringKey);
    background.setValue(Property::BackgroundColor, wanted);
    update();
}

void EditorButton::setChosen(bool chosen) {
    setCheckable(true);
    if (isChecked() == chosen)
        return;
    choosing = true;
    setChecked(chosen);
    choosing = false;
    restyle(Change::AtOnce);
}

// Assistive technology toggles a button past its click. For it too, pressing is only a wish.
void EditorButton::wasToggled() {
    if (choosing)
        return;
    setChosen(!isChecked());
    click();
}

QColor EditorButton::labelColor(double alphaOfLabel) const {
    return withAlpha(color(SystemColor::label), alphaOfLabel);
}

void EditorButton::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (alpha >= 1) {
        paintAll(painter, event->rect());
        return;
    }
    // As one picture: what overlaps must not show through itself.
    QImage whole = clearPicture(size(), painter.deviceTransform().m11());
    QPainter aside(&whole);
    paintAll(aside, rect());
    aside.end();
    painter.setOpacity(alpha);
    painter.drawImage(QPointF(0, 0), whole);
}

void EditorButton::paintAll(QPainter& painter, const QRect& dirty) {
    host.paint(painter, dirty);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (isDown())
        painter.setOpacity(pressedOpacity);
    paintContent(painter);
    painter.restore();
    if (!hasFocus())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    paintFocusRing(painter);
}

void EditorButton::paintFocusRing(QPainter& painter) const {
    const QRectF bounds(rect());
    // The inner line sets the ring off from a background of nearly its own colour.
    painter.strokePath(roundedRect(bounds.adjusted(2.5, 2.5, -2.5, -2.5), radius - 2.5),
                       QPen(color(SystemColor::windowBackground), 1));
    painter.strokePath(roundedRect(bounds.adjusted(1, 1, -1, -1), radius - 1),
                       QPen(color(SystemColor::blue), 2));
}

void EditorButton::resizeEvent(QResizeEvent* event) {
    QAbstractButton::resizeEvent(event);
    host.setSize(size());
    background.setFrame(host.root().bounds());
}

void EditorButton::enterEvent(QEnterEvent*) {
    setHovering(true, Change::Animated);
}

void EditorButton::leaveEvent(QEvent*) {
    setHovering(false, Change::Animated);
}

void EditorButton::hideEvent(QHideEvent* event) {
    QAbstractButton::hideEvent(event);
    setHovering(false, Change::AtOnce);
}

void EditorButton::setHovering(bool value, Change change) {
    if (hover == Hover::Ignored || hovering == value)
        return;
    hovering = value;
    restyle(hover == Hover::AtOnce ? Change::AtOnce : change);
}

} // namespace marrowfin::chrome
