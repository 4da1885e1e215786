#include "platform/freedesktop/SelectionClock.h"

#include "base/Outcome.h"
#include "platform/freedesktop/ToolkitX11.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>

namespace marrowfin::freedesktop {

SelectionClock::SelectionClock() {
    QCoreApplication::instance()->installNativeEventFilter(this);
}

SelectionClock::~SelectionClock() {
    if (QCoreApplication* application = QCoreApplication::instance())
        application->removeNativeEventFilter(this);
}

void SelectionClock::whenCurrent(std::function<void()> block) {
    if (!toolkitx11::connection()) {
        block();
        return;
    }
    if (!window) {
        window = std::make_unique<QWindow>();
        window->create();
    }
    waiting.push_back(std::move(block));
    alternate = !alternate;
    window->setTitle(alternate ? QStringLiteral("a") : QStringLiteral("b"));
}

bool ownsClipboard() {
    if (toolkitx11::connection())
        return toolkitx11::isOurs(toolkitx11::selectionOwner("CLIPBOARD"));
    return QGuiApplication::clipboard()->ownsClipboard();
}

bool SelectionClock::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (waiting.empty() || eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
        return false;
    if (reinterpret_cast<const xcb_property_notify_event_t*>(event)->window != window->winId())
        return false;
    // The toolkit reads the time from the event after we let it through.
    for (std::function<void()>& block : std::exchange(waiting, {}))
        postToMain(std::move(block));
    return false;
}

} // namespace marrowfin::freedesktop
