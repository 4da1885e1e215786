#include "platform/HotKeyHandlers.h"

#include <algorithm>

namespace marrowfin::platform {

HotKeyHandlerRef HotKeyHandlers::add(HotKeyService::Handler handler) {
    entries.push_back({++lastReference, std::move(handler)});
    return lastReference;
}

void HotKeyHandlers::remove(HotKeyHandlerRef reference) {
    std::erase_if(entries, [reference](const Entry& entry) { return entry.reference == reference; });
}

bool HotKeyHandlers::isInstalled(HotKeyHandlerRef reference) const {
    return std::any_of(entries.begin(), entries.end(),
                       [reference](const Entry& entry) { return entry.reference == reference; });
}

HotKeyStatus HotKeyHandlers::deliver(HotKeyID id, HotKeyHandlerRef owner) const {
    std::vector<Entry> asked(entries.rbegin(), entries.rend());
    std::stable_partition(asked.begin(), asked.end(),
                          [owner](const Entry& entry) { return entry.reference == owner; });
    for (const Entry& entry : asked) {
        if (!isInstalled(entry.reference))
            continue; // removed by one that was asked before
        const HotKeyStatus status = entry.handler(id);
        if (status != hotKeyNotHandled)
            return status;
    }
    return hotKeyNotHandled;
}

} // namespace marrowfin::platform
