// Turns the wheel where the program wants it: the pointer goes there, the wheel's button is pressed and let
// go, and the pointer comes back, all in one go, so that nobody sees it away. A window of ours at that point
// must let clicks through, or the wheel is its. Main thread; owned by X11Backend.
#pragma once

#include "platform/ScrollPoster.h"
#include "platform/x11/layout/LayoutBoard.h"
#include "platform/x11/server/Connection.h"

#include <memory>

namespace marrowfin::x11 {

class X11ScrollPoster final : public platform::ScrollPoster {
public:
    X11ScrollPoster(Connection& connection, std::shared_ptr<LayoutBoard> board);

    Outcome<void> scroll(const ScreenPoint& at, int lines) override;

private:
    void warp(const QPoint& native);

    Connection& connection;
    std::shared_ptr<LayoutBoard> board;
};

} // namespace marrowfin::x11
