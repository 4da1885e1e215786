// Notices that the X server went away, before Qt, which notices too, calls exit() and so runs the destructors
// of a world that is gone, with our threads still at work. Main thread; at most one at a time.
#pragma once

#include <QString>
#include <functional>

struct xcb_connection_t;

namespace marrowfin::x11 {

class ConnectionLoss {
public:
    // Tells once, on the main thread, with a line that says what happened. Who is told must not touch a
    // window and ends the process: when that returns, Qt's exit() goes on.
    ConnectionLoss(xcb_connection_t* connection, std::function<void(const QString& line)> onLost);
    ~ConnectionLoss();
    ConnectionLoss(const ConnectionLoss&) = delete;
    ConnectionLoss& operator=(const ConnectionLoss&) = delete;

    // Another connection to the same server broke: asks the server, and tells if it is gone. What then would
    // have been said about the failed request stays unsaid. Does nothing while no connection is watched.
    static void lookNow();
};

} // namespace marrowfin::x11
