#include "platform/freedesktop/FreedesktopAppearance.h"

#include "platform/dbus/PortalRequest.h"
#include "platform/dbus/SessionBus.h"
#include "platform/dbus/SettingsProxy.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>

namespace marrowfin::freedesktop {

namespace {
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");
const QString accentKey = QStringLiteral("accent-color");
const QString interfaceGroup = QStringLiteral("org.gnome.desktop.interface");
const QString animationsKey = QStringLiteral("enable-animations");
// KDE's own, through the same portal: a factor as text, 0 for none.
const QString kdeGroup = QStringLiteral("org.kde.kdeglobals.KDE");
const QString kdeAnimationsKey = QStringLiteral("AnimationDurationFactor");
constexpr uint prefersDark = 1;
constexpr uint prefersLight = 2;

ColorScheme schemeOfPalette() {
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness()
               ? ColorScheme::Dark
               : ColorScheme::Light;
}

// Red, green and blue from 0 to 1 of sRGB; anything else stands for no choice.
QColor colorFrom(const QVariant& value) {
    if (!value.canConvert<QDBusArgument>())
        return {};
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QStringLiteral("(ddd)"))
        return {};
    double channels[3] = {};
    argument.beginStructure();
    for (double& channel : channels)
        argument >> channel;
    argument.endStructure();
    for (const double channel : channels)
        if (!(channel >= 0 && channel <= 1))
            return {};
    return QColor::fromRgbF(static_cast<float>(channels[0]), static_cast<float>(channels[1]),
                            static_cast<float>(channels[2]));
}
} // namespace

FreedesktopAppearance::FreedesktopAppearance() : toolkitScheme(schemeOfPalette()), scheme(toolkitScheme) {
    dbus::whenBusAnswers(*this, [this] { askPortal(); });
}

FreedesktopAppearance::~FreedesktopAppearance() = default;

void FreedesktopAppearance::askPortal() {
    settings = std::make_unique<SettingsProxy>(dbus::portalService, dbus::portalPath, dbus::sessionBus());
    // The types of a signal are found by their names, and nobody has named this one before the first message
    // is sent.
    qRegisterMetaType<QDBusVariant>();
    connect(settings.get(), &SettingsProxy::SettingChanged, this,
            [this](const QString& group, const QString& key, const QDBusVariant& value) {
                take(group, key, value.variant());
            });
    ask(appearanceGroup, colorSchemeKey);
    ask(appearanceGroup, accentKey);
    ask(interfaceGroup, animationsKey);
    ask(kdeGroup, kdeAnimationsKey);
}

QColor FreedesktopAppearance::accentColor() const {
    return accent.isValid() ? accent : systemColor(SystemColor::controlAccent, scheme);
}

void FreedesktopAppearance::ask(const QString& group, const QString& key) {
    auto* watcher = new QDBusPendingCallWatcher(settings->Read(group, key), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, group, key](QDBusPendingCallWatcher* done) {
                const QDBusPendingReply<QDBusVariant> reply = *done;
                done->deleteLater();
                if (!reply.isError())
                    take(group, key, reply.value().variant());
            });
}

void FreedesktopAppearance::take(const QString& group, const QString& key, QVariant value) {
    // Read() answers a variant within a variant.
    if (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    const ColorScheme schemeBefore = scheme;
    const QColor accentBefore = accent;
    const bool reducedBefore = reduceMotion();
    if (group == appearanceGroup && key == colorSchemeKey) {
        const uint preference = value.toUInt();
        scheme = preference == prefersDark    ? ColorScheme::Dark
                 : preference == prefersLight ? ColorScheme::Light
                                              : toolkitScheme;
    } else if (group == appearanceGroup && key == accentKey) {
        accent = colorFrom(value);
    } else if (group == interfaceGroup && key == animationsKey && value.typeId() == QMetaType::Bool) {
        animationsOff = !value.toBool();
    } else if (group == kdeGroup && key == kdeAnimationsKey) {
        bool isNumber = false;
        const double factor = value.toDouble(&isNumber);
        if (isNumber)
            kdeAnimationsOff = factor == 0;
    }
    if (scheme != schemeBefore || accent != accentBefore || reduceMotion() != reducedBefore)
        Q_EMIT changed();
}

} // namespace marrowfin::freedesktop
