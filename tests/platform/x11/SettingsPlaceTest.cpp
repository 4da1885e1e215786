#include "platform/x11/input/SettingsPlace.h"
#include "platform/x11/capture/GrabLink.h"

#include <gtest/gtest.h>

using namespace marrowfin::x11;

TEST(SettingsPlace, SpeaksTheDesktopsWords) {
    EXPECT_EQ(keyboardSettingsPlace(QStringLiteral("XFCE")),
              QStringLiteral("Settings Manager > Keyboard > Application Shortcuts"));
    EXPECT_EQ(keyboardSettingsPlace(QStringLiteral("ubuntu:GNOME")),
              keyboardSettingsPlace(QStringLiteral("GNOME")));
    EXPECT_EQ(keyboardSettingsPlace(QStringLiteral("KDE")), QStringLiteral("System Settings > Shortcuts"));
}

TEST(SettingsPlace, HasWordsForAnUnknownDesktop) {
    EXPECT_EQ(keyboardSettingsPlace({}), QStringLiteral("Settings > Keyboard > Shortcuts"));
    EXPECT_EQ(keyboardSettingsPlace(QStringLiteral(":::")), keyboardSettingsPlace({}));
}

TEST(MissingExtensions, GetOneLineEach) {
    Extensions all;
    all.shm = all.composite = all.xfixes = all.damage = all.randr = all.res = true;
    EXPECT_TRUE(linesAboutMissing(all).isEmpty());
    all.shm = false;
    ASSERT_EQ(linesAboutMissing(all).size(), 1);
    EXPECT_TRUE(
        linesAboutMissing(all).front().startsWith(QStringLiteral("[Marrowfin] The X server has no MIT-SHM")));
    EXPECT_EQ(linesAboutMissing(Extensions{}).size(), 6);
}
