// The screens as windows are placed on them, and where the pointer is. Points, DesktopRect (bottom left
// origin). Main thread. Lists and sizes are at hand and cheap enough to ask each time.
#pragma once

#include "base/Coordinates.h"
#include "base/Outcome.h"

#include <QObject>
#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

namespace marrowfin::platform {

struct Screen {
    std::uint32_t displayID = 0;
    DesktopRect frame;
    // Without panels and docks.
    DesktopRect visibleFrame;
    double backingScaleFactor = 1;
    QString name;
};

class Screens : public QObject {
    Q_OBJECT
public:
    // The primary first, then in the window system's order; empty when every monitor is gone.
    virtual std::vector<Screen> screens() = 0;
    // The active window's screen, else the pointer's, else the primary.
    virtual std::optional<Screen> mainScreen() = 0;
    // Settled at once where the window system tells; Unavailable where it never does, and whoever asked goes
    // on without.
    virtual Outcome<DesktopPoint> pointerLocation() = 0;
    // The height against which DesktopRect and ScreenRect are flipped: the primary display's; 0 without one.
    double primaryHeight();

Q_SIGNALS:
    // A screen came, went, moved, or its visible frame changed.
    void changed();
};

} // namespace marrowfin::platform
