// A menu on screen, made of the command table's rows afresh each time one opens. Key columns are labels: the
// menu exists only while it is open, and the global combinations are ShortcutManager's. The taker owns it;
// the table outlives it. Main thread.
#pragma once

#include "commands/CommandTable.h"

#include <memory>

class QMenu;

namespace marrowfin::app {

// A row that is chosen runs its command.
std::unique_ptr<QMenu> makeMenu(commands::Menu menu, commands::CommandTable& table);

} // namespace marrowfin::app
