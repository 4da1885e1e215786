// Lets the user pick a window of another program with a click. One selector serves one pick: await
// selectWindow(), call cancel(), use the number. Main thread.
#pragma once

#include "base/Flow.h"
#include "capture/OverlayWindow.h"
#include "platform/ScreenSource.h"

#include <QPointer>
#include <memory>
#include <optional>
#include <vector>

namespace marrowfin::capture {

class WindowHighlightView;

// A window that may be picked; bounds are global with the top left origin, in points.
struct WindowCandidate {
    std::uint32_t windowID = 0;
    ScreenRect bounds;
};

// Front to back, without our own windows and those of 50 points or less in a direction.
std::vector<WindowCandidate> windowCandidates(const std::vector<platform::Window>& windows,
                                              std::int64_t ownPID);

// Where the rectangle of a window lies in a view over the screen, y down.
QRectF candidateFrame(const WindowCandidate& candidate, const platform::Screen& screen, double primaryHeight);

class WindowSelector {
public:
    WindowSelector();
    ~WindowSelector();

    // Nothing when the user cancelled or there is no main screen.
    Flow<std::optional<std::uint32_t>> selectWindow();
    // Takes the overlay off the screen.
    void cancel();

private:
    void show(const platform::Screen& screen);
    void showCandidates(const std::vector<WindowCandidate>& candidates, const platform::Screen& screen);
    void finish(std::optional<std::uint32_t> windowID);

    std::unique_ptr<OverlayWindow> window;
    std::vector<QPointer<WindowHighlightView>> windowViews; // children of the window, front to back
    std::optional<Settler<std::optional<std::uint32_t>>> continuation;
    QObject listening; // the list of windows may answer when the selector is gone
};

} // namespace marrowfin::capture
