#include "commands/MenuRows.h"

namespace marrowfin::commands {

namespace {

// "3 seconds"; no symbol.
std::vector<MenuRow> delayRows(const Command& command) {
    std::vector<MenuRow> rows;
    for (const std::chrono::seconds delay : command.delays) {
        MenuRow row{MenuRow::Kind::Command, QStringLiteral("%1 seconds").arg(delay.count())};
        row.command = command.id;
        row.request.delay = delay;
        rows.push_back(std::move(row));
    }
    return rows;
}

MenuRow commandRow(const Command& command, const ProgramState& state, Menu menu) {
    MenuRow row;
    row.kind = command.delays.empty() ? MenuRow::Kind::Command : MenuRow::Kind::Submenu;
    row.title = command.title(state, menu);
    row.symbol = command.symbol(state, menu);
    row.symbolDescription = command.symbolDescription.isEmpty() ? row.title : command.symbolDescription;
    if (menu == Menu::Main)
        row.keyLabel = command.keyLabel;
    row.command = command.id;
    row.rows = delayRows(command);
    return row;
}

std::vector<MenuEntry> mainMenu() {
    return {
        MenuHeader{QStringLiteral("Capture")},
        CommandID::captureAllInOne,
        CommandID::captureArea,
        CommandID::capturePreviousArea,
        CommandID::captureFullscreen,
        CommandID::captureWindow,
        CommandID::scrollingCapture,
        CommandID::selfTimer,
        MenuSeparator{},
        MenuHeader{QStringLiteral("Tools")},
        CommandID::captureText,
        CommandID::openFromClipboard,
        CommandID::pinToScreen,
        MenuSeparator{},
        MenuHeader{QStringLiteral("Recording")},
        CommandID::recordScreen,
        MenuSeparator{},
        CommandID::showHistory,
        CommandID::openSettings,
        CommandID::checkForUpdates,
        MenuSeparator{},
        CommandID::quit,
    };
}

std::vector<MenuEntry> allInOneMenu() {
    return {
        CommandID::captureArea, CommandID::captureWindow,    CommandID::captureFullscreen,
        MenuSeparator{},        CommandID::scrollingCapture, CommandID::captureText,
        MenuSeparator{},        CommandID::recordScreen,
    };
}

} // namespace

std::vector<MenuEntry> menuEntries(Menu menu) {
    return menu == Menu::Main ? mainMenu() : allInOneMenu();
}

QString menuTitle(Menu menu) {
    return menu == Menu::Main ? QStringLiteral("Marrowfin") : QString();
}

std::vector<MenuRow> menuRows(Menu menu, const CommandTable& table) {
    const ProgramState state = table.state();
    std::vector<MenuRow> rows;
    for (const MenuEntry& entry : menuEntries(menu)) {
        if (const auto* header = std::get_if<MenuHeader>(&entry))
            rows.push_back({MenuRow::Kind::Header, header->title});
        else if (const auto* id = std::get_if<CommandID>(&entry))
            rows.push_back(commandRow(table.command(*id), state, menu));
        else
            rows.push_back({MenuRow::Kind::Separator});
    }
    return rows;
}

} // namespace marrowfin::commands
