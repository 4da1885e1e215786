// The screens of the X server: QScreen's geometry with RandR's native sizes, and the space that panels leave
// free. Points of DisplayLayout's space, as DesktopRect. Main thread; owned by X11Backend.
#pragma once

#include "platform/Screens.h"
#include "platform/x11/layout/LayoutBoard.h"
#include "platform/x11/server/Connection.h"

#include <QAbstractNativeEventFilter>
#include <memory>

namespace marrowfin::x11 {

class X11Screens final : public platform::Screens, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    // The connection is Qt's: its property events of the root tell when windows and panels come and go.
    X11Screens(Connection& connection, std::shared_ptr<LayoutBoard> board);
    ~X11Screens() override;

    std::vector<platform::Screen> screens() override;
    std::optional<platform::Screen> mainScreen() override;
    Outcome<DesktopPoint> pointerLocation() override;

    const DisplayLayout& layout();

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void watchQt();
    void mayHaveChanged();
    void refresh();
    DisplayLayout readLayout();
    std::vector<NativeDisplay> readMonitors();
    std::vector<Strut> readStruts();
    const NativeDisplay* displayOfActiveWindow();
    std::optional<QPoint> nativePointer();
    platform::Screen screenOf(const NativeDisplay& display) const;

    Connection& connection;
    std::shared_ptr<LayoutBoard> board;
    DisplayLayout latest;
    DisplayLayout announced; // as of the last signal
    bool stale = true;
    bool refreshPosted = false;
};

} // namespace marrowfin::x11
