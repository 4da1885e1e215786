// The three global key combinations. They aren't configurable. Values; any thread.
#pragma once

#include "commands/Command.h"

#include <QString>
#include <array>
#include <cstdint>

namespace marrowfin::app {

struct HotKey {
    std::uint32_t id = 0;      // 1 to 3
    std::uint32_t keyCode = 0; // of the number row, see platform/HotKeyService.h
    QString displayName;
    QString purpose;
};

// Super and Shift, for all three.
constexpr std::uint32_t hotKeyModifiers = 768;
// 'KVEL': tells our hot keys from others in the process.
constexpr std::uint32_t hotKeySignature = 0x4B56454C;

const std::array<HotKey, 3>& hotKeys();
// What a press of one of the three runs.
commands::CommandID commandOf(const HotKey& hotKey);

} // namespace marrowfin::app
