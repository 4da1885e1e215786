#include "pin/PinManager.h"

#include "base/Shared.h"
#include "pin/PinGeometry.h"
#include "pin/PinnedContentView.h"
#include "platform/Screens.h"
#include "platform/Services.h"
#include "platform/SurfaceHost.h"

#include <QAbstractButton>
#include <QRegion>
#include <algorithm>

namespace marrowfin::pin {

using namespace imaging;

PinnedWindow::PinnedWindow(const Image& pinned)
    : image(pinned), view(std::make_unique<PinnedContentView>(pinned)) {
    const platform::SurfaceSpec traits{platform::SurfaceLevel::Pin, platform::SurfaceKeyboard::OnClick,
                                       platform::SurfaceBackdrop::Nothing, false};
    window = platform::services().surfaceHost.host(*view, traits);
    setFrame({QRectF(pinOrigin, pinSize(image.size()))});
    view->setComposited(window->isComposited());
    QObject::connect(window.get(), &platform::Surface::compositedChanged, view.get(),
                     [this] { view->setComposited(window->isComposited()); });
    view->onDragBegin = [this](const QSinglePointEvent& press) {
        window->orderFront();
        dragStart = current;
        pressedAt = window->locate(press);
    };
    view->onDrag = [this](Qt::Edges held, const QSinglePointEvent& move) {
        dragged(held, window->locate(move).point - pressedAt.point);
    };
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

void PinnedWindow::stayOn(const std::vector<platform::Screen>& screens) {
    const bool taken = !window->isVisible(); // with the monitor it was on
    const bool seen = std::any_of(screens.begin(), screens.end(), [this](const platform::Screen& screen) {
        return screen.frame.rect.intersects(current.rect);
    });
    setFrame(seen && !taken ? current : DesktopRect{QRectF(pinOrigin, current.rect.size())});
    if (taken)
        show();
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

PinManager::PinManager() {
    connect(&platform::services().screens, &platform::Screens::changed, this, &PinManager::screensChanged);
}

PinManager::~PinManager() = default;

void PinManager::pin(const Image& image) {
    if (!(image.size().width() > 0) || !(image.size().height() > 0))
        return;
    windows.push_back(std::make_unique<PinnedWindow>(image));
    PinnedWindow* pinned = windows.back().get();
    const auto closeThis = [this, pinned] { close(pinned); };
    connect(pinned->content().closeButton(), &QAbstractButton::clicked, this, closeThis);
    pinned->content().onEscape = closeThis;
    // With its monitor. From the event loop: the toolkit is in the middle of it.
    connect(&pinned->surface(), &platform::Surface::closed, this, &PinManager::screensChanged,
            Qt::QueuedConnection);
    pinned->show();
}

void PinManager::screensChanged() {
    const std::vector<platform::Screen> screens = platform::services().screens.screens();
    if (screens.empty())
        return; // until there is one again
    for (const std::unique_ptr<PinnedWindow>& pinned : windows)
        pinned->stayOn(screens);
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

} // namespace marrowfin::pin
