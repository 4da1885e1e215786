#include "platform/x11/desktop/ClipboardHandOver.h"

#include <QAbstractNativeEventFilter>
#include <QClipboard>
#include <QCoreApplication>
#include <QEventLoop>
#include <QGuiApplication>
#include <QTimer>
#include <QWindow>

namespace marrowfin::x11 {

namespace {

constexpr int patienceMilliseconds = 1000;
// A manager that answers nothing reads what is new on its own, in its own time.
constexpr int patienceWithNewMilliseconds = 4000;

// Leaves the loop when the manager says that it is done, one way or the other.
class ManagerAnswer : public QAbstractNativeEventFilter {
public:
    ManagerAnswer(xcb_window_t requestor, QEventLoop& loop) : requestor(requestor), loop(loop) {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }
    ~ManagerAnswer() override { QCoreApplication::instance()->removeNativeEventFilter(this); }
    ManagerAnswer(const ManagerAnswer&) = delete;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) override {
        if (eventType != "xcb_generic_event_t")
            return false;
        const auto* event = static_cast<const xcb_generic_event_t*>(message);
        if ((event->response_type & 0x7f) == XCB_SELECTION_NOTIFY &&
            reinterpret_cast<const xcb_selection_notify_event_t*>(event)->requestor == requestor)
            loop.quit();
        return false;
    }

private:
    xcb_window_t requestor;
    QEventLoop& loop;
};

void askToSaveTargets(const Connection& connection, xcb_window_t requestor) {
    connection.ignore(xcb_convert_selection_checked(
        connection.raw(), requestor, connection.atom(Atom::ClipboardManager),
        connection.atom(Atom::SaveTargets), connection.intern("MARROWFIN_SAVED"), XCB_CURRENT_TIME));
    connection.flush();
}

} // namespace

bool ownsClipboard(const Connection& connection) {
    return connection.made(connection.selectionOwner(connection.atom(Atom::Clipboard)));
}

void handOverClipboard(const Connection& connection, Offered offered) {
    if (!ownsClipboard(connection))
        return;
    if (connection.selectionOwner(connection.atom(Atom::ClipboardManager)) != XCB_WINDOW_NONE) {
        QWindow window;
        window.create();
        QEventLoop loop;
        const auto requestor = static_cast<xcb_window_t>(window.winId());
        const ManagerAnswer answer(requestor, loop);
        const int patience = offered == Offered::JustNow ? patienceWithNewMilliseconds : patienceMilliseconds;
        QTimer::singleShot(patience, &loop, &QEventLoop::quit);
        askToSaveTargets(connection, requestor);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    // Given up rather than left to the toolkit's own handshake; a manager notices and offers its copy.
    if (ownsClipboard(connection))
        QGuiApplication::clipboard()->clear();
}

} // namespace marrowfin::x11
