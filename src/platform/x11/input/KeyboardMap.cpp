#include "platform/x11/input/KeyboardMap.h"

#include <algorithm>
#include <memory>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

namespace marrowfin::x11 {

namespace {

template <class T, void (*unref)(T*)>
struct Unref {
    void operator()(T* object) const { unref(object); }
};
using Context = std::unique_ptr<xkb_context, Unref<xkb_context, xkb_context_unref>>;
using Keymap = std::unique_ptr<xkb_keymap, Unref<xkb_keymap, xkb_keymap_unref>>;
using State = std::unique_ptr<xkb_state, Unref<xkb_state, xkb_state_unref>>;

// The keys that bear the symbol on any of their levels.
std::vector<xkb_keycode_t> keysWith(xkb_keymap* keymap, xkb_keysym_t symbol) {
    std::vector<xkb_keycode_t> keys;
    for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap); key <= xkb_keymap_max_keycode(keymap); ++key) {
        for (xkb_level_index_t level = 0; level < xkb_keymap_num_levels_for_key(keymap, key, 0); ++level) {
            const xkb_keysym_t* symbols = nullptr;
            const int count = xkb_keymap_key_get_syms_by_level(keymap, key, 0, level, &symbols);
            if (std::find(symbols, symbols + count, symbol) != symbols + count) {
                keys.push_back(key);
                break;
            }
        }
    }
    return keys;
}

// The modifiers of the X protocol that stand after such a key was pressed, or pressed and let go. Shift, Lock
// and Control mean themselves.
std::uint16_t modifierOf(xkb_keymap* keymap, xkb_keysym_t symbol, xkb_state_component component) {
    constexpr xkb_mod_mask_t mod1To5 = 0xF8;
    for (const xkb_keycode_t key : keysWith(keymap, symbol)) {
        const State state(xkb_state_new(keymap));
        xkb_state_update_key(state.get(), key, XKB_KEY_DOWN);
        const xkb_mod_mask_t set = xkb_state_serialize_mods(state.get(), component) & mod1To5;
        if (set != 0)
            return static_cast<std::uint16_t>(set);
    }
    return 0;
}

void addNamedKeys(xkb_keymap* keymap, KeyboardMap& map) {
    for (const char* name : {"AE03", "AE04", "AE05"}) {
        const xkb_keycode_t key = xkb_keymap_key_by_name(keymap, name);
        if (key != XKB_KEYCODE_INVALID && key <= 0xFF)
            map.keys.emplace(name, static_cast<std::uint8_t>(key));
    }
}

Keymap keymapOf(const Connection& connection) {
    if (!connection.extensions().xkb)
        return nullptr;
    const Context context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
    const std::int32_t device = xkb_x11_get_core_keyboard_device_id(connection.raw());
    if (!context || device < 0)
        return nullptr;
    return Keymap(
        xkb_x11_keymap_new_from_device(context.get(), connection.raw(), device, XKB_KEYMAP_COMPILE_NO_FLAGS));
}

} // namespace

KeyboardMap readKeyboard(const Connection& connection) {
    return keyboardOf(keymapOf(connection).get());
}

KeyboardMap keyboardOf(xkb_keymap* keymap) {
    KeyboardMap map;
    if (keymap) {
        addNamedKeys(keymap, map);
        map.super = modifierOf(keymap, XKB_KEY_Super_L, XKB_STATE_MODS_DEPRESSED);
        if (map.super == 0)
            map.super = modifierOf(keymap, XKB_KEY_Super_R, XKB_STATE_MODS_DEPRESSED);
        map.numLock = modifierOf(keymap, XKB_KEY_Num_Lock, XKB_STATE_MODS_LOCKED);
        map.scrollLock = modifierOf(keymap, XKB_KEY_Scroll_Lock, XKB_STATE_MODS_LOCKED);
    }
    // The drivers in use today (evdev, libinput, Xvfb, Xwayland) number the keys of the row alike.
    map.keys.emplace("AE03", static_cast<std::uint8_t>(12));
    map.keys.emplace("AE04", static_cast<std::uint8_t>(13));
    map.keys.emplace("AE05", static_cast<std::uint8_t>(14));
    if (map.super == 0)
        map.super = XCB_MOD_MASK_4; // where every common keymap has it
    return map;
}

std::vector<std::uint16_t> underEveryLock(std::uint16_t wanted, const KeyboardMap& keyboard) {
    std::vector<std::uint16_t> states = {wanted};
    for (const std::uint16_t lock :
         {static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK), keyboard.numLock, keyboard.scrollLock}) {
        const std::size_t before = states.size();
        for (std::size_t i = 0; i < before; ++i) {
            const auto state = static_cast<std::uint16_t>(states[i] | lock);
            if (std::find(states.begin(), states.end(), state) == states.end())
                states.push_back(state);
        }
    }
    return states;
}

} // namespace marrowfin::x11
