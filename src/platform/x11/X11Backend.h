// The X11 desktop in one object: makes the services that talk to the X server and owns what they share. Make
// it after QApplication, destroy it before. Main thread.
#pragma once

#include "base/Result.h"
#include "platform/TrayIcon.h"

#include <functional>
#include <memory>

namespace marrowfin::platform {
class HotKeyService;
class Pasteboard;
class ScreenAccess;
class Screens;
class ScreenSource;
class ScrollGestures;
class ScrollPoster;
} // namespace marrowfin::platform

namespace marrowfin::x11 {

class Connection;
class GrabLink;
class X11Screens;

class X11Backend {
public:
    // Unavailable when the application doesn't run on X11. Tells when the X server goes away (see
    // ConnectionLoss).
    static Result<std::unique_ptr<X11Backend>> make(std::function<void(const QString& line)> onLost = {});
    ~X11Backend();
    X11Backend(const X11Backend&) = delete;
    X11Backend& operator=(const X11Backend&) = delete;

    platform::Screens& screens();
    platform::ScreenSource& screenSource();
    platform::ScreenAccess& screenAccess();
    platform::HotKeyService& hotKeys();
    platform::ScrollGestures& scrollGestures();
    platform::ScrollPoster& scrollPoster();
    platform::Pasteboard& pasteboard();
    std::unique_ptr<platform::TrayIcon> makeTrayIcon(platform::TrayIcon::Click click);

    // Qt's connection, for what else places windows on this desktop, and the screens with their native sides.
    Connection& connection();
    X11Screens& nativeScreens();
    // What captures are read with.
    std::shared_ptr<GrabLink> grabs();

private:
    struct Parts;
    explicit X11Backend(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> parts;
};

} // namespace marrowfin::x11
