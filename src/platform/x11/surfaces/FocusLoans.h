// The input focus for windows that no window manager manages: taken when asked, and given back to whoever had
// it, if that is still there. Main thread; owned by the surfaces' shared context.
#pragma once

#include "platform/x11/server/Connection.h"

#include <vector>

namespace marrowfin::x11 {

class FocusLoans {
public:
    explicit FocusLoans(const Connection& qt) : qt(qt) {}
    // The window is mapped.
    void borrow(xcb_window_t window);
    // Best before the window is unmapped. Nothing happens when the user has moved the focus on since.
    void giveBack(xcb_window_t window);

private:
    struct Loan {
        xcb_window_t window;
        xcb_window_t from;
    };
    xcb_window_t focus() const;
    // Ends the window's loan; whoever borrowed from it now owes its lender.
    xcb_window_t settle(xcb_window_t window);

    const Connection& qt;
    std::vector<Loan> loans;
};

} // namespace marrowfin::x11
