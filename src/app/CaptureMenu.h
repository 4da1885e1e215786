// The rows of the two menus, built afresh each time one opens. Key columns are labels: the menu exists only
// while it is open, and the global combinations are ShortcutManager's. The taker owns a menu. Main thread.
#pragma once

#include "app/Features.h"

#include <functional>
#include <memory>

class QMenu;

namespace marrowfin::app {

// What the rows do.
struct MenuActions {
    std::function<void()> captureAllInOne;
    std::function<void()> captureArea;
    std::function<void()> capturePreviousArea;
    std::function<void()> captureFullscreen;
    std::function<void()> captureWindow;
    std::function<void()> scrollingCapture;
    std::function<void(int seconds)> selfTimer;
    std::function<void()> captureText;
    std::function<void()> openFromClipboard;
    std::function<void()> pinToScreen;
    std::function<void()> recordScreen;
    std::function<void()> showHistory;
    std::function<void()> openSettings;
    std::function<void()> checkForUpdates;
    std::function<void()> quit;
};

// The recorder may be null: then nothing is being recorded.
std::unique_ptr<QMenu> makeMainMenu(const MenuActions& actions, const RecorderFeature* recorder);
std::unique_ptr<QMenu> makeAllInOneMenu(const MenuActions& actions, const RecorderFeature* recorder);

} // namespace marrowfin::app
