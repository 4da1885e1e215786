// Key combinations that reach us whatever program is in front. The statuses are 32-bit codes: 0 is success.
// Main thread; presses are delivered there too.
#pragma once

#include "base/Outcome.h"

#include <QString>
#include <cstdint>
#include <functional>

namespace marrowfin::platform {

using HotKeyStatus = std::int32_t;
constexpr HotKeyStatus hotKeyNoError = 0;
constexpr HotKeyStatus hotKeyNotHandled = -9874; // the event wasn't for this handler
constexpr HotKeyStatus hotKeyExists = -9878;     // another program holds the combination

// Physical keys of the number row, named by their code on the layout that the codes come from.
constexpr std::uint32_t keyCode3 = 20;
constexpr std::uint32_t keyCode4 = 21;
constexpr std::uint32_t keyCode5 = 23;
constexpr std::uint32_t modifierCommand = 256; // the Super key
constexpr std::uint32_t modifierShift = 512;

struct HotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;
    friend bool operator==(const HotKeyID&, const HotKeyID&) = default;
};

// Opaque, never 0 when it stands for a registered combination.
using HotKeyRef = std::uint64_t;

struct HotKeyRegistration {
    HotKeyStatus status = hotKeyNoError;
    HotKeyRef reference = 0;
};

class HotKeyService {
public:
    // Returns hotKeyNotHandled to pass the press on.
    using Handler = std::function<HotKeyStatus(HotKeyID)>;

    virtual ~HotKeyService() = default;
    // One handler at a time. The status is 0, or why no press will ever come.
    virtual HotKeyStatus installHandler(Handler handler) = 0;
    virtual void removeHandler() = 0;
    virtual Outcome<HotKeyRegistration> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                       HotKeyID id) = 0;
    virtual void unregisterHotKey(HotKeyRef reference) = 0;
    // This desktop's own words for where its keyboard settings are, as in "Settings > Keyboard".
    virtual QString settingsPlace() const = 0;
};

} // namespace marrowfin::platform
