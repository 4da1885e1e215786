// The keyboard as hot keys see it: where the physical keys of the number row are, and which modifier bit is
// which. Reading it belongs to the connection's thread; the rest are values.
#pragma once

#include "platform/x11/server/Connection.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

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

// What the modifier map says: keycodes by modifier (Shift, Lock, Control, Mod1 to Mod5), and the symbols of
// each keycode from the lowest one on.
struct ModifierFacts {
    std::array<std::vector<std::uint8_t>, 8> keycodes;
    std::uint8_t lowest = 8;
    int symbolsPerKey = 0;
    std::vector<std::uint32_t> symbols;
};
// The modifier bits that carry one of the symbols; 0 when none does.
std::uint16_t modifierWith(const ModifierFacts& facts, const std::vector<std::uint32_t>& symbols);

// Every state of the lock keys together with the wanted modifiers: each a grab of its own, because X compares
// the whole state.
std::vector<std::uint16_t> underEveryLock(std::uint16_t wanted, const KeyboardMap& keyboard);

} // namespace marrowfin::x11
