// Which tray the screen has: the window that owns its tray selection, followed through late starts, restarts
// and replacements. Main thread; over the toolkit's connection.
#pragma once

#include "platform/x11/server/Connection.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace marrowfin::x11 {

class TrayWatch final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    explicit TrayWatch(const Connection& connection);
    ~TrayWatch() override;

    // XCB_WINDOW_NONE while there is none.
    xcb_window_t tray() const { return current; }
    // The visual that the tray wants icons in; 0 when it doesn't say.
    xcb_visualid_t wantedVisual() const;

Q_SIGNALS:
    // Another window is the tray now, or none.
    void changed();
    // The tray says that it takes icons from now on.
    void announced();

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void listenToRoot();
    void listenToSelection();
    void follow();

    const Connection& connection;
    xcb_atom_t selection;
    std::uint8_t selectionNotify = 0;
    xcb_window_t current = XCB_WINDOW_NONE;
};

} // namespace marrowfin::x11
