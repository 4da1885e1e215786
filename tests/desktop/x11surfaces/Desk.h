// Another program on the same desktop, with a connection of its own: it has windows, presses keys and
// buttons, and reads the screen. Native pixels. Main thread.
#pragma once

#include "base/Outcome.h"
#include "platform/x11/server/Connection.h"

#include <QImage>
#include <QProcess>
#include <functional>
#include <memory>
#include <vector>

namespace marrowfin::desk {

// Runs the event loop until the condition holds; false when it doesn't within a time that only a hang takes.
bool waitFor(const std::function<bool()>& condition);
// The same until the outcome is settled well.
bool await(const Outcome<void>& outcome);
// Runs the event loop for a while, so that rounds of a test meet a surface in every phase of its coming up.
void passTime(int milliseconds);

enum class Repaint { ByServer, Never };
enum class Management { Managed, Unmanaged };
enum class Stacking { Top, Bottom };

class OtherProgram {
public:
    OtherProgram();
    ~OtherProgram();

    // Mapped, painted, and (when managed) focused.
    xcb_window_t open(const QRect& frame, std::uint32_t color, Repaint repaint = Repaint::ByServer,
                      Management management = Management::Managed, Stacking stacking = Stacking::Top);
    void makeFullScreen(xcb_window_t window);
    void activate(xcb_window_t window);
    void destroy(xcb_window_t window);
    // Without asking a window manager.
    void focusDirectly(xcb_window_t window);

    void movePointer(const QPoint& to);
    void pressButton();
    void releaseButton();
    void click(const QPoint& at);
    void press(xcb_keysym_t key);
    void holdKeyboard();
    void releaseKeyboard();
    void goToWorkspace(std::uint32_t number);

    // How many presses the windows of this program got so far.
    int buttonPresses();
    int keyPresses();

    QImage screen();
    QColor pixel(const QPoint& at);
    xcb_window_t focus();
    QRect frameOf(xcb_window_t window);
    bool isViewable(xcb_window_t window);
    // Marks the window as one that a window manager manages, as that would; and restacks it as that would.
    void markManaged(xcb_window_t window);
    void raise(xcb_window_t window);
    // Whether the first stands above the second among the root's children.
    bool isAbove(xcb_window_t upper, xcb_window_t lower);
    bool hasCompositor();

    const x11::Connection& connection() const { return *c; }

private:
    void readEvents();
    void fake(std::uint8_t type, std::uint8_t detail, const QPoint& at = {});
    void sendToRoot(xcb_window_t window, const char* message, std::array<std::uint32_t, 5> data);
    xcb_window_t topLevelOf(xcb_window_t window);

    std::unique_ptr<x11::Connection> c;
    std::vector<xcb_window_t> windows;
    int buttons = 0;
    int keys = 0;
};

// A compositor that the test starts and kills itself; for lanes that have none.
class Compositor {
public:
    // The arguments are picom's, beyond those for a plain one.
    explicit Compositor(OtherProgram& desk, const QStringList& arguments = {});
    ~Compositor();
    void kill();

private:
    OtherProgram& desk;
    QProcess process;
};

// Where two pictures of the same size differ; empty when they are equal.
std::string difference(const QImage& before, const QImage& after);

} // namespace marrowfin::desk
