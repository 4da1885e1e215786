#include "panel/CapturePanelController.h"

#include "base/Memory.h"
#include "base/Shared.h"
#include "panel/PanelLayout.h"
#include "panel/ScreenChoice.h"
#include "platform/Clipboard.h"
#include "platform/Screens.h"
#include "platform/Services.h"
#include "settings/SettingsStore.h"

#include <QPointer>
#include <algorithm>

namespace marrowfin::panel {

using namespace imaging;
using namespace settings;

using chrome::TimingFunction;

namespace {
constexpr double fadeSeconds = 0.2;
constexpr double reflowSeconds = 0.25;
} // namespace

CapturePanelController& CapturePanelController::shared() {
    return Shared<CapturePanelController>::instance();
}

CapturePanelController::CapturePanelController() {
    connect(&platform::services().screens, &platform::Screens::changed, this,
            &CapturePanelController::screensChanged);
}

CapturePanelController::~CapturePanelController() = default;

void CapturePanelController::present(const Image& image, SaveHandler onSave) {
    flows.start(presentAtPointer(image, std::move(onSave)));
}

// One that knows where the pointer is has the card up when this returns.
Flow<> CapturePanelController::presentAtPointer(Image image, SaveHandler onSave) {
    const Result<DesktopPoint> pointer = co_await platform::services().screens.pointerLocation();
    const std::optional<platform::Screen> screen = screenForNewCard(platform::services().screens, pointer);
    if (screen)
        putUp(image, std::move(onSave), *screen);
}

void CapturePanelController::putUp(const Image& image, SaveHandler onSave, const platform::Screen& screen) {
    const std::shared_ptr<Entry> entry = makeEntry(image, screen.displayID, std::move(onSave));
    makeRoom(screen, cardSize.height());
    entries.push_back(entry);
    CapturePanel& panel = *entry->panel;
    panel.animator().setFrame(stackFrames(screen.visibleFrame, 1).front());
    panel.orderFront();
    panel.content().playArrival();
    for (const auto& [row, frame] : layoutFrames(screen))
        row->panel->animator().moveTo(frame, reflowSeconds, TimingFunction::easeOut());
    startAutoClose(entry);
}

std::vector<CapturePanel*> CapturePanelController::panels() const {
    std::vector<CapturePanel*> result;
    for (const std::shared_ptr<Entry>& entry : entries)
        result.push_back(entry->panel.get());
    return result;
}

CapturePanelController::Entry* CapturePanelController::entryFor(const CapturePanel* panel) const {
    return find(panel).get();
}

void CapturePanelController::dismiss(const CapturePanel* panel, Animated animated, double offset) {
    const std::shared_ptr<Entry> entry = find(panel);
    if (!entry)
        return;
    std::erase(entries, entry);
    leaving.push_back(entry);
    entry->dismissTimer.stop();
    entry->isDragging = false;
    if (animated == Animated::No) {
        entry->panel->orderOut();
        bury(entry);
        reflow(entry->displayID, Animated::No);
        return;
    }
    chrome::SurfaceAnimator& animator = entry->panel->animator();
    animator.moveTo(departureFrame(animator.frame(), offset), fadeSeconds, TimingFunction::easeIn());
    animator.fadeTo(0, fadeSeconds, TimingFunction::easeIn(), [this, weak = std::weak_ptr(entry)] {
        if (const std::shared_ptr<Entry> faded = weak.lock()) {
            faded->panel->orderOut();
            bury(faded);
        }
    });
    reflow(entry->displayID, Animated::Yes);
}

void CapturePanelController::dismissAll(Animated animated) {
    while (!entries.empty())
        dismiss(entries.front()->panel.get(), animated, 0);
}

void CapturePanelController::openEditor(const Image& image) {
    if (!requests.makeEditor)
        return;
    const auto opened = std::make_shared<CardEditor>();
    const QPointer<CapturePanelController> self(this);
    *opened = requests.makeEditor(image, [self, weak = std::weak_ptr(opened)] {
        if (self)
            std::erase(self->openedEditors, weak.lock());
    });
    openedEditors.push_back(opened);
    opened->show();
}

void CapturePanelController::panelHoverChanged(bool entered, const CapturePanel* panel) {
    const std::shared_ptr<Entry> entry = find(panel);
    if (!entry || entry->isDragging)
        return;
    if (entered)
        stopAutoClose(*entry);
    else
        startAutoClose(entry);
}

void CapturePanelController::panelDragBegan(const CapturePanel* panel) {
    const std::shared_ptr<Entry> entry = find(panel);
    if (!entry)
        return;
    entry->isDragging = true;
    stopAutoClose(*entry);
}

void CapturePanelController::panelDragEnded(const CapturePanel* panel, Drop drop) {
    const std::shared_ptr<Entry> entry = find(panel);
    if (!entry)
        return;
    entry->isDragging = false;
    if (drop == Drop::Completed)
        dismiss(panel, Animated::Yes);
    else
        startAutoClose(entry);
    flows.start(seeWhetherPointerLeft(entry));
}

// The pointer left with what it carried, and no window was told.
Flow<> CapturePanelController::seeWhetherPointerLeft(std::weak_ptr<Entry> weak) {
    const Result<DesktopPoint> pointer = co_await platform::services().screens.pointerLocation();
    const std::shared_ptr<Entry> entry = weak.lock();
    if (entry && pointer && !contains(cardFrame(entry->panel->frame()).rect, pointer->point))
        entry->panel->content().setHovered(false, HoverSource::Program);
}

Flow<> CapturePanelController::slideBack(std::weak_ptr<Entry> weak, DragPreview preview) {
    const Result<DesktopPoint> pointer = co_await platform::services().screens.pointerLocation();
    const std::shared_ptr<Entry> entry = weak.lock();
    if (entry && pointer && chrome::currentMotion() == chrome::Motion::Full)
        entry->panel->slideBack(preview, *pointer);
}

std::shared_ptr<CapturePanelController::Entry>
CapturePanelController::makeEntry(const Image& image, std::uint32_t displayID, SaveHandler onSave) {
    auto entry = std::make_shared<Entry>();
    entry->displayID = displayID;
    entry->onSave = std::move(onSave);
    entry->panel = std::make_unique<CapturePanel>(image, actionsFor(entry, image));
    entry->panel->whenClosed([this, weak = std::weak_ptr(entry)] {
        if (const std::shared_ptr<Entry> closed = weak.lock())
            dismiss(closed->panel.get(), Animated::No);
    });
    return entry;
}

PanelActions CapturePanelController::actionsFor(const std::weak_ptr<Entry>& weak, const Image& image) {
    // Runs the block with the entry while its card is up.
    const auto ifUp = [this, weak](auto block) {
        return [this, weak, block](auto... arguments) {
            if (const std::shared_ptr<Entry> entry = weak.lock(); entry && find(entry->panel.get()))
                block(*entry, arguments...);
        };
    };
    PanelActions actions;
    // These two leave the card where it is, so a card that is already fading does them as well.
    actions.copy = [image] { platform::copyToClipboard(image); };
    actions.save = [weak, image] {
        if (const std::shared_ptr<Entry> entry = weak.lock(); entry && entry->onSave)
            entry->onSave(image);
    };
    actions.openEditor = ifUp([this, image](Entry& entry) {
        openEditor(image);
        dismiss(entry.panel.get(), Animated::Yes);
    });
    actions.pin = ifUp([this, image](Entry& entry) {
        if (requests.pin)
            requests.pin(image);
        dismiss(entry.panel.get(), Animated::Yes);
    });
    actions.close = ifUp([this](Entry& entry) { dismiss(entry.panel.get(), Animated::Yes); });
    actions.swipe =
        ifUp([this](Entry& entry, double offset) { dismiss(entry.panel.get(), Animated::Yes, offset); });
    actions.hoverChanged =
        ifUp([this](Entry& entry, bool entered) { panelHoverChanged(entered, entry.panel.get()); });
    actions.dragBegan = ifUp([this](Entry& entry) { panelDragBegan(entry.panel.get()); });
    actions.dragEnded = [this, weak](Drop drop, const DragPreview& preview) {
        const std::shared_ptr<Entry> entry = weak.lock();
        if (!entry)
            return;
        panelDragEnded(entry->panel.get(), drop);
        if (!find(entry->panel.get()))
            bury(entry);
        else
            flows.start(slideBack(entry, preview));
    };
    return actions;
}

std::shared_ptr<CapturePanelController::Entry> CapturePanelController::find(const CapturePanel* panel) const {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [panel](const auto& entry) { return entry->panel.get() == panel; });
    return found == entries.end() ? nullptr : *found;
}

