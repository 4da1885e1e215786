// Every key press for one window while it is up; the user's focus stays where it is. Main thread; part of a
// surface.
#pragma once

#include "platform/x11/server/Connection.h"

#include <QTimer>

namespace marrowfin::x11 {

class ExclusiveKeyboard final : public QObject {
    Q_OBJECT
public:
    explicit ExclusiveKeyboard(const Connection& qt);
    ~ExclusiveKeyboard() override;

    // The window has been mapped. Another client that holds the keyboard now is waited for.
    void take(xcb_window_t window);
    void giveBack();

private:
    void attempt();

    const Connection& qt;
    QTimer retry;
    xcb_window_t window = XCB_WINDOW_NONE;
    bool taken = false;
    int refusals = 0;
};

} // namespace marrowfin::x11
