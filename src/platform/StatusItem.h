// The program's place in the desktop's status area. Main thread.
#pragma once

#include "base/Coordinates.h"

#include <QImage>
#include <functional>
#include <memory>

class QMenu;

namespace marrowfin::platform {

enum class StatusItemButton { Left, Right };

class StatusItem {
public:
    // Draws the icon for a square of this many pixels, in the colour that the tray wants.
    using IconDrawer = std::function<QImage(int pixels, bool darkTray)>;
    using Action = std::function<void(StatusItemButton)>;

    virtual ~StatusItem() = default;
    // False where nothing can carry an icon or take a click.
    virtual bool hasButton() const = 0;
    virtual void setIcon(IconDrawer drawer) = 0;
    virtual void setToolTip(const QString& text) = 0;
    // Called on release of either button.
    virtual void setAction(Action action) = 0;
    // Opens the menu at the item. Returns at once; the menu closes by itself. The caller keeps the menu
    // alive.
    virtual void popUp(QMenu& menu) = 0;
};

class StatusBar {
public:
    virtual ~StatusBar() = default;
    // Visible from now on, or as soon as a status area appears.
    virtual std::unique_ptr<StatusItem> makeItem() = 0;
};

} // namespace marrowfin::platform
