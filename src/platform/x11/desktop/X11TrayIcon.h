// The status item's icon in a tray that embeds windows (XEmbed), whenever one is there. Trays lose requests
// while they start, and panels restart twice in a moment when a monitor is plugged: so the icon is looked for
// and the tray asked again, a few times. Main thread; over the toolkit's connection.
#pragma once

#include "platform/TrayIcon.h"
#include "platform/x11/desktop/TrayWatch.h"
#include "platform/x11/desktop/TrayWindow.h"

#include <QTimer>

namespace marrowfin::x11 {

class X11TrayIcon final : public QObject, public platform::TrayIcon {
    Q_OBJECT
public:
    X11TrayIcon(const Connection& connection, Click click);

    void setIcon(platform::StatusItem::IconDrawer drawer) override;
    void setToolTip(const QString& text) override { toolTip = text; }
    bool hasTray() const override { return watch.tray() != XCB_WINDOW_NONE; }
    QRect geometry() const override;

private:
    void trayChanged();
    void ask();
    void look();
    void windowLost();
    void makeWindow();
    void paint();
    void lookAtBackground();
    void pressed();
    void released(int button, QPoint onScreen);
    void showToolTip() const;
    void hideToolTip();

    const Connection& connection;
    const IconPainter painter;
    TrayWatch watch;
    Click click;
    platform::StatusItem::IconDrawer icon;
    QString toolTip;
    // Trays are dark as a rule; what this one is shows once it has put the icon on the screen.
    bool darkTray = true;
    bool isPress = false;
    int asked = 0;
    QTimer patience;
    QTimer settled;
    QTimer resting;
    std::unique_ptr<TrayWindow> window;
};

} // namespace marrowfin::x11
