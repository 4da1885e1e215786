#include "platform/x11/server/ConnectionLoss.h"

#include "base/Invariant.h"
#include "base/Outcome.h"

#include <QtGlobal>
#include <atomic>
#include <cstdlib>
#include <xcb/xcb.h>

namespace marrowfin::x11 {

namespace {

// Handlers of the C library and of Qt carry no data.
xcb_connection_t* watched = nullptr;
std::function<void(const QString&)> tell;
QtMessageHandler before = nullptr;
std::atomic_flag told;

void tellIfLost() {
    if (!watched || xcb_connection_has_error(watched) == 0 || told.test_and_set())
        return;
    if (tell)
        tell(QStringLiteral("[Marrowfin] The connection to the X server is lost."));
}

// Qt says a word before it calls exit(), on the main thread: this is the first moment at which the loss is
// known, and the last one at which everything still stands.
void listen(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (isMainThread())
        tellIfLost();
    if (before)
        before(type, context, message);
}

// For an exit() that was called without a word, as Xlib does.
void atExit() {
    if (isMainThread())
        tellIfLost();
}

} // namespace

ConnectionLoss::ConnectionLoss(xcb_connection_t* connection, std::function<void(const QString&)> onLost) {
    MARROWFIN_INVARIANT(!watched);
    watched = connection;
    tell = std::move(onLost);
    before = qInstallMessageHandler(listen);
    std::atexit(atExit);
}

ConnectionLoss::~ConnectionLoss() {
    qInstallMessageHandler(before);
    watched = nullptr;
    tell = nullptr;
    told.clear();
}

void ConnectionLoss::lookNow() {
    if (!watched)
        return;
    // The answer is of no interest: without one the connection knows that it is broken.
    std::free(xcb_get_input_focus_reply(watched, xcb_get_input_focus(watched), nullptr));
    tellIfLost();
}

} // namespace marrowfin::x11
