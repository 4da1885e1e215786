#include "platform/freedesktop/FreedesktopStatusItem.h"

#include "base/Log.h"
#include "platform/freedesktop/DrawnIcon.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMenu>
#include <QPalette>
#include <QScreen>

namespace marrowfin::freedesktop {

using namespace platform;

namespace {

// What hosts show items at, on plain and on dense screens.
constexpr int notifierSides[] = {22, 24, 32, 48};

// Panels are dark as a rule, whatever the windows are; only those that follow a light theme aren't.
bool trayIsDark(bool followsTheme) {
    const QPalette palette = QGuiApplication::palette();
    const bool lightTheme =
        palette.color(QPalette::Window).lightness() > palette.color(QPalette::WindowText).lightness();
    return !(followsTheme && lightTheme);
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

FreedesktopStatusItem::FreedesktopStatusItem() {
    connect(&watch, &NotifierHostWatch::changed, this, &FreedesktopStatusItem::followHost);
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
    if (watch.host() == NotifierHostWatch::Host::Present)
        notifier = std::make_unique<NotifierItem>(
            [this](StatusItemButton button, QPoint point) { clicked(button, point); });
    else
        embedded = std::make_unique<EmbeddedIcon>([this](StatusItemButton button) { clicked(button, {}); });
    refresh();
    if (embedded && !QSystemTrayIcon::isSystemTrayAvailable())
        logLine(QStringLiteral("[Marrowfin] No status area: the icon shows up when there is one"));
}

void FreedesktopStatusItem::refresh() {
    if (notifier) {
        NotifierPixmaps pixmaps;
        if (icon)
            for (const int side : notifierSides)
                pixmaps << NotifierPixmap::from(icon(side, trayIsDark(true)));
        notifier->setIcons(pixmaps);
        notifier->setToolTip(toolTip);
    }
    if (embedded) {
        if (icon)
            embedded->setIcon(drawnIcon(icon, trayIsDark(false)));
        embedded->setToolTip(toolTip);
        if (icon)
            embedded->show();
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
