// The texts of the chrome, as they are read.
#include "RootFixture.h"

#include "editor/EditorTables.h"
#include "editor/EditorTexts.h"

namespace marrowfin::editor {

using namespace annotation;
using namespace imaging;
namespace {

class Texts : public RootFixture {
protected:
    static QString toolTipOf(const QWidget* control) { return control->toolTip(); }
};

TEST_F(Texts, ToolsNameTheirKeys) {
    const std::map<ToolType, const char*> tips{
        {ToolType::select, "Select (V)"},
        {ToolType::crop, "Crop (C)"},
        {ToolType::rectangle, "Rectangle (R)"},
        {ToolType::ellipse, "Ellipse (E)"},
        {ToolType::arrow, "Arrow (A)"},
        {ToolType::line, "Line (L)"},
        {ToolType::pen, "Pen (P)"},
        {ToolType::highlight, "Highlight (H)"},
        {ToolType::blur, "Blur (B)"},
        {ToolType::text, "Text (T)"},
        {ToolType::number, "Number (N)"},
    };
    for (const auto& [tool, tip] : tips)
        EXPECT_EQ(toolTipOf(controls().toolButtons.at(tool)), QString::fromUtf8(tip));
}

TEST_F(Texts, SwatchesAndWidthsNameWhatTheyAre) {
    QStringList swatches;
    for (const QWidget* swatch : controls().swatchButtons)
        swatches.append(swatch->toolTip());
    EXPECT_EQ(swatches.join(u' '), "Red Orange Yellow Green Blue Purple White Black");
    QStringList widths;
    for (const chrome::EditorWidthButton* width : controls().widthButtons)
        widths.append(
            QStringLiteral("%1 %2 %3").arg(width->toolTip()).arg(width->value()).arg(width->dotDiameter()));
    EXPECT_EQ(widths, (QStringList{QStringLiteral("Thin — 2 pt 2 4"), QStringLiteral("Regular — 3 pt 3 6"),
                                   QStringLiteral("Thick — 5 pt 5 9"), QStringLiteral("Heavy — 8 pt 8 12")}));
    EXPECT_EQ(toolTipOf(controls().customColorButton), "Custom Color");
}

TEST_F(Texts, SwatchesShowTheInkOfTheLightTableAlsoInTheDark) {
    desktop.appearance.setColorScheme(ColorScheme::Dark);
    EXPECT_EQ(controls().swatchButtons[0]->swatchColor(), systemColor(SystemColor::red, ColorScheme::Light));
}

TEST_F(Texts, ActionsSayWhatTheyDo) {
    EXPECT_EQ(toolTipOf(controls().undoButton), QStringLiteral("Undo (⌘Z)"));
    EXPECT_EQ(toolTipOf(controls().redoButton), QStringLiteral("Redo (⇧⌘Z)"));
    EXPECT_EQ(toolTipOf(controls().pinButton), "Float on top of every window");
    EXPECT_EQ(toolTipOf(controls().copyButton), "Copy the annotated image");
    EXPECT_EQ(toolTipOf(controls().saveButton), QStringLiteral("Save as PNG or JPEG (⌘S)"));
    EXPECT_EQ(toolTipOf(controls().cropCancelButton), "Cancel crop (Escape)");
    EXPECT_EQ(toolTipOf(controls().cropApplyButton), "Apply crop (Return)");
    EXPECT_EQ(controls().pinButton->text(), "Pin");
    EXPECT_EQ(controls().copyButton->text(), "Copy");
    EXPECT_EQ(controls().saveButton->text(), QStringLiteral("Save…"));
    EXPECT_EQ(controls().cropCancelButton->text(), "Cancel");
    EXPECT_EQ(controls().cropApplyButton->text(), "Apply");
    EXPECT_FALSE(controls().pinButton->isProminent());
    EXPECT_FALSE(controls().copyButton->isProminent());
    EXPECT_FALSE(controls().cropCancelButton->isProminent());
    EXPECT_TRUE(controls().saveButton->isProminent());
    EXPECT_TRUE(controls().cropApplyButton->isProminent());
}

TEST_F(Texts, ChipsSayTheirShape) {
    QStringList titles;
    for (const CropAspect aspect : allCropAspects)
        titles.append(controls().aspectButtons.at(aspect)->text() +
                      controls().aspectButtons.at(aspect)->toolTip());
    EXPECT_EQ(titles.join(u' '), "Free Original 1:1 16:9 4:3 3:2");
}

TEST(StatusText, CountsOnlyInkThatIsThere) {
    const Image image = Image::captured(QImage(1920, 1080, QImage::Format_RGB32));
    EXPECT_EQ(statusText(image, 0), QStringLiteral("1920 × 1080 px"));
    EXPECT_EQ(statusText(image, 3), QStringLiteral("1920 × 1080 px · 3"));
    EXPECT_EQ(statusText(Image(), 3), QString());
}

TEST(StatusText, IsInPixelsOfTheImage) {
    const Image dense = Image::withSize(QImage(600, 400, QImage::Format_RGB32), QSizeF(300, 200));
    EXPECT_EQ(statusText(dense, 0), QStringLiteral("600 × 400 px"));
}

TEST(CropSizeText, ConvertsPointsToPixelsOfTheImage) {
    const Image dense = Image::withSize(QImage(600, 500, QImage::Format_RGB32), QSizeF(300, 200));
    EXPECT_EQ(cropSizeText(dense, QRectF(10, 10, 100.3, 50)), QStringLiteral("201 × 125 px"));
    const Image plain = Image::captured(QImage(640, 400, QImage::Format_RGB32));
    EXPECT_EQ(cropSizeText(plain, QRectF(0, 0, 10.5, 10.4)), QStringLiteral("11 × 10 px"));
}

TEST(CropSizeText, IsEmptyWithoutPixelsOrSize) {
    EXPECT_EQ(cropSizeText(Image(), QRectF(0, 0, 10, 10)), QString());
    const Image flat = Image::withSize(QImage(10, 10, QImage::Format_RGB32), QSizeF(10, 0));
    EXPECT_EQ(cropSizeText(flat, QRectF(0, 0, 10, 10)), QString());
}

} // namespace
} // namespace marrowfin::editor
