#include "base/Shared.h"

#include <vector>

namespace marrowfin {

namespace {
std::recursive_mutex sharedLock;
std::vector<std::function<void()>> destroyers;

std::function<void()> takeYoungest() {
    const std::lock_guard hold(sharedLock);
    if (destroyers.empty())
        return nullptr;
    std::function<void()> destroy = std::move(destroyers.back());
    destroyers.pop_back();
    return destroy;
}
} // namespace

std::recursive_mutex& SharedObjects::lock() {
    return sharedLock;
}

void SharedObjects::remember(std::function<void()> destroy) {
    const std::lock_guard hold(sharedLock);
    destroyers.push_back(std::move(destroy));
}

void SharedObjects::destroyAll() {
    // One at a time: a destructor may use, and so rebuild, an object that went before it.
    while (const std::function<void()> destroy = takeYoungest())
        destroy();
}

} // namespace marrowfin
