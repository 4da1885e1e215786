// A physical key of the root window, held under some states of the modifiers: by the core protocol and by
// XInput 2. Grabs of the two kinds don't collide, so a key that another program holds by the second kind
// looks free to the first and yet never arrives. Belongs to the connection's thread.
#pragma once

#include "platform/x11/server/Connection.h"

#include <cstdint>
#include <vector>

namespace marrowfin::x11 {

struct KeyGrab {
    std::uint8_t key = 0;
    // Each a grab of its own, because the server compares the whole state.
    std::vector<std::uint16_t> states;
};

// All or nothing: a key that works with one lock and not with another is worse than one that is known to be
// taken. False when another program holds any of it.
bool take(const Connection& connection, const KeyGrab& grab);
void giveBack(const Connection& connection, const KeyGrab& grab);

} // namespace marrowfin::x11
