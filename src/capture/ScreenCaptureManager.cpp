#include "capture/ScreenCaptureManager.h"

#include "base/Log.h"
#include "capture/AreaSelectionOverlay.h"
#include "capture/CaptureEngine.h"
#include "capture/CaptureError.h"
#include "capture/CaptureGeometry.h"
#include "capture/PermissionAlert.h"
#include "capture/WindowSelector.h"
#include "platform/Screens.h"
#include "platform/Services.h"
#include "platform/SurfaceHost.h"

namespace marrowfin::capture {

using namespace imaging;
using namespace platform;

void ScreenCaptureManager::setCapturedImage(const Image& value) {
    image = value;
    Q_EMIT capturedImageChanged();
}

void ScreenCaptureManager::observeCapturedImage(QObject* receiver,
                                                std::function<void(const std::optional<Image>&)> sink) {
    // Each set is delivered with the value that it set, in order, even when two come before the loop turns.
    const auto deliver = [receiver, sink = std::move(sink)](std::optional<Image> value) {
        QMetaObject::invokeMethod(
            receiver, [sink, value = std::move(value)] { sink(value); }, Qt::QueuedConnection);
    };
    deliver(image);
    connect(this, &ScreenCaptureManager::capturedImageChanged, receiver, [this, deliver] { deliver(image); });
}

Outcome<void> ScreenCaptureManager::captureArea(Taken taken) {
    return flows.start(publish(areaCapture(), QStringLiteral("Capture failed: "), std::move(taken)));
}

Outcome<void> ScreenCaptureManager::capturePreviousArea(Taken taken) {
    if (!previous)
        return captureArea(std::move(taken));
    return flows.start(
        publish(previousAreaCapture(), QStringLiteral("Previous area capture failed: "), std::move(taken)));
}

Outcome<void> ScreenCaptureManager::captureFullscreen(Taken taken) {
    return flows.start(
        publish(fullscreenCapture(), QStringLiteral("Fullscreen capture failed: "), std::move(taken)));
}

Outcome<void> ScreenCaptureManager::captureWindow(Taken taken) {
    return flows.start(publish(windowCapture(), QStringLiteral("Window capture failed: "), std::move(taken)));
}

Flow<Result<void>> ScreenCaptureManager::publish(Flow<Result<Image>> capture, QString failurePrefix,
                                                 Taken taken) {
    const Result<Image> result = co_await std::move(capture);
    if (!result) {
        if (result.error().kind != Error::Kind::Cancelled)
            printLine(failurePrefix + result.error().message);
        co_return tl::unexpected(result.error());
    }
    if (taken)
        taken(*result);
    setCapturedImage(*result);
    co_return Result<void>();
}

Flow<Result<Image>> ScreenCaptureManager::areaCapture() {
    AreaSelectionOverlay overlay;
    const std::optional<DesktopRect> rect = co_await overlay.selectArea();
    overlay.cancel();
    if (!rect || isEmpty(rect->rect))
        co_return cancelled();
    // Before the capture: one that fails still leaves the rectangle to be repeated.
    previous = rect;
    co_return co_await captureRect(*rect, std::nullopt);
}

Flow<Result<Image>> ScreenCaptureManager::previousAreaCapture() {
    if (!previous)
        co_return co_await areaCapture();
    co_return co_await captureRect(*previous, std::nullopt);
}

Flow<Result<Image>> ScreenCaptureManager::fullscreenCapture() {
    const Result<ShareableContent> content = co_await services().screenSource.content();
    if (!content)
        co_return tl::unexpected(content.error());
    if (content->displays.empty())
        co_return cancelled();
    const Display display = content->displays.front();
    const DesktopRect rect = toDesktop(display.frame, services().screens.primaryHeight());
    co_return co_await captureRect(rect, display);
}

Flow<Result<Image>> ScreenCaptureManager::windowCapture() {
    WindowSelector selector;
    const std::optional<std::uint32_t> windowID = co_await selector.selectWindow();
    selector.cancel();
    if (!windowID)
        co_return cancelled();
    co_return co_await captureWindowWithID(*windowID);
}

Flow<Result<Image>> ScreenCaptureManager::captureRect(DesktopRect rect, std::optional<Display> display) {
    // The barrier runs while the content is fetched: no surface of ours on its way out may be in the frame.
    const Outcome<void> gone = services().surfaceHost.transientsGone();
    const Result<ShareableContent> content = co_await services().screenSource.content();
    if (!content)
        co_return tl::unexpected(content.error());
    const ScreenRect flipped = toScreen(rect, services().screens.primaryHeight());
    const std::optional<Display> chosen = display ? display : displayFor(flipped, content->displays);
    if (!chosen)
        co_return failure(CaptureError::streamStartFailed);
    co_await gone;
    const auto engine = CaptureEngine::make();
    co_return co_await engine->capture(DisplayFilter{chosen->displayID}, rectConfiguration(flipped, *chosen));
}

Flow<Result<Image>> ScreenCaptureManager::captureWindowWithID(std::uint32_t windowID) {
    const Outcome<void> gone = services().surfaceHost.transientsGone();
    const Result<ShareableContent> content = co_await services().screenSource.content();
    if (!content)
        co_return tl::unexpected(content.error());
    for (const Window& window : content->windows) {
        if (window.windowID != windowID)
            continue;
        const std::optional<Screen> main = services().screens.mainScreen();
        const std::optional<double> backing = main ? std::optional(main->backingScaleFactor) : std::nullopt;
        const double scale = windowScale(window, content->displays, backing);
        co_await gone;
        const auto engine = CaptureEngine::make();
        co_return co_await engine->capture(WindowFilter{windowID}, windowConfiguration(window, scale));
    }
    co_return failure(CaptureError::streamStartFailed);
}

Flow<bool> ScreenCaptureManager::screenPermissionGranted() {
    const Result<ShareableContent> content = co_await services().screenSource.content();
    if (content)
        co_return true;
    co_await showPermissionAlert(content.error());
    co_return false;
}

} // namespace marrowfin::capture
