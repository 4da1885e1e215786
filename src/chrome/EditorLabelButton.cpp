#include "chrome/EditorLabelButton.h"

#include "chrome/ButtonTitle.h"

#include <QPainter>
#include <cmath>

namespace marrowfin::chrome {

namespace {
constexpr double symbolPointSize = 11.5;
constexpr double symbolGap = 6;
constexpr double endRoom = 22; // both ends together

QColor blendedTowardWhite(const QColor& color, float part) {
    const auto mixed = [part](float channel) { return channel + (1 - channel) * part; };
    return QColor::fromRgbF(mixed(color.redF()), mixed(color.greenF()), mixed(color.blueF()));
}
} // namespace

EditorLabelButton::EditorLabelButton(const QString& title, const QString& symbol, Prominence prominent,
                                     const QString& toolTip, QWidget* parent)
    : EditorButton(Hover::Animated, title, toolTip, parent), prominence(prominent) {
    setText(title);
    setFont(systemFont(12, isProminent() ? QFont::DemiBold : QFont::Medium));
    if (!symbol.isEmpty())
        picture.emplace(symbol, symbolPointSize, SymbolWeight::Medium);
    restyle(Change::AtOnce);
}

QSize EditorLabelButton::sizeHint() const {
    return titleSize(*this);
}

void EditorLabelButton::fitToHeight(double height) {
    double width = titleSize(*this).width() + endRoom;
    if (picture)
        width += picture->side() + symbolGap;
    resize(static_cast<int>(std::ceil(width)), static_cast<int>(std::lround(height)));
    setCornerRadius(height / 2);
}

QColor EditorLabelButton::wantedBackground() const {
    if (!isProminent())
        return labelColor(isHovering() ? 0.12 : 0.05);
    const QColor accent = color(SystemColor::accentGround);
    return isHovering() ? blendedTowardWhite(accent, 0.12F) : accent;
}

void EditorLabelButton::paintContent(QPainter& painter) {
    const QColor tint = color(isProminent() ? SystemColor::white : SystemColor::label);
    QRectF room(rect());
    if (picture) {
        const double together = titleWidth(*this) + picture->side() + symbolGap;
        const double left = room.center().x() - together / 2;
        picture->paintCentered(painter, {left + picture->side() / 2, room.center().y()}, tint);
        room.setLeft(left + picture->side() + symbolGap);
        room.setWidth(titleWidth(*this));
    }
    paintTitle(painter, *this, room, tint);
}

} // namespace marrowfin::chrome
