// How the whole editor looks, on pictures that a person has looked at.
#include "RootFixture.h"

#include "base/SystemColors.h"
#include "support/Golden.h"

namespace marrowfin::editor {

using namespace annotation;
using namespace imaging;
namespace {

class EditorLook : public RootFixture {
protected:
    using RootFixture::RootFixture;

    void expectLook(const QString& name, double density = 1) {
        EXPECT_TRUE(matchesGolden(MARROWFIN_TEST_SOURCE_DIR, name, shot(density), rounding));
    }
    // Light and dark, at both densities.
    void expectLooks(const QString& name) {
        for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
            desktop.appearance.setColorScheme(scheme);
            const QString named = scheme == ColorScheme::Dark ? name + QStringLiteral("-dark") : name;
            expectLook(named);
            expectLook(named + QStringLiteral("-2x"), 2);
        }
    }
    // Some of it beneath the plates.
    void addInk() {
        document().add(box<RectangleAnnotation>(40, 60, 200, 120));
        document().add(segment<ArrowAnnotation>({300, 250}, {460, 130}, 5));
        FreehandAnnotation stroke = pen({{-60, 120}, {-30, 200}, {60, 260}, {160, 380}, {280, 395}}, 8);
        stroke.strokeColor = systemColor(SystemColor::purple);
        document().add(stroke);
        document().add(badge({560, 60}, 1));
    }
};

class EachTool : public EditorLook, public testing::WithParamInterface<ToolType> {
protected:
    EachTool() : EditorLook(Image::captured(plain()), {760, 520}) {}
    static QImage plain() {
        QImage pixels(640, 320, QImage::Format_RGB32);
        pixels.fill(QColor(225, 232, 240));
        return pixels;
    }
};
INSTANTIATE_TEST_SUITE_P(Tools, EachTool, testing::ValuesIn(allToolTypes),
                         [](const auto& info) { return rawValue(info.param).toStdString(); });

TEST_P(EachTool, IsCurrent) {
    press(GetParam());
    expectLooks(QStringLiteral("tool-") + rawValue(GetParam()));
}

TEST_F(EditorLook, Ink) {
    addInk();
    press(controls().widthButtons[2]);
    press(controls().swatchButtons[5]);
    expectLooks(QStringLiteral("ink"));
}

TEST_F(EditorLook, CropPending) {
    press(ToolType::crop);
    press(CropAspect::wide);
    dragImage({120, 40}, {500, 100});
    expectLooks(QStringLiteral("crop"));
}

TEST_F(EditorLook, TextBeingTyped) {
    QApplication::setCursorFlashTime(0); // the caret stays
    press(ToolType::text);
    press(controls().swatchButtons[4]);
    clickImage({120, 150});
    type("Typed here");
    expectLooks(QStringLiteral("typing"));
}

class LargerLook : public EditorLook {
protected:
    LargerLook() : EditorLook(Image::captured(page(1000, 600)), {1096, 728}) {}
};

TEST_F(LargerLook, Ink) {
    addInk();
    expectLooks(QStringLiteral("larger"));
}

TEST_F(LargerLook, CropPending) {
    press(ToolType::crop);
    press(CropAspect::wide);
    dragImage({120, 40}, {700, 300});
    expectLooks(QStringLiteral("larger-crop"));
}

} // namespace
} // namespace marrowfin::editor
