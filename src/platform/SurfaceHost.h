// Windows that no window manager manages: cards, pins, notices, overlays, and the menus above them. Only the
// host knows how this window system puts one above the others and at its place; a widget never places itself
// and never asks where it is. Points, DesktopRect and DesktopPoint. Main thread.
#pragma once

#include "base/Coordinates.h"
#include "base/Outcome.h"

#include <QObject>
#include <QRegion>
#include <memory>

class QMenu;
class QSinglePointEvent;
class QWidget;

namespace marrowfin::platform {

// What a surface is. All of them stand above other programs' windows, and menus of ours above all of them.
enum class SurfaceLevel {
    Pin,              // images that stay
    RecordingControl, // the clock and the button that stops a recording
    Card,             // what a capture came to
    TextPanel,        // text that was read from the screen
    Notice,           // a line that goes away by itself
    Overlay,          // what covers a screen while something is chosen or counted
};

// The host keeps our surfaces in this order, the higher in front; among those of one number the one that came
// to the front last is in front.
//
//     3   pins, the recorder's control
//     25  cards, the text panel, notices
//     26  overlays
constexpr int windowLevel(SurfaceLevel level) {
    switch (level) {
    case SurfaceLevel::Pin:
    case SurfaceLevel::RecordingControl:
        return 3;
    case SurfaceLevel::Card:
    case SurfaceLevel::TextPanel:
    case SurfaceLevel::Notice:
        return 25;
    case SurfaceLevel::Overlay:
        return 26;
    }
    return 0;
}

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
    // Where on the desktop this event, which the widget or a child of it is getting, happened. The way from
    // one event of a drag to the next is right also while the surface follows the pointer. The event's own
    // global position isn't: not every window system tells a window where it is.
    virtual DesktopPoint locate(const QSinglePointEvent& event) const = 0;
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
    // Opens an adopted menu of ours with its corner at the point. Returns at once; the menu closes by itself.
    // The caller keeps it alive.
    virtual void popUp(QMenu& menu, const DesktopPoint& point) = 0;
    // Settles when nothing of ours that is on its way out (retired surfaces, closed menus) can be in a grab.
    virtual Outcome<void> transientsGone() = 0;
};

} // namespace marrowfin::platform
