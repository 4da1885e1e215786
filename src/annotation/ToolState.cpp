#include "annotation/ToolState.h"

#include "base/SystemColors.h"

namespace marrowfin::annotation {

ToolState::ToolState(QObject* parent) : QObject(parent), color(systemColor(SystemColor::red)) {}

void ToolState::choose(ToolType newTool) {
    const ToolType previous = tool;
    setCurrentTool(newTool);
    toolDidChange(previous);
}

void ToolState::setCurrentTool(ToolType newTool) {
    tool = newTool;
    Q_EMIT currentToolSet(newTool);
    Q_EMIT changed();
}

void ToolState::setStrokeColor(const QColor& newColor) {
    color = newColor;
    Q_EMIT changed();
}

void ToolState::setStrokeWidth(double newWidth) {
    width = newWidth;
    Q_EMIT changed();
}

void ToolState::setFontSize(double size) {
    textSize = size;
    Q_EMIT changed();
}

void ToolState::setCropRect(std::optional<QRectF> rect) {
    pendingCrop = rect;
    Q_EMIT changed();
}

void ToolState::setCropAspect(CropAspect newAspect) {
    aspect = newAspect;
    Q_EMIT changed();
}

void ToolState::toolDidChange(ToolType previous) {
    if (previous == ToolType::crop && tool != ToolType::crop)
        setCropRect(std::nullopt);
}

} // namespace marrowfin::annotation
