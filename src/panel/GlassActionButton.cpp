#include "panel/GlassActionButton.h"

#include <QPaintEvent>
#include <QPainter>

namespace marrowfin::panel {

using chrome::Property;

namespace {
constexpr double symbolSize = 12.5;
constexpr double ringSeconds = 0.12;
constexpr double confirmationSeconds = 0.9;
} // namespace

GlassActionButton::GlassActionButton(const QString& symbolName, const QString& name, QWidget* parent)
    : QAbstractButton(parent), symbol(symbolName, symbolSize, chrome::SymbolWeight::Medium),
      checkmark(QStringLiteral("checkmark"), symbolSize, chrome::SymbolWeight::Medium), title(name),
      host(*this), ring(host.root().add()) {
    setFixedSize(QSizeF(side, side).toSize());
    setFocusPolicy(Qt::NoFocus);
    setToolTip(title);
    setAccessibleName(title);
    host.setSize({side, side});
    ring.setFrame({0, 0, side, side});
    ring.setCornerRadius(side / 2, chrome::CornerCurve::Continuous);
}

void GlassActionButton::setColorScheme(ColorScheme value) {
    scheme = value;
    ring.removeAnimation(QStringLiteral("ring"));
    ring.setValue(Property::BackgroundColor, ringColor());
    update();
}

void GlassActionButton::confirm() {
    confirmation.start(confirmationSeconds, [this] {
        setAccessibleName(title);
        update();
    });
    setAccessibleName(QStringLiteral("Done"));
    update();
}

void GlassActionButton::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    host.paint(painter, event->rect());
    if (isDown())
        painter.setOpacity(0.6);
    chrome::SymbolPicture& picture = confirmation.isRunning() ? checkmark : symbol;
    picture.paintCentered(painter, QRectF(rect()).center(), systemColor(SystemColor::label, scheme));
}

void GlassActionButton::enterEvent(QEnterEvent*) {
    showRing(true);
}

void GlassActionButton::leaveEvent(QEvent*) {
    showRing(false);
}

QColor GlassActionButton::ringColor() const {
    QColor color = systemColor(SystemColor::label, scheme);
    color.setAlphaF(hovering ? 0.14F : 0);
    return color;
}

void GlassActionButton::showRing(bool shown) {
    hovering = shown;
    ring.addAnimation(QStringLiteral("ring"),
                      chrome::Animation::basic(Property::BackgroundColor,
                                               ring.presented(Property::BackgroundColor), ringColor(),
                                               ringSeconds, chrome::TimingFunction::linear()));
    ring.setValue(Property::BackgroundColor, ringColor());
}

} // namespace marrowfin::panel
