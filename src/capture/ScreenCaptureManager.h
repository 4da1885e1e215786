// Turns a capture command into one image: the four flows, the way from a selection to pixels, and the
// publication of the result. Lives as long as the process; main thread. Flows never fail to their caller:
// they print one line.
#pragma once

#include "base/Coordinates.h"
#include "imaging/Image.h"
#include "platform/ScreenSource.h"

#include <QCoro/QCoroTask>
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

    QCoro::Task<> captureArea();
    QCoro::Task<> capturePreviousArea();
    QCoro::Task<> captureFullscreen();
    QCoro::Task<> captureWindow();

    // The display is chosen by the rectangle when none is given.
    static QCoro::Task<Result<imaging::Image>> captureRect(DesktopRect rect,
                                                           std::optional<platform::Display> display);
    static QCoro::Task<Result<imaging::Image>> captureWindowWithID(std::uint32_t windowID);

    // Asked before each command from the menu; shows the alert when capturing isn't permitted.
    static QCoro::Task<bool> screenPermissionGranted();

Q_SIGNALS:
    void capturedImageChanged();

private:
    void publish(const Result<imaging::Image>& result, const QString& failurePrefix);

    std::optional<imaging::Image> image;
    std::optional<DesktopRect> previous;
};

} // namespace marrowfin::capture