std::vector<std::shared_ptr<CapturePanelController::Entry>>
CapturePanelController::entriesOf(std::uint32_t displayID) const {
    std::vector<std::shared_ptr<Entry>> result;
    std::copy_if(entries.begin(), entries.end(), std::back_inserter(result),
                 [displayID](const auto& entry) { return entry->displayID == displayID; });
    return result;
}

void CapturePanelController::makeRoom(const platform::Screen& screen, double incomingHeight) {
    const auto dismissOldest = [this](const std::vector<std::shared_ptr<Entry>>& standing) {
        dismiss(standing.front()->panel.get(), Animated::Yes);
    };
    for (auto standing = entriesOf(screen.displayID); standing.size() >= maximumCardsPerDisplay;
         standing = entriesOf(screen.displayID))
        dismissOldest(standing);
    for (auto standing = entriesOf(screen.displayID);
         !standing.empty() &&
         !stackHasRoom(screen.visibleFrame, static_cast<int>(standing.size()), incomingHeight);
         standing = entriesOf(screen.displayID))
        dismissOldest(standing);
}

std::vector<std::pair<std::shared_ptr<CapturePanelController::Entry>, DesktopRect>>
CapturePanelController::layoutFrames(const platform::Screen& screen) {
    std::vector<std::shared_ptr<Entry>> standing = entriesOf(screen.displayID);
    std::reverse(standing.begin(), standing.end());
    const std::vector<DesktopRect> frames =
        stackFrames(screen.visibleFrame, static_cast<int>(standing.size()));
    std::vector<std::pair<std::shared_ptr<Entry>, DesktopRect>> rows;
    for (std::size_t row = 0; row < standing.size(); ++row)
        rows.emplace_back(standing[row], frames[row]);
    return rows;
}

