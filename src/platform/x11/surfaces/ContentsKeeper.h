// While held, the server keeps every window's content beside the screen, so that a surface of ours that goes
// (or a compositor that dies) exposes what is beneath at once, whole, without waiting for its owner to paint.
// Main thread.
#pragma once

#include "platform/x11/server/Connection.h"

namespace marrowfin::x11 {

class ContentsKeeper {
public:
    explicit ContentsKeeper(const Connection& qt) : qt(qt) {}
    // Before the window that covers others is mapped; and the same number of times after it was unmapped.
    void hold();
    void release();
    // While held: not this one, which is about to be mapped over the others. It is painted onto the screen
    // itself.
    void exempt(xcb_window_t window) const;

private:
    const Connection& qt;
    int holders = 0;
};

} // namespace marrowfin::x11
