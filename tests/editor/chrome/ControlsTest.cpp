// The controls keep in step with the document and the tool state, after the event that changed them.
#include "RootFixture.h"

#include "base/SystemColors.h"

namespace marrowfin::editor {

using namespace annotation;
using namespace imaging;
namespace {

class Controls : public RootFixture {
protected:
    void choose(ToolType tool) { tools().choose(tool); }
    // What of the bar a person sees.
    double shownAlpha(QWidget* slab) {
        return slab->isVisible() ? chrome::SlabVisibility::of(*slab).rise().alpha() : 0;
    }
    QString selectedTools() {
        QStringList names;
        for (const auto& [tool, button] : controls().toolButtons)
            if (button->isSelectedTool())
                names.append(rawValue(tool));
        return names.join(u' ');
    }
    QString currentSwatches() {
        QStringList names;
        for (const chrome::EditorSwatchButton* swatch : controls().swatchButtons)
            if (swatch->isCurrent())
                names.append(swatch->toolTip());
        if (controls().customColorButton->isSelectedTool())
            names.append(QStringLiteral("custom"));
        return names.join(u' ');
    }
    QString currentWidths() {
        QStringList values;
        for (const chrome::EditorWidthButton* width : controls().widthButtons)
            if (width->isCurrent())
                values.append(QString::number(width->value()));
        return values.join(u' ');
    }
    QString currentChips() {
        QStringList titles;
        for (const auto& [aspect, chip] : controls().aspectButtons)
            if (chip->isCurrent())
                titles.append(chip->text());
        return titles.join(u' ');
    }
};

TEST_F(Controls, AFreshEditorIsOnTheArrowInRedAtThree) {
    EXPECT_EQ(selectedTools(), "arrow");
    EXPECT_EQ(currentSwatches(), "Red");
    EXPECT_EQ(currentWidths(), "3");
    EXPECT_EQ(shownAlpha(controls().styleBar), 1);
    EXPECT_EQ(shownAlpha(controls().cropBar), 0);
    EXPECT_FALSE(controls().undoButton->isEnabled());
    EXPECT_FALSE(controls().redoButton->isEnabled());
    EXPECT_EQ(controls().statusChip->text(), QStringLiteral("640 × 320 px"));
}

TEST_F(Controls, TheCropBarIsNotSeenLeavingAFreshEditor) {
    EditorRootView fresh(document().baseImage());
    fresh.show();
    EXPECT_FALSE(fresh.chrome().cropBar->isVisible());
    EXPECT_EQ(shownAlpha(fresh.chrome().styleBar), 1);
}

TEST_F(Controls, TheStyleBarIsThereForInkWhoseStyleCanBeChosen) {
    const std::set<ToolType> withStyle{ToolType::rectangle, ToolType::ellipse, ToolType::arrow,
                                       ToolType::line,      ToolType::pen,     ToolType::text,
                                       ToolType::number};
    for (const ToolType tool : allToolTypes) {
        press(tool);
        EXPECT_EQ(tools().currentTool(), tool);
        EXPECT_EQ(selectedTools(), rawValue(tool));
        EXPECT_EQ(controls().styleBar->isVisible(), withStyle.contains(tool)) << rawValue(tool).toStdString();
        EXPECT_EQ(controls().cropBar->isVisible(), tool == ToolType::crop) << rawValue(tool).toStdString();
    }
}

TEST_F(Controls, AModelChangeShowsAfterTheCurrentEvent) {
    choose(ToolType::select);
    tools().setStrokeColor(systemColor(SystemColor::blue));
    EXPECT_EQ(selectedTools(), "arrow");
    EXPECT_TRUE(chrome::isSlabVisible(*controls().styleBar));
    QCoreApplication::processEvents();
    EXPECT_EQ(selectedTools(), "select");
    EXPECT_FALSE(chrome::isSlabVisible(*controls().styleBar));
}

TEST_F(Controls, TheStyleBarSinksAndRises) {
    press(ToolType::select);
    EXPECT_TRUE(controls().styleBar->isHidden());
    choose(ToolType::rectangle);
    QCoreApplication::processEvents();
    EXPECT_TRUE(controls().styleBar->isVisible());
    EXPECT_EQ(shownAlpha(controls().styleBar), 0);
    chrome::AnimationClock::shared().advance(0.08);
    EXPECT_GT(shownAlpha(controls().styleBar), 0);
    EXPECT_LT(shownAlpha(controls().styleBar), 1);
    settle();
    EXPECT_EQ(shownAlpha(controls().styleBar), 1);
    choose(ToolType::crop);
    QCoreApplication::processEvents();
    chrome::AnimationClock::shared().advance(0.08);
    EXPECT_TRUE(controls().styleBar->isVisible());
    EXPECT_LT(shownAlpha(controls().styleBar), 1);
    settle();
    EXPECT_TRUE(controls().styleBar->isHidden());
}

TEST_F(Controls, QuickChangesOfToolLeaveTheBarsAsTheLastOneWants) {
    for (const double pause : {0.02, 0.1, 0.14}) {
        for (const ToolType tool : {ToolType::select, ToolType::rectangle}) {
            choose(tool);
            QCoreApplication::processEvents();
            chrome::AnimationClock::shared().advance(pause);
        }
        settle();
        EXPECT_EQ(shownAlpha(controls().styleBar), 1) << pause;
        for (const ToolType tool : {ToolType::crop, ToolType::highlight}) {
            choose(tool);
            QCoreApplication::processEvents();
            chrome::AnimationClock::shared().advance(pause);
        }
        settle();
        EXPECT_TRUE(controls().styleBar->isHidden()) << pause;
        EXPECT_TRUE(controls().cropBar->isHidden()) << pause;
    }
}

TEST_F(Controls, ACropBeingDraggedDoesNotDisturbTheBarThatComes) {
    choose(ToolType::crop);
    QCoreApplication::processEvents();
    chrome::AnimationClock::shared().advance(0.08);
    const double halfway = shownAlpha(controls().cropBar);
    tools().setCropRect(QRectF(0, 0, 50, 50));
    QCoreApplication::processEvents();
    EXPECT_EQ(shownAlpha(controls().cropBar), halfway);
}

TEST_F(Controls, WidthsAreDimmedForTextAndNumbers) {
    for (const ToolType tool : {ToolType::text, ToolType::number}) {
        press(tool);
        EXPECT_EQ(currentWidths(), "");
        for (const chrome::EditorWidthButton* width : controls().widthButtons) {
            EXPECT_FALSE(width->isEnabled());
            EXPECT_EQ(width->alphaValue(), 0.3);
        }
        for (const chrome::EditorSwatchButton* swatch : controls().swatchButtons)
            EXPECT_TRUE(swatch->isEnabled());
        press(controls().swatchButtons[3]);
        EXPECT_EQ(currentSwatches(), "Green");
        press(controls().swatchButtons[0]);
    }
    press(ToolType::line);
    EXPECT_EQ(currentWidths(), "3");
    for (const chrome::EditorWidthButton* width : controls().widthButtons) {
        EXPECT_TRUE(width->isEnabled());
        EXPECT_EQ(width->alphaValue(), 1);
    }
}

TEST_F(Controls, AWidthOfItsOwnLightsNoButton) {
    tools().setStrokeWidth(4);
    settle();
    EXPECT_EQ(currentWidths(), "");
    tools().setStrokeWidth(8);
    settle();
    EXPECT_EQ(currentWidths(), "8");
}

TEST_F(Controls, AColourNearASwatchIsThatSwatch) {
    const QColor blue = systemColor(SystemColor::blue);
    const auto near = [&](float by) {
        tools().setStrokeColor(QColor::fromRgbF(blue.redF() + by, blue.greenF() - by, blue.blueF() - by));
        settle();
        return currentSwatches();
    };
    EXPECT_EQ(near(0), "Blue");
    EXPECT_EQ(near(0.0009F), "Blue");
    EXPECT_EQ(near(0.0012F), "custom");
    QColor translucent = blue;
    translucent.setAlpha(20);
    tools().setStrokeColor(translucent.toHsv());
    settle();
    EXPECT_EQ(currentSwatches(), "Blue");
    tools().setStrokeColor(QColor(1, 2, 3));
    settle();
    EXPECT_EQ(currentSwatches(), "custom");
}

TEST_F(Controls, TheBarKeepsItsStateWhileItIsAway) {
    press(ToolType::highlight);
    tools().setStrokeColor(systemColor(SystemColor::green));
    settle();
    EXPECT_EQ(currentSwatches(), "Red");
    press(ToolType::pen);
    EXPECT_EQ(currentSwatches(), "Green");
}

TEST_F(Controls, UndoAndRedoAreThereWhenThereIsSomething) {
    const auto look = [this] {
        return QStringLiteral("%1 %2 %3 %4")
            .arg(controls().undoButton->isEnabled())
            .arg(controls().undoButton->alphaValue())
            .arg(controls().redoButton->isEnabled())
            .arg(controls().redoButton->alphaValue());
    };
    EXPECT_EQ(look(), "0 0.35 0 0.35");
    dragImage({100, 100}, {200, 200});
    EXPECT_EQ(look(), "1 1 0 0.35");
    press(controls().undoButton);
    EXPECT_EQ(look(), "0 0.35 1 1");
    press(controls().redoButton);
    EXPECT_EQ(look(), "1 1 0 0.35");
}

TEST_F(Controls, APressOnAHandleForgetsWhatCouldBeRedone) {
    press(ToolType::rectangle);
    dragImage({100, 100}, {200, 200});
    dragImage({300, 100}, {400, 200});
    press(controls().undoButton);
    ASSERT_TRUE(controls().redoButton->isEnabled());
    press(ToolType::select);
    clickImage({100, 150});
    clickImage({100, 100});
    settle();
    EXPECT_FALSE(controls().redoButton->isEnabled());
}

TEST_F(Controls, TheChipCountsAndFollowsACrop) {
    dragImage({100, 100}, {200, 200});
    EXPECT_EQ(controls().statusChip->text(), QStringLiteral("640 × 320 px · 1"));
    dragImage({100, 200}, {200, 100});
    EXPECT_EQ(controls().statusChip->text(), QStringLiteral("640 × 320 px · 2"));
    document().crop({50, 50, 300, 200});
    settle();
    EXPECT_EQ(controls().statusChip->text(), QStringLiteral("300 × 200 px · 2"));
    for (int i = 0; i < 3; ++i)
        press(controls().undoButton);
    EXPECT_EQ(controls().statusChip->text(), QStringLiteral("640 × 320 px"));
}

TEST_F(Controls, TheCropBarSaysWhatIsPending) {
    press(ToolType::crop);
    EXPECT_EQ(controls().cropSizeLabel->text(), "Drag to crop");
    EXPECT_FALSE(controls().cropApplyButton->isEnabled());
    EXPECT_EQ(controls().cropApplyButton->alphaValue(), 0.4);
    EXPECT_EQ(currentChips(), "Free");
    dragImage({100, 50}, {300, 200});
    EXPECT_EQ(controls().cropSizeLabel->text(), QStringLiteral("200 × 150 px"));
    EXPECT_TRUE(controls().cropApplyButton->isEnabled());
    EXPECT_EQ(controls().cropApplyButton->alphaValue(), 1);
}

TEST_F(Controls, ACropBelowAPointCannotBeApplied) {
    press(ToolType::crop);
    tools().setCropRect(QRectF(10, 10, 50, 0.9));
    settle();
    EXPECT_EQ(controls().cropSizeLabel->text(), "Drag to crop");
    EXPECT_FALSE(controls().cropApplyButton->isEnabled());
    tools().setCropRect(QRectF(10, 10, 1, 1));
    settle();
    EXPECT_EQ(controls().cropSizeLabel->text(), QStringLiteral("1 × 1 px"));
    EXPECT_TRUE(controls().cropApplyButton->isEnabled());
}

TEST_F(Controls, ALongSizeFitsItsLabel) {
    const QLabel& label = *controls().cropSizeLabel;
    press(ToolType::crop);
    tools().setCropRect(QRectF(0, 0, 12345, 16384));
    settle();
    ASSERT_EQ(label.text(), QStringLiteral("12345 × 16384 px"));
    EXPECT_LE(QFontMetricsF(label.font()).horizontalAdvance(label.text()), label.width() + 0.5);
    EXPECT_LT(label.font().letterSpacing(), 0);
    EXPECT_GT(label.font().letterSpacing(), -1); // closer together, and still apart
    EXPECT_EQ(label.font().pixelSize(), 11);
    tools().setCropRect(std::nullopt);
    settle();
    EXPECT_EQ(label.font().letterSpacing(), 0);
}

TEST_F(Controls, TheCropOfADenseImageIsReadInPixels) {
    EditorRootView dense(Image::withSize(page(640, 320), QSizeF(320, 160)));
    dense.toolState()->setCurrentTool(ToolType::crop);
    dense.toolState()->setCropRect(QRectF(0, 0, 100, 50));
    settle();
    EXPECT_EQ(dense.chrome().cropSizeLabel->text(), QStringLiteral("200 × 100 px"));
}

TEST_F(Controls, TwoEditorsOfOneImageAreIndependent) {
    const Image image = document().baseImage();
    EditorRootView other(image);
    press(ToolType::rectangle);
    press(controls().swatchButtons[4]);
    dragImage({100, 100}, {200, 200});
    document().crop({0, 0, 100, 100});
    settle();
    EXPECT_EQ(other.toolState()->currentTool(), ToolType::arrow);
    EXPECT_EQ(other.toolState()->strokeColor(), systemColor(SystemColor::red));
    EXPECT_TRUE(other.document()->annotations().isEmpty());
    EXPECT_EQ(other.document()->baseImage(), image);
    EXPECT_EQ(other.chrome().statusChip->text(), QStringLiteral("640 × 320 px"));
    EXPECT_FALSE(other.chrome().undoButton->isEnabled());
}

TEST_F(Controls, AClosedEditorHearsNothingMore) {
    auto closing = std::make_unique<EditorRootView>(document().baseImage());
    closing->toolState()->setCurrentTool(ToolType::crop);
    closing->document()->crop({0, 0, 50, 50});
    closing.reset();
    settle();
}

} // namespace
} // namespace marrowfin::editor
