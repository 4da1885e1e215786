// The five buttons of the editor's chrome: what they answer to the pointer, the keyboard, the appearance and
// their owner, and whether their labels can be read.
#include "base/SystemFonts.h"
#include "chrome/EditorChipButton.h"
#include "chrome/EditorGlyphButton.h"
#include "chrome/EditorLabelButton.h"
#include "chrome/EditorSwatchButton.h"
#include "chrome/EditorWidthButton.h"
#include "chrome/SlabFixture.h"
#include "support/Contrast.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>
#include <cmath>

namespace marrowfin::chrome {

namespace {
using testsupport::contrast;

const QString pin = QStringLiteral("pin");

QColor labelAt(double alpha, ColorScheme scheme = ColorScheme::Light) {
    QColor label = systemColor(SystemColor::label, scheme);
    label.setAlphaF(static_cast<float>(alpha));
    return label;
}
QColor accent(ColorScheme scheme = ColorScheme::Light) {
    return systemColor(SystemColor::accentGround, scheme);
}
QColor lit(const QColor& color) {
    const auto mixed = [](float channel) { return channel * 0.88F + 0.12F; };
    return QColor::fromRgbF(mixed(color.redF()), mixed(color.greenF()), mixed(color.blueF()));
}
} // namespace

class EditorButtons : public SlabFixture {
protected:
    EditorButtons() {
        floatOver(slab);
        slab.setContentSize(300, 100, 0, 0, 0, 0);
        place(slab, {50, 100, 300, 100});
        for (EditorButton* button : all)
            button->setParent(slab.content());
        glyph.setGeometry(10, 10, 30, 30);
        plainLabel.move(50, 10);
        prominent.move(150, 10);
        swatch.setGeometry(10, 50, 22, 22);
        width.setGeometry(40, 50, 24, 24);
        chip.setGeometry(80, 50, 60, 22);
        plainLabel.fitToHeight(26);
        prominent.fitToHeight(26);
        window.show();
        QApplication::setActiveWindow(&window);
        if (QWidget* first = QApplication::focusWidget())
            first->clearFocus();
    }
    static void expectBackground(const EditorButton& button, const QColor& color) {
        EXPECT_EQ(button.backgroundColor().rgba(), color.rgba());
    }
    // As a mouse does: the window finds out what is there.
    void clickInWindow(const QWidget& widget) {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, inWindow(widget, {8, 8}));
    }
    // A place of the button in the window's picture.
    QPoint inWindow(const QWidget& button, const QPoint& place) const { return button.mapTo(&window, place); }

    EditorSlabView slab{SlabGround::Window, 12, &window};
    EditorGlyphButton glyph{QStringLiteral("rectangle"), QStringLiteral("Rectangle (R)"), 13};
    EditorLabelButton plainLabel{QStringLiteral("Pin"), pin, Prominence::Plain, QStringLiteral("Float")};
    EditorLabelButton prominent{QStringLiteral("Save…"), {}, Prominence::Prominent};
    EditorSwatchButton swatch{Qt::white, QStringLiteral("White")};
    EditorWidthButton width{QStringLiteral("Thick — 5 pt"), 5, 9};
    EditorChipButton chip{QStringLiteral("16:9")};
    const std::vector<EditorButton*> all{&glyph, &plainLabel, &prominent, &swatch, &width, &chip};
};

TEST_F(EditorButtons, AScreenReaderSaysTheToolTipOrTheTitle) {
    EXPECT_EQ(glyph.accessibleName(), QStringLiteral("Rectangle (R)"));
    EXPECT_EQ(plainLabel.accessibleName(), QStringLiteral("Pin"));
    EXPECT_EQ(swatch.accessibleName(), QStringLiteral("White"));
    EXPECT_EQ(width.accessibleName(), QStringLiteral("Thick — 5 pt"));
    EXPECT_EQ(chip.accessibleName(), QStringLiteral("16:9"));
    EXPECT_EQ(glyph.toolTip(), QStringLiteral("Rectangle (R)"));
    EXPECT_EQ(plainLabel.toolTip(), QStringLiteral("Float"));
    EXPECT_EQ(prominent.toolTip(), QString());
    glyph.setSelectedTool(true);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(&glyph)->state().checked);
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(&plainLabel)->state().checkable);
}

