// Probes the desktop that the program was started on and builds every service for it. Owns them all; lives as
// long as they are installed. Main thread.
#pragma once

#include "base/Result.h"
#include "platform/Services.h"

#include <functional>
#include <memory>

namespace marrowfin::session {

class Session {
public:
    // Before QApplication is made: chooses the window system. The error is a sentence for the user.
    static Result<void> prepare();
    // After QApplication is made. The last will runs when the desktop goes away under the program, right
    // before the process ends without destructors: for files that are being written. It must not touch a
    // window.
    static Result<std::unique_ptr<Session>> open(std::function<void()> lastWill = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    platform::Services services() const;

private:
    struct Parts;
    explicit Session(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> parts;
};

} // namespace marrowfin::session
