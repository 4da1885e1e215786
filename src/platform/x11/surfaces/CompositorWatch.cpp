#include "platform/x11/surfaces/CompositorWatch.h"

#include <QCoreApplication>
#include <xcb/xfixes.h>

namespace marrowfin::x11 {

CompositorWatch::CompositorWatch(const Connection& qt)
    : selection(qt.intern("_NET_WM_CM_S" + QByteArray::number(qt.screenNumber()))) {
    if (qt.extensions().xfixes) {
        // Qt asks for the same events with the same mask, so asking on its window takes nothing away from it.
        const std::uint32_t mask = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                   XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                   XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE;
        xcb_xfixes_select_selection_input(qt.raw(), qt.root(), selection, mask);
        selectionNotify =
            xcb_get_extension_data(qt.raw(), &xcb_xfixes_id)->first_event + XCB_XFIXES_SELECTION_NOTIFY;
        QCoreApplication::instance()->installNativeEventFilter(this);
    }
    owner = qt.compositor();
}

CompositorWatch::~CompositorWatch() {
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
}

bool CompositorWatch::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7F) != selectionNotify)
        return false;
    const auto* notify = static_cast<const xcb_xfixes_selection_notify_event_t*>(message);
    if (notify->selection == selection)
        ownerIs(notify->owner);
    return false;
}

void CompositorWatch::ownerIs(xcb_window_t window) {
    const bool before = isRunning();
    owner = window;
    // Not from inside the event: who hears it asks the server for things.
    if (before != isRunning())
        QMetaObject::invokeMethod(this, &CompositorWatch::changed, Qt::QueuedConnection);
}

} // namespace marrowfin::x11
