#include "panel/CapturePanel.h"

#include "base/Outcome.h"
#include "platform/Services.h"

namespace marrowfin {

CapturePanel::CapturePanel(const Image& image, PanelActions actions)
    : builtOnMainThread(isMainThread()),
      view(std::make_unique<CapturePanelContentView>(image, std::move(actions))) {
    const platform::SurfaceSpec traits{platform::SurfaceLevel::Card, platform::SurfaceKeyboard::None,
                                     platform::SurfaceBackdrop::Nothing, false};
    surface = platform::services().surfaceHost.host(*view, traits);
    surface->setInputRegion(view->cardRegion());
    surface->setOutline(view->cardOutline());
    view->setComposited(surface->isComposited());
    QObject::connect(surface.get(), &platform::Surface::compositedChanged, view.get(),
                     [this] { view->setComposited(surface->isComposited()); });
    surfaceAnimator = std::make_unique<chrome::SurfaceAnimator>(*surface);
}

CapturePanel::~CapturePanel() = default;

void CapturePanel::orderFront() {
    surface->orderFront();
}

void CapturePanel::orderOut() {
    surface->orderOut();
}

void CapturePanel::whenClosed(std::function<void()> block) {
    QObject::connect(surface.get(), &platform::Surface::closed, surface.get(), std::move(block));
}

} // namespace marrowfin
