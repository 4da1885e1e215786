#include "platform/x11/input/KeyboardMap.h"

#include <gmock/gmock.h>

using namespace marrowfin::x11;
using testing::UnorderedElementsAre;

namespace {

constexpr std::uint16_t shift = 1;
constexpr std::uint16_t lock = 2;
constexpr std::uint16_t mod2 = 1 << 4;
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

TEST(ModifierWith, FindsTheBitOfASymbol) {
    ModifierFacts facts;
    facts.lowest = 8;
    facts.symbolsPerKey = 2;
    facts.symbols = {0xFFE9, 0, 0xFF7F,
                     0,      0, 0xFFEB}; // keys 8: Alt, 9: Num_Lock, 10: Super on its second level
    facts.keycodes[3] = {8, 0};
    facts.keycodes[4] = {0, 9};
    facts.keycodes[6] = {10};
    EXPECT_EQ(modifierWith(facts, {0xFF7F}), mod2);
    EXPECT_EQ(modifierWith(facts, {0xFFEB, 0xFFEC}), mod4);
    EXPECT_EQ(modifierWith(facts, {0xFF14}), 0);
}

TEST(ModifierWith, IgnoresKeysThatTheMapDoesntHave) {
    ModifierFacts facts;
    facts.symbolsPerKey = 1;
    facts.symbols = {0xFF7F};
    facts.keycodes[4] = {3, 200};
    EXPECT_EQ(modifierWith(facts, {0xFF7F}), 0);
}
