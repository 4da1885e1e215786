#include "capture/WindowSelector.h"

#include "base/Corrections.h"
#include "capture/KeyCaptureView.h"
#include "capture/WindowHighlightView.h"
#include "platform/Services.h"

#include <QCoreApplication>

namespace marrowfin::capture {

using namespace platform;

namespace {
constexpr double smallestWindowSide = 50; // a window must exceed it in both directions
}

std::vector<WindowCandidate> windowCandidates(const std::vector<Window>& windows, std::int64_t ownPID) {
    std::vector<WindowCandidate> kept;
    for (const Window& window : windows) {
        if (!window.ownerPID || *window.ownerPID == ownPID)
            continue;
        const QRectF& frame = window.frame.rect;
        if (frame.width() > smallestWindowSide && frame.height() > smallestWindowSide)
            kept.push_back({window.windowID, window.frame});
    }
    return kept;
}

QRectF candidateFrame(const WindowCandidate& candidate, const Screen& screen, double primaryHeight) {
    const QRectF& bounds = candidate.bounds.rect;
    if (Corrections::isActive(Correction::WindowRectangles)) {
        const ScreenRect covered = toScreen(screen.frame, primaryHeight);
        return offset(bounds, -minX(covered.rect), -minY(covered.rect));
    }
    // Settled: the bounds count from the top, the view from the bottom, and neither is converted, so that a
    // rectangle lies mirrored about the screen's height. The screen's own origin isn't taken off either.
    return {bounds.x(), screen.frame.rect.height() - bounds.y() - bounds.height(), bounds.width(),
            bounds.height()};
}

WindowSelector::WindowSelector() = default;
WindowSelector::~WindowSelector() {
    cancel();
}

Flow<std::optional<std::uint32_t>> WindowSelector::selectWindow() {
    co_await services().surfaceHost.transientsGone();
    const std::optional<Screen> screen = services().screens.mainScreen();
    if (!screen)
        co_return std::nullopt;
    auto [settler, outcome] = makeOutcome<std::optional<std::uint32_t>>();
    continuation = std::move(settler); // whoever destroys us ends the wait
    show(*screen);
    const Result<std::optional<std::uint32_t>> windowID = co_await outcome;
    co_return windowID.value_or(std::nullopt);
}

void WindowSelector::show(const Screen& screen) {
    SurfaceSpec traits;
    traits.level = SurfaceLevel::Overlay;
    traits.keyboard = SurfaceKeyboard::Exclusive;
    traits.backdrop = SurfaceBackdrop::Snapshot;
    window = std::make_unique<OverlayWindow>(screen, QColor(Qt::transparent), traits);
    auto* keys = new KeyCaptureView(window.get());
    window->fillWith(*keys);
    keys->onEscape = [this] { finish(std::nullopt); };
    QObject::connect(window.get(), &OverlayWindow::closed, window.get(), [this] { finish(std::nullopt); });
    // The list is asked for first, so that the overlay's own window is up while it is being made; the
    // rectangles come when it is there. A listing that fails leaves an overlay from which Escape leads out.
    services().screenSource.content().then(&listening, [this,
                                                        screen](const Result<ShareableContent>& content) {
        if (content)
            showCandidates(windowCandidates(content->windows, QCoreApplication::applicationPid()), screen);
    });
    window->orderFront();
    keys->setFocus();
}

void WindowSelector::showCandidates(const std::vector<WindowCandidate>& candidates, const Screen& screen) {
    if (!window)
        return;
    const double primaryHeight = services().screens.primaryHeight();
    for (const WindowCandidate& candidate : candidates) {
        auto* view = new WindowHighlightView(window.get());
        view->windowID = candidate.windowID;
        view->onSelect = [this](std::uint32_t windowID) { finish(windowID); };
        view->setGeometry(candidateFrame(candidate, screen, primaryHeight).toRect());
        // Later views lie above earlier ones, so the window further back gets the click where two overlap;
        // corrected, each goes beneath those before it.
        if (Corrections::isActive(Correction::WindowRectangles) && !windowViews.empty())
            view->stackUnder(windowViews.back());
        view->show();
        windowViews.emplace_back(view);
    }
}

void WindowSelector::cancel() {
    if (!window)
        return;
    windowViews.clear();
    // The views die with the window, later; none of them may reach this selector again.
    for (auto* view : window->findChildren<WindowHighlightView*>())
        view->onSelect = nullptr;
    for (auto* view : window->findChildren<KeyCaptureView*>())
        view->onEscape = nullptr;
    OverlayWindow::retire(std::move(window));
}

void WindowSelector::finish(std::optional<std::uint32_t> windowID) {
    if (!continuation)
        return;
    const Settler<std::optional<std::uint32_t>> settler = *continuation;
    continuation.reset();
    settler.settle(windowID);
}

} // namespace marrowfin::capture
