// What the surfaces and menus of one host share. Each of them holds it, so it lives as long as the last of
// them. Main thread.
#pragma once

#include "platform/SurfaceHost.h"
#include "platform/x11/capture/GrabLink.h"
#include "platform/x11/surfaces/CompositorWatch.h"
#include "platform/x11/surfaces/ContentsKeeper.h"
#include "platform/x11/surfaces/ExclusiveKeyboard.h"
#include "platform/x11/surfaces/FocusLoans.h"
#include "platform/x11/surfaces/GoneWatch.h"
#include "platform/x11/surfaces/StackWatch.h"

#include <QPointer>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <vector>

class QMenu;

namespace marrowfin::x11 {

class X11Surface;

// Whether a picture without the window has been seen, or a compositor may still show it.
enum class SeenGone { Yes, NotYet };

class SurfaceContext {
public:
    SurfaceContext(std::unique_ptr<Connection> qt, std::shared_ptr<GrabLink> grabs);

    const std::unique_ptr<Connection> qt;
    CompositorWatch compositor;
    ContentsKeeper contents;
    FocusLoans focus;
    ExclusiveKeyboard keyboard;
    GoneWatch gone;

    // The stack: surfaces by their levels, then menus, back to front.
    void add(X11Surface& surface);
    void remove(X11Surface& surface);
    void bringToFront(X11Surface& surface);
    void add(QMenu& menu);

    // What the screen shows now, after everything asked for on Qt's connection so far; a null image when it
    // can't be read. It is read while the caller does something else.
    std::future<QImage> still(const QRect& native);

    // A window of ours is about to be mapped, perhaps one that had vanished.
    void appears(xcb_window_t window);
    // A window of ours was unmapped.
    void vanished(xcb_window_t window, SeenGone seen);
    // A window of ours is transparent already, and is unmapped by the time its departure ends.
    void departureBegan() { ++departing; }
    void departureEnded();
    // Calls back from the event loop when nothing that vanished or is departing can be in a grab.
    void whenClean(std::function<void()> done);

private:
    void restack(platform::SurfaceLevel from);
    // Lowest first.
    std::vector<const X11Surface*> visibleAbove(int level) const;
    std::vector<xcb_window_t> visibleBackToFront() const;

    const std::shared_ptr<GrabLink> grabs;
    std::vector<X11Surface*> surfaces; // in the order of coming to the front
    std::vector<QPointer<QMenu>> menus;
    StackWatch stack;
    int departing = 0;
    xcb_window_t lastVanished = XCB_WINDOW_NONE;
    // When something vanished that hasn't been seen gone.
    std::chrono::steady_clock::time_point unseenSince;
    std::vector<std::function<void()>> waitingForDepartures;
};

} // namespace marrowfin::x11
