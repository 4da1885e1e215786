// The keyboard as hot keys see it: where the physical keys of the number row are, and which modifier bit is
// which. Reading it belongs to the connection's thread; the rest are values.
#pragma once

#include "platform/x11/server/Connection.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct xkb_keymap;

namespace marrowfin::x11 {

struct KeyboardMap {
    // Keycodes by the XKB name of the physical key, "AE03" for instance: the same key on every layout.
    std::map<std::string, std::uint8_t> keys;
    std::uint16_t super = 0;
    std::uint16_t numLock = 0;
    std::uint16_t scrollLock = 0;
    friend bool operator==(const KeyboardMap&, const KeyboardMap&) = default;
};
KeyboardMap readKeyboard(const Connection& connection);
// What a keymap of the X server's says; without one (null), what every common keyboard has.
KeyboardMap keyboardOf(xkb_keymap* keymap);

// Every state of the lock keys together with the wanted modifiers: each a grab of its own, because X compares
// the whole state.
std::vector<std::uint16_t> underEveryLock(std::uint16_t wanted, const KeyboardMap& keyboard);

} // namespace marrowfin::x11
