// What a Runtime is told: where it runs, and what it keeps to itself. Values; main thread.
#pragma once

#include "app/Mode.h"
#include "base/Result.h"
#include "platform/Services.h"

#include <QString>
#include <functional>
#include <memory>

namespace marrowfin::app {

// The services, and whoever they live by.
struct OpenDesktop {
    std::shared_ptr<void> owner;
    platform::Services services;
};

struct DesktopRequest {
    // The name to ask the session bus for; empty: none. A refusal is of no interest.
    QString busName;
    // Called on the main thread, once, when the desktop goes away under the program, with a line that says
    // so. It doesn't return: the world that destructors would need is gone.
    std::function<void(const QString& line)> onLost;
};

struct RuntimeOptions {
    // The path that the program was started by. The toolkit gets it alone, so that no argument is its own.
    QByteArray program = "marrowfin";
    // Before QApplication: window system, plug-in, the toolkit's environment.
    std::function<Result<void>()> chooseWindowSystem;
    // After it. The error is a sentence for the user.
    std::function<Result<OpenDesktop>(DesktopRequest)> openDesktop;
    std::function<std::unique_ptr<Mode>(LaunchMode)> makeMode = app::makeMode;

    // Private ones, for a program beside the user's own; empty: the user's.
    QString settingsFile;
    QString historyFolder;
    QString busName = QStringLiteral("io.tessaly.marrowfin");
};

} // namespace marrowfin::app
