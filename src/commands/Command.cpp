#include "commands/Command.h"

namespace marrowfin::commands {

namespace {

using namespace std::chrono_literals;

Command::Text always(QString text) {
    return [text = std::move(text)](const ProgramState&, Menu) { return text; };
}

Command plain(CommandID id, QString title, QString symbol, QString keyLabel = {}) {
    Command command;
    command.id = id;
    command.title = always(std::move(title));
    command.symbol = always(std::move(symbol));
    command.keyLabel = std::move(keyLabel);
    return command;
}

// One that looks at the screen and makes an image.
Command capture(CommandID id, QString title, QString symbol, QString keyLabel = {}) {
    Command command = plain(id, std::move(title), std::move(symbol), std::move(keyLabel));
    command.permission = Permission::Asked;
    command.output = Output::Taken;
    return command;
}

Command of(Command command, QString subject) {
    command.subject = std::move(subject);
    return command;
}

Command selfTimer() {
    Command command = capture(CommandID::selfTimer, QStringLiteral("Self-Timer"), QStringLiteral("timer"));
    command.symbolDescription = QStringLiteral("Timer");
    command.delays = {3s, 5s, 10s};
    return command;
}

QString recordTitle(const ProgramState& state, Menu menu) {
    if (state.recorder != RecorderState::recording)
        return QStringLiteral("Record Screen");
    if (menu == Menu::AllInOne)
        return QStringLiteral("Stop Recording");
    return QStringLiteral("Stop Recording (%1)").arg(state.formattedDuration);
}

QString recordSymbol(const ProgramState& state, Menu menu) {
    const bool stops = state.recorder == RecorderState::recording && menu == Menu::Main;
    return stops ? QStringLiteral("stop.circle.fill") : QStringLiteral("record.circle");
}

Command recordScreen() {
    Command command;
    command.id = CommandID::recordScreen;
    command.title = recordTitle;
    command.symbol = recordSymbol;
    command.output = Output::Taken;
    return of(std::move(command), QStringLiteral("Screen recording"));
}

Command captureText() {
    Command command = plain(CommandID::captureText, QStringLiteral("Capture Text (OCR)"),
                            QStringLiteral("text.viewfinder"));
    command.output = Output::Taken;
    return of(std::move(command), QStringLiteral("Text capture"));
}

std::vector<Command> captures() {
    return {
        plain(CommandID::captureAllInOne, QStringLiteral("All-In-One"), QStringLiteral("camera.viewfinder"),
              QStringLiteral("Super+Shift+S")),
        capture(CommandID::captureArea, QStringLiteral("Capture Area"), QStringLiteral("rectangle.dashed"),
                QStringLiteral("Super+Shift+4")),
        capture(CommandID::capturePreviousArea, QStringLiteral("Capture Previous Area"),
                QStringLiteral("rectangle.dashed.badge.record")),
        capture(CommandID::captureFullscreen, QStringLiteral("Capture Fullscreen"),
                QStringLiteral("desktopcomputer"), QStringLiteral("Super+Shift+3")),
        capture(CommandID::captureWindow, QStringLiteral("Capture Window"), QStringLiteral("macwindow"),
                QStringLiteral("Super+Shift+5")),
        of(capture(CommandID::scrollingCapture, QStringLiteral("Scrolling Capture"),
                   QStringLiteral("scroll")),
           QStringLiteral("Scrolling capture")),
        selfTimer(),
    };
}

std::vector<Command> others() {
    return {
        captureText(),
        plain(CommandID::openFromClipboard, QStringLiteral("Open from Clipboard"),
              QStringLiteral("doc.on.clipboard"), QStringLiteral("Super+V")),
        plain(CommandID::pinToScreen, QStringLiteral("Pin to Screen"), QStringLiteral("pin")),
        recordScreen(),
        of(plain(CommandID::showHistory, QStringLiteral("Capture History..."),
                 QStringLiteral("clock.arrow.circlepath")),
           QStringLiteral("The capture history window")),
        of(plain(CommandID::openSettings, QStringLiteral("Settings..."), QStringLiteral("gear"),
                 QStringLiteral("Super+,")),
           QStringLiteral("The settings window")),
        of(plain(CommandID::checkForUpdates, QStringLiteral("Check for Updates..."),
                 QStringLiteral("arrow.down.circle")),
           QStringLiteral("The update check")),
        plain(CommandID::quit, QStringLiteral("Quit Marrowfin"), QStringLiteral("power"),
              QStringLiteral("Super+Q")),
    };
}

} // namespace

std::vector<Command> allCommands() {
    std::vector<Command> commands = captures();
    for (Command& command : others())
        commands.push_back(std::move(command));
    return commands;
}

} // namespace marrowfin::commands
