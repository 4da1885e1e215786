// A window of another program: a client with a thread of its own that paints a known pattern whenever the
// server asks for it, as late as the test says. Native pixels.
#pragma once

#include "platform/x11/server/Connection.h"

#include <QImage>
#include <QRect>
#include <atomic>
#include <chrono>
#include <thread>

namespace marrowfin::test {

struct WindowLook {
    QRect rect;
    std::uint32_t seed = 1;
    int depth = 24;
    bool managed = true;
    // Between being asked to paint and painting.
    std::chrono::milliseconds delay{0};
    // Numbers of _NET_WM_STRUT_PARTIAL; makes it a dock.
    std::vector<std::uint32_t> strut = {};
    bool tellsProcess = true;
    bool answersPings = true;
};

class PaintedWindow {
public:
    // Returns when the window is up and painted.
    PaintedWindow(const QByteArray& display, const WindowLook& look);
    ~PaintedWindow();
    PaintedWindow(const PaintedWindow&) = delete;
    PaintedWindow& operator=(const PaintedWindow&) = delete;

    xcb_window_t id() const { return window; }
    // The pattern of the client area.
    QImage pattern() const;
    // On top of its siblings, whether the window manager likes it or not.
    void raise();
    // Paints another pattern; returns when the server has it.
    void repaint(std::uint32_t newSeed);
    // Waits until the screen shows the pattern, whatever a compositor makes of it on the way there. For
    // windows that nothing covers.
    void waitUntilSeen() const;
    // Where the client area is, in root coordinates.
    QRect place() const;

private:
    void make();
    void run();
    void paint();
    void handle(const xcb_generic_event_t& event);
    void waitUntilPainted();

    WindowLook look;
    std::unique_ptr<x11::Connection> connection;
    std::unique_ptr<x11::Connection> asking; // for the test's thread
    xcb_window_t window = 0;
    std::atomic<std::uint32_t> seed;
    std::atomic<int> paints = 0;
    std::atomic<bool> ending = false;
    std::thread thread;
};

// What a window of that size and seed shows.
QImage patternOf(const QSize& size, std::uint32_t seed, int depth);

} // namespace marrowfin::test
