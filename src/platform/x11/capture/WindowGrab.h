// The pixels of one window, whole, whatever covers it. Native pixels. Thread: the connection's. While the
// object lives, a window that nobody else keeps off the screen is kept there for us.
//
// With a compositor the window's picture exists and is read. Without one, a window that nothing covers is
// read from the screen; a covered one is first drawn off the screen by its program, which takes a moment: see
// SettledWindow. A decoration that is drawn apart from the window's picture is read from the screen: see
// DecorationStrips.
#pragma once

#include "platform/x11/capture/Grabber.h"
#include "platform/x11/layout/WindowList.h"

namespace marrowfin::x11 {

class WindowGrab {
public:
    WindowGrab(Grabber& grabber, xcb_window_t client);
    ~WindowGrab();
    WindowGrab(const WindowGrab&) = delete;
    WindowGrab& operator=(const WindowGrab&) = delete;

    // The window's visible frame as it is now, at its own size; transparent where its shape leaves it out, as
    // round corners do. The error is a sentence.
    Result<QImage> grab(WithCursor cursor);
    // The window whose drawing changes the picture: the root's child that holds the client.
    xcb_window_t frameWindow() const { return frame; }
    // Where the last picture was, in root coordinates.
    QRect lastArea() const { return area; }

private:
    struct Place {
        QRect outer;   // of the frame window, border in
        QPoint inside; // its origin, within the border
        PixelLayout layout;
    };
    std::optional<Place> placeOfFrame();
    QImage fromPixmap(const Place& place);
    Result<QImage> pixels(const Place& place);
    void cutToShape(QImage& picture, const Place& place) const;
    Result<QImage> fromScreen();
    void decorate(QImage& picture, const WindowFacts& window);
    QRegion covered(const QRect& visible) const;
    void keepOffScreen(const QRegion& exposed);

    Grabber& grabber;
    Connection& connection;
    xcb_window_t client;
    xcb_window_t frame; // none when the client was gone already
    QRect area;
    bool redirected = false;
};

} // namespace marrowfin::x11
