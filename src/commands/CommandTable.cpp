#include "commands/CommandTable.h"

#include "base/Log.h"

#include <QDir>

namespace marrowfin::commands {

namespace {

Result<CommandResult> sayAbsent(const Command& command) {
    const QString sentence = QStringLiteral("%1 isn't built yet.").arg(command.subject);
    printLine(sentence);
    return unavailable(sentence);
}

Result<void> accepts(const Command& command, const CommandRequest& request) {
    if (!request.output.isEmpty() && command.output == Output::Refused)
        return failure(QStringLiteral("This command makes no file."));
    if (QDir::isRelativePath(request.output) && !request.output.isEmpty())
        return failure(QStringLiteral("%1 isn't a whole path.").arg(request.output));
    return {};
}

// The rows stand in the order of the ids.
std::size_t indexOf(CommandID id) {
    return static_cast<std::size_t>(id);
}

} // namespace

CommandTable::CommandTable(Preparation before) : preparation(std::move(before)), rows(allCommands()) {
    for (std::size_t index = 0; index < rows.size(); ++index)
        MARROWFIN_INVARIANT(indexOf(rows[index].id) == index);
}

void CommandTable::provide(CommandID id, Command::Run run) {
    rows[indexOf(id)].run = std::move(run);
}

void CommandTable::provideState(std::function<ProgramState()> state) {
    currentState = std::move(state);
}

const Command& CommandTable::command(CommandID id) const {
    return rows[indexOf(id)];
}

ProgramState CommandTable::state() const {
    return currentState ? currentState() : ProgramState{};
}

Outcome<CommandResult> CommandTable::run(CommandID id, CommandRequest request, PermissionStep step) {
    return flows.start(carryOut(command(id), std::move(request), step));
}

// The command is the flow's own: its row may be provided anew while it waits.
Flow<Result<CommandResult>> CommandTable::carryOut(Command command, CommandRequest request,
                                                   PermissionStep step) {
    const Result<void> accepted = accepts(command, request);
    if (!accepted)
        co_return tl::unexpected(accepted.error());
    if (command.permission == Permission::Asked && step == PermissionStep::Taken) {
        const bool granted = co_await preparation.screenPermission();
        if (!granted)
            co_return failure(QStringLiteral("Capturing the screen isn't permitted."));
    }
    if (!command.run)
        co_return sayAbsent(command);
    if (request.delay.count() > 0)
        co_await preparation.countDown(request.delay);
    const Outcome<CommandResult> outcome = command.run(std::move(request));
    const Result<CommandResult> result = co_await outcome;
    co_return result;
}

} // namespace marrowfin::commands
