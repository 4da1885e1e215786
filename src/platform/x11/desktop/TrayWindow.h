// One window that a tray docks, by the XEmbed protocol: made on the root, unseen until the tray has taken it.
// It tells what happens to it and paints what it is given. Native pixels. Main thread; owned by the icon.
#pragma once

#include "platform/x11/desktop/IconPainter.h"
#include "platform/x11/server/Connection.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QRect>

namespace marrowfin::x11 {

class TrayWindow final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    // In the visual that the tray wants, when that one has alpha; in the screen's own otherwise, with the
    // tray's background below the icon.
    TrayWindow(const Connection& connection, const IconPainter& painter, xcb_visualid_t wanted, int side);
    ~TrayWindow() override;

    void askToBeDocked(xcb_window_t tray);
    bool isDocked() const { return docked; }
    // The side of the square that an icon has room in.
    int side() const { return std::min(size.width(), size.height()); }
    // On the screen; empty while it isn't docked.
    QRect place() const;
    void paint(const QImage& icon);

Q_SIGNALS:
    // The tray put it out, or went; the window is of no use any more.
    void lost();
    // It has to be painted: for the first time, or in another size.
    void exposed();
    void pressed();
    // Within the window.
    void released(int button, QPoint onScreen);
    void entered();
    void left();

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    bool isOfThis(const xcb_generic_event_t& event) const;
    void handle(const xcb_generic_event_t& event);
    void reparented(const xcb_reparent_notify_event_t& event);
    void letGo(const xcb_button_release_event_t& event);
    void make(int side);
    void introduce(int side);

    const Connection& connection;
    const IconPainter& painter;
    xcb_visualid_t visual;
    xcb_colormap_t colors = XCB_NONE;
    xcb_window_t window;
    QSize size;
    bool docked = false;
    bool destroyed = false;
};

} // namespace marrowfin::x11
