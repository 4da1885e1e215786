// An icon as a window within the desktop's tray: what a status item falls back to where no host listens on
// D-Bus. Made by the backend that speaks the tray's protocol. Main thread.
#pragma once

#include "platform/StatusItem.h"

#include <QPoint>
#include <QRect>
#include <QString>
#include <functional>
#include <memory>

namespace marrowfin::platform {

class TrayIcon {
public:
    // On release of either button; where the pointer was, in native pixels.
    using Click = std::function<void(StatusItemButton, QPoint)>;

    virtual ~TrayIcon() = default;
    // Shows from now on, and wherever a tray appears.
    virtual void setIcon(StatusItem::IconDrawer drawer) = 0;
    virtual void setToolTip(const QString& text) = 0;
    // Whether the desktop has a tray now.
    virtual bool hasTray() const = 0;
    // Where it is, in the toolkit's points; empty while no tray shows it.
    virtual QRect geometry() const = 0;
};

using TrayIconMaker = std::function<std::unique_ptr<TrayIcon>(TrayIcon::Click)>;

} // namespace marrowfin::platform
