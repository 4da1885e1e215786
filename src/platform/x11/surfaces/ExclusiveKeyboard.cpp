#include "platform/x11/surfaces/ExclusiveKeyboard.h"

#include "base/Log.h"

#include <QApplication>
#include <QWidget>

namespace marrowfin::x11 {

namespace {

constexpr int soon = 10;   // ms between attempts while a hot key may still be held down
constexpr int later = 100; // once somebody seems to keep it
constexpr int refusalsToReport = 100;

// The server lets one client take the keyboard from itself: from a menu of ours or a drag, which then
// couldn't be ended by Escape any more.
bool anotherOfOursHasIt() {
    return QApplication::activePopupWidget() || QWidget::keyboardGrabber();
}

} // namespace

ExclusiveKeyboard::ExclusiveKeyboard(const Connection& qt) : qt(qt) {
    retry.setSingleShot(true);
    connect(&retry, &QTimer::timeout, this, &ExclusiveKeyboard::attempt);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

ExclusiveKeyboard::~ExclusiveKeyboard() {
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
    letGo();
}

void ExclusiveKeyboard::take(const void* taker, xcb_window_t window) {
    std::erase_if(wishes, [taker](const Wish& wish) { return wish.taker == taker; });
    wishes.push_back({taker, window});
    refusals = 0;
    attempt();
}

void ExclusiveKeyboard::giveBack(const void* taker) {
    const bool gone = std::erase_if(wishes, [taker](const Wish& wish) { return wish.taker == taker; }) > 0;
    if (!gone)
        return;
    refusals = 0;
    if (wishes.empty())
        letGo();
    else
        attempt();
}

void ExclusiveKeyboard::attempt() {
    retry.stop();
    if (wishes.empty() || holder == wishes.back().window)
        return;
    if (anotherOfOursHasIt()) {
        retry.start(later);
        return;
    }
    const xcb_window_t window = wishes.back().window;
    const auto cookie =
        xcb_grab_keyboard(qt.raw(), 0, window, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const auto answer = qt.reply(xcb_grab_keyboard_reply, cookie);
    if (!answer)
        return;
    if (answer->status == XCB_GRAB_STATUS_SUCCESS) {
        holder = window;
        grabbedAt = cookie.sequence;
        return;
    }
    if (++refusals == refusalsToReport)
        logLine(QStringLiteral(
            "[Marrowfin] Another program holds the keyboard; Escape doesn't reach the overlay."));
    retry.start(refusals < refusalsToReport ? soon : later);
}

void ExclusiveKeyboard::letGo() {
    retry.stop();
    if (holder && !qt.isLost()) {
        xcb_ungrab_keyboard(qt.raw(), XCB_CURRENT_TIME);
        qt.flush();
    }
    holder = XCB_WINDOW_NONE;
}

// Whoever takes or releases a grabbed keyboard moves the focus with it, and the server tells the window that
// loses it.
bool ExclusiveKeyboard::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if (wishes.empty() || (event->response_type & 0x7F) != XCB_FOCUS_OUT)
        return false;
    const auto* focus = static_cast<const xcb_focus_out_event_t*>(message);
    if (focus->mode != XCB_NOTIFY_MODE_GRAB && focus->mode != XCB_NOTIFY_MODE_UNGRAB)
        return false;
    const bool isNews = static_cast<std::int32_t>(event->full_sequence - grabbedAt) > 0;
    if (focus->event == holder && isNews)
        holder = XCB_WINDOW_NONE;
    // Not from inside the event: a menu that closes isn't done with it yet.
    if (!holder)
        retry.start(0);
    return false;
}

} // namespace marrowfin::x11
