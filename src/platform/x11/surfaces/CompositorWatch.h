// Whether a compositor blends windows on our screen, now and as it changes. Main thread; owned by the
// surfaces' shared context.
#pragma once

#include "platform/x11/server/Connection.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace marrowfin::x11 {

class CompositorWatch final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    explicit CompositorWatch(const Connection& qt);
    ~CompositorWatch() override;

    bool isRunning() const { return owner != XCB_WINDOW_NONE; }

Q_SIGNALS:
    void changed();

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void ownerIs(xcb_window_t window);

    xcb_atom_t selection = XCB_ATOM_NONE;
    xcb_window_t owner = XCB_WINDOW_NONE;
    std::uint8_t selectionNotify = 0;
};

} // namespace marrowfin::x11
