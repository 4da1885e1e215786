// Who is told of a pressed hot key: the handlers that a HotKeyService keeps, and the order in which they are
// asked. Main thread; a handler may install and remove handlers while it is called.
#pragma once

#include "platform/HotKeyService.h"

#include <utility>
#include <vector>

namespace marrowfin::platform {

class HotKeyHandlers {
public:
    HotKeyHandlerRef add(HotKeyService::Handler handler);
    void remove(HotKeyHandlerRef reference);
    // The owner first, then the others, the newest first, until one doesn't pass the press on. An owner that
    // isn't there any more is left out.
    HotKeyStatus deliver(HotKeyID id, HotKeyHandlerRef owner) const;

private:
    struct Entry {
        HotKeyHandlerRef reference = 0;
        HotKeyService::Handler handler;
    };
    bool isInstalled(HotKeyHandlerRef reference) const;

    std::vector<Entry> entries; // oldest first
    HotKeyHandlerRef lastReference = 0;
};

} // namespace marrowfin::platform
