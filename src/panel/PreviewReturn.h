// What a drag carried, sliding back to its card after nobody took it. A surface of its own that lets clicks
// through. Points, DesktopRect. Owned by the card's window. Main thread.
#pragma once

#include "chrome/Delay.h"
#include "chrome/SurfaceAnimator.h"
#include "platform/SurfaceHost.h"

#include <QImage>
#include <memory>

class QWidget;

namespace marrowfin::panel {

class PreviewReturn {
public:
    static constexpr double seconds = 0.3;

    // Shown at once, where it was let go.
    PreviewReturn(const QImage& preview, const DesktopRect& from, const DesktopRect& to);
    ~PreviewReturn();

    DesktopRect frame() const { return animator->frame(); }
    bool isUnderWay() const { return surface->isVisible(); }

private:
    std::unique_ptr<QWidget> picture;
    std::unique_ptr<platform::Surface> surface;
    std::unique_ptr<chrome::SurfaceAnimator> animator;
    chrome::Delay arrival;
};

} // namespace marrowfin::panel
