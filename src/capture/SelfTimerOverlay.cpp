#include "capture/SelfTimerOverlay.h"

#include "capture/CountdownDigit.h"
#include "platform/Services.h"

#include <QPointer>
#include <QTimer>
#include <chrono>

namespace marrowfin {

using namespace platform;
using namespace std::chrono_literals;

namespace {
Outcome<void> after(std::chrono::milliseconds time) {
    auto [settler, outcome] = makeOutcome<void>();
    QTimer::singleShot(time, Qt::PreciseTimer, [settler = settler] { settler.settle({}); });
    return outcome;
}
} // namespace

SelfTimerOverlay::SelfTimerOverlay() = default;
SelfTimerOverlay::~SelfTimerOverlay() {
    if (window)
        OverlayWindow::retire(std::move(window));
}

QCoro::Task<> SelfTimerOverlay::run(int seconds) {
    co_await services().surfaceHost.transientsGone();
    const std::optional<Screen> screen = services().screens.mainScreen();
    if (!screen)
        co_return;
    SurfaceSpec traits;
    traits.level = SurfaceLevel::Overlay;
    traits.keyboard = SurfaceKeyboard::None;
    traits.backdrop = SurfaceBackdrop::Snapshot;
    traits.passesClicks = true;
    window = std::make_unique<OverlayWindow>(*screen, QColor::fromRgbF(0, 0, 0, 0.4f), traits);
    const QPointer<CountdownDigit> digit = new CountdownDigit(window.get());
    window->fillWith(*digit);
    window->orderFront();
    for (int n = seconds; n >= 1; --n) {
        if (digit)
            digit->showNumber(n);
        co_await after(1s);
    }
    OverlayWindow::retire(std::move(window));
}

} // namespace marrowfin
