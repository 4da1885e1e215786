// Plays the settings portal on a connection of its own. Tests only.
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusError>
#include <QDBusVariant>
#include <QMap>
#include <QObject>

namespace marrowfin::testsupport {

class SettingsPortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public:
    explicit SettingsPortal(QMap<QString, QVariant> initial)
        : values(std::move(initial)),
          bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("played-portal"))) {
        bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                           QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }
    ~SettingsPortal() override {
        bus.unregisterService(QStringLiteral("org.freedesktop.portal.Desktop"));
        QDBusConnection::disconnectFromBus(QStringLiteral("played-portal"));
    }

    void change(const QString& group, const QString& key, const QVariant& value) {
        values[group + u' ' + key] = value;
        Q_EMIT SettingChanged(group, key, QDBusVariant(value));
    }

public Q_SLOTS:
    QDBusVariant Read(const QString& group, const QString& key) {
        const auto found = values.constFind(group + u' ' + key);
        if (found == values.constEnd()) {
            sendErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"),
                           QStringLiteral("Requested setting not found"));
            return {};
        }
        // As the real ones do: a variant within the variant.
        return QDBusVariant(QVariant::fromValue(QDBusVariant(*found)));
    }

Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    QMap<QString, QVariant> values; // by "group key"
    QDBusConnection bus;
};

} // namespace marrowfin::testsupport
