// An X server gives the clipboard only to somebody whose time is later than that of the present owner, and
// the toolkit knows no later time than that of the last event it got: a program that sat idle while another
// one copied would be refused. This brings the toolkit's time up to date first. Does nothing on other window
// systems. Main thread.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QWindow>
#include <functional>
#include <memory>
#include <vector>

namespace marrowfin::freedesktop {

class SelectionClock : public QAbstractNativeEventFilter {
public:
    SelectionClock();
    ~SelectionClock() override;
    SelectionClock(const SelectionClock&) = delete;

    // Calls the block when the toolkit knows the present time: from the event loop, or at once where time
    // plays no role.
    void whenCurrent(std::function<void()> block);
    // Whether the window system agrees that the clipboard is ours; the toolkit only remembers having asked
    // for it.
    static bool ownsClipboard();

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    // Never shown: changing its title makes the server tell us the time.
    std::unique_ptr<QWindow> window;
    std::vector<std::function<void()>> waiting;
    bool alternate = false;
};

// Whether the window system agrees that the clipboard is ours; the toolkit only remembers having asked for
// it.
bool ownsClipboard();

} // namespace marrowfin::freedesktop
