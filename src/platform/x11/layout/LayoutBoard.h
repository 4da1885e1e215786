// The layout of the displays as it was last seen: written by the screens on the main thread, read by grabs on
// any.
#pragma once

#include "platform/x11/layout/DisplayLayout.h"

#include <memory>
#include <mutex>

namespace marrowfin::x11 {

class LayoutBoard {
public:
    void publish(DisplayLayout layout) {
        auto next = std::make_shared<const DisplayLayout>(std::move(layout));
        const std::lock_guard hold(lock);
        latest = std::move(next);
    }
    // Never null.
    std::shared_ptr<const DisplayLayout> current() const {
        const std::lock_guard hold(lock);
        return latest;
    }

private:
    mutable std::mutex lock;
    std::shared_ptr<const DisplayLayout> latest = std::make_shared<const DisplayLayout>();
};

} // namespace marrowfin::x11
