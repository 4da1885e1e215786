#include "platform/x11/server/ConnectionLoss.h"

#include "base/Invariant.h"
#include "base/Log.h"
#include "base/Outcome.h"

#include <QString>
#include <QtGlobal>
#include <atomic>
#include <cstdlib>
#include <unistd.h>
#include <xcb/xcb.h>

namespace marrowfin::x11 {

namespace {

// Handlers of the C library and of Qt carry no data.
xcb_connection_t* watched = nullptr;
std::function<void()> will;
QtMessageHandler before = nullptr;
std::atomic_flag ended;

void endIfLost() {
    if (!watched || xcb_connection_has_error(watched) == 0 || ended.test_and_set())
        return;
    logLine(QStringLiteral("[Marrowfin] The connection to the X server is lost."));
    if (will)
        will();
    ::_exit(1);
}

// Qt says a word before it calls exit(), on the main thread: this is the first moment at which the loss is
// known, and the last one at which everything still stands.
void listen(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (isMainThread())
        endIfLost();
    if (before)
        before(type, context, message);
}

// For an exit() that was called without a word, as Xlib does.
void atExit() {
    if (isMainThread())
        endIfLost();
}

} // namespace

ConnectionLoss::ConnectionLoss(xcb_connection_t* connection, std::function<void()> lastWill) {
    MARROWFIN_INVARIANT(!watched);
    watched = connection;
    will = std::move(lastWill);
    before = qInstallMessageHandler(listen);
    std::atexit(atExit);
}

ConnectionLoss::~ConnectionLoss() {
    qInstallMessageHandler(before);
    watched = nullptr;
    will = nullptr;
}

void ConnectionLoss::lookNow() {
    if (!watched)
        return;
    // The answer is of no interest: without one the connection knows that it is broken.
    std::free(xcb_get_input_focus_reply(watched, xcb_get_input_focus(watched), nullptr));
    endIfLost();
}

} // namespace marrowfin::x11
