#include "platform/x11/input/X11ScrollGestures.h"

#include <QCoreApplication>
#include <QPointer>
#include <QWidget>

namespace marrowfin::x11 {

struct X11ScrollGestures::Listener {
    QPointer<QWidget> widget;
    Handler handler;
};

class X11ScrollGestures::Watch final : public platform::ScrollWatch {
public:
    explicit Watch(std::shared_ptr<Listener> listener) : listener(std::move(listener)) {}

private:
    const std::shared_ptr<Listener> listener;
};

X11ScrollGestures::X11ScrollGestures(const Connection& connection, DeviceReader readDevices)
    : connection(connection), readDevices(readDevices) {
    const xcb_query_extension_reply_t* data = xcb_get_extension_data(connection.raw(), &xcb_input_id);
    if (!data || !data->present)
        return;
    opcode = data->major_opcode;
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11ScrollGestures::~X11ScrollGestures() {
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
}

std::unique_ptr<platform::ScrollWatch> X11ScrollGestures::watch(QWidget& widget, Handler handler) {
    std::erase_if(listeners, [](const auto& listener) { return listener.expired(); });
    auto listener = std::make_shared<Listener>(Listener{&widget, std::move(handler)});
    listeners.push_back(listener);
    return std::make_unique<Watch>(std::move(listener));
}

bool X11ScrollGestures::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
    if (type != "xcb_generic_event_t")
        return false;
    const auto& event = *static_cast<const xcb_ge_generic_event_t*>(message);
    if ((event.response_type & 0x7F) != XCB_GE_GENERIC || event.extension != opcode)
        return false;
    switch (event.event_type) {
    case XCB_INPUT_MOTION:
        moved(event);
        break;
    case XCB_INPUT_ENTER:
        scrolling.pointerCame();
        break;
    case XCB_INPUT_DEVICE_CHANGED:
    case XCB_INPUT_HIERARCHY:
    case XCB_INPUT_PROPERTY:
        devicesAreStale = true;
        break;
    default:
        break;
    }
    return false;
}

void X11ScrollGestures::moved(const xcb_ge_generic_event_t& event) {
    std::erase_if(listeners, [](const auto& listener) { return listener.expired(); });
    if (listeners.empty())
        return;
    if (std::exchange(devicesAreStale, false))
        scrolling.setDevices(readDevices(connection));
    const auto& motion = reinterpret_cast<const xcb_input_motion_event_t&>(event);
    if (const auto step = scrolling.read(axisPositionsOf(motion)))
        tell(motion.event, *step);
}

void X11ScrollGestures::tell(xcb_window_t window, const platform::ScrollStep& step) {
    // A copy: a handler may end watches and begin others.
    for (const std::weak_ptr<Listener>& weak : std::vector(listeners))
        if (const std::shared_ptr<Listener> listener = weak.lock();
            listener && listener->widget && listener->widget->window()->internalWinId() == window)
            listener->handler(step);
}

} // namespace marrowfin::x11
