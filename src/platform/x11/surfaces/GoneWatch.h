// Tells when something that was asked of the server is true of the picture on the screen, which is what a
// grab gets. It looks with a connection of its own, on a queue of its own, and only while somebody waits.
// Main thread.
//
// A compositor draws from its own copy of what it knows, some time after the server has carried a request
// out, and may let a window fade for as long as it likes. So a little window of ours, the probe, is brought
// in after the requests in question: once it is seen, a picture has been drawn that is younger than the
// requests; then it is taken out again, and once it is no longer seen the picture is clean. A compositor may
// dim the probe or let what is behind shine through, as it does with any window that isn't in use: so it is
// known by the change that it makes, and only where it has its exact colours by these.
#pragma once

#include "base/SerialQueue.h"
#include "platform/x11/server/Connection.h"

#include <QObject>
#include <QPoint>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace marrowfin::x11 {

class GoneWatch final : public QObject {
    Q_OBJECT
public:
    explicit GoneWatch(const Connection& qt);
    ~GoneWatch() override;

    // Calls back from the event loop once a compositor's picture shows everything asked for on Qt's
    // connection so far.
    void whenShown(std::function<void()> done);
    // The same, but waits for it. For what can't be kept mapped any longer.
    void waitShown();
    // Calls back from the event loop once the window is off the screen or destroyed.
    void whenUnmapped(xcb_window_t window, std::function<void()> done);

private:
    class Eyes;
    // Two pixels, four bytes each.
    using Pixels = std::array<std::uint32_t, 2>;
    // Where the probe can be seen, and what was seen there before it came.
    struct Spot {
        QPoint at;
        Pixels before;
    };
    void makeProbe();
    void begin();
    void finish(bool seen);
    Spot bringProbe();
    void paintProbe();

    const Connection& qt;
    xcb_window_t probe = XCB_WINDOW_NONE;
    std::vector<std::function<void()>> waiting;
    std::vector<std::function<void()>> served;
    bool running = false;
    std::shared_ptr<Eyes> eyes;
    SerialQueue queue{QStringLiteral("marrowfin.surfaces"), SerialQueue::QualityOfService::UserInteractive};
};

} // namespace marrowfin::x11
