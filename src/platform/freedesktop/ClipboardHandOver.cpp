#include "platform/freedesktop/ClipboardHandOver.h"

#include "platform/freedesktop/ToolkitX11.h"

#include <QAbstractNativeEventFilter>
#include <QClipboard>
#include <QCoreApplication>
#include <QEventLoop>
#include <QGuiApplication>
#include <QTimer>
#include <QWindow>

namespace marrowfin::freedesktop {

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

void askToSaveTargets(xcb_window_t requestor) {
    xcb_connection_t* server = toolkitx11::connection();
    xcb_convert_selection(server, requestor, toolkitx11::intern("CLIPBOARD_MANAGER"),
                          toolkitx11::intern("SAVE_TARGETS"), toolkitx11::intern("MARROWFIN_SAVED"),
                          XCB_CURRENT_TIME);
    xcb_flush(server);
}

} // namespace

void handOverClipboard(Offered offered) {
    if (!toolkitx11::connection() || !toolkitx11::ownsClipboard())
        return;
    if (toolkitx11::selectionOwner("CLIPBOARD_MANAGER") != XCB_NONE) {
        QWindow window;
        window.create();
        QEventLoop loop;
        const auto requestor = static_cast<xcb_window_t>(window.winId());
        const ManagerAnswer answer(requestor, loop);
        const int patience = offered == Offered::JustNow ? patienceWithNewMilliseconds : patienceMilliseconds;
        QTimer::singleShot(patience, &loop, &QEventLoop::quit);
        askToSaveTargets(requestor);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    // Given up rather than left to the toolkit's own handshake; a manager notices and offers its copy.
    if (toolkitx11::ownsClipboard())
        QGuiApplication::clipboard()->clear();
}

} // namespace marrowfin::freedesktop
