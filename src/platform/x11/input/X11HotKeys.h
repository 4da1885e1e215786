// Global hot keys as grabs of physical keys on the root window. Presses reach us through Qt's connection.
// While another program holds the whole keyboard (a menu, a screen locker), nobody's hot keys work: that is
// X11's limit. While an overlay of ours holds it they come to its window and work. Main thread; owned by
// X11Backend.
#pragma once

#include "platform/HotKeyHandlers.h"
#include "platform/x11/input/KeyGrab.h"
#include "platform/x11/input/KeyboardMap.h"
#include "platform/x11/server/Connection.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <optional>
#include <vector>

namespace marrowfin::x11 {

class X11HotKeys final : public QObject, public platform::HotKeyService, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    // The connection is Qt's.
    explicit X11HotKeys(Connection& connection);
    ~X11HotKeys() override;

    platform::HotKeyHandlerInstallation installHandler(Handler handler) override;
    void removeHandler(platform::HotKeyHandlerRef reference) override;
    Outcome<platform::HotKeyRegistration> registerHotKey(const platform::HotKeyRequest& request) override;
    void unregisterHotKey(platform::HotKeyRef reference) override;
    platform::HotKeyStatus postEvent(platform::HotKeyID id) override;
    QString settingsPlace() const override;

private:
    struct Combination {
        std::uint32_t keyCode = 0;
        std::uint32_t modifiers = 0;
        friend bool operator==(const Combination&, const Combination&) = default;
    };
    // What was grabbed for it: none after a keyboard change that left the key to another program.
    struct Grabs {
        KeyGrab held;
        std::uint16_t wanted = 0;
        bool answersTo(std::uint16_t state) const;
    };
    struct HotKey {
        platform::HotKeyRef reference = 0;
        Combination combination;
        platform::HotKeyID id;
        platform::HotKeyHandlerRef handler = 0;
        std::optional<Grabs> grabs;
        std::uint32_t releasedAt = 0;
    };

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    bool pressed(const xcb_key_press_event_t& event);
    void released(const xcb_key_release_event_t& event);
    std::optional<Grabs> grab(const Combination& combination);
    void keyboardMayHaveChanged();
    void regrab();

    Connection& connection;
    KeyboardMap keyboard;
    platform::HotKeyHandlers handlers;
    std::vector<HotKey> hotKeys;
    platform::HotKeyRef lastReference = 0;
    bool lookPosted = false;
};

} // namespace marrowfin::x11
