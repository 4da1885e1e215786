#include "platform/x11/input/X11HotKeys.h"

#include "base/Log.h"
#include "platform/x11/input/SettingsPlace.h"
#include "platform/x11/server/Xkb.h"

#include <QGuiApplication>
#include <QWindow>
#include <algorithm>

namespace marrowfin::x11 {

using namespace platform;

namespace {

constexpr HotKeyStatus noSuchKey = -50; // a parameter that this keyboard doesn't know

std::string keyName(std::uint32_t keyCode) {
    switch (keyCode) {
    case keyCode3:
        return "AE03";
    case keyCode4:
        return "AE04";
    case keyCode5:
        return "AE05";
    default:
        return {};
    }
}

bool tellsOfKeyboard(const Connection& c, const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7F;
    if (type == XCB_MAPPING_NOTIFY)
        return true;
    if (!c.extensions().xkb || type != c.extensions().xkbFirstEvent)
        return false;
    // All events of XKB share one number; the next byte says which it is.
    return event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event.pad0 == XCB_XKB_MAP_NOTIFY;
}

// An overlay of ours that is up has the whole keyboard, hot keys too. (So does a menu or a card that is being
// dragged, which are to be left in peace.)
bool isOverlay(xcb_window_t id) {
    const QWindowList windows = QGuiApplication::allWindows();
    const auto at = std::find_if(windows.begin(), windows.end(), [id](const QWindow* window) {
        return window->handle() && window->winId() == id;
    });
    if (at == windows.end())
        return false;
    const Qt::WindowFlags flags = (*at)->flags();
    return (*at)->type() != Qt::Popup && (flags & Qt::BypassWindowManagerHint) &&
           !(flags & Qt::WindowDoesNotAcceptFocus);
}

} // namespace

X11HotKeys::X11HotKeys(Connection& connection) : connection(connection), keyboard(readKeyboard(connection)) {
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11HotKeys::~X11HotKeys() {
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
    for (const HotKey& key : hotKeys) {
        if (key.grabs)
            giveBack(connection, key.grabs->held);
    }
    connection.flush();
}

HotKeyHandlerInstallation X11HotKeys::installHandler(Handler handler) {
    return {hotKeyNoError, handlers.add(std::move(handler))};
}

void X11HotKeys::removeHandler(HotKeyHandlerRef reference) {
    handlers.remove(reference);
}

HotKeyStatus X11HotKeys::postEvent(HotKeyID id) {
    const auto at =
        std::find_if(hotKeys.begin(), hotKeys.end(), [id](const HotKey& key) { return key.id == id; });
    return handlers.deliver(id, at == hotKeys.end() ? 0 : at->handler);
}

Outcome<HotKeyRegistration> X11HotKeys::registerHotKey(const HotKeyRequest& request) {
    const auto answer = [](HotKeyStatus status, HotKeyRef reference = 0) {
        return settled<HotKeyRegistration>(HotKeyRegistration{status, reference});
    };
    const Combination combination{request.keyCode, request.modifiers};
    if (keyName(request.keyCode).empty())
        return answer(noSuchKey);
    // The server lets one client grab a key twice.
    for (const HotKey& key : hotKeys) {
        if (key.combination == combination)
            return answer(hotKeyExists);
    }
    auto grabs = grab(combination);
    if (!grabs)
        return answer(hotKeyExists);
    hotKeys.push_back({++lastReference, combination, request.id, request.handler, std::move(grabs), 0});
    return answer(hotKeyNoError, lastReference);
}

void X11HotKeys::unregisterHotKey(HotKeyRef reference) {
    const auto at = std::find_if(hotKeys.begin(), hotKeys.end(),
                                 [reference](const HotKey& key) { return key.reference == reference; });
    if (at == hotKeys.end())
        return;
    if (at->grabs)
        giveBack(connection, at->grabs->held);
    connection.flush();
    hotKeys.erase(at);
}

QString X11HotKeys::settingsPlace() const {
    return keyboardSettingsPlace(qEnvironmentVariable("XDG_CURRENT_DESKTOP"));
}

bool X11HotKeys::Grabs::answersTo(std::uint16_t state) const {
    constexpr std::uint16_t modifiers = 0xFF; // above them are the pointer's buttons and the layout
    return std::find(held.states.begin(), held.states.end(), state & modifiers) != held.states.end();
}

std::optional<X11HotKeys::Grabs> X11HotKeys::grab(const Combination& combination) {
    const auto key = keyboard.keys.find(keyName(combination.keyCode));
    if (key == keyboard.keys.end())
        return std::nullopt;
    Grabs grabs;
    if ((combination.modifiers & modifierCommand) != 0)
        grabs.wanted |= keyboard.super;
    if ((combination.modifiers & modifierShift) != 0)
        grabs.wanted |= XCB_MOD_MASK_SHIFT;
    grabs.held = {key->second, underEveryLock(grabs.wanted, keyboard)};
    if (!take(connection, grabs.held))
        return std::nullopt;
    return grabs;
}

bool X11HotKeys::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
    if (type != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    switch (event->response_type & 0x7F) {
    case XCB_KEY_PRESS:
        return pressed(*reinterpret_cast<const xcb_key_press_event_t*>(event));
    case XCB_KEY_RELEASE:
        released(*reinterpret_cast<const xcb_key_release_event_t*>(event));
        return false;
    default:
        if (tellsOfKeyboard(connection, *event))
            keyboardMayHaveChanged();
        return false;
    }
}

bool X11HotKeys::pressed(const xcb_key_press_event_t& event) {
    const auto at = std::find_if(hotKeys.begin(), hotKeys.end(), [&](const HotKey& key) {
        return key.grabs && key.grabs->held.key == event.detail && key.grabs->answersTo(event.state);
    });
    if (at == hotKeys.end() || (event.event != connection.root() && !isOverlay(event.event)))
        return false;
    // A held key comes as release and press of the same millisecond.
    if (event.time == at->releasedAt)
        return true;
    // A press that nobody wants goes on to Qt.
    return handlers.deliver(at->id, at->handler) == hotKeyNoError;
}

// Whatever window it goes to: an overlay that took the keyboard meanwhile gets the release.
void X11HotKeys::released(const xcb_key_release_event_t& event) {
    for (HotKey& key : hotKeys) {
        if (key.grabs && key.grabs->held.key == event.detail)
            key.releasedAt = event.time;
    }
}

// A change of layout comes as a burst of events: look once, afterwards.
void X11HotKeys::keyboardMayHaveChanged() {
    if (lookPosted)
        return;
    lookPosted = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            lookPosted = false;
            regrab();
        },
        Qt::QueuedConnection);
}

void X11HotKeys::regrab() {
    KeyboardMap now = readKeyboard(connection);
    if (connection.isLost() || now == keyboard)
        return;
    keyboard = std::move(now);
    for (const HotKey& key : hotKeys) {
        if (key.grabs)
            giveBack(connection, key.grabs->held);
    }
    for (HotKey& key : hotKeys) {
        key.grabs = grab(key.combination);
        if (connection.isLost())
            return; // nobody holds anything, and nothing is to be said about keys
        if (!key.grabs)
            logLine(QStringLiteral("[Marrowfin] After the keyboard changed, another program holds hot key %1")
                        .arg(key.id.id));
    }
    connection.flush();
}

} // namespace marrowfin::x11
