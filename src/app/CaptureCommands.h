// The captures of the command table: each is a flow of the capture manager, and its image goes on its way
// with a ticket. Owned by the delegate; main thread.
#pragma once

#include "base/Flow.h"
#include "capture/ScreenCaptureManager.h"
#include "commands/CommandTable.h"

namespace marrowfin::app {

class CaptureDelivery;

class CaptureCommands {
public:
    CaptureCommands(capture::ScreenCaptureManager& captureManager, CaptureDelivery& delivery);

    // The permission alert and the countdown.
    static commands::Preparation preparation();
    void provideTo(commands::CommandTable& table);
    // For an image that was made elsewhere: the same road as any capture.
    Outcome<commands::CommandResult> publish(const imaging::Image& image,
                                             const commands::CommandRequest& request);

private:
    using Operation = Outcome<void> (capture::ScreenCaptureManager::*)(capture::ScreenCaptureManager::Taken);
    Flow<Result<commands::CommandResult>> carryOut(Operation operation, commands::CommandRequest request);

    capture::ScreenCaptureManager& captureManager;
    CaptureDelivery& delivery;
    FlowScope flows;
};

} // namespace marrowfin::app
