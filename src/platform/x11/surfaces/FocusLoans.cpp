#include "platform/x11/surfaces/FocusLoans.h"

#include <algorithm>

namespace marrowfin::x11 {

xcb_window_t FocusLoans::focus() const {
    const auto answer = qt.reply(xcb_get_input_focus_reply, xcb_get_input_focus(qt.raw()));
    return answer ? answer->focus : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

void FocusLoans::borrow(xcb_window_t window) {
    const xcb_window_t holder = focus();
    if (!window || holder == window)
        return;
    settle(window);
    loans.push_back({window, holder});
    xcb_set_input_focus(qt.raw(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    qt.flush();
}

void FocusLoans::giveBack(xcb_window_t window) {
    const bool ours =
        std::any_of(loans.begin(), loans.end(), [&](const Loan& l) { return l.window == window; });
    if (!ours)
        return;
    const xcb_window_t lender = settle(window);
    // 0 and 1 stand for no window and for the one under the pointer; the focus falls to that when its window
    // was unmapped before we heard of it.
    const xcb_window_t now = focus();
    const bool movedOn = now != window && now > XCB_INPUT_FOCUS_POINTER_ROOT;
    if (lender <= XCB_INPUT_FOCUS_POINTER_ROOT || movedOn)
        return;
    qt.ignore(xcb_set_input_focus_checked(qt.raw(), XCB_INPUT_FOCUS_POINTER_ROOT, lender, XCB_CURRENT_TIME));
    qt.flush();
}

xcb_window_t FocusLoans::settle(xcb_window_t window) {
    const auto at =
        std::find_if(loans.begin(), loans.end(), [&](const Loan& l) { return l.window == window; });
    if (at == loans.end())
        return XCB_WINDOW_NONE;
    const xcb_window_t lender = at->from;
    loans.erase(at);
    for (Loan& loan : loans) {
        if (loan.from == window)
            loan.from = lender;
    }
    return lender;
}

} // namespace marrowfin::x11
