#include "app/CaptureCommands.h"

#include "app/CaptureDelivery.h"
#include "capture/SelfTimerOverlay.h"

namespace marrowfin::app {

using namespace capture;
using namespace commands;
using namespace imaging;

namespace {

Flow<> countDown(std::chrono::seconds delay) {
    SelfTimerOverlay overlay;
    co_await overlay.run(static_cast<int>(delay.count()));
}

} // namespace

CaptureCommands::CaptureCommands(ScreenCaptureManager& manager, CaptureDelivery& to)
    : captureManager(manager), delivery(to) {}

Preparation CaptureCommands::preparation() {
    return {ScreenCaptureManager::screenPermissionGranted, countDown};
}

void CaptureCommands::provideTo(CommandTable& table) {
    const std::pair<CommandID, Operation> captures[] = {
        {CommandID::captureArea, &ScreenCaptureManager::captureArea},
        {CommandID::capturePreviousArea, &ScreenCaptureManager::capturePreviousArea},
        {CommandID::captureFullscreen, &ScreenCaptureManager::captureFullscreen},
        {CommandID::captureWindow, &ScreenCaptureManager::captureWindow},
        // Its delay is the countdown; then the user draws.
        {CommandID::selfTimer, &ScreenCaptureManager::captureArea},
    };
    for (const auto& [id, operation] : captures)
        table.provide(id, [this, operation = operation](CommandRequest request) {
            return flows.start(carryOut(operation, std::move(request)));
        });
}

Outcome<CommandResult> CaptureCommands::publish(const Image& image, const CommandRequest& request) {
    auto [settler, outcome] = makeOutcome<CommandResult>();
    delivery.attach(image, {request.output, settler});
    captureManager.setCapturedImage(image);
    return outcome;
}

Flow<Result<CommandResult>> CaptureCommands::carryOut(Operation operation, CommandRequest request) {
    auto [settler, outcome] = makeOutcome<CommandResult>();
    const Outcome<void> taking = (captureManager.*operation)(
        [this, output = request.output, settler = std::move(settler)](const Image& image) {
            delivery.attach(image, {output, settler});
        });
    const Result<void> taken = co_await taking;
    if (!taken)
        co_return tl::unexpected(taken.error());
    const Result<CommandResult> went = co_await outcome;
    co_return went;
}

} // namespace marrowfin::app
