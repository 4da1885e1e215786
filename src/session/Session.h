// Probes the desktop that the program was started on and builds every service for it. Owns them all; lives as
// long as they are installed. Main thread.
#pragma once

#include "base/Result.h"
#include "platform/Services.h"

#include <functional>
#include <memory>

namespace marrowfin::session {

struct ChosenServices;

class Session {
public:
    // After QApplication is made, on the window system that was chosen before it (WindowSystem.h). The bus
    // name is requested unless it is empty. Tells, on the main thread and with a line that says so, when the
    // desktop goes away under the program; what is told must not touch a window, nor return.
    static Result<std::unique_ptr<Session>> open(const QString& busName = {},
                                                 std::function<void(const QString& line)> onLost = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    const platform::Services& services() const;

private:
    explicit Session(std::unique_ptr<ChosenServices> chosen);
    std::unique_ptr<ChosenServices> chosen;
};

} // namespace marrowfin::session
