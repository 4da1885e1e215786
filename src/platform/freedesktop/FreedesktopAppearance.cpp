#include "platform/freedesktop/FreedesktopAppearance.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>

namespace marrowfin::freedesktop {

namespace {
const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
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
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QDBusMessage)));
    ask(appearanceGroup, colorSchemeKey);
    ask(appearanceGroup, accentKey);
    ask(interfaceGroup, animationsKey);
    ask(kdeGroup, kdeAnimationsKey);
}

QColor FreedesktopAppearance::accentColor() const {
    return accent.isValid() ? accent : systemColor(SystemColor::controlAccent, scheme);
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

// Takes the message as it is: a slot with a QDBusVariant is refused before the process has sent its first
// message.
void FreedesktopAppearance::settingChanged(const QDBusMessage& message) {
    const QVariantList arguments = message.arguments();
    if (arguments.size() == 3)
        take(arguments[0].toString(), arguments[1].toString(), arguments[2]);
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
