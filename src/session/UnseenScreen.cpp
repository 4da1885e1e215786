#include "session/UnseenScreen.h"

namespace marrowfin::session {

bool isUnseenWaylandDesktop() {
    if (qgetenv("MARROWFIN_CAPTURE_XWAYLAND") == "1")
        return false;
    return qgetenv("XDG_SESSION_TYPE") == "wayland" || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

Outcome<platform::ShareableContent> UnseenScreen::content() {
    return settled<platform::ShareableContent>(unavailable(
        QStringLiteral("This is a Wayland session, whose screen Marrowfin can't see yet. In an X11 "
                       "session of this desktop it works.")));
}

} // namespace marrowfin::session
