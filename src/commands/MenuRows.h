// The two menus as lists of commands, and the rows that they show at this moment: values that a menu on
// screen or one exported to the desktop is made of. Main thread.
#pragma once

#include "commands/CommandTable.h"

#include <variant>

namespace marrowfin::commands {

struct MenuHeader {
    QString title;
};
struct MenuSeparator {};
using MenuEntry = std::variant<MenuHeader, MenuSeparator, CommandID>;

std::vector<MenuEntry> menuEntries(Menu menu);

struct MenuRow {
    enum class Kind { Header, Separator, Command, Submenu };

    Kind kind = Kind::Separator;
    QString title = {};
    QString symbol = {};
    QString symbolDescription = {};
    QString keyLabel = {};
    CommandID command = CommandID::quit; // of a command's row, with the request
    CommandRequest request = {};
    std::vector<MenuRow> rows = {}; // of a submenu
};

QString menuTitle(Menu menu);
// Titles are fixed from now on: a menu doesn't tick while it is open.
std::vector<MenuRow> menuRows(Menu menu, const CommandTable& table);

} // namespace marrowfin::commands
