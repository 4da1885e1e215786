#include "platform/freedesktop/NotifierItem.h"

#include "platform/dbus/NotifierWatcherProxy.h"
#include "platform/dbus/SessionBus.h"
#include "platform/freedesktop/NotifierHostWatch.h"

#include <QCoreApplication>

namespace marrowfin::freedesktop {

namespace {
const QString itemPath = QStringLiteral("/StatusNotifierItem");
int itemsMade = 0; // each needs a name of its own
} // namespace

NotifierItem::NotifierItem(Click click) : click(std::move(click)) {
    registerNotifierTypes();
    service = QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
                  .arg(QCoreApplication::applicationPid())
                  .arg(++itemsMade);
    QDBusConnection bus = dbus::sessionBus();
    bus.registerObject(itemPath, this,
                       QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSlots |
                           QDBusConnection::ExportAllSignals);
    bus.registerService(service);
    NotifierWatcherProxy(notifierWatcherService, notifierWatcherPath, bus)
        .RegisterStatusNotifierItem(service);
}

NotifierItem::~NotifierItem() {
    QDBusConnection bus = dbus::sessionBus();
    bus.unregisterObject(itemPath);
    // What tells the watcher that the item is gone.
    bus.unregisterService(service);
}

void NotifierItem::setIcons(NotifierPixmaps icons) {
    pixmaps = std::move(icons);
    Q_EMIT NewIcon();
}

void NotifierItem::setToolTip(const QString& text) {
    tip = text;
    Q_EMIT NewToolTip();
}

QString NotifierItem::category() const {
    return QStringLiteral("ApplicationStatus");
}
QString NotifierItem::id() const {
    return QStringLiteral("marrowfin");
}
QString NotifierItem::title() const {
    return QStringLiteral("Marrowfin");
}
QString NotifierItem::status() const {
    return QStringLiteral("Active");
}

void NotifierItem::Activate(int x, int y) {
    click(platform::StatusItemButton::Left, {x, y});
}
void NotifierItem::ContextMenu(int x, int y) {
    click(platform::StatusItemButton::Right, {x, y});
}
void NotifierItem::SecondaryActivate(int, int) {}
void NotifierItem::Scroll(int, const QString&) {}

} // namespace marrowfin::freedesktop
