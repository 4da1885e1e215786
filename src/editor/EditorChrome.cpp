// How the slabs are filled and where they stand.
#include "editor/EditorChrome.h"

#include "chrome/EditorChipButton.h"
#include "chrome/EditorGlyphButton.h"
#include "chrome/EditorLabelButton.h"
#include "chrome/EditorSlabView.h"
#include "chrome/EditorSwatchButton.h"
#include "chrome/EditorWidthButton.h"
#include "chrome/Place.h"
#include "chrome/SlabVisibility.h"
#include "editor/EditorSeparator.h"
#include "editor/EditorTables.h"
#include "editor/SecondaryLabel.h"
#include "editor/StatusChipView.h"

#include <cmath>
#include <ranges>

namespace marrowfin::editor {

using namespace annotation;

using namespace chrome;

namespace {

constexpr double margin = 14;
constexpr double actionBarFromTop = 8;
constexpr double cropBarFromTop = 52;
constexpr double barHeight = 26;
constexpr double labelGap = 6;

EditorSlabView* makeSlab(QWidget& root, double radius, const QString& name) {
    auto* slab = new EditorSlabView(SlabGround::Window, radius, &root);
    slab->setAccessibleName(name);
    return slab;
}

template <class Control>
Control* put(Control* control, const QRectF& frame) {
    place(*control, frame);
    return control;
}

void separate(QWidget* content, const QRectF& frame) {
    put(new EditorSeparator(content), frame);
}

// The frames of a slab's content are y up, so that it has its size before anything is put into it.
void sizeContent(EditorSlabView& slab, double width, double height) {
    slab.content()->resize(static_cast<int>(width), static_cast<int>(height));
}

EditorLabelButton* fitted(EditorLabelButton* button, double x) {
    button->fitToHeight(barHeight);
    return put(button, QRectF(QPointF(x, 0), QSizeF(button->size())));
}

double endOf(const QWidget* control) {
    return placed(*control).right();
}

} // namespace

EditorChrome::EditorChrome(QWidget& view)
    : palette(makeSlab(view, 13, QStringLiteral("Tools"))),
      styleBar(makeSlab(view, 18, QStringLiteral("Style"))),
      actionBar(makeSlab(view, 17, QStringLiteral("Actions"))),
      cropBar(makeSlab(view, 17, QStringLiteral("Crop"))), statusChip(new StatusChipView(&view)), root(view) {
    buildPalette();
    buildStyleBar();
    buildActionBar();
    buildCropBar();
    startSlabHidden(*cropBar);
}

void EditorChrome::buildPalette() {
    constexpr double side = 30;
    constexpr double step = 32;
    QWidget* content = palette->content();
    const auto& groups = toolGroups();
    double height = 0;
    for (const auto& group : groups)
        height += step * static_cast<double>(group.size()) - 2 + (&group == &groups.front() ? 0 : 13);
    sizeContent(*palette, side, height);
    double y = 0;
    for (const auto& group : groups | std::views::reverse) {
        for (const ToolRow& row : group | std::views::reverse) {
            auto* button = new EditorGlyphButton(row.symbol, toolTip(row), 13, content);
            button->setAccessibleName(row.title);
            toolButtons[row.tool] = put(button, {0, y, side, side});
            y += step;
        }
        y -= 2;
        if (&group != &groups.front()) {
            separate(content, {4, y + 6, 22, 1});
            y += 13;
        }
    }
    palette->setContentSize(side, y, 6, 6, 6, 6);
}

void EditorChrome::buildStyleBar() {
    QWidget* content = styleBar->content();
    sizeContent(*styleBar, 0, barHeight);
    double x = 0;
    for (const SwatchRow& row : swatches()) {
        swatchButtons.append(put(new EditorSwatchButton(row.color, row.name, content), QRectF(x, 2, 22, 22)));
        x += 24;
    }
    customColorButton = put(
        new EditorGlyphButton(QStringLiteral("paintpalette"), QStringLiteral("Custom Color"), 11, content),
        QRectF(x, 1, 24, 24));
    x += 32;
    separate(content, {x, 4, 1, 18});
    x += 9;
    for (const WidthRow& row : strokeWidths()) {
        widthButtons.append(put(new EditorWidthButton(toolTip(row), row.value, row.dotDiameter, content),
                                QRectF(x, 1, 24, 24)));
        x += 26;
    }
    styleBar->setContentSize(x - 2, barHeight, 5, 9, 5, 9);
}

void EditorChrome::buildActionBar() {
    QWidget* content = actionBar->content();
    sizeContent(*actionBar, 0, barHeight);
    undoButton = put(new EditorGlyphButton(QStringLiteral("arrow.uturn.backward"),
                                           QStringLiteral("Undo (⌘Z)"), 12, content),
                     {0, 0, 26, 26});
    redoButton = put(new EditorGlyphButton(QStringLiteral("arrow.uturn.forward"),
                                           QStringLiteral("Redo (⇧⌘Z)"), 12, content),
                     {28, 0, 26, 26});
    undoButton->setAccessibleName(QStringLiteral("Undo"));
    redoButton->setAccessibleName(QStringLiteral("Redo"));
    separate(content, {62, 4, 1, 18});
    pinButton = fitted(new EditorLabelButton(QStringLiteral("Pin"), QStringLiteral("pin"), Prominence::Plain,
                                             QStringLiteral("Float on top of every window"), content),
                       69);
    copyButton =
        fitted(new EditorLabelButton(QStringLiteral("Copy"), QStringLiteral("doc.on.doc"), Prominence::Plain,
                                     QStringLiteral("Copy the annotated image"), content),
               endOf(pinButton) + labelGap);
    saveButton = fitted(new EditorLabelButton(QStringLiteral("Save…"), {}, Prominence::Prominent,
                                              QStringLiteral("Save as PNG or JPEG (⌘S)"), content),
                        endOf(copyButton) + labelGap);
    actionBar->setContentSize(endOf(saveButton), barHeight, 4, 6, 4, 6);
}

void EditorChrome::buildCropBar() {
    QWidget* content = cropBar->content();
    sizeContent(*cropBar, 0, barHeight);
    double x = 0;
    for (const CropAspect aspect : allCropAspects) {
        auto* chip = new EditorChipButton(chipTitle(aspect), {}, content);
        const double width = chip->sizeHint().width() + 12;
        aspectButtons[aspect] = put(chip, {x, 2, width, 22});
        x += width + 2;
    }
    x += 8;
    cropSizeLabel = put(new SecondaryLabel(content), {x, 6, 92, 14});
    cropSizeLabel->setAlignment(Qt::AlignCenter);
    x += 102;
    cropCancelButton = fitted(new EditorLabelButton(QStringLiteral("Cancel"), {}, Prominence::Plain,
                                                    QStringLiteral("Cancel crop (Escape)"), content),
                              x);
    cropApplyButton = fitted(new EditorLabelButton(QStringLiteral("Apply"), {}, Prominence::Prominent,
                                                   QStringLiteral("Apply crop (Return)"), content),
                             endOf(cropCancelButton) + labelGap);
    cropBar->setContentSize(endOf(cropApplyButton), barHeight, 4, 8, 4, 8);
}

QList<EditorButton*> EditorChrome::buttons() const {
    QList<EditorButton*> all;
    for (const ToolType tool : allToolTypes)
        all.append(toolButtons.at(tool));
    for (EditorSwatchButton* swatch : swatchButtons)
        all.append(swatch);
    all.append(customColorButton);
    for (EditorWidthButton* width : widthButtons)
        all.append(width);
    for (const CropAspect aspect : allCropAspects)
        all.append(aspectButtons.at(aspect));
    all += {cropCancelButton, cropApplyButton, undoButton, redoButton, pinButton, copyButton, saveButton};
    return all;
}

void EditorChrome::layOut() const {
    const QSizeF room(root.size());
    const auto centered = [](double whole, double part) { return std::round((whole - part) / 2); };
    const auto stand = [](QWidget& widget, double x, double y) {
        place(widget, QRectF(QPointF(x, y), QSizeF(widget.size())));
    };
    stand(*palette, margin, centered(room.height(), palette->height()));
    stand(*styleBar, centered(room.width(), styleBar->width()), margin);
    stand(*actionBar, room.width() - actionBar->width() - margin,
          room.height() - actionBar->height() - actionBarFromTop);
    stand(*cropBar, centered(room.width(), cropBar->width()),
          room.height() - cropBar->height() - cropBarFromTop);
    stand(*statusChip, margin, margin);
}

} // namespace marrowfin::editor
