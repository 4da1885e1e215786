#include "base/Shared.h"

#include <utility>
#include <vector>

namespace marrowfin {

namespace {
std::vector<std::function<void()>> destroyers;
}

void SharedObjects::remember(std::function<void()> destroy) {
    destroyers.push_back(std::move(destroy));
}

void SharedObjects::destroyAll() {
    // One at a time: a destructor may use, and so rebuild, an object that went before it.
    while (!destroyers.empty()) {
        const std::function<void()> destroy = std::move(destroyers.back());
        destroyers.pop_back();
        destroy();
    }
}

} // namespace marrowfin
