#include "app/HotKey.h"

#include "platform/HotKeyService.h"

namespace marrowfin::app {

using namespace commands;

static_assert(hotKeyModifiers == platform::modifierCommand + platform::modifierShift);

namespace {
const std::array<HotKey, 3> table{
    HotKey{1, platform::keyCode3, QStringLiteral("Cmd+Shift+3"), QStringLiteral("fullscreen capture")},
    HotKey{2, platform::keyCode4, QStringLiteral("Cmd+Shift+4"), QStringLiteral("area capture")},
    HotKey{3, platform::keyCode5, QStringLiteral("Cmd+Shift+5"), QStringLiteral("window capture")},
};
// In the same order.
constexpr std::array pressed{CommandID::captureFullscreen, CommandID::captureArea, CommandID::captureWindow};
} // namespace

const std::array<HotKey, 3>& hotKeys() {
    return table;
}

CommandID commandOf(const HotKey& hotKey) {
    return pressed.at(hotKey.id - 1);
}

} // namespace marrowfin::app
