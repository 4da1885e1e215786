// The X server going away is the end of the program: one line, exit code 1, no destructors of a world that is
// gone. Qt notices first and would run them, with our threads still at work. Main thread; at most one at a
// time.
#pragma once

#include <functional>

struct xcb_connection_t;

namespace marrowfin::x11 {

class ConnectionLoss {
public:
    // The last will runs on the main thread, before the end: for finishing files that are being written. It
    // must not touch a window.
    ConnectionLoss(xcb_connection_t* connection, std::function<void()> lastWill);
    ~ConnectionLoss();
    ConnectionLoss(const ConnectionLoss&) = delete;
    ConnectionLoss& operator=(const ConnectionLoss&) = delete;

    // Another connection to the same server broke: asks the server, and ends here if it is gone. What then
    // would have been said about the failed request stays unsaid. Does nothing while no connection is
    // watched.
    static void lookNow();
};

} // namespace marrowfin::x11