TEST_F(EditorButtons, TheToolTipComesUpUnderAPointerThatRests) {
    const QPoint center = glyph.rect().center();
    QHelpEvent rests(QEvent::ToolTip, center, glyph.mapToGlobal(center));
    QApplication::sendEvent(&glyph, &rests);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Rectangle (R)"));
    QToolTip::hideText();
}

TEST_F(EditorButtons, TheLightUnderThePointerFadesIn) {
    expectBackground(glyph, labelAt(0));
    expectBackground(plainLabel, labelAt(0.05));
    expectBackground(prominent, accent());
    for (EditorButton* button :
         {static_cast<EditorButton*>(&glyph), static_cast<EditorButton*>(&plainLabel)}) {
        const int before = button->backgroundColor().alpha();
        pointAt(*button);
        pass(0.06);
        EXPECT_GT(button->backgroundColor().alpha(), before);
        EXPECT_LT(button->backgroundColor().alpha(), labelAt(0.12).alpha());
        pass(0.07);
        expectBackground(*button, labelAt(0.12));
        pointAway(*button);
        pass(0.13);
        EXPECT_EQ(button->backgroundColor().alpha(), before);
    }
    pointAt(prominent);
    pass(0.13);
    EXPECT_NEAR(prominent.backgroundColor().greenF(), lit(accent()).greenF(), 0.005);
    EXPECT_FALSE(AnimationClock::shared().isRunning());
}

TEST_F(EditorButtons, ThePointerLeavingHalfwayFadesFromWhatIsSeen) {
    pointAt(plainLabel);
    pass(0.06);
    const QColor seen = plainLabel.backgroundColor();
    pointAway(plainLabel);
    EXPECT_EQ(plainLabel.backgroundColor(), seen);
}

TEST_F(EditorButtons, AChipLightsUpAtOnce) {
    pointAt(chip);
    expectBackground(chip, labelAt(0.12));
    EXPECT_FALSE(AnimationClock::shared().isRunning());
    pointAway(chip);
    expectBackground(chip, labelAt(0));
}

TEST_F(EditorButtons, TheChosenOneWearsTheAccentAtOnce) {
    glyph.setSelectedTool(true);
    expectBackground(glyph, accent());
    pointAt(glyph);
    pass(1);
    expectBackground(glyph, accent());
    glyph.setSelectedTool(false);
    expectBackground(glyph, labelAt(0.12));
    chip.setCurrent(true);
    expectBackground(chip, accent());
    chip.setCurrent(false);
    expectBackground(chip, labelAt(0));
    EXPECT_FALSE(AnimationClock::shared().isRunning());
}

TEST_F(EditorButtons, ChoosingItIsItsOwnersWork) {
    int clicks = 0;
    QObject::connect(&glyph, &QAbstractButton::clicked, &glyph, [&] { ++clicks; });
    glyph.setSelectedTool(false);
    testsupport::clickMouse(glyph, {15, 15});
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(glyph.isSelectedTool());
    glyph.setSelectedTool(true);
    testsupport::clickMouse(glyph, {15, 15});
    EXPECT_EQ(clicks, 2);
    EXPECT_TRUE(glyph.isSelectedTool());
}

TEST_F(EditorButtons, EveryBackgroundFollowsTheAppearance) {
    pointAt(plainLabel);
    pass(1);
    chip.setCurrent(true);
    glyph.setSelectedTool(true);
    const QImage light = picture();
    useScheme(ColorScheme::Dark);
    EXPECT_FALSE(AnimationClock::shared().isRunning());
    expectBackground(plainLabel, labelAt(0.12, ColorScheme::Dark));
    expectBackground(prominent, accent(ColorScheme::Dark));
    expectBackground(glyph, accent(ColorScheme::Dark));
    expectBackground(chip, accent(ColorScheme::Dark));
    const QImage dark = picture();
    for (const EditorButton* button : all) {
        const QRect place(inWindow(*button, {0, 0}), button->size());
        EXPECT_NE(light.copy(place), dark.copy(place)) << button->accessibleName().toStdString();
    }
}

