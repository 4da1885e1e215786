// What a stream shows, one frame at a time: the display's part or the window, on a given connection. Native
// pixels. Thread: the connection's.
#pragma once

#include "platform/ScreenSource.h"
#include "platform/x11/capture/Grabber.h"
#include "platform/x11/capture/WindowGrab.h"
#include "platform/x11/layout/LayoutBoard.h"

#include <memory>

namespace marrowfin::x11 {

class FrameGrab {
public:
    FrameGrab(Grabber& grabber, const LayoutBoard& layouts, const platform::ContentFilter& filter,
              const platform::StreamConfiguration& configuration);

    // A complete frame, stamped, all of it damage. The error is a sentence.
    Result<platform::Frame> grab();
    // The drawable whose damage makes a new frame, and the part of the root that the last frame showed.
    xcb_window_t drawable() const;
    QRect lastArea() const { return area; }

private:
    Result<QImage> pixels();

    Grabber& grabber;
    const LayoutBoard& layouts;
    platform::ContentFilter filter;
    platform::StreamConfiguration configuration;
    std::unique_ptr<WindowGrab> window;
    QRect area;
};

// Root coordinates of the configuration's source rectangle on the display: the origin rounded like the size,
// which is the configuration's.
QRect nativeSource(const NativeDisplay& display, const platform::StreamConfiguration& configuration);
std::int64_t monotonicNanoseconds();

} // namespace marrowfin::x11
