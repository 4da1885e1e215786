#include "platform/freedesktop/FreedesktopStatusItem.h"

#include "base/Log.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMenu>
#include <QScreen>

namespace marrowfin::freedesktop {

using namespace platform;

namespace {

// What hosts show items at, on plain and on dense screens.
constexpr int notifierSides[] = {22, 24, 32, 48};

// Hosts over D-Bus don't tell what they put the icon on. GNOME's bar is dark whatever the windows are; other
// panels follow the appearance.
bool hostIsDark() {
    if (qEnvironmentVariable("XDG_CURRENT_DESKTOP").contains(QLatin1String("GNOME"), Qt::CaseInsensitive))
        return true;
    return !isInstalled() || services().appearance.colorScheme() == ColorScheme::Dark;
}

// Each screen keeps its origin in native pixels; only distances within it are scaled.
QPoint fromNative(const QPoint& point) {
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect frame = screen->geometry();
        const QRect native(frame.topLeft(), frame.size() * screen->devicePixelRatio());
        if (native.contains(point))
            return frame.topLeft() + (point - frame.topLeft()) / screen->devicePixelRatio();
    }
    return QCursor::pos();
}

} // namespace

FreedesktopStatusItem::FreedesktopStatusItem(TrayIconMaker makeTrayIcon)
    : makeTrayIcon(std::move(makeTrayIcon)) {
    connect(&watch, &NotifierHostWatch::changed, this, &FreedesktopStatusItem::followHost);
    if (isInstalled())
        connect(&services().appearance, &Appearance::changed, this, [this] {
            if (notifier)
                refresh();
        });
}

void FreedesktopStatusItem::setIcon(IconDrawer drawer) {
    icon = std::move(drawer);
    refresh();
}

void FreedesktopStatusItem::setToolTip(const QString& text) {
    toolTip = text;
    refresh();
}

void FreedesktopStatusItem::setAction(Action done) {
    action = std::move(done);
}

void FreedesktopStatusItem::followHost() {
    embedded.reset();
    notifier.reset();
    const auto told = [this](StatusItemButton button, QPoint point) { clicked(button, point); };
    if (watch.host() == NotifierHostWatch::Host::Present)
        notifier = std::make_unique<NotifierItem>(told);
    else
        embedded = makeTrayIcon(told);
    refresh();
    if (embedded && !embedded->hasTray())
        logLine(QStringLiteral("[Marrowfin] No status area: the icon shows up when there is one"));
}

void FreedesktopStatusItem::refresh() {
    if (notifier) {
        NotifierPixmaps pixmaps;
        if (icon)
            for (const int side : notifierSides)
                pixmaps << NotifierPixmap::from(icon(side, hostIsDark()));
        notifier->setIcons(pixmaps);
        notifier->setToolTip(toolTip);
    }
    if (embedded) {
        embedded->setToolTip(toolTip);
        if (icon)
            embedded->setIcon(icon);
    }
}

void FreedesktopStatusItem::clicked(StatusItemButton button, QPoint nativePoint) {
    clickPoint = nativePoint;
    if (action)
        action(button);
}

void FreedesktopStatusItem::popUp(QMenu& menu) {
    if (embedded && embedded->geometry().isValid()) {
        const QRect item = embedded->geometry();
        const QScreen* screen = QGuiApplication::screenAt(item.center());
        if (screen) {
            menu.popup(menuOrigin(item, menu.sizeHint(), screen->geometry()));
            return;
        }
    }
    menu.popup(clickPoint.isNull() ? QCursor::pos() : fromNative(clickPoint));
}

QPoint menuOrigin(const QRect& item, const QSize& menu, const QRect& screen) {
    const bool below = item.center().y() < screen.center().y();
    const int y = below ? item.y() + item.height() : item.y() - menu.height();
    return {item.x(), y};
}

} // namespace marrowfin::freedesktop