TEST_F(EditorButtons, ThePressOfAnInactiveWindowAlreadyClicks) {
    QWidget other;
    other.show();
    QApplication::setActiveWindow(&other);
    ASSERT_FALSE(window.isActiveWindow());
    for (EditorButton* button : all) {
        bool clicked = false;
        QObject::connect(button, &QAbstractButton::clicked, button, [&] { clicked = true; });
        clickInWindow(*button);
        EXPECT_TRUE(clicked) << button->accessibleName().toStdString();
    }
}

TEST_F(EditorButtons, APressLeavesTheKeyboardWhereItIs) {
    below.setFocusPolicy(Qt::StrongFocus);
    clickInWindow(below);
    ASSERT_TRUE(below.hasFocus());
    for (EditorButton* button : all) {
        clickInWindow(*button);
        EXPECT_TRUE(below.hasFocus()) << button->accessibleName().toStdString();
    }
}

TEST_F(EditorButtons, TabGoesFromButtonToButtonWithARingAndSpacePresses) {
    ASSERT_TRUE(window.isActiveWindow());
    below.setFocusPolicy(Qt::StrongFocus);
    below.setFocus();
    for (EditorButton* button : all) {
        const QRect place(inWindow(*button, {0, 0}), button->size());
        const QImage before = picture().copy(place);
        testsupport::pressKey(*QApplication::focusWidget(), Qt::Key_Tab);
        ASSERT_EQ(QApplication::focusWidget(), button);
        const QImage focused = picture().copy(place);
        const QColor ring = focused.pixelColor(button->width() / 2, button == &swatch ? 2 : 1);
        EXPECT_GE(contrast(ring, picture().pixelColor(inWindow(slab, {5, 50}))), 3);
        EXPECT_NE(focused, before);
        int clicks = 0;
        QObject::connect(button, &QAbstractButton::clicked, button, [&] { ++clicks; });
        testsupport::pressKey(*button, Qt::Key_Space);
        EXPECT_EQ(clicks, 1);
    }
}

TEST_F(EditorButtons, ADisabledOneIsDimmedAsItsOwnerSays) {
    const auto greyOf = [this](const QPoint& place) {
        return picture().pixelColor(inWindow(prominent, place)).red();
    };
    const QPoint onPlate(10, 4); // of the button's background, no letter
    const int ground = picture().pixelColor(inWindow(slab, {5, 50})).red();
    const int full = greyOf(onPlate);
    prominent.setEnabled(false);
    EXPECT_EQ(greyOf(onPlate), full);
    prominent.setAlphaValue(0.4);
    EXPECT_NEAR(greyOf(onPlate), ground * 0.6 + full * 0.4, 1.5);
    bool clicked = false;
    QObject::connect(&prominent, &QAbstractButton::clicked, &prominent, [&] { clicked = true; });
    testsupport::clickMouse(prominent, {8, 8});
    EXPECT_FALSE(clicked);
}

TEST_F(EditorButtons, AButtonHiddenUnderThePointerComesBackUnlit) {
    pointAt(glyph);
    pass(1);
    glyph.hide();
    glyph.show();
    expectBackground(glyph, labelAt(0));
}

TEST_F(EditorButtons, AWhiteSwatchShowsOnALightPlate) {
    const QImage seen = picture();
    const int ground = seen.pixelColor(inWindow(slab, {5, 50})).lightness();
    const int edge = seen.pixelColor(inWindow(swatch, {4, 11})).lightness();
    EXPECT_LT(edge, ground - 15);
    EXPECT_EQ(seen.pixelColor(inWindow(swatch, {11, 11})), QColor(Qt::white));
}

