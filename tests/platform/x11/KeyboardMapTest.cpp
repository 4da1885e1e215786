#include "platform/x11/input/KeyboardMap.h"

#include <gmock/gmock.h>
#include <xkbcommon/xkbcommon.h>

using namespace marrowfin::x11;
using testing::UnorderedElementsAre;

namespace {

constexpr std::uint16_t shift = 1;
constexpr std::uint16_t lock = 2;
constexpr std::uint16_t mod2 = 1 << 4;
constexpr std::uint16_t mod3 = 1 << 5;
constexpr std::uint16_t mod4 = 1 << 6;
constexpr std::uint16_t mod5 = 1 << 7;

} // namespace

TEST(UnderEveryLock, ListsEachStateOnce) {
    KeyboardMap map;
    map.numLock = mod2;
    map.scrollLock = mod5;
    EXPECT_THAT(underEveryLock(mod4 | shift, map),
                UnorderedElementsAre(mod4 | shift, mod4 | shift | lock, mod4 | shift | mod2,
                                     mod4 | shift | mod5, mod4 | shift | lock | mod2,
                                     mod4 | shift | lock | mod5, mod4 | shift | mod2 | mod5,
                                     mod4 | shift | lock | mod2 | mod5));
}

TEST(UnderEveryLock, KnowsAKeyboardWithoutScrollLock) {
    KeyboardMap map;
    map.numLock = mod2;
    EXPECT_THAT(underEveryLock(mod4, map),
                UnorderedElementsAre(mod4, mod4 | lock, mod4 | mod2, mod4 | lock | mod2));
}

namespace {

// What the server would hand out for this layout.
KeyboardMap keyboardOfLayout(const char* layout, const char* options = "") {
    xkb_context* context = xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES);
    const xkb_rule_names names{"evdev", "pc105", layout, "", options};
    xkb_keymap* keymap = xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    EXPECT_NE(keymap, nullptr);
    const KeyboardMap map = keyboardOf(keymap);
    xkb_keymap_unref(keymap);
    xkb_context_unref(context);
    return map;
}

} // namespace

TEST(KeyboardOf, NamesPhysicalKeysWhateverTheyBear) {
    const std::map<std::string, std::uint8_t> row{{"AE03", 12}, {"AE04", 13}, {"AE05", 14}};
    for (const char* layout : {"us", "fr", "ru", "de", "jp"})
        EXPECT_EQ(keyboardOfLayout(layout).keys, row) << layout;
}

TEST(KeyboardOf, FindsTheModifiersByWhatTheirKeysDo) {
    const KeyboardMap map = keyboardOfLayout("us");
    EXPECT_EQ(map.super, mod4);
    EXPECT_EQ(map.numLock, mod2);
    EXPECT_EQ(map.scrollLock, 0);
    EXPECT_EQ(keyboardOfLayout("us", "altwin:swap_alt_win").super, mod4);
}

// No common layout has one; users add it.
TEST(KeyboardOf, FindsAScrollLockThatLocks) {
    xkb_context* context = xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES);
    xkb_keymap* keymap = xkb_keymap_new_from_string(context,
                                                    "xkb_keymap {"
                                                    "xkb_keycodes { include \"evdev\" };"
                                                    "xkb_types { include \"complete\" };"
                                                    "xkb_compat { include \"complete\" };"
                                                    "xkb_symbols { include \"pc+us\""
                                                    " modifier_map Mod3 { Scroll_Lock }; };"
                                                    "};",
                                                    XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS);
    ASSERT_NE(keymap, nullptr);
    EXPECT_EQ(keyboardOf(keymap).scrollLock, mod3);
    xkb_keymap_unref(keymap);
    xkb_context_unref(context);
}

TEST(KeyboardOf, WithoutAKeymapHasWhatEveryCommonKeyboardHas) {
    const KeyboardMap map = keyboardOf(nullptr);
    EXPECT_EQ(map.keys.at("AE04"), 13);
    EXPECT_EQ(map.super, mod4);
    EXPECT_EQ(map.numLock, 0);
}
