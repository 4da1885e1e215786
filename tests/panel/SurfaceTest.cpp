// What a card is made of: the two kinds of backdrop, what each paints, and its light.
#include "panel/CardPicture.h"
#include "panel/PanelFixture.h"

namespace marrowfin::panel {

using namespace imaging;

class Surface : public PanelFixture {
protected:
    Surface() { addDisplay(1, {0, 0, 1440, 900}); }

    // Rested, alone on nothing, so that alphas can be read.
    QImage picture(BackdropKind kind, const Image& image = capture()) {
        CapturePanelContentView view(image, PanelActions(), kind);
        view.show();
        view.playArrival();
        pass(3);
        return cardPicture(view, 1);
    }
    // A place on the card, y up.
    static QColor at(const QImage& picture, double x, double y) {
        return picture.pixelColor(onCard(x, y).toPoint());
    }
};

TEST_F(Surface, KindsHaveTheirNamesAndThisDesktopHasThePlainOne) {
    EXPECT_EQ(rawValue(BackdropKind::liquidGlass), QStringLiteral("liquid-glass"));
    EXPECT_EQ(rawValue(BackdropKind::vibrancy), QStringLiteral("vibrancy"));
    EXPECT_EQ(backdropOfThisDesktop(), BackdropKind::vibrancy);
}

TEST_F(Surface, OnlyThePlainOneHasAHairlineAndItsRimIsBrighter) {
    for (const bool dark : {false, true}) {
        desktop.appearance.setColorScheme(dark ? ColorScheme::Dark : ColorScheme::Light);
        const QImage plain = picture(BackdropKind::vibrancy, Image()); // no capture, no tint
        const QImage glass = picture(BackdropKind::liquidGlass, Image());
        const auto grey = [](const QImage& shown, double x, double y) {
            return qGray(at(shown, x, y).rgb());
        };
        EXPECT_EQ(grey(plain, 5, 30), grey(glass, 5, 30));
        // On the left edge, below the rim's light: the hairline is dark on a light card, light on a dark one.
        const int line = grey(plain, 0, 30) - grey(glass, 0, 30);
        EXPECT_TRUE(dark ? line > 10 : line < -10) << line;
        // The light falls from the top and is gone at three tenths of the height.
        const auto light = [&](const QImage& shown) { return grey(shown, 120, 159.9) - grey(shown, 0, 30); };
        EXPECT_GT(light(plain), light(glass));
        EXPECT_GT(light(glass), 0);
        EXPECT_EQ(grey(glass, 0, 47), grey(glass, 0, 30));
        EXPECT_GT(grey(glass, 0, 100), grey(glass, 0, 47));
    }
}

TEST_F(Surface, ACoveredPlateIsTranslucentAndOutsideIsOnlyShadow) {
    for (const BackdropKind kind : {BackdropKind::vibrancy, BackdropKind::liquidGlass}) {
        const QImage shown = picture(kind);
        const QColor plate = at(shown, 5, 80);
        EXPECT_GT(plate.alpha(), 200);
        EXPECT_LT(plate.alpha(), 255); // something of the desktop comes through
        const QColor below = at(shown, 120, -4);
        EXPECT_EQ(qGray(below.rgb()), 0);
        EXPECT_GT(below.alpha(), 30);
        EXPECT_LT(below.alpha(), 128);
        EXPECT_EQ(at(shown, -17, 175 - 4).alpha(), shown.pixelColor(0, 0).alpha());
        EXPECT_LT(shown.pixelColor(0, 0).alpha(), 10); // the halo's end
    }
}

TEST_F(Surface, TheCapturesColourBreathesThroughThePlate) {
    QImage red(400, 200, QImage::Format_RGB32);
    red.fill(QColor(255, 0, 0));
    QImage grey(400, 200, QImage::Format_RGB32);
    grey.fill(QColor(128, 128, 128));
    const auto redness = [](const QColor& color) { return color.red() - color.green(); };
    const int plain = redness(at(picture(BackdropKind::vibrancy, Image::captured(red)), 5, 80));
    const int glass = redness(at(picture(BackdropKind::liquidGlass, Image::captured(red)), 5, 80));
    EXPECT_GT(plain, 4);
    EXPECT_GT(glass, plain); // at alpha 0.16 instead of 0.1
    EXPECT_EQ(redness(at(picture(BackdropKind::vibrancy, Image::captured(grey)), 5, 80)), 0);
    EXPECT_EQ(redness(at(picture(BackdropKind::vibrancy, Image()), 5, 80)), 0); // no colour, no tint
}

} // namespace marrowfin::panel
