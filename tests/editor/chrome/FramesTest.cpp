// Where everything stands, in numbers; frames are y up, from the bottom left.
#include "RootFixture.h"

#include "editor/EditorSeparator.h"

namespace marrowfin::editor {

using namespace annotation;
namespace {

using chrome::placed;

class Frames : public RootFixture {
protected:
    // Y up in the content of a slab.
    static QList<QRectF> separatorsOf(const chrome::EditorSlabView* slab) {
        QList<QRectF> frames;
        for (const auto* line : slab->content()->findChildren<EditorSeparator*>())
            frames.append(placed(*line));
        std::sort(frames.begin(), frames.end(),
                  [](const QRectF& a, const QRectF& b) { return a.y() < b.y(); });
        return frames;
    }
    // Y up in the whole view.
    QRectF standing(const QWidget* widget) { return placed(*widget); }
    void resize(int width, int height) {
        root->resize(width, height);
        settle();
    }
};

TEST_F(Frames, TheCanvasFillsTheViewAndKeepsTheImageOutOfTheChrome) {
    EXPECT_EQ(canvas().geometry(), root->rect());
    EXPECT_EQ(canvas().contentInsets(), QMarginsF(76, 56, 20, 72));
    EXPECT_EQ(canvas().displayScale(), 1.0);
}

TEST_F(Frames, ThePaletteHasElevenToolsInFourGroupsFromTheTop) {
    EXPECT_EQ(controls().palette->size(), QSize(42, 395));
    EXPECT_EQ(placed(*controls().palette->content()), QRectF(6, 6, 30, 383));
    const std::map<ToolType, double> bottoms{
        {ToolType::number, 0},      {ToolType::text, 32},     {ToolType::blur, 75},
        {ToolType::highlight, 107}, {ToolType::pen, 150},     {ToolType::line, 182},
        {ToolType::arrow, 214},     {ToolType::ellipse, 246}, {ToolType::rectangle, 278},
        {ToolType::crop, 321},      {ToolType::select, 353},
    };
    ASSERT_EQ(controls().toolButtons.size(), 11U);
    for (const auto& [tool, y] : bottoms)
        EXPECT_EQ(placed(*controls().toolButtons.at(tool)), QRectF(0, y, 30, 30))
            << rawValue(tool).toStdString();
    EXPECT_EQ(separatorsOf(controls().palette),
              (QList<QRectF>{{4, 68, 22, 1}, {4, 143, 22, 1}, {4, 314, 22, 1}}));
}

TEST_F(Frames, TheStyleBarHasEightColoursOneMoreAndFourWidths) {
    EXPECT_EQ(controls().styleBar->size(), QSize(353, 36));
    EXPECT_EQ(placed(*controls().styleBar->content()), QRectF(9, 5, 335, 26));
    ASSERT_EQ(controls().swatchButtons.size(), 8);
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(placed(*controls().swatchButtons[i]), QRectF(24 * i, 2, 22, 22));
    EXPECT_EQ(placed(*controls().customColorButton), QRectF(192, 1, 24, 24));
    EXPECT_EQ(separatorsOf(controls().styleBar), (QList<QRectF>{{224, 4, 1, 18}}));
    ASSERT_EQ(controls().widthButtons.size(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(placed(*controls().widthButtons[i]), QRectF(233 + 26 * i, 1, 24, 24));
}

TEST_F(Frames, TheActionBarEndsWithItsLastButton) {
    const auto& [pin, copy, save] =
        std::tie(controls().pinButton, controls().copyButton, controls().saveButton);
    EXPECT_EQ(placed(*controls().undoButton), QRectF(0, 0, 26, 26));
    EXPECT_EQ(placed(*controls().redoButton), QRectF(28, 0, 26, 26));
    EXPECT_EQ(separatorsOf(controls().actionBar), (QList<QRectF>{{62, 4, 1, 18}}));
    EXPECT_EQ(placed(*pin), QRectF(69, 0, pin->width(), 26));
    EXPECT_EQ(placed(*copy), QRectF(69 + pin->width() + 6, 0, copy->width(), 26));
    EXPECT_EQ(placed(*save), QRectF(69 + pin->width() + 6 + copy->width() + 6, 0, save->width(), 26));
    const double end = placed(*save).right();
    EXPECT_EQ(placed(*controls().actionBar->content()), QRectF(6, 4, end, 26));
    EXPECT_EQ(controls().actionBar->size(), QSize(static_cast<int>(end) + 12, 34));
}

TEST_F(Frames, TheCropBarHasSixChipsASizeAndTwoButtons) {
    double x = 0;
    for (const CropAspect aspect : allCropAspects) {
        const chrome::EditorChipButton* chip = controls().aspectButtons.at(aspect);
        EXPECT_EQ(placed(*chip), QRectF(x, 2, chip->sizeHint().width() + 12, 22));
        x += chip->width() + 2;
    }
    x += 8;
    EXPECT_EQ(placed(*controls().cropSizeLabel), QRectF(x, 6, 92, 14));
    x += 102;
    EXPECT_EQ(placed(*controls().cropCancelButton), QRectF(x, 0, controls().cropCancelButton->width(), 26));
    x += controls().cropCancelButton->width() + 6;
    EXPECT_EQ(placed(*controls().cropApplyButton), QRectF(x, 0, controls().cropApplyButton->width(), 26));
    x += controls().cropApplyButton->width();
    EXPECT_EQ(placed(*controls().cropBar->content()), QRectF(8, 4, x, 26));
    EXPECT_EQ(controls().cropBar->size(), QSize(static_cast<int>(x) + 16, 34));
}

TEST_F(Frames, EachSlabHasItsRadiusAndFloatsOverTheCanvas) {
    EXPECT_EQ(controls().palette->radius(), 13);
    EXPECT_EQ(controls().styleBar->radius(), 18);
    EXPECT_EQ(controls().actionBar->radius(), 17);
    EXPECT_EQ(controls().cropBar->radius(), 17);
    for (const chrome::EditorSlabView* slab : controls().slabs())
        EXPECT_FALSE(slab->isOverDesktop());
    QList<QObject*> fromTheBottom;
    for (QObject* child : root->children())
        if (child == &canvas() || child == controls().statusChip ||
            controls().slabs().contains(qobject_cast<chrome::EditorSlabView*>(child)))
            fromTheBottom.append(child);
    EXPECT_EQ(fromTheBottom,
              (QList<QObject*>{&canvas(), controls().palette, controls().styleBar, controls().actionBar,
                               controls().cropBar, controls().statusChip}));
}

TEST_F(Frames, TheSlabsStandAtTheirSidesInTheSmallestWindow) {
    const double action = controls().actionBar->width();
    const double crop = controls().cropBar->width();
    EXPECT_EQ(standing(controls().palette), QRectF(14, 63, 42, 395)); // 62.5 goes up
    EXPECT_EQ(standing(controls().styleBar), QRectF(204, 14, 353, 36));
    EXPECT_EQ(standing(controls().actionBar), QRectF(760 - action - 14, 520 - 34 - 8, action, 34));
    EXPECT_EQ(standing(controls().cropBar), QRectF(std::round((760 - crop) / 2), 520 - 34 - 52, crop, 34));
    EXPECT_EQ(standing(controls().statusChip).topLeft(), QPointF(14, 14));
}

TEST_F(Frames, TheSlabsFollowTheWindow) {
    resize(1096, 728);
    const double action = controls().actionBar->width();
    const double crop = controls().cropBar->width();
    EXPECT_EQ(canvas().geometry(), QRect(0, 0, 1096, 728));
    EXPECT_EQ(standing(controls().palette), QRectF(14, 167, 42, 395));
    EXPECT_EQ(standing(controls().styleBar), QRectF(372, 14, 353, 36));
    EXPECT_EQ(standing(controls().actionBar), QRectF(1096 - action - 14, 686, action, 34));
    EXPECT_EQ(standing(controls().cropBar), QRectF(std::round((1096 - crop) / 2), 642, crop, 34));
    EXPECT_EQ(standing(controls().statusChip).topLeft(), QPointF(14, 14));
}

TEST_F(Frames, TheChipIsAsLargeAsItsLabelNeeds) {
    const QLabel& label = controls().statusChip->textLabel();
    EXPECT_EQ(controls().statusChip->size(), label.size() + QSize(16, 8));
    EXPECT_EQ(placed(label).topLeft(), QPointF(8, 4));
    EXPECT_EQ(label.size(), label.sizeHint());
    dragImage({100, 100}, {200, 200});
    EXPECT_EQ(controls().statusChip->size(), label.size() + QSize(16, 8));
    EXPECT_EQ(standing(controls().statusChip).topLeft(), QPointF(14, 14));
}

} // namespace
} // namespace marrowfin::editor
