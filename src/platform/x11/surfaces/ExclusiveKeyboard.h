// Every key press for the overlay that asked last, while it is up; the user's focus stays where it is. A menu
// of ours, the drag of a card or another program may have the keyboard in between: it is taken again as soon
// as it is free. Main thread; owned by the surfaces' shared context.
#pragma once

#include "platform/x11/server/Connection.h"

#include <QAbstractNativeEventFilter>
#include <QTimer>
#include <vector>

namespace marrowfin::x11 {

class ExclusiveKeyboard final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    explicit ExclusiveKeyboard(const Connection& qt);
    ~ExclusiveKeyboard() override;

    // The window has been mapped. Whoever holds the keyboard now is waited for.
    void take(const void* taker, xcb_window_t window);
    // The one that asked before has it again.
    void giveBack(const void* taker);

private:
    struct Wish {
        const void* taker;
        xcb_window_t window;
    };

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void attempt();
    void letGo();

    const Connection& qt;
    QTimer retry;
    std::vector<Wish> wishes; // the last one has it
    xcb_window_t holder = XCB_WINDOW_NONE;
    // What was heard before this is about an earlier holder.
    std::uint32_t grabbedAt = 0;
    int refusals = 0;
};

} // namespace marrowfin::x11
