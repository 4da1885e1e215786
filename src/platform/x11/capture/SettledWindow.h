// Waits until a window that was just taken off the screen has drawn what was covered. Its program does that
// in its own time, and X has no event for "done". So: what it draws is followed (by Damage, else by looking),
// it is asked for a sign of life that comes after its repaint was ordered, and the picture is taken once
// everything exposed was drawn and the drawing has paused. A program that hangs is waited for no longer than
// a second. Thread: the connection's. Make it before the window is taken off the screen.
#pragma once

#include "platform/x11/capture/Grabber.h"

#include <QRegion>
#include <chrono>

namespace marrowfin::x11 {

class SettledWindow {
public:
    // The area is the part of the frame window that matters, in root coordinates.
    SettledWindow(Grabber& grabber, xcb_window_t client, xcb_window_t frame, const QRect& area);
    ~SettledWindow();
    SettledWindow(const SettledWindow&) = delete;
    SettledWindow& operator=(const SettledWindow&) = delete;

    // Exposed: what nobody could see before, in root coordinates.
    void wait(const QRegion& exposed);

private:
    using Clock = std::chrono::steady_clock;

    void startWatching();
    bool askForSign();
    void readEvents();
    void collectDamage();
    void lookForChange();
    bool isSettled() const;

    Grabber& grabber;
    Connection& connection;
    xcb_window_t client;
    xcb_window_t frame;
    QRect area;
    std::uint32_t damage = 0;
    QRegion missing; // exposed and not drawn since
    bool listening = false;
    bool signAwaited = false;
    QImage before; // where there is no Damage
    Clock::time_point lastDrawing;
};

} // namespace marrowfin::x11
