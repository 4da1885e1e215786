#include "platform/x11/input/X11ScrollPoster.h"

#include <algorithm>
#include <cstdlib>
#include <xcb/xtest.h>

namespace marrowfin::x11 {

namespace {
constexpr int linesOfANotch = 3;
constexpr std::uint8_t buttonUp = 4;
constexpr std::uint8_t buttonDown = 5;
} // namespace

X11ScrollPoster::X11ScrollPoster(Connection& connection, std::shared_ptr<LayoutBoard> board)
    : connection(connection), board(std::move(board)) {}

Outcome<void> X11ScrollPoster::scroll(const ScreenPoint& at, int lines) {
    if (!connection.extensions().xtest)
        return settled<void>(unavailable(QStringLiteral("This X server lets no program turn the wheel.")));
    const auto pointer =
        connection.reply(xcb_query_pointer_reply, xcb_query_pointer(connection.raw(), connection.root()));
    if (!pointer)
        return settled<void>(failure(QStringLiteral("The connection to the X server is lost.")));
    const int notches = std::max(1, std::abs(lines) / linesOfANotch);
    const std::uint8_t button = lines < 0 ? buttonDown : buttonUp;
    warp(board->current()->toNative(ScreenRect{QRectF(at.point, QSizeF(1, 1))}).topLeft());
    for (int notch = 0; notch < notches; ++notch) {
        for (const std::uint8_t kind : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE})
            connection.ignore(xcb_test_fake_input_checked(connection.raw(), kind, button, XCB_CURRENT_TIME,
                                                          XCB_WINDOW_NONE, 0, 0, 0));
    }
    warp(QPoint(pointer->root_x, pointer->root_y));
    connection.flush();
    return settled<void>({});
}

void X11ScrollPoster::warp(const QPoint& native) {
    connection.ignore(xcb_warp_pointer_checked(connection.raw(), XCB_WINDOW_NONE, connection.root(), 0, 0, 0,
                                               0, static_cast<std::int16_t>(native.x()),
                                               static_cast<std::int16_t>(native.y())));
}

} // namespace marrowfin::x11