void CapturePanelController::reflow(std::uint32_t displayID, Animated animated) {
    const std::optional<platform::Screen> screen = screenOf(platform::services().screens, displayID);
    if (!screen) {
        dropDisplay(displayID);
        return;
    }
    for (const auto& [row, frame] : layoutFrames(*screen)) {
        if (animated == Animated::Yes)
            row->panel->animator().moveTo(frame, reflowSeconds, TimingFunction::easeInEaseOut());
        else
            row->panel->animator().setFrame(frame);
    }
}

void CapturePanelController::dropDisplay(std::uint32_t displayID) {
    for (const std::shared_ptr<Entry>& entry : entriesOf(displayID)) {
        std::erase(entries, entry);
        leaving.push_back(entry);
        entry->dismissTimer.stop();
        entry->panel->orderOut();
        bury(entry);
    }
}

void CapturePanelController::screensChanged() {
    std::vector<std::uint32_t> displays;
    for (const std::shared_ptr<Entry>& entry : entries)
        if (std::find(displays.begin(), displays.end(), entry->displayID) == displays.end())
            displays.push_back(entry->displayID);
    for (const std::uint32_t display : displays)
        reflow(display, Animated::No);
}

void CapturePanelController::startAutoClose(const std::shared_ptr<Entry>& entry) {
    entry->dismissTimer.stop();
    const std::optional<double> interval = seconds(SettingsStore::shared().panelAutoClose());
    if (!interval) {
        entry->panel->content().freezeCountdown();
        return;
    }
    entry->dismissTimer.start(*interval, [this, weak = std::weak_ptr(entry)] {
        if (const std::shared_ptr<Entry> expired = weak.lock())
            dismiss(expired->panel.get(), Animated::Yes);
    });
    entry->panel->content().startCountdown(*interval);
}

void CapturePanelController::stopAutoClose(Entry& entry) {
    entry.dismissTimer.stop();
    entry.panel->content().freezeCountdown();
}

void CapturePanelController::bury(const std::shared_ptr<Entry>& entry) {
    // From the event loop: the card may be in the middle of one of its own events.
    QMetaObject::invokeMethod(
        this,
        [this, entry] {
            // A drag session runs an event loop of its own inside the card; its end buries again.
            if (!entry->panel->content().isInDragSession()) {
                std::erase(leaving, entry);
                giveFreeMemoryBackWhenCalm();
            }
        },
        Qt::QueuedConnection);
}

} // namespace marrowfin::panel
