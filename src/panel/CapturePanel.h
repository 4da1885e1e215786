// One card's window: it never takes the focus, stands above every other window on every workspace, and paints
// its own shadow in a halo that lets clicks through. Owned by its controller's entry. Main thread.
#pragma once

#include "chrome/SurfaceAnimator.h"
#include "panel/CapturePanelContentView.h"
#include "panel/PreviewReturn.h"
#include "platform/SurfaceHost.h"

#include <memory>

namespace marrowfin::panel {

class CapturePanel {
public:
    CapturePanel(const imaging::Image& image, PanelActions actions);
    ~CapturePanel();
    CapturePanel(const CapturePanel&) = delete;
    CapturePanel& operator=(const CapturePanel&) = delete;

    bool constructedOnMainThread() const { return builtOnMainThread; }
    CapturePanelContentView& content() { return *view; }
    const CapturePanelContentView& content() const { return *view; }
    chrome::SurfaceAnimator& animator() { return *surfaceAnimator; }

    // Of the window, as it is at this moment.
    DesktopRect frame() const { return surfaceAnimator->frame(); }
    bool isVisible() const { return surface->isVisible(); }
    void orderFront();
    void orderOut();
    // From the pointer, where nobody took it, to its place on the card; the time is the animation clock's.
    void slideBack(const DragPreview& preview, const DesktopPoint& pointer);
    // The last that slid back; null when none has.
    const PreviewReturn* previewReturn() const { return returning.get(); }
    // The block runs when the window system takes the window away.
    void whenClosed(std::function<void()> block);

private:
    bool builtOnMainThread;
    std::unique_ptr<CapturePanelContentView> view;
    std::unique_ptr<platform::Surface> surface;
    std::unique_ptr<chrome::SurfaceAnimator> surfaceAnimator;
    std::unique_ptr<PreviewReturn> returning;
};

} // namespace marrowfin::panel
