#include "platform/freedesktop/FreedesktopAppearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QPalette>

namespace marrowfin::freedesktop {

namespace {
const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString colorSchemeKey = QStringLiteral("color-scheme");
const QString interfaceGroup = QStringLiteral("org.gnome.desktop.interface");
const QString animationsKey = QStringLiteral("enable-animations");
constexpr uint prefersDark = 1;
constexpr uint prefersLight = 2;

ColorScheme schemeOfPalette() {
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness()
               ? ColorScheme::Dark
               : ColorScheme::Light;
}
} // namespace

FreedesktopAppearance::FreedesktopAppearance() : toolkitScheme(schemeOfPalette()), scheme(toolkitScheme) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask(appearanceGroup, colorSchemeKey);
    ask(interfaceGroup, animationsKey);
}

void FreedesktopAppearance::ask(const QString& group, const QString& key) {
    QDBusMessage request = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    request << group << key;
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(request), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, group, key](QDBusPendingCallWatcher* done) {
                const QDBusPendingReply<QDBusVariant> reply = *done;
                done->deleteLater();
                if (!reply.isError())
                    take(group, key, reply.value().variant());
            });
}

void FreedesktopAppearance::settingChanged(const QString& group, const QString& key,
                                           const QDBusVariant& value) {
    take(group, key, value.variant());
}

void FreedesktopAppearance::take(const QString& group, const QString& key, QVariant value) {
    // Read() answers a variant within a variant.
    if (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    const ColorScheme schemeBefore = scheme;
    const bool reducedBefore = reduced;
    if (group == appearanceGroup && key == colorSchemeKey) {
        const uint preference = value.toUInt();
        scheme = preference == prefersDark    ? ColorScheme::Dark
                 : preference == prefersLight ? ColorScheme::Light
                                              : toolkitScheme;
    } else if (group == interfaceGroup && key == animationsKey && value.typeId() == QMetaType::Bool) {
        reduced = !value.toBool();
    }
    if (scheme != schemeBefore || reduced != reducedBefore)
        Q_EMIT changed();
}

} // namespace marrowfin::freedesktop
