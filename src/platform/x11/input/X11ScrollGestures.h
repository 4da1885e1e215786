// Touchpad gestures over windows of ours, from the XInput 2 events that the toolkit asks the server for
// anyway. Without that extension there are none. Main thread; owned by the backend, its watches may outlive
// it.
#pragma once

#include "platform/x11/input/ScrollDevices.h"

#include <QAbstractNativeEventFilter>
#include <memory>

namespace marrowfin::x11 {

class X11ScrollGestures final : public platform::ScrollGestures, private QAbstractNativeEventFilter {
public:
    using DeviceReader = std::vector<ScrollDevice> (*)(const Connection&);
    // The connection is Qt's. A test has devices that its server lacks.
    explicit X11ScrollGestures(const Connection& connection, DeviceReader readDevices = &readScrollDevices);
    ~X11ScrollGestures() override;

    std::unique_ptr<platform::ScrollWatch> watch(QWidget& widget, Handler handler) override;

private:
    struct Listener;
    class Watch;

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void moved(const xcb_ge_generic_event_t& event);
    void tell(xcb_window_t window, const platform::ScrollStep& step);

    const Connection& connection;
    const DeviceReader readDevices;
    std::uint8_t opcode = 0;
    TouchpadScrolling scrolling;
    // Asked again with the next movement: one came, went, or its settings changed.
    bool devicesAreStale = true;
    std::vector<std::weak_ptr<Listener>> listeners;
};

} // namespace marrowfin::x11
