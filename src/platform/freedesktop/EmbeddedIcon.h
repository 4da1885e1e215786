// The status item in a tray that embeds windows (XEmbed), whenever one is there: the toolkit waits for late
// ones and docks again with new ones. Main thread.
#pragma once

#include "platform/StatusItem.h"

#include <QObject>
#include <QRect>
#include <QSystemTrayIcon>

namespace marrowfin::freedesktop {

class EmbeddedIcon : public QObject {
    Q_OBJECT
public:
    using Click = std::function<void(platform::StatusItemButton)>;

    explicit EmbeddedIcon(Click click);

    void setIcon(const QIcon& icon) { tray.setIcon(icon); }
    void setToolTip(const QString& text) { tray.setToolTip(text); }
    // Where it is on the screen; empty while no tray shows it.
    QRect geometry() const { return tray.geometry(); }
    // After the icon was given: the toolkit shows nothing without one.
    void show();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Click click;
    QSystemTrayIcon tray;
};

} // namespace marrowfin::freedesktop
