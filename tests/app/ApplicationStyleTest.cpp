// How ordinary windows look, and that they follow the desktop's appearance while they stand.
#include "app/ApplicationStyle.h"

#include "platform/fake/FakeDesktop.h"
#include "support/Contrast.h"

#include <QApplication>
#include <QLabel>
#include <QStyle>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace app;
using marrowfin::fake::FakeDesktop;
using marrowfin::testsupport::contrast;

TEST(ApplicationStyle, textCanBeReadInBothAppearances) {
    for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        const QPalette palette = applicationPalette(scheme);
        const std::pair<QPalette::ColorRole, QPalette::ColorRole> pairs[] = {
            {QPalette::WindowText, QPalette::Window},         {QPalette::Text, QPalette::Base},
            {QPalette::Text, QPalette::AlternateBase},        {QPalette::ButtonText, QPalette::Button},
            {QPalette::HighlightedText, QPalette::Highlight}, {QPalette::ToolTipText, QPalette::ToolTipBase},
        };
        for (const auto& [text, ground] : pairs)
            EXPECT_GE(contrast(palette.color(text), palette.color(ground)), 4.5)
                << "role " << text << ", scheme " << static_cast<int>(scheme);
    }
}

TEST(ApplicationStyle, disabledTextIsDimmerThanTheOther) {
    for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        const QPalette palette = applicationPalette(scheme);
        for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            EXPECT_LT(contrast(palette.color(QPalette::Disabled, role), palette.color(QPalette::Window)),
                      contrast(palette.color(QPalette::Active, role), palette.color(QPalette::Window)));
    }
}

TEST(ApplicationStyle, windowsThatStandFollowTheAppearance) {
    FakeDesktop desktop;
    installApplicationStyle();
    EXPECT_EQ(QApplication::style()->name().toLower(), QStringLiteral("fusion"));
    QLabel window(QStringLiteral("text"));
    window.show();
    EXPECT_EQ(window.palette().color(QPalette::Window), QColor(246, 246, 246));
    // The toolkit hands a palette on from the event loop.
    desktop.appearance.setColorScheme(ColorScheme::Dark);
    QApplication::processEvents();
    EXPECT_EQ(window.palette().color(QPalette::Window), QColor(40, 40, 40));
    EXPECT_GT(window.palette().color(QPalette::WindowText).lightness(), 180);
    desktop.appearance.setColorScheme(ColorScheme::Light);
    QApplication::processEvents();
    EXPECT_EQ(window.palette().color(QPalette::Window), QColor(246, 246, 246));
}
