// The slabs of an editor, their controls and the status chip: makes them, says where they stand, and shows on
// them what the model says. It decides nothing; the root view wires the presses. Points, y up. The widgets
// belong to the root view. Main thread.
#pragma once

#include "annotation/CropAspect.h"
#include "annotation/ToolType.h"

#include <QList>
#include <map>

class QWidget;

namespace marrowfin::annotation {
class AnnotationDocument;
class ToolState;
} // namespace marrowfin::annotation

namespace marrowfin::chrome {
class EditorButton;
class EditorChipButton;
class EditorGlyphButton;
class EditorLabelButton;
class EditorSlabView;
class EditorSwatchButton;
class EditorWidthButton;
} // namespace marrowfin::chrome

namespace marrowfin::editor {

class SecondaryLabel;
class StatusChipView;

class EditorChrome {
public:
    // From the bottom of the stack: palette, style bar, action bar, crop bar, chip. The root view's own focus
    // is the canvas's: it gets the keyboard back from a control that goes or is disabled.
    explicit EditorChrome(QWidget& root);

    chrome::EditorSlabView* palette;
    chrome::EditorSlabView* styleBar;
    chrome::EditorSlabView* actionBar;
    chrome::EditorSlabView* cropBar;
    StatusChipView* statusChip;
    std::map<annotation::ToolType, chrome::EditorGlyphButton*> toolButtons;
    QList<chrome::EditorSwatchButton*> swatchButtons; // in the table's order
    QList<chrome::EditorWidthButton*> widthButtons;
    chrome::EditorGlyphButton* customColorButton = nullptr;
    chrome::EditorGlyphButton* undoButton = nullptr;
    chrome::EditorGlyphButton* redoButton = nullptr;
    chrome::EditorLabelButton* pinButton = nullptr;
    chrome::EditorLabelButton* copyButton = nullptr;
    chrome::EditorLabelButton* saveButton = nullptr;
    std::map<annotation::CropAspect, chrome::EditorChipButton*> aspectButtons;
    SecondaryLabel* cropSizeLabel = nullptr;
    chrome::EditorLabelButton* cropCancelButton = nullptr;
    chrome::EditorLabelButton* cropApplyButton = nullptr;

    QList<chrome::EditorSlabView*> slabs() const { return {palette, styleBar, actionBar, cropBar}; }
    // In the order in which Tab reaches them.
    QList<chrome::EditorButton*> buttons() const;

    // Puts the slabs and the chip where they stand in the root view's present size.
    void layOut() const;

    // What the controls show of the model.
    void showTool(const annotation::ToolState& tools) const;
    void showStyle(const annotation::ToolState& tools) const;
    void showHistory(const annotation::AnnotationDocument& document) const;
    void showStatus(const annotation::AnnotationDocument& document) const;
    void showCrop(const annotation::ToolState& tools, const annotation::AnnotationDocument& document) const;

private:
    void buildPalette();
    void buildStyleBar();
    void buildActionBar();
    void buildCropBar();
    // The toolkit would hand the keyboard to the next control, and a space meant for one would press another.
    void giveKeyboardBack(const QWidget& from) const;
    void enable(chrome::EditorButton& button, bool enabled, double dimmed) const;
    void show(chrome::EditorSlabView& slab, bool visible) const;

    QWidget& root;
};

} // namespace marrowfin::editor
