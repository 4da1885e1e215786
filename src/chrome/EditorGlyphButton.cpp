#include "chrome/EditorGlyphButton.h"

namespace marrowfin::chrome {

EditorGlyphButton::EditorGlyphButton(const QString& symbol, const QString& toolTip, double pointSize,
                                     QWidget* parent)
    : EditorButton(Hover::Animated, toolTip, toolTip, parent),
      picture(symbol, pointSize, SymbolWeight::Medium) {
    setCornerRadius(7);
    restyle(Change::AtOnce);
}

QColor EditorGlyphButton::wantedBackground() const {
    if (isSelectedTool())
        return color(SystemColor::accentGround);
    return isHovering() ? labelColor(0.12) : Qt::transparent;
}

void EditorGlyphButton::paintContent(QPainter& painter) {
    picture.paintCentered(painter, QRectF(rect()).center(),
                          color(isSelectedTool() ? SystemColor::white : SystemColor::label));
}

} // namespace marrowfin::chrome
