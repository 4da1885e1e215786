// All cards: which screen a new one goes to, how a display's cards stack, when each leaves by itself. Owns
// them. Points, DesktopRect. Main thread.
#pragma once

#include "base/Flow.h"
#include "chrome/Delay.h"
#include "panel/CapturePanel.h"
#include "panel/CardRequests.h"

#include <QObject>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace marrowfin::platform {
struct Screen;
}

namespace marrowfin::panel {

enum class Animated { No, Yes };

class CapturePanelController : public QObject {
    Q_OBJECT
public:
    using SaveHandler = std::function<void(const imaging::Image&)>;

    struct Entry {
        std::unique_ptr<CapturePanel> panel;
        std::uint32_t displayID = 0;
        SaveHandler onSave;
        chrome::Delay dismissTimer;
        bool isDragging = false;
    };

    static CapturePanelController& shared();
    CapturePanelController();
    ~CapturePanelController() override;

    // Before the first card: without it there are no editors and no pins.
    void setRequests(CardRequests handedIn) { requests = std::move(handedIn); }

    // Puts up a card on the pointer's screen; nothing when there is no screen.
    void present(const imaging::Image& image, SaveHandler onSave);
    // Every card that is up, oldest first, on all displays.
    std::vector<CapturePanel*> panels() const;
    // Nothing for a card that has left already.
    Entry* entryFor(const CapturePanel* panel) const;
    // Ignored for a card that has left already. The offset throws the card sideways; 0 lets it fade on the
    // spot.
    void dismiss(const CapturePanel* panel, Animated animated, double offset = 0);
    void dismissAll(Animated animated);

    // In a window in front, with the keyboard.
    void openEditor(const imaging::Image& image);
    // Those opened here, until their window closes.
    const std::vector<std::shared_ptr<CardEditor>>& editors() const { return openedEditors; }

    void panelHoverChanged(bool entered, const CapturePanel* panel);
    void panelDragBegan(const CapturePanel* panel);
    void panelDragEnded(const CapturePanel* panel, Drop drop);

private:
    Flow<> presentAtPointer(imaging::Image image, SaveHandler onSave);
    void putUp(const imaging::Image& image, SaveHandler onSave, const platform::Screen& screen);
    // Shows that a drag which nobody took has come back.
    static Flow<> slideBack(std::weak_ptr<Entry> entry, DragPreview preview);
    static Flow<> seeWhetherPointerLeft(std::weak_ptr<Entry> entry);
    std::shared_ptr<Entry> makeEntry(const imaging::Image& image, std::uint32_t displayID,
                                     SaveHandler onSave);
    PanelActions actionsFor(const std::weak_ptr<Entry>& entry, const imaging::Image& image);
    std::shared_ptr<Entry> find(const CapturePanel* panel) const;
    std::vector<std::shared_ptr<Entry>> entriesOf(std::uint32_t displayID) const;

    void makeRoom(const platform::Screen& screen, double incomingHeight);
    // The display's windows from the newest card upwards, each with its entry.
    std::vector<std::pair<std::shared_ptr<Entry>, DesktopRect>> layoutFrames(const platform::Screen& screen);
    void reflow(std::uint32_t displayID, Animated animated);
    void dropDisplay(std::uint32_t displayID);
    void screensChanged();

    void startAutoClose(const std::shared_ptr<Entry>& entry);
    void stopAutoClose(Entry& entry);
    // Keeps a card that is out of the list until its window may be destroyed.
    void bury(const std::shared_ptr<Entry>& entry);

    std::vector<std::shared_ptr<Entry>> entries;
    std::vector<std::shared_ptr<Entry>> leaving;
    std::vector<std::shared_ptr<CardEditor>> openedEditors;
    CardRequests requests;
    FlowScope flows;
};

} // namespace marrowfin::panel
