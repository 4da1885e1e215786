// The one table of what the program can be told. Menus show its rows; menus, hot keys and callers from
// outside run them, each with an outcome of its own: commands don't exclude each other. The features put in
// what runs; a row without it says so and answers Unavailable. Main thread.
#pragma once

#include "base/Flow.h"
#include "commands/Command.h"

namespace marrowfin::commands {

// What may stand before a command.
struct Preparation {
    // Whether the screen may be captured; tells the user when it may not.
    std::function<Flow<bool>()> screenPermission;
    std::function<Flow<>(std::chrono::seconds)> countDown;
};

// Hot keys go straight into their command.
enum class PermissionStep { Taken, Skipped };

class CommandTable {
public:
    explicit CommandTable(Preparation preparation);

    // A feature's part: one call for each command of its own.
    void provide(CommandID id, Command::Run run);
    void provideState(std::function<ProgramState()> state);

    const std::vector<Command>& commands() const { return rows; }
    const Command& command(CommandID id) const;
    ProgramState state() const;

    // The steps before it, then the command. Nobody needs to await the outcome.
    Outcome<CommandResult> run(CommandID id, CommandRequest request = {},
                               PermissionStep step = PermissionStep::Taken);

private:
    Flow<Result<CommandResult>> carryOut(Command command, CommandRequest request, PermissionStep step);

    Preparation preparation;
    std::vector<Command> rows;
    std::function<ProgramState()> currentState;
    FlowScope flows;
};

} // namespace marrowfin::commands
