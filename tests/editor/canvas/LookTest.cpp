// How the canvas looks, on pictures that a person has looked at.
#include "CanvasFixture.h"

#include "base/SystemColors.h"
#include "support/Golden.h"

namespace marrowfin::editor {

using namespace annotation;
namespace {

class CanvasLook : public CanvasFixture {
protected:
    CanvasLook() : CanvasFixture(page(1280, 800), {760, 520}) {
        canvas->setContentInsets({76, 56, 20, 72});
        addOneOfEach();
    }
    void addOneOfEach() {
        document.add(box<RectangleAnnotation>(80, 80, 240, 160));
        document.add(box<EllipseAnnotation>(400, 60, 240, 180));
        document.add(segment<ArrowAnnotation>({420, 300}, {640, 520}, 6));
        document.add(segment<LineAnnotation>({120, 640}, {600, 700}, 5));
        document.add(pen({{700, 100}, {760, 140}, {820, 90}, {900, 200}, {1000, 160}}, 8));
        document.add(text({720, 620}, QStringLiteral("Two lines of\ntext"), 48));
        document.add(box<BlurAnnotation>(680, 260, 240, 180));
        HighlightAnnotation marker = box<HighlightAnnotation>(100, 300, 260, 90);
        marker.strokeColor = systemColor(SystemColor::yellow);
        document.add(marker);
        document.add(badge({1100, 400}, 7));
    }
    void expectLook(const char* name, double density = 1) {
        EXPECT_TRUE(
            matchesGolden(MARROWFIN_TEST_SOURCE_DIR, QString::fromLatin1(name), shot(density), rounding));
    }
};

TEST_F(CanvasLook, OneOfEach) {
    expectLook("one-of-each");
    expectLook("one-of-each-2x", 2);
}

TEST_F(CanvasLook, Dark) {
    desktop.appearance.setColorScheme(ColorScheme::Dark);
    expectLook("one-of-each-dark");
}

TEST_F(CanvasLook, Selected) {
    choose(ToolType::select);
    click({80, 160});
    expectLook("selected");
}

TEST_F(CanvasLook, CropPending) {
    choose(ToolType::crop);
    tools.setCropAspect(CropAspect::wide);
    drag({240, 120}, {900, 400});
    expectLook("crop-pending");
    expectLook("crop-pending-2x", 2);
}

TEST_F(CanvasLook, TextBeingTyped) {
    choose(ToolType::text);
    click({730, 610});
    ASSERT_TRUE(canvas->textEditor());
    type(QStringLiteral(", and more"));
    key(Qt::Key_Left, Qt::ShiftModifier | Qt::ControlModifier);
    expectLook("text-being-typed");
    expectLook("text-being-typed-2x", 2);
}

} // namespace
} // namespace marrowfin::editor
