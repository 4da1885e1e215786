// Lets the user drag out a rectangle on the main screen. One overlay serves one selection: await
// selectArea(), call cancel(), use the result. Main thread.
#pragma once

#include "base/Coordinates.h"
#include "base/Flow.h"
#include "capture/OverlayWindow.h"

#include <memory>
#include <optional>

namespace marrowfin::capture {

class SelectionView;

class AreaSelectionOverlay {
public:
    AreaSelectionOverlay();
    ~AreaSelectionOverlay();

    // Nothing when the user cancelled or there is no main screen.
    Flow<std::optional<DesktopRect>> selectArea();
    // Takes the overlay off the screen.
    void cancel();

private:
    void show(const platform::Screen& screen);
    void finish(std::optional<DesktopRect> rect);

    std::unique_ptr<OverlayWindow> window;
    SelectionView* selectionView = nullptr; // the window's child
    std::optional<Settler<std::optional<DesktopRect>>> continuation;
};

} // namespace marrowfin::capture
