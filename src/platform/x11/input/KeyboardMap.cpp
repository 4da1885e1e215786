#include "platform/x11/input/KeyboardMap.h"

#include "platform/x11/server/Xkb.h"

#include <algorithm>

namespace marrowfin::x11 {

namespace {

constexpr std::uint32_t superLeft = 0xFFEB;
constexpr std::uint32_t superRight = 0xFFEC;
constexpr std::uint32_t numLockSymbol = 0xFF7F;
constexpr std::uint32_t scrollLockSymbol = 0xFF14;

std::map<std::string, std::uint8_t> namedKeys(const Connection& c) {
    std::map<std::string, std::uint8_t> keys;
    if (!c.extensions().xkb)
        return keys;
    const auto names = c.reply(xcb_xkb_get_names_reply, xcb_xkb_get_names(c.raw(), XCB_XKB_ID_USE_CORE_KBD,
                                                                          XCB_XKB_NAME_DETAIL_KEY_NAMES));
    if (!names)
        return keys;
    xcb_xkb_get_names_value_list_t list;
    xcb_xkb_get_names_value_list_unpack(
        xcb_xkb_get_names_value_list(names.get()), names->nTypes, names->indicators, names->virtualMods,
        names->groupNames, names->nKeys, names->nKeyAliases, names->nRadioGroups, names->which, &list);
    for (int i = 0; i < names->nKeys; ++i) {
        const char* name = list.keyNames[i].name;
        keys.emplace(std::string(name, std::find(name, name + 4, '\0')),
                     static_cast<std::uint8_t>(names->firstKey + i));
    }
    return keys;
}

ModifierFacts modifierFacts(const Connection& c) {
    const xcb_setup_t* setup = xcb_get_setup(c.raw());
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto modifiersCookie = xcb_get_modifier_mapping(c.raw());
    const auto symbolsCookie = xcb_get_keyboard_mapping(c.raw(), setup->min_keycode, count);
    const auto modifiers = c.reply(xcb_get_modifier_mapping_reply, modifiersCookie);
    const auto symbols = c.reply(xcb_get_keyboard_mapping_reply, symbolsCookie);
    ModifierFacts facts;
    if (!modifiers || !symbols)
        return facts;
    const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(modifiers.get());
    for (std::vector<std::uint8_t>& ofModifier : facts.keycodes) {
        ofModifier.assign(codes, codes + modifiers->keycodes_per_modifier);
        codes += modifiers->keycodes_per_modifier;
    }
    facts.lowest = setup->min_keycode;
    facts.symbolsPerKey = symbols->keysyms_per_keycode;
    const xcb_keysym_t* first = xcb_get_keyboard_mapping_keysyms(symbols.get());
    facts.symbols.assign(first, first + xcb_get_keyboard_mapping_keysyms_length(symbols.get()));
    return facts;
}

bool carries(const ModifierFacts& facts, std::uint8_t keycode, const std::vector<std::uint32_t>& wanted) {
    if (keycode < facts.lowest)
        return false;
    const auto begin =
        static_cast<std::size_t>(keycode - facts.lowest) * static_cast<std::size_t>(facts.symbolsPerKey);
    const auto end = begin + static_cast<std::size_t>(facts.symbolsPerKey);
    if (end > facts.symbols.size())
        return false;
    const auto at = facts.symbols.begin();
    return std::find_first_of(at + static_cast<std::ptrdiff_t>(begin), at + static_cast<std::ptrdiff_t>(end),
                              wanted.begin(), wanted.end()) != at + static_cast<std::ptrdiff_t>(end);
}

} // namespace

KeyboardMap readKeyboard(const Connection& connection) {
    KeyboardMap map;
    map.keys = namedKeys(connection);
    // Without XKB there are no names. The drivers in use today (evdev, libinput, Xvfb, Xwayland) number the
    // keys of the row alike.
    map.keys.emplace("AE03", static_cast<std::uint8_t>(12));
    map.keys.emplace("AE04", static_cast<std::uint8_t>(13));
    map.keys.emplace("AE05", static_cast<std::uint8_t>(14));
    const ModifierFacts facts = modifierFacts(connection);
    map.super = modifierWith(facts, {superLeft, superRight});
    if (map.super == 0)
        map.super = XCB_MOD_MASK_4; // where every common keymap has it
    map.numLock = modifierWith(facts, {numLockSymbol});
    map.scrollLock = modifierWith(facts, {scrollLockSymbol});
    return map;
}

std::uint16_t modifierWith(const ModifierFacts& facts, const std::vector<std::uint32_t>& symbols) {
    constexpr std::size_t firstFree = 3; // Shift, Lock and Control mean themselves
    for (std::size_t i = firstFree; i < facts.keycodes.size(); ++i) {
        for (const std::uint8_t keycode : facts.keycodes[i]) {
            if (keycode != 0 && carries(facts, keycode, symbols))
                return static_cast<std::uint16_t>(1U << i);
        }
    }
    return 0;
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
