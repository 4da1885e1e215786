// Turns a capture command into one image: the four flows, the way from a selection to pixels, and the
// publication of the result. Owns the flows that it starts; main thread.
#pragma once

#include "base/Coordinates.h"
#include "base/Flow.h"
#include "imaging/Image.h"
#include "platform/ScreenSource.h"

#include <QObject>
#include <functional>
#include <optional>

namespace marrowfin::capture {

class ScreenCaptureManager : public QObject {
    Q_OBJECT
public:
    ScreenCaptureManager() = default;

    // The last successful capture; never cleared by a failure.
    const std::optional<imaging::Image>& capturedImage() const { return image; }
    // Publishes, also when the value is the same.
    void setCapturedImage(const imaging::Image& value);
    // Calls with the current value and then on each set, from the event loop of the main thread, while the
    // receiver lives.
    void observeCapturedImage(QObject* receiver,
                              std::function<void(const std::optional<imaging::Image>&)> sink);

    // The last accepted area selection; memory only.
    const std::optional<DesktopRect>& previousRect() const { return previous; }

    // Called with the image right before it is published.
    using Taken = std::function<void(const imaging::Image&)>;
    // Publish the image, or print one line; a change of mind is silent. Answer why there is none.
    Outcome<void> captureArea(Taken taken = {});
    Outcome<void> capturePreviousArea(Taken taken = {});
    Outcome<void> captureFullscreen(Taken taken = {});
    Outcome<void> captureWindow(Taken taken = {});

    // The same captures for who wants the image itself, or why there is none: Cancelled when nothing was
    // chosen or there was nothing to choose from. They publish and print nothing.
    Flow<Result<imaging::Image>> areaCapture();
    Flow<Result<imaging::Image>> previousAreaCapture();
    Flow<Result<imaging::Image>> fullscreenCapture();
    Flow<Result<imaging::Image>> windowCapture();

    // The display is chosen by the rectangle when none is given.
    static Flow<Result<imaging::Image>> captureRect(DesktopRect rect,
                                                    std::optional<platform::Display> display);
    static Flow<Result<imaging::Image>> captureWindowWithID(std::uint32_t windowID);

    // Asked before each command from the menu; shows the alert when capturing isn't permitted.
    static Flow<bool> screenPermissionGranted();

Q_SIGNALS:
    void capturedImageChanged();

private:
    Flow<Result<void>> publish(Flow<Result<imaging::Image>> capture, QString failurePrefix, Taken taken);

    std::optional<imaging::Image> image;
    std::optional<DesktopRect> previous;
    FlowScope flows;
};

} // namespace marrowfin::capture
