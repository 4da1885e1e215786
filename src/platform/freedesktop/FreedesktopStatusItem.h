// The program's status item, by the one protocol that the desktop's status area speaks at the moment: over
// D-Bus where a host listens, as a window in a tray otherwise, never both. Main thread.
#pragma once

#include "platform/TrayIcon.h"
#include "platform/freedesktop/NotifierHostWatch.h"
#include "platform/freedesktop/NotifierItem.h"

namespace marrowfin::freedesktop {

class FreedesktopStatusItem : public QObject, public platform::StatusItem {
    Q_OBJECT
public:
    explicit FreedesktopStatusItem(platform::TrayIconMaker makeTrayIcon);

    bool hasButton() const override { return true; }
    void setIcon(IconDrawer drawer) override;
    void setToolTip(const QString& text) override;
    void setAction(Action action) override;
    void popUp(QMenu& menu) override;

private:
    void followHost();
    void refresh();
    void clicked(platform::StatusItemButton button, QPoint nativePoint);

    platform::TrayIconMaker makeTrayIcon;
    NotifierHostWatch watch;
    std::unique_ptr<NotifierItem> notifier;
    std::unique_ptr<platform::TrayIcon> embedded;
    IconDrawer icon;
    QString toolTip;
    Action action;
    // Where the last click was, as the host or the tray's icon told it; native pixels.
    QPoint clickPoint;
};

// Where a menu of this size opens for an item: at its left edge, on its side that has the room. All in the
// same space, origin at the top left.
QPoint menuOrigin(const QRect& item, const QSize& menu, const QRect& screen);

} // namespace marrowfin::freedesktop
