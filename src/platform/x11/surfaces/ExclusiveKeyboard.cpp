#include "platform/x11/surfaces/ExclusiveKeyboard.h"

#include "base/Log.h"

namespace marrowfin::x11 {

namespace {

constexpr int soon = 10;   // ms between attempts while a hot key may still be held down
constexpr int later = 100; // once somebody seems to keep it
constexpr int refusalsToReport = 100;

} // namespace

ExclusiveKeyboard::ExclusiveKeyboard(const Connection& qt) : qt(qt) {
    retry.setSingleShot(true);
    connect(&retry, &QTimer::timeout, this, &ExclusiveKeyboard::attempt);
}

ExclusiveKeyboard::~ExclusiveKeyboard() {
    giveBack();
}

void ExclusiveKeyboard::take(xcb_window_t of) {
    window = of;
    refusals = 0;
    attempt();
}

void ExclusiveKeyboard::attempt() {
    const auto answer =
        qt.reply(xcb_grab_keyboard_reply, xcb_grab_keyboard(qt.raw(), 0, window, XCB_CURRENT_TIME,
                                                            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    taken = answer && answer->status == XCB_GRAB_STATUS_SUCCESS;
    if (taken || !answer)
        return;
    if (++refusals == refusalsToReport)
        logLine(QStringLiteral(
            "[Marrowfin] Another program holds the keyboard; Escape doesn't reach the overlay."));
    retry.start(refusals < refusalsToReport ? soon : later);
}

void ExclusiveKeyboard::giveBack() {
    retry.stop();
    if (taken && !qt.isLost()) {
        xcb_ungrab_keyboard(qt.raw(), XCB_CURRENT_TIME);
        qt.flush();
    }
    taken = false;
}

} // namespace marrowfin::x11
