// Holds the global hot keys and runs the command of each press. Main thread. Destroying it frees nothing:
// the delegate calls unregister() first.
#pragma once

#include "app/HotKey.h"
#include "base/Flow.h"
#include "platform/HotKeyService.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace marrowfin::commands {
class CommandTable;
}

namespace marrowfin::app {

class ShortcutManager {
public:
    explicit ShortcutManager(commands::CommandTable& table);

    // A second call without unregister() does nothing. ("register" alone is a reserved word.)
    Flow<> registerHotKeys();
    // One alert for all combinations that could not be had; returns when it was answered.
    Flow<> reportFailures();
    void unregister();
    // Runs the command of the row with this id; an unknown id does nothing.
    void dispatch(std::uint32_t id);

    // When set, gets the hot key in place of its command.
    std::function<void(const HotKey&)> onHotKey;

    const std::vector<platform::HotKeyRef>& hotKeyRefs() const { return references; }
    bool hasEventHandler() const { return eventHandler.has_value(); }
    // Combinations that couldn't be registered, with why.
    const std::vector<std::pair<HotKey, platform::HotKeyStatus>>& failures() const { return failed; }

private:
    platform::HotKeyStatus handle(platform::HotKeyID id);

    commands::CommandTable& table;
    std::vector<platform::HotKeyRef> references;
    std::optional<platform::HotKeyHandlerRef> eventHandler;
    std::vector<std::pair<HotKey, platform::HotKeyStatus>> failed;
};

} // namespace marrowfin::app
