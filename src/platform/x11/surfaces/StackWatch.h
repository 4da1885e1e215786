// Keeps windows of ours above those that a window manager manages, also where it puts one of them above
// everything, as some do with full-screen windows. What no manager manages (menus, tool tips, screen lockers)
// stays above ours where it is, and a window that comes back each time is left there. It listens with a
// connection of its own, and only while there is something to keep. Main thread; owned by the surfaces'
// shared context.
#pragma once

#include "platform/x11/server/Connection.h"

#include <QObject>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

class QSocketNotifier;

namespace marrowfin::x11 {

class StackWatch final : public QObject {
    Q_OBJECT
public:
    // Ours, back to front, as they are now.
    using Windows = std::function<std::vector<xcb_window_t>()>;
    explicit StackWatch(Windows ours);
    ~StackWatch() override;

    void listen();
    void stop();
    // They were brought to the front: whatever came back each time may be tried again.
    void startAnew() { answers.clear(); }

private:
    struct Answer {
        xcb_window_t to;
        std::chrono::steady_clock::time_point at;
    };
    // A child of the root that stands above one of ours and covers it.
    struct Offender {
        xcb_window_t window = XCB_WINDOW_NONE;
        std::vector<xcb_window_t> below; // ours beneath it, back to front
    };

    bool open();
    void hear(std::uint32_t events);
    void readEvents();
    void look();
    Offender topmostOffender(const std::vector<xcb_window_t>& ours) const;
    bool isManaged(xcb_window_t window) const;
    bool comesBackEachTime(xcb_window_t window);

    const Windows ours;
    std::unique_ptr<Connection> connection;
    std::unique_ptr<QSocketNotifier> notifier;
    xcb_atom_t managedMark = XCB_ATOM_NONE;
    bool listening = false;
    std::vector<Answer> answers;
};

} // namespace marrowfin::x11
