#include "platform/x11/layout/QtPlace.h"

#include "base/Geometry.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

namespace marrowfin::x11 {

QRect qtRect(const DesktopRect& frame) {
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (!primary)
        return {};
    const QRectF onScreen = toScreen(frame, primary->geometry().height()).rect;
    const QPoint origin = primary->geometry().topLeft();
    return {origin.x() + roundedToInt(onScreen.x()), origin.y() + roundedToInt(onScreen.y()),
            std::max(1, roundedToInt(onScreen.width())), std::max(1, roundedToInt(onScreen.height()))};
}

QRect qtRectOfNative(const QRect& native) {
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QPoint origin = screen->geometry().topLeft();
        const double ratio = screen->devicePixelRatio();
        if (QRect(origin, screen->geometry().size() * ratio).contains(native.center()))
            return {origin + (native.topLeft() - origin) / ratio, native.size() / ratio};
    }
    return {};
}

DesktopPoint desktopPoint(const QPointF& qtGlobal) {
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (!primary)
        return {};
    const QRect geometry = primary->geometry();
    return toDesktop(ScreenPoint{qtGlobal - geometry.topLeft()}, geometry.height());
}

QPoint qtPoint(const DesktopPoint& point) {
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (!primary)
        return {};
    const QRect geometry = primary->geometry();
    const QPointF onScreen = toScreen(point, geometry.height()).point;
    return geometry.topLeft() + QPoint(roundedToInt(onScreen.x()), roundedToInt(onScreen.y()));
}

QScreen* screenShowing(const QRect& rect) {
    QScreen* best = QGuiApplication::primaryScreen();
    int most = 0;
    for (QScreen* screen : QGuiApplication::screens()) {
        const QRect part = screen->geometry().intersected(rect);
        if (part.width() * part.height() > most) {
            best = screen;
            most = part.width() * part.height();
        }
    }
    return best;
}

} // namespace marrowfin::x11
