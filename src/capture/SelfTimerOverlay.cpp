#include "capture/SelfTimerOverlay.h"

#include "capture/CountdownDigit.h"
#include "platform/Services.h"

#include <QPointer>

namespace marrowfin::capture {

using namespace platform;

namespace {
constexpr double secondsPerDigit = 1;
}

SelfTimerOverlay::SelfTimerOverlay() = default;
SelfTimerOverlay::~SelfTimerOverlay() {
    if (window)
        OverlayWindow::retire(std::move(window));
}

Outcome<void> SelfTimerOverlay::secondPassed() {
    auto [settler, outcome] = makeOutcome<void>();
    pause.start(secondsPerDigit, [settler = settler] { settler.settle({}); });
    return outcome;
}

Flow<> SelfTimerOverlay::run(int seconds) {
    co_await services().surfaceHost.transientsGone();
    const std::optional<Screen> screen = services().screens.mainScreen();
    if (!screen)
        co_return;
    SurfaceSpec traits;
    traits.level = SurfaceLevel::Overlay;
    traits.keyboard = SurfaceKeyboard::None;
    traits.backdrop = SurfaceBackdrop::Nothing;
    traits.passesClicks = true;
    window = std::make_unique<OverlayWindow>(*screen, QColor::fromRgbF(0, 0, 0, 0.4f), traits);
    const QPointer<CountdownDigit> digit = new CountdownDigit(window.get());
    window->fillWith(*digit);
    if (seconds >= 1)
        digit->showNumber(seconds);
    window->setOutline(digit->outline());
    window->orderFront();
    for (int n = seconds; n >= 1; --n) {
        if (digit) {
            digit->showNumber(n);
            window->setOutline(digit->outline());
        }
        co_await secondPassed();
    }
    OverlayWindow::retire(std::move(window));
}

} // namespace marrowfin::capture
