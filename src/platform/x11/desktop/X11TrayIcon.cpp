#include "platform/x11/desktop/X11TrayIcon.h"

#include "base/Log.h"
#include "platform/x11/layout/QtPlace.h"

#include <QApplication>
#include <QCursor>
#include <QScreen>
#include <QToolTip>
#include <QWidget>
#include <cmath>
#include <utility>

namespace marrowfin::x11 {

namespace {

// What trays give an icon where they leave the choice to it, in points.
constexpr int usualSide = 22;
// A tray docks what it is asked for in a few hundredths of a second; one that is still starting takes longer.
constexpr int patienceMilliseconds = 500;
// A tray that refuses an icon so often doesn't want it.
constexpr int mostRequests = 4;
// A tray shows what we painted in its own time, and tells nobody.
constexpr int settlingMilliseconds = 300;
// Of the pointer, until the tool tip comes: the toolkit's own.
constexpr int restMilliseconds = 700;

constexpr int leftButton = 1;
constexpr int rightButton = 3;

void makeSingle(QTimer& timer, int milliseconds) {
    timer.setSingleShot(true);
    timer.setInterval(milliseconds);
}

// Whether the corners are dark: those of an icon are empty, and there the tray shows through.
bool isDarkAtCorners(const QImage& shown) {
    const int right = shown.width() - 1;
    const int bottom = shown.height() - 1;
    int lightness = 0;
    for (const QPoint corner : {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom)})
        lightness += qGray(shown.pixel(corner));
    return lightness < 4 * 128;
}

} // namespace

X11TrayIcon::X11TrayIcon(const Connection& connection, Click click)
    : connection(connection), painter(connection), watch(connection), click(std::move(click)) {
    makeSingle(patience, patienceMilliseconds);
    makeSingle(settled, settlingMilliseconds);
    makeSingle(resting, restMilliseconds);
    connect(&patience, &QTimer::timeout, this, &X11TrayIcon::look);
    connect(&settled, &QTimer::timeout, this, &X11TrayIcon::lookAtBackground);
    connect(&resting, &QTimer::timeout, this, &X11TrayIcon::showToolTip);
    connect(&watch, &TrayWatch::changed, this, &X11TrayIcon::trayChanged);
    connect(&watch, &TrayWatch::announced, this, &X11TrayIcon::ask);
}

void X11TrayIcon::setIcon(platform::StatusItem::IconDrawer drawer) {
    icon = std::move(drawer);
    if (window)
        paint();
    else if (hasTray())
        ask();
}

QRect X11TrayIcon::geometry() const {
    return window ? qtRectOfNative(window->place()) : QRect();
}

// A tray that was never announced is asked after a while.
void X11TrayIcon::trayChanged() {
    window.reset();
    hideToolTip();
    asked = 0;
    if (hasTray())
        patience.start();
    else
        patience.stop();
}

void X11TrayIcon::ask() {
    if (!icon || (window && window->isDocked()))
        return;
    if (!window)
        makeWindow();
    ++asked;
    window->askToBeDocked(watch.tray());
    patience.start();
}

void X11TrayIcon::look() {
    if (!icon || !hasTray() || (window && window->isDocked()))
        return;
    if (asked < mostRequests)
        ask();
    else
        logLine(QStringLiteral("[Marrowfin] The status area doesn't take the icon"));
}

void X11TrayIcon::makeWindow() {
    const int side = static_cast<int>(std::lround(usualSide * qApp->devicePixelRatio()));
    window = std::make_unique<TrayWindow>(connection, painter, watch.wantedVisual(), side);
    connect(window.get(), &TrayWindow::lost, this, &X11TrayIcon::windowLost);
    connect(window.get(), &TrayWindow::exposed, this, &X11TrayIcon::paint);
    connect(window.get(), &TrayWindow::pressed, this, &X11TrayIcon::pressed);
    connect(window.get(), &TrayWindow::released, this, &X11TrayIcon::released);
    connect(window.get(), &TrayWindow::entered, this, [this] { resting.start(); });
    connect(window.get(), &TrayWindow::left, this, &X11TrayIcon::hideToolTip);
}

// If the tray went with it, word of that follows.
void X11TrayIcon::windowLost() {
    hideToolTip();
    window.reset();
    asked = 0;
    patience.start();
}

void X11TrayIcon::paint() {
    if (!icon || !window->isDocked() || window->side() < 1)
        return;
    window->paint(icon(window->side(), darkTray));
    settled.start();
}

void X11TrayIcon::lookAtBackground() {
    const QRect place = geometry();
    QScreen* screen = QGuiApplication::screenAt(place.center());
    if (place.isEmpty() || !screen)
        return;
    const QRect local = place.translated(-screen->geometry().topLeft());
    const QImage shown = screen->grabWindow(0, local.x(), local.y(), local.width(), local.height()).toImage();
    if (shown.isNull() || isDarkAtCorners(shown) == darkTray)
        return;
    darkTray = !darkTray;
    paint();
}

// A press while a menu is open is that menu's end and no more, as it is anywhere else. The toolkit may have
// had that press: then a release comes alone.
void X11TrayIcon::pressed() {
    hideToolTip();
    QWidget* menu = QApplication::activePopupWidget();
    isPress = !menu;
    if (menu)
        menu->close();
}

void X11TrayIcon::released(int button, QPoint onScreen) {
    if (!std::exchange(isPress, false))
        return;
    if (button == leftButton)
        click(platform::StatusItemButton::Left, onScreen);
    else if (button == rightButton)
        click(platform::StatusItemButton::Right, onScreen);
}

void X11TrayIcon::showToolTip() const {
    if (window && !toolTip.isEmpty() && !QApplication::activePopupWidget())
        QToolTip::showText(QCursor::pos(), toolTip);
}

void X11TrayIcon::hideToolTip() {
    resting.stop();
    QToolTip::hideText();
}

} // namespace marrowfin::x11
