// What the tests of the surfaces share: a host, another program, a plain widget in a colour, and the frame of
// the first screen.
#pragma once

#include "desktop/x11surfaces/Desk.h"
#include "platform/x11/capture/GrabLink.h"
#include "platform/x11/surfaces/X11SurfaceHost.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWidget>
#include <gtest/gtest.h>

namespace marrowfin {

struct Pane : QWidget {
    explicit Pane(QColor color) : color(color) {}
    QColor color;
    int presses = 0;
    int releases = 0;
    QPoint lastDrag;
    QList<int> keys;
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), color); }
    void mousePressEvent(QMouseEvent*) override { ++presses; }
    void mouseMoveEvent(QMouseEvent* event) override { lastDrag = event->position().toPoint(); }
    void mouseReleaseEvent(QMouseEvent*) override { ++releases; }
    void keyPressEvent(QKeyEvent* event) override { keys += event->key(); }
};

// How often a signal came.
class Count {
public:
    template <class Sender, class Signal>
    Count(const Sender* sender, Signal signal) : number(std::make_shared<int>(0)) {
        QObject::connect(sender, signal, sender, [number = number] { ++*number; });
    }
    int times() const { return *number; }

private:
    std::shared_ptr<int> number;
};

class SurfacesTest : public ::testing::Test {
protected:
    void SetUp() override {
        auto made = x11::makeSurfaceHost(std::make_shared<x11::GrabLink>(
            x11::Connection::qtDisplayName(), std::make_shared<x11::LayoutBoard>()));
        ASSERT_TRUE(made);
        host = std::move(*made);
    }

    static QRect qtScreen(int index = 0) { return QGuiApplication::screens().at(index)->geometry(); }
    static double scale() { return QGuiApplication::primaryScreen()->devicePixelRatio(); }
    // A rectangle of Qt's global space as the seam takes it.
    static DesktopRect desktop(const QRectF& rect) {
        const QRect primary = QGuiApplication::primaryScreen()->geometry();
        return toDesktop(ScreenRect{rect.translated(-primary.topLeft())}, primary.height());
    }
    static QPoint native(const QPoint& point) { return (QPointF(point) * scale()).toPoint(); }
    static QRect native(const QRect& r) { return {native(r.topLeft()), r.size() * scale()}; }

    std::unique_ptr<platform::Surface> show(QWidget& widget, const platform::SurfaceSpec& traits,
                                            const QRectF& rect) {
        auto surface = host->host(widget, traits);
        surface->setFrame(desktop(rect));
        surface->orderFront();
        return surface;
    }
    static xcb_window_t idOf(const QWidget& widget) {
        return static_cast<xcb_window_t>(widget.internalWinId());
    }
    bool shows(const QPoint& point, const QColor& color) {
        return desk::waitFor([&] { return other.pixel(native(point)) == color; });
    }
    // The screen once nothing on it moves any more: a panel takes its time to find out about a compositor.
    QImage settledScreen() {
        QImage last = other.screen();
        int looks = 0;
        desk::waitFor([&] {
            desk::passTime(60);
            const QImage now = other.screen();
            looks = desk::difference(std::exchange(last, now), now).empty() ? looks + 1 : 0;
            return looks == 8;
        });
        return last;
    }

    desk::OtherProgram other;
    std::unique_ptr<platform::SurfaceHost> host;
};

} // namespace marrowfin