TEST_F(EditorButtons, ACurrentSwatchHasARingAroundIt) {
    const QPoint onRing(1, 11);
    const int before = picture().pixelColor(inWindow(swatch, onRing)).lightness();
    swatch.setCurrent(true);
    EXPECT_LT(picture().pixelColor(inWindow(swatch, onRing)).lightness(), before - 100);
    EXPECT_NEAR(picture().pixelColor(inWindow(swatch, {2, 2})).lightness(), before, 1);
}

TEST_F(EditorButtons, AWidthShowsItsDot) {
    const auto darkAcross = [this] {
        const QImage seen = picture(2);
        int count = 0;
        for (int x = 0; x < 48; ++x)
            count += seen.pixelColor(inWindow(width, {0, 12}) * 2 + QPoint(x, 0)).lightness() < 130;
        return count / 2.0;
    };
    EXPECT_NEAR(darkAcross(), 9, 0.6);
    const int dimmed = picture().pixelColor(inWindow(width, {12, 12})).lightness();
    width.setCurrent(true);
    EXPECT_NEAR(darkAcross(), 9, 0.6);
    EXPECT_LT(picture().pixelColor(inWindow(width, {12, 12})).lightness(), dimmed - 30);
    EXPECT_EQ(width.value(), 5);
}

TEST_F(EditorButtons, ALabelIsAsWideAsItsWordsNeed) {
    const QFontMetricsF medium(systemFont(12, QFont::Medium));
    const QFontMetricsF semibold(systemFont(12, QFont::DemiBold));
    const double title = std::ceil(medium.horizontalAdvance(QStringLiteral("Pin")));
    const double symbol = 11.5 * 1.25;
    EXPECT_EQ(plainLabel.size(), QSize(static_cast<int>(std::ceil(title + 22 + symbol + 6)), 26));
    const double save = std::ceil(semibold.horizontalAdvance(QStringLiteral("Save…")));
    EXPECT_EQ(prominent.size(), QSize(static_cast<int>(save) + 22, 26));
    plainLabel.fitToHeight(22);
    EXPECT_EQ(plainLabel.height(), 22);
}

TEST_F(EditorButtons, EnabledLabelsAreReadableOverAnything) {
    QImage photo = plain(Qt::black);
    QPainter painter(&photo);
    QLinearGradient sky(0, 0, 400, 300);
    sky.setColorAt(0, QColor(250, 220, 90));
    sky.setColorAt(1, QColor(20, 60, 160));
    painter.fillRect(photo.rect(), sky);
    painter.end();
    for (const QImage& beneath : {plain(Qt::white), plain(Qt::black), photo}) {
        below.setPicture(beneath);
        slab.backdropChanged(below.rect());
        for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
            useScheme(scheme);
            for (EditorButton* button : all)
                for (const bool hovered : {false, true}) {
                    hovered ? pointAt(*button) : pointAway(*button);
                    pass(1);
                    for (const bool chosen : {false, true}) {
                        glyph.setSelectedTool(chosen);
                        chip.setCurrent(chosen);
                        if (button == &swatch)
                            continue;
                        const QPoint ground = inWindow(*button, {button->width() / 2, 2});
                        const QColor under = picture(2).pixelColor(ground * 2);
                        const bool onAccent =
                            button == &prominent || (chosen && (button == &glyph || button == &chip));
                        const QColor ink = onAccent
                                               ? QColor(Qt::white)
                                               : systemColor(button == &width ? SystemColor::secondaryLabel
                                                                              : SystemColor::label,
                                                             scheme);
                        const auto over = [&](float a, float b) {
                            return a * ink.alphaF() + b * (1 - ink.alphaF());
                        };
                        const QColor seen = QColor::fromRgbF(over(ink.redF(), under.redF()),
                                                             over(ink.greenF(), under.greenF()),
                                                             over(ink.blueF(), under.blueF()));
                        EXPECT_GE(contrast(seen, under), 4.5)
                            << button->accessibleName().toStdString() << hovered << chosen;
                    }
                }
        }
    }
}

} // namespace marrowfin::chrome
