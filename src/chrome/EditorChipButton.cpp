#include "chrome/EditorChipButton.h"

#include "chrome/ButtonTitle.h"

namespace marrowfin::chrome {

EditorChipButton::EditorChipButton(const QString& title, const QString& toolTip, QWidget* parent)
    : EditorButton(Hover::AtOnce, title, toolTip, parent) {
    setText(title);
    setFont(systemFont(11, QFont::Medium));
    setCornerRadius(6);
    restyle(Change::AtOnce);
}

QSize EditorChipButton::sizeHint() const {
    return titleSize(*this);
}

QColor EditorChipButton::wantedBackground() const {
    if (isCurrent())
        return color(SystemColor::accentGround);
    return isHovering() ? labelColor(0.12) : Qt::transparent;
}

void EditorChipButton::paintContent(QPainter& painter) {
    paintTitle(painter, *this, QRectF(rect()), color(isCurrent() ? SystemColor::white : SystemColor::label));
}

} // namespace marrowfin::chrome
