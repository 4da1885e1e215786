// One thing that the program can be told, and what comes of it. Values; delays in seconds, sizes in pixels,
// paths absolute. Main thread.
#pragma once

#include "base/Outcome.h"

#include <QSize>
#include <QString>
#include <chrono>
#include <functional>
#include <vector>

namespace marrowfin::commands {

enum class CommandID {
    captureAllInOne,
    captureArea,
    capturePreviousArea,
    captureFullscreen,
    captureWindow,
    scrollingCapture,
    selfTimer,
    captureText,
    openFromClipboard,
    pinToScreen,
    recordScreen,
    showHistory,
    openSettings,
    checkForUpdates,
    quit,
};

enum class RecorderState { idle, recording, stopping };

// What titles and symbols depend on, as it is at the moment they are asked for.
struct ProgramState {
    RecorderState recorder = RecorderState::idle;
    QString formattedDuration; // "00:12", while recording
};

enum class Menu { Main, AllInOne };

struct CommandRequest {
    // Where the capture goes, in the place of what the settings say; empty: the settings decide.
    QString output;
    // Counted down before the command begins.
    std::chrono::seconds delay{0};

    friend bool operator==(const CommandRequest&, const CommandRequest&) = default;
};

// Where a capture went; all empty for a command that makes none.
struct CommandResult {
    QString historyFile; // empty when the history couldn't be written
    QString savedFile;   // the request's output, or the automatic save
    bool onClipboard = false;
    QSize imageSize;
};

enum class Permission { NotAsked, Asked };
enum class Output { Refused, Taken };

struct Command {
    using Text = std::function<QString(const ProgramState&, Menu)>;
    // Error::Kind::Cancelled when the user changed their mind, Failed with a sentence when it didn't work.
    using Run = std::function<Outcome<CommandResult>(CommandRequest)>;

    CommandID id = CommandID::quit;
    Text title;
    Text symbol;
    QString symbolDescription; // empty: the title
    QString keyLabel;          // shown in the main menu alone
    Permission permission = Permission::NotAsked;
    Output output = Output::Refused;
    std::vector<std::chrono::seconds> delays = {}; // offered in a submenu; empty: the row itself is pressed
    QString subject = {};                          // of "... isn't built yet."
    Run run = {};                                  // empty until the feature is built
};

// Every command in the order of the ids, which is that of the main menu; none of them with its run.
std::vector<Command> allCommands();

} // namespace marrowfin::commands
