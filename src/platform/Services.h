// The desktop as the rest of the program sees it: one reference to each interface, installed once by Runtime
// or by a test and asked for by whoever needs it. Main thread, but for ScreenSource (see there).
#pragma once

namespace marrowfin::platform {

class Appearance;
class Folders;
class HotKeyService;
class Opener;
class Pasteboard;
class ScreenAccess;
class Screens;
class ScreenSource;
class ScrollGestures;
class StatusBar;
class SurfaceHost;

struct Services {
    ScreenSource& screenSource;
    ScreenAccess& screenAccess;
    Screens& screens;
    SurfaceHost& surfaceHost;
    ScrollGestures& scrollGestures;
    HotKeyService& hotKeys;
    Pasteboard& pasteboard;
    StatusBar& statusBar;
    Opener& opener;
    Folders& folders;
    Appearance& appearance;
};

// The services must outlive their use; a test may install others after uninstall().
void install(const Services& services);
void uninstall();
bool isInstalled();
// Broken invariant when nothing is installed.
const Services& services();

} // namespace marrowfin::platform
