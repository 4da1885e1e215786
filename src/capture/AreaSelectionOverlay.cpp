#include "capture/AreaSelectionOverlay.h"

#include "capture/SelectionView.h"
#include "platform/Services.h"

namespace marrowfin::capture {

using namespace platform;

AreaSelectionOverlay::AreaSelectionOverlay() = default;
AreaSelectionOverlay::~AreaSelectionOverlay() {
    cancel();
}

Flow<std::optional<DesktopRect>> AreaSelectionOverlay::selectArea() {
    // Where the dim stands over a still of the screen, the menu that asked for it mustn't be in the still.
    co_await services().surfaceHost.transientsGone();
    const std::optional<Screen> screen = services().screens.mainScreen();
    if (!screen)
        co_return std::nullopt;
    auto [settler, outcome] = makeOutcome<std::optional<DesktopRect>>();
    continuation = std::move(settler); // whoever destroys us ends the wait
    show(*screen);
    const Result<std::optional<DesktopRect>> rect = co_await outcome;
    co_return rect.value_or(std::nullopt);
}

void AreaSelectionOverlay::show(const Screen& screen) {
    SurfaceSpec traits;
    traits.level = SurfaceLevel::Overlay;
    traits.keyboard = SurfaceKeyboard::Exclusive;
    traits.backdrop = SurfaceBackdrop::Snapshot;
    window = std::make_unique<OverlayWindow>(screen, QColor::fromRgbF(0, 0, 0, 0.3f), traits);
    selectionView = new SelectionView(window.get());
    window->fillWith(*selectionView);
    selectionView->onComplete = [this](QRectF rect) { finish(window->convertRectToScreen(rect)); };
    selectionView->onCancel = [this] { finish(std::nullopt); };
    QObject::connect(window.get(), &OverlayWindow::closed, window.get(), [this] { finish(std::nullopt); });
    window->orderFront();
    selectionView->setFocus();
}

void AreaSelectionOverlay::cancel() {
    if (!window)
        return;
    selectionView->onComplete = nullptr;
    selectionView->onCancel = nullptr;
    selectionView = nullptr;
    OverlayWindow::retire(std::move(window));
}

void AreaSelectionOverlay::finish(std::optional<DesktopRect> rect) {
    if (selectionView)
        selectionView->setCursor(Qt::ArrowCursor);
    if (!continuation)
        return;
    const Settler<std::optional<DesktopRect>> settler = *continuation;
    continuation.reset();
    settler.settle(rect);
}

} // namespace marrowfin::capture
