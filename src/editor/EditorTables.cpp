#include "editor/EditorTables.h"

#include "base/Shared.h"
#include "base/SystemColors.h"

namespace marrowfin::editor {

using namespace annotation;

namespace {

struct Tables {
    std::vector<std::vector<ToolRow>> tools{
        {
            {ToolType::select, QStringLiteral("Select"), QStringLiteral("cursorarrow")},
            {ToolType::crop, QStringLiteral("Crop"), QStringLiteral("crop")},
        },
        {
            {ToolType::rectangle, QStringLiteral("Rectangle"), QStringLiteral("rectangle")},
            {ToolType::ellipse, QStringLiteral("Ellipse"), QStringLiteral("circle")},
            {ToolType::arrow, QStringLiteral("Arrow"), QStringLiteral("arrow.up.right")},
            {ToolType::line, QStringLiteral("Line"), QStringLiteral("line.diagonal")},
            {ToolType::pen, QStringLiteral("Pen"), QStringLiteral("scribble")},
        },
        {
            {ToolType::highlight, QStringLiteral("Highlight"), QStringLiteral("highlighter")},
            {ToolType::blur, QStringLiteral("Blur"), QStringLiteral("drop")},
        },
        {
            {ToolType::text, QStringLiteral("Text"), QStringLiteral("textformat")},
            {ToolType::number, QStringLiteral("Number"), QStringLiteral("1.circle")},
        },
    };
    std::vector<SwatchRow> swatches{
        {systemColor(SystemColor::red), QStringLiteral("Red")},
        {systemColor(SystemColor::orange), QStringLiteral("Orange")},
        {systemColor(SystemColor::yellow), QStringLiteral("Yellow")},
        {systemColor(SystemColor::green), QStringLiteral("Green")},
        {systemColor(SystemColor::blue), QStringLiteral("Blue")},
        {systemColor(SystemColor::purple), QStringLiteral("Purple")},
        {systemColor(SystemColor::white), QStringLiteral("White")},
        {systemColor(SystemColor::black), QStringLiteral("Black")},
    };
    std::vector<WidthRow> widths{
        {2, 4, QStringLiteral("Thin")},
        {3, 6, QStringLiteral("Regular")},
        {5, 9, QStringLiteral("Thick")},
        {8, 12, QStringLiteral("Heavy")},
    };
};

} // namespace

const std::vector<std::vector<ToolRow>>& toolGroups() {
    return Shared<Tables>::instance().tools;
}

QString toolTip(const ToolRow& row) {
    return QStringLiteral("%1 (%2)").arg(row.title, keyboardLetter(row.tool).toUpper());
}

const std::vector<SwatchRow>& swatches() {
    return Shared<Tables>::instance().swatches;
}

const std::vector<WidthRow>& strokeWidths() {
    return Shared<Tables>::instance().widths;
}

QString toolTip(const WidthRow& row) {
    return QStringLiteral("%1 — %2 pt").arg(row.name).arg(static_cast<int>(row.value));
}

bool takesStrokeColor(ToolType tool) {
    return takesStrokeWidth(tool) || tool == ToolType::text || tool == ToolType::number;
}

bool takesStrokeWidth(ToolType tool) {
    switch (tool) {
    case ToolType::rectangle:
    case ToolType::ellipse:
    case ToolType::arrow:
    case ToolType::line:
    case ToolType::pen:
        return true;
    case ToolType::select:
    case ToolType::crop:
    case ToolType::highlight:
    case ToolType::blur:
    case ToolType::text:
    case ToolType::number:
        return false;
    }
    return false;
}

} // namespace marrowfin::editor
