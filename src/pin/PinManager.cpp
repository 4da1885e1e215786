#include "pin/PinManager.h"

#include "base/Shared.h"
#include "pin/PinGeometry.h"
#include "pin/PinnedContentView.h"
#include "platform/Services.h"
#include "platform/SurfaceHost.h"

#include <QAbstractButton>
#include <QRegion>
#include <algorithm>

namespace marrowfin {

PinnedWindow::PinnedWindow(const Image& pinned)
    : image(pinned), view(std::make_unique<PinnedContentView>(pinned)) {
    const platform::SurfaceSpec traits{platform::SurfaceLevel::Pin, platform::SurfaceKeyboard::OnClick,
                                       platform::SurfaceBackdrop::Nothing, false};
    window = platform::services().surfaceHost.host(*view, traits);
    view->setComposited(window->isComposited());
    QObject::connect(window.get(), &platform::Surface::compositedChanged, view.get(),
                     [this] { view->setComposited(window->isComposited()); });
    view->onDragBegin = [this] {
        window->orderFront();
        dragStart = current;
    };
    view->onDrag = [this](Qt::Edges held, QPointF delta) { dragged(held, delta); };
    setFrame({QRectF(pinOrigin, pinSize(image.size()))});
}

PinnedWindow::~PinnedWindow() = default;

void PinnedWindow::setFrame(const DesktopRect& frame) {
    current = frame;
    const double halo = PinnedContentView::halo;
    const DesktopRect whole{frame.rect.adjusted(-halo, -halo, halo, halo)};
    view->resize(whole.rect.size().toSize());
    window->setFrame(whole);
    const QRegion area(view->imageArea());
    window->setInputRegion(area);
    window->setOutline(area);
}

void PinnedWindow::show() {
    window->orderFront();
}

void PinnedWindow::dragged(Qt::Edges held, const QPointF& delta) {
    if (held)
        setFrame(resizedPin(dragStart, held, delta, image.size()));
    else
        setFrame({dragStart.rect.translated(delta)});
}

PinManager& PinManager::shared() {
    return Shared<PinManager>::instance();
}

PinManager::PinManager() = default;
PinManager::~PinManager() = default;

void PinManager::pin(const Image& image) {
    if (!(image.size().width() > 0) || !(image.size().height() > 0))
        return;
    windows.push_back(std::make_unique<PinnedWindow>(image));
    PinnedWindow* pinned = windows.back().get();
    const auto closeThis = [this, pinned] { close(pinned); };
    connect(pinned->content().closeButton(), &QAbstractButton::clicked, this, closeThis);
    pinned->content().onEscape = closeThis;
    connect(&pinned->surface(), &platform::Surface::closed, this, closeThis);
    pinned->show();
}

void PinManager::close(const PinnedWindow* window) {
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [window](const auto& pinned) { return pinned.get() == window; });
    if (found == windows.end())
        return;
    // From the event loop: the pin may be in the middle of its own click or key press.
    std::shared_ptr<PinnedWindow> closing = std::move(*found);
    windows.erase(found);
    closing->surface().orderOut();
    QMetaObject::invokeMethod(
        this, [closing] {}, Qt::QueuedConnection);
}

} // namespace marrowfin
