#include "panel/CapturePanel.h"

#include "base/Outcome.h"
#include "platform/Services.h"

namespace marrowfin::panel {

using namespace imaging;

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

void CapturePanel::slideBack(const DragPreview& preview, const DesktopPoint& pointer) {
    const QRectF window = frame().rect;
    const QRectF& seen = preview.frame;
    const DesktopRect home{
        QRectF(QPointF(window.x() + seen.x(), window.y() + window.height() - seen.y() - seen.height()),
               seen.size())};
    const QPointF grip(window.x() + preview.grip.x(), window.y() + window.height() - preview.grip.y());
    const DesktopRect released{home.rect.translated(pointer.point - grip)};
    returning = std::make_unique<PreviewReturn>(preview.picture, released, home);
}

void CapturePanel::whenClosed(std::function<void()> block) {
    QObject::connect(surface.get(), &platform::Surface::closed, surface.get(), std::move(block));
}

} // namespace marrowfin::panel
