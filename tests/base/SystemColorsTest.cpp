#include "base/SystemColors.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace marrowfin;

namespace {
constexpr auto all = {SystemColor::red,
                      SystemColor::orange,
                      SystemColor::yellow,
                      SystemColor::green,
                      SystemColor::blue,
                      SystemColor::purple,
                      SystemColor::pink,
                      SystemColor::gray,
                      SystemColor::label,
                      SystemColor::secondaryLabel,
                      SystemColor::tertiaryLabel,
                      SystemColor::controlText,
                      SystemColor::controlAccent,
                      SystemColor::accentGround,
                      SystemColor::windowBackground,
                      SystemColor::separator,
                      SystemColor::underPageBackground,
                      SystemColor::black,
                      SystemColor::white};
} // namespace

TEST(SystemColors, everyNameHasAColourInBothAppearances) {
    for (const SystemColor name : all)
        for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark})
            EXPECT_TRUE(systemColor(name, scheme).isValid());
}

TEST(SystemColors, inkIsTheLightTable) {
    EXPECT_EQ(systemColor(SystemColor::red), QColor(255, 59, 48));
}

TEST(SystemColors, yellowHasNoBlue) {
    EXPECT_EQ(systemColor(SystemColor::yellow, ColorScheme::Light).blue(), 0);
}

TEST(SystemColors, whatIsReadContrastsWithItsWindow) {
    for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        const QColor window = systemColor(SystemColor::windowBackground, scheme);
        const QColor label = systemColor(SystemColor::label, scheme);
        const double lightness =
            label.alphaF() * label.lightnessF() + (1 - label.alphaF()) * window.lightnessF();
        EXPECT_GT(std::abs(window.lightnessF() - lightness), 0.6);
    }
}

TEST(SystemColors, blackAndWhiteKnowNoAppearance) {
    for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        EXPECT_EQ(systemColor(SystemColor::black, scheme), QColor(0, 0, 0));
        EXPECT_EQ(systemColor(SystemColor::white, scheme), QColor(255, 255, 255));
    }
}
