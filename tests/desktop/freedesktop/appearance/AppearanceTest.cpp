// The appearance with and without a settings portal.
#include "desktop/freedesktop/support/SettingsPortal.h"
#include "desktop/support/Waiting.h"
#include "platform/freedesktop/FreedesktopAppearance.h"

#include <QDBusArgument>
#include <QGuiApplication>
#include <QPalette>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace marrowfin::testsupport;
using freedesktop::FreedesktopAppearance;

namespace {
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");
const QString accent = QStringLiteral("accent-color");
const QString interfaceGroup = QStringLiteral("org.gnome.desktop.interface");
const QString animations = QStringLiteral("enable-animations");
const QString kdeGroup = QStringLiteral("org.kde.kdeglobals.KDE");
const QString kdeAnimations = QStringLiteral("AnimationDurationFactor");
} // namespace

TEST(Appearance, isReadFromThePortalAndFollowsIt) {
    SettingsPortal portal(
        {{appearanceGroup + u' ' + colorScheme, 1u}, {interfaceGroup + u' ' + animations, false}});
    FreedesktopAppearance appearance;
    int changes = 0;
    QObject::connect(&appearance, &platform::Appearance::changed, [&changes] { ++changes; });
    EXPECT_TRUE(waitUntil(
        [&] { return appearance.colorScheme() == ColorScheme::Dark && appearance.reduceMotion(); }));
    const int before = changes;
    portal.change(appearanceGroup, colorScheme, 2u);
    EXPECT_TRUE(waitUntil([&] { return appearance.colorScheme() == ColorScheme::Light; }));
    portal.change(interfaceGroup, animations, true);
    EXPECT_TRUE(waitUntil([&] { return !appearance.reduceMotion(); }));
    EXPECT_EQ(changes, before + 2);
    portal.change(appearanceGroup, colorScheme, 1u);
    EXPECT_TRUE(waitUntil([&] { return appearance.colorScheme() == ColorScheme::Dark; }));
    // No preference: what the toolkit found.
    portal.change(appearanceGroup, colorScheme, 0u);
    EXPECT_TRUE(waitUntil([&] { return appearance.colorScheme() == ColorScheme::Light; }));
}

TEST(Appearance, theAccentIsTheUsersAndFollowsItOrIsTheStatedBlue) {
    const auto chosen = [](double red, double green, double blue) {
        QDBusArgument argument;
        argument.beginStructure();
        argument << red << green << blue;
        argument.endStructure();
        return QVariant::fromValue(argument);
    };
    SettingsPortal portal({{appearanceGroup + u' ' + accent, chosen(1, 0.2, 0)}});
    FreedesktopAppearance appearance;
    int changes = 0;
    QObject::connect(&appearance, &platform::Appearance::changed, [&changes] { ++changes; });
    EXPECT_EQ(appearance.accentColor(), QColor(0, 122, 255));
    EXPECT_TRUE(waitUntil([&] { return appearance.accentColor() == QColor::fromRgbF(1, 0.2F, 0); }));
    EXPECT_EQ(changes, 1);
    portal.change(appearanceGroup, accent, chosen(0, 0.5, 0));
    EXPECT_TRUE(waitUntil([&] { return appearance.accentColor() == QColor::fromRgbF(0, 0.5F, 0); }));
    // Out of range is how a desktop says that there is none.
    portal.change(appearanceGroup, accent, chosen(-1, -1, -1));
    EXPECT_TRUE(waitUntil([&] { return appearance.accentColor() == QColor(0, 122, 255); }));
}

TEST(Appearance, eitherDesktopsSwitchTurnsAnimationsOff) {
    SettingsPortal portal(
        {{kdeGroup + u' ' + kdeAnimations, QStringLiteral("0")}, {interfaceGroup + u' ' + animations, true}});
    FreedesktopAppearance appearance;
    EXPECT_TRUE(waitUntil([&] { return appearance.reduceMotion(); }));
    portal.change(kdeGroup, kdeAnimations, QStringLiteral("1.4"));
    EXPECT_TRUE(waitUntil([&] { return !appearance.reduceMotion(); }));
}

TEST(Appearance, valuesOfAnotherKindChangeNothing) {
    SettingsPortal portal({{appearanceGroup + u' ' + colorScheme, 1u}});
    FreedesktopAppearance appearance;
    ASSERT_TRUE(waitUntil([&] { return appearance.colorScheme() == ColorScheme::Dark; }));
    portal.change(interfaceGroup, animations, QStringLiteral("no"));
    portal.change(kdeGroup, kdeAnimations, QStringLiteral("fast"));
    portal.change(QStringLiteral("some.other.group"), colorScheme, 2u);
    portal.change(appearanceGroup, colorScheme, 2u);
    ASSERT_TRUE(waitUntil([&] { return appearance.colorScheme() == ColorScheme::Light; }));
    EXPECT_FALSE(appearance.reduceMotion());
}

TEST(Appearance, withoutAPortalThePaletteDecides) {
    const QPalette before = QGuiApplication::palette();
    EXPECT_EQ(FreedesktopAppearance().colorScheme(), ColorScheme::Light);
    QPalette dark = before;
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::WindowText, Qt::white);
    QGuiApplication::setPalette(dark);
    const FreedesktopAppearance appearance;
    EXPECT_EQ(appearance.colorScheme(), ColorScheme::Dark);
    EXPECT_FALSE(appearance.reduceMotion());
    QGuiApplication::setPalette(before);
}
