// What the controls of the editor's chrome show of the model.
#include "editor/EditorChrome.h"

#include "annotation/AnnotationDocument.h"
#include "annotation/CropGeometry.h"
#include "annotation/ToolState.h"
#include "chrome/EditorChipButton.h"
#include "chrome/EditorGlyphButton.h"
#include "chrome/EditorLabelButton.h"
#include "chrome/EditorSlabView.h"
#include "chrome/EditorSwatchButton.h"
#include "chrome/EditorWidthButton.h"
#include "chrome/SlabVisibility.h"
#include "editor/EditorTables.h"
#include "editor/EditorTexts.h"
#include "editor/SecondaryLabel.h"
#include "editor/StatusChipView.h"

#include <cmath>

namespace marrowfin::editor {

using namespace annotation;

using namespace chrome;

namespace {

constexpr double dimmedHistory = 0.35;
constexpr double dimmedWidth = 0.3;
constexpr double dimmedApply = 0.4;

// Alpha isn't compared; a colour that can't be told in red, green and blue equals only itself.
bool sameColor(const QColor& a, const QColor& b) {
    constexpr float tolerance = 0.001F;
    if (!a.isValid() || !b.isValid())
        return a == b;
    const QColor p = a.toRgb();
    const QColor q = b.toRgb();
    return std::abs(p.redF() - q.redF()) < tolerance && std::abs(p.greenF() - q.greenF()) < tolerance &&
           std::abs(p.blueF() - q.blueF()) < tolerance;
}

} // namespace

void EditorChrome::giveKeyboardBack(const QWidget& from) const {
    const QWidget* focused = root.window()->focusWidget();
    if (focused && (focused == &from || from.isAncestorOf(focused)))
        root.setFocus();
}

void EditorChrome::enable(EditorButton& button, bool enabled, double dimmed) const {
    if (!enabled)
        giveKeyboardBack(button);
    button.setEnabled(enabled);
    button.setAlphaValue(enabled ? 1.0 : dimmed);
}

void EditorChrome::show(EditorSlabView& slab, bool visible) const {
    if (isSlabVisible(slab) == visible)
        return;
    if (!visible)
        giveKeyboardBack(slab);
    setSlabVisible(slab, visible);
}

void EditorChrome::showTool(const ToolState& tools) const {
    for (const auto& [tool, button] : toolButtons)
        button->setSelectedTool(tool == tools.currentTool());
}

void EditorChrome::showStyle(const ToolState& tools) const {
    const bool ink = takesStrokeColor(tools.currentTool());
    show(*styleBar, ink);
    if (!ink)
        return; // the controls keep their last state while the bar leaves
    bool isCustom = true;
    for (EditorSwatchButton* swatch : swatchButtons) {
        swatch->setCurrent(sameColor(swatch->swatchColor(), tools.strokeColor()));
        isCustom = isCustom && !swatch->isCurrent();
        enable(*swatch, true, 1.0);
    }
    customColorButton->setSelectedTool(isCustom);
    enable(*customColorButton, true, 1.0);
    const bool stroked = takesStrokeWidth(tools.currentTool());
    for (EditorWidthButton* width : widthButtons) {
        width->setCurrent(stroked && width->value() == tools.strokeWidth());
        enable(*width, stroked, dimmedWidth);
    }
}

void EditorChrome::showHistory(const AnnotationDocument& document) const {
    enable(*undoButton, !document.undoStack().isEmpty(), dimmedHistory);
    enable(*redoButton, !document.redoStack().isEmpty(), dimmedHistory);
}

void EditorChrome::showStatus(const AnnotationDocument& document) const {
    statusChip->setText(statusText(document.baseImage(), document.annotations().size()));
}

void EditorChrome::showCrop(const ToolState& tools, const AnnotationDocument& document) const {
    show(*cropBar, tools.currentTool() == ToolType::crop);
    for (const auto& [aspect, chip] : aspectButtons)
        chip->setCurrent(aspect == tools.cropAspect());
    const std::optional<QRectF>& crop = tools.cropRect();
    const bool ready =
        crop && crop->width() >= minimumCommittedCrop && crop->height() >= minimumCommittedCrop;
    cropSizeLabel->setTextWithin(ready ? cropSizeText(document.baseImage(), *crop)
                                       : QStringLiteral("Drag to crop"));
    enable(*cropApplyButton, ready, dimmedApply);
}

} // namespace marrowfin::editor
