// What the next press on the canvas will do: the current tool, the style that new ink gets, the pending crop.
// Image points. One belongs to one editor window, shared by its canvas and its chrome; nothing of it is kept
// between editors. Main thread.
#pragma once

#include "annotation/CropAspect.h"
#include "annotation/ToolType.h"

#include <QColor>
#include <QObject>
#include <QRectF>
#include <optional>

namespace marrowfin::annotation {

class ToolState : public QObject {
    Q_OBJECT
public:
    explicit ToolState(QObject* parent = nullptr);

    ToolType currentTool() const { return tool; }
    const QColor& strokeColor() const { return color; }
    double strokeWidth() const { return width; }
    double fontSize() const { return textSize; }
    // None while no crop is drawn.
    const std::optional<QRectF>& cropRect() const { return pendingCrop; }
    CropAspect cropAspect() const { return aspect; }

    // As a person chooses it, with all that a change of tool entails.
    void choose(ToolType tool);
    // Whoever sets the tool calls toolDidChange right after, with the tool it replaced.
    void setCurrentTool(ToolType tool);
    void setStrokeColor(const QColor& color);
    void setStrokeWidth(double width);
    void setFontSize(double size);
    void setCropRect(std::optional<QRectF> rect);
    void setCropAspect(CropAspect aspect);

    // A pending crop doesn't outlive the crop tool; its aspect does.
    void toolDidChange(ToolType previous);

Q_SIGNALS:
    // Any field was set.
    void changed();
    // The tool was set, also to the one it was: choosing a tool in any way ends an open text edit.
    void currentToolSet(marrowfin::annotation::ToolType tool);

private:
    ToolType tool = ToolType::arrow;
    QColor color;
    double width = 3.0;
    double textSize = 24.0;
    std::optional<QRectF> pendingCrop;
    CropAspect aspect = CropAspect::freeform;
};

} // namespace marrowfin::annotation
