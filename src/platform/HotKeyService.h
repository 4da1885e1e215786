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

// Opaque, never 0 when they stand for something.
using HotKeyRef = std::uint64_t;
using HotKeyHandlerRef = std::uint64_t;

struct HotKeyHandlerInstallation {
    HotKeyStatus status = hotKeyNoError; // or why no press will ever come
    HotKeyHandlerRef reference = 0;
};

struct HotKeyRequest {
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
    HotKeyID id;
    // What the combination does, in the user's words, for desktops that list their keys or ask about them.
    QString description;
    // The handler that is asked first, whoever installs another one later; 0 for none in particular.
    HotKeyHandlerRef handler = 0;
};

struct HotKeyRegistration {
    HotKeyStatus status = hotKeyNoError;
    HotKeyRef reference = 0;
};

class HotKeyService {
public:
    // Returns hotKeyNotHandled to pass the press on. May remove itself.
    using Handler = std::function<HotKeyStatus(HotKeyID)>;

    virtual ~HotKeyService() = default;
    // Any number of handlers; each stays until it is removed.
    virtual HotKeyHandlerInstallation installHandler(Handler handler) = 0;
    virtual void removeHandler(HotKeyHandlerRef reference) = 0;
    // A desktop may ask the user once for all combinations: ask for those that belong together before
    // awaiting any of them.
    virtual Outcome<HotKeyRegistration> registerHotKey(const HotKeyRequest& request) = 0;
    // An unknown reference does nothing.
    virtual void unregisterHotKey(HotKeyRef reference) = 0;
    // Hands this id to the handlers as a press of it would be, without any key; returns what they answered.
    virtual HotKeyStatus postEvent(HotKeyID id) = 0;
    // This desktop's own words for where its keyboard settings are, as in "Settings > Keyboard".
    virtual QString settingsPlace() const = 0;
};

} // namespace marrowfin::platform
