// Sees to it that the icon's window stands in the tray that there is. The toolkit docks it and follows trays
// that come and go, but of a tray that restarts twice in a moment, as panels do when a monitor is plugged, it
// may keep the one that died in between: then it asks a window that is no more, and the icon is lost until
// the program ends. So once a tray has been there for a while the icon is looked for, and the tray itself is
// asked to dock it where it isn't. Does nothing on other window systems. Main thread; owned by the icon.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>
#include <cstdint>
#include <xcb/xcb.h>

namespace marrowfin::freedesktop {

class TrayKeeper final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    TrayKeeper();
    ~TrayKeeper() override;

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void expectIcon();
    void look();

    QByteArray selectionName;
    xcb_atom_t selection = XCB_ATOM_NONE;
    std::uint8_t selectionNotify = 0;
    QTimer patience;
    int asked = 0;
};

} // namespace marrowfin::freedesktop
