// What the editor's chrome offers, in the order in which it stands there: tools, colours, stroke widths. View
// points, but for a width's value, which is image points. Any thread.
#pragma once

#include "annotation/ToolType.h"

#include <QColor>
#include <QString>
#include <vector>

namespace marrowfin::editor {

struct ToolRow {
    annotation::ToolType tool;
    QString title;
    QString symbol;
};
// From the top of the palette; a separator stands between groups.
const std::vector<std::vector<ToolRow>>& toolGroups();
// "Select (V)".
QString toolTip(const ToolRow& row);

struct SwatchRow {
    QColor color; // as ink wears it, whatever the appearance
    QString name;
};
const std::vector<SwatchRow>& swatches();

struct WidthRow {
    double value;
    double dotDiameter;
    QString name;
};
const std::vector<WidthRow>& strokeWidths();
// "Thin — 2 pt".
QString toolTip(const WidthRow& row);

// Ink whose colour is chosen in the style bar, and ink whose width is, too.
bool takesStrokeColor(annotation::ToolType tool);
bool takesStrokeWidth(annotation::ToolType tool);

} // namespace marrowfin::editor
