#include "platform/x11/surfaces/ContentsKeeper.h"

#include "base/Invariant.h"

#include <xcb/composite.h>

namespace marrowfin::x11 {

void ContentsKeeper::hold() {
    if (holders++ == 0 && qt.extensions().composite)
        xcb_composite_redirect_subwindows(qt.raw(), qt.root(), XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

void ContentsKeeper::exempt(xcb_window_t window) const {
    if (holders > 0 && qt.extensions().composite)
        qt.ignore(
            xcb_composite_unredirect_window_checked(qt.raw(), window, XCB_COMPOSITE_REDIRECT_AUTOMATIC));
}

void ContentsKeeper::release() {
    MARROWFIN_INVARIANT(holders > 0);
    if (--holders == 0 && qt.extensions().composite)
        xcb_composite_unredirect_subwindows(qt.raw(), qt.root(), XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

} // namespace marrowfin::x11
