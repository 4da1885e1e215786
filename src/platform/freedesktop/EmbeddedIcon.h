// The status item in a tray that embeds windows (XEmbed), whenever one is there: the toolkit waits for late
// ones and docks again with new ones, the keeper where it doesn't. Main thread.
#pragma once

#include "platform/StatusItem.h"
#include "platform/freedesktop/TrayKeeper.h"

#include <QObject>
#include <QRect>
#include <QSystemTrayIcon>
#include <QTimer>

namespace marrowfin::freedesktop {

class EmbeddedIcon : public QObject {
    Q_OBJECT
public:
    using Click = std::function<void(platform::StatusItemButton)>;

    explicit EmbeddedIcon(Click click);

    // Shows from now on, and wherever a tray appears.
    void setIcon(platform::StatusItem::IconDrawer drawer);
    void setToolTip(const QString& text) { tray.setToolTip(text); }
    // Where it is on the screen; empty while no tray shows it.
    QRect geometry() const { return tray.geometry(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void giveIcon();
    void lookAtBackground();

    Click click;
    platform::StatusItem::IconDrawer icon;
    // Trays are dark as a rule; what this one is shows once it has put the icon on the screen.
    bool darkTray = true;
    QTimer settled;
    QSystemTrayIcon tray;
    TrayKeeper keeper;
};

} // namespace marrowfin::freedesktop
