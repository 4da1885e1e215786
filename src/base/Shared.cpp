#include "base/Shared.h"

#include "base/Invariant.h"

#include <vector>

namespace marrowfin {

namespace {
std::recursive_mutex sharedLock;
std::vector<std::function<void()>> destroyers;
bool closed = false;

std::function<void()> takeYoungest(std::size_t keeping) {
    const std::lock_guard hold(sharedLock);
    if (destroyers.size() <= keeping)
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

void SharedObjects::aboutToBuild() {
    MARROWFIN_INVARIANT(!closed);
}

void SharedObjects::destroyAll() {
    destroyAllBut(0);
}

void SharedObjects::destroyAllBut(std::size_t oldest) {
    // One at a time: while they aren't closed, a destructor may use, and so rebuild, an object that went
    // before it.
    while (const std::function<void()> destroy = takeYoungest(oldest))
        destroy();
}

std::size_t SharedObjects::count() {
    const std::lock_guard hold(sharedLock);
    return destroyers.size();
}

void SharedObjects::close() {
    const std::lock_guard hold(sharedLock);
    closed = true;
}

void SharedObjects::reopen() {
    const std::lock_guard hold(sharedLock);
    closed = false;
}

} // namespace marrowfin
