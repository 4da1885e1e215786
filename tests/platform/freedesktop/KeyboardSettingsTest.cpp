// Which program shows the keyboard shortcuts on which desktop.
#include "platform/freedesktop/FreedesktopOpener.h"

#include <gtest/gtest.h>

using marrowfin::freedesktop::keyboardSettingsCommand;

namespace {
QString programFor(const char* desktop) {
    return keyboardSettingsCommand(QString::fromLatin1(desktop)).value(0);
}
} // namespace

TEST(KeyboardSettings, eachDesktopHasItsOwnProgram) {
    EXPECT_EQ(programFor("GNOME"), QStringLiteral("gnome-control-center"));
    EXPECT_EQ(programFor("KDE"), QStringLiteral("systemsettings"));
    EXPECT_EQ(programFor("XFCE"), QStringLiteral("xfce4-keyboard-settings"));
    EXPECT_EQ(programFor("MATE"), QStringLiteral("mate-keybinding-properties"));
    EXPECT_EQ(programFor("X-Cinnamon"), QStringLiteral("cinnamon-settings"));
    EXPECT_EQ(programFor("LXQt"), QStringLiteral("lxqt-config-globalkeyshortcuts"));
}

TEST(KeyboardSettings, theMostParticularKnownNameDecides) {
    EXPECT_EQ(programFor("ubuntu:GNOME"), QStringLiteral("gnome-control-center"));
    EXPECT_EQ(programFor("Budgie:GNOME"), QStringLiteral("gnome-control-center"));
}

TEST(KeyboardSettings, otherDesktopsHaveNone) {
    EXPECT_EQ(programFor(""), QString());
    EXPECT_EQ(programFor("i3"), QString());
    EXPECT_EQ(programFor("gnomeish"), QString());
}
