// Windows that no window manager manages: cards, pins, notices, overlays. Only the host knows how this window
// system puts one above the others and at its place; a widget never places itself. Points, DesktopRect. Main
// thread.
#pragma once

#include "base/Coordinates.h"
#include "base/Outcome.h"

#include <QObject>
#include <QRegion>
#include <memory>

class QMenu;
class QWidget;

namespace marrowfin::platform {

// Back to front. The host keeps this order among our own surfaces, and all of them above other windows.
enum class SurfaceLevel { Pin, Card, Overlay };

enum class SurfaceKeyboard {
    None,      // never takes the focus
    OnClick,   // takes it when shown and when pressed, gives it back when closed
    Exclusive, // has every key press while it is up and leaves the user's focus as it was
};

// What an area of the surface that is not painted opaque shows.
enum class SurfaceBackdrop {
    Nothing,  // whatever is behind; without a compositor its outline is the window's shape
    Snapshot, // the screen behind; without a compositor a still of it, taken when the surface is shown
};

struct SurfaceSpec {
    SurfaceLevel level = SurfaceLevel::Card;
    SurfaceKeyboard keyboard = SurfaceKeyboard::None;
    SurfaceBackdrop backdrop = SurfaceBackdrop::Nothing;
    // Every click goes to the window beneath.
    bool passesClicks = false;
};

// The hosted widget's window. Destroying it hides the widget; the widget itself belongs to its owner and must
// outlive the surface.
class Surface : public QObject {
    Q_OBJECT
public:
    virtual void setFrame(const DesktopRect& frame) = 0;
    // Where the surface is, also where the window system doesn't tell its widget.
    virtual DesktopRect frame() const = 0;
    // In front of its level's other surfaces (and behind those of higher levels).
    virtual void orderFront() = 0;
    // Off the screen, at once. A later orderFront() shows it again.
    virtual void orderOut() = 0;
    virtual bool isVisible() const = 0;
    // Where clicks are taken, in the widget's coordinates; elsewhere they go to what is beneath. Null:
    // everywhere.
    virtual void setInputRegion(const QRegion& region) = 0;
    // The opaque outline used when there is no compositor, in the widget's coordinates. Null: the whole
    // widget.
    virtual void setOutline(const QRegion& outline) = 0;
    // False where nothing blends windows: then only the outline is seen, and what isn't painted opaque in it
    // comes out black.
    virtual bool isComposited() const { return true; }
    // 0 to 1, of the window as a whole.
    virtual void setOpacity(double opacity) = 0;
    // Takes the surface off the screen for good and settles when no pixel of it can be in a grab any more.
    virtual Outcome<void> retire() = 0;

Q_SIGNALS:
    // The window system took the surface away, or its screen is gone.
    void closed();
    // A compositor came or went.
    void compositedChanged();
};

class SurfaceHost {
public:
    virtual ~SurfaceHost() = default;
    virtual std::unique_ptr<Surface> host(QWidget& widget, const SurfaceSpec& traits) = 0;
    // Prepares a menu, before it is first shown, to leave no trace in a grab made after it closed, and to
    // stand above our surfaces.
    virtual void adoptMenu(QMenu& menu) = 0;
    // Settles when nothing of ours that is on its way out (retired surfaces, closed menus) can be in a grab.
    virtual Outcome<void> transientsGone() = 0;
};

} // namespace marrowfin::platform
