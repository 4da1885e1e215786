#include "platform/x11/capture/FrameGrab.h"

#include <ctime>

namespace marrowfin::x11 {

using namespace platform;

namespace {
// After a moment in which the display may have gone.
constexpr auto noSuchDisplay = "The display is gone.";

WithCursor cursorOf(const StreamConfiguration& configuration) {
    return configuration.showsCursor ? WithCursor::Yes : WithCursor::No;
}
} // namespace

FrameGrab::FrameGrab(Grabber& grabber, const LayoutBoard& layouts, const ContentFilter& filter,
                     const StreamConfiguration& configuration)
    : grabber(grabber), layouts(layouts), filter(filter), configuration(configuration) {
    if (const auto* picked = std::get_if<WindowFilter>(&filter))
        window = std::make_unique<WindowGrab>(grabber, picked->windowID);
}

Result<Frame> FrameGrab::grab() {
    Frame frame;
    Result<QImage> picture = pixels();
    if (!picture)
        return tl::unexpected(picture.error());
    frame.timestampNanoseconds = monotonicNanoseconds();
    frame.pixels = *std::move(picture);
    frame.format =
        frame.pixels.format() == QImage::Format_RGB32 ? PixelFormat::Opaque : PixelFormat::Premultiplied;
    frame.damage = frame.pixels.rect();
    return frame;
}

Result<QImage> FrameGrab::pixels() {
    if (window) {
        Result<QImage> picture = window->grab(cursorOf(configuration));
        area = window->lastArea();
        return picture;
    }
    const auto layout = layouts.current();
    const NativeDisplay* display = layout->find(std::get<DisplayFilter>(filter).displayID);
    if (!display)
        return failure(QString::fromLatin1(noSuchDisplay));
    area = nativeSource(*display, configuration);
    return grabber.grabScreen(area, cursorOf(configuration));
}

xcb_window_t FrameGrab::drawable() const {
    return window ? window->frameWindow() : grabber.server().root();
}

QRect nativeSource(const NativeDisplay& display, const StreamConfiguration& configuration) {
    const QRectF source =
        standardized(configuration.sourceRect.value_or(QRectF(QPointF(), QSizeF(display.points))));
    const double scale = display.scale();
    return {display.native.x() + roundedToInt(source.x() * scale),
            display.native.y() + roundedToInt(source.y() * scale), configuration.width, configuration.height};
}

std::int64_t monotonicNanoseconds() {
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::int64_t>(now.tv_sec) * 1'000'000'000 + now.tv_nsec;
}

} // namespace marrowfin::x11
