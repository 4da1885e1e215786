// Tells when something that was asked of the server is true of the picture on the screen, which is what a
// grab gets. It looks with a connection of its own, on a queue of its own, and only while somebody waits.
// Main thread.
//
// A compositor draws from its own copy of what it knows, some time after the server has carried a request
// out, and may let a window fade for as long as it likes. So a little window of ours, the probe, is brought
// in after the requests in question: once its colours are seen, a picture has been drawn that is younger than
// the requests; then it is taken out again, and once its colours are no longer seen the picture is clean.
#pragma once

#include "base/SerialQueue.h"
#include "platform/x11/server/Connection.h"

#include <QObject>
#include <functional>
#include <memory>
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
    void makeProbe();
    void begin();
    void finish(bool seen);
    // Returns where the probe can be seen.
    QPoint bringProbe();
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
