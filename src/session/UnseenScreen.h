// The screen of a desktop that doesn't show it to us: every question for its contents is answered with the
// sentence that says why. A Wayland desktop's Xwayland is one: of the other programs' windows a grab has
// black. Any thread.
#pragma once

#include "platform/ScreenSource.h"

namespace marrowfin::session {

// Whether this is such a desktop, by its environment. MARROWFIN_CAPTURE_XWAYLAND=1 lets captures through all
// the same: of what Xwayland shows, or of another X server inside of a Wayland session.
bool isUnseenWaylandDesktop();

class UnseenScreen final : public platform::ScreenSource {
public:
    // Streams, which nobody asks for without the contents, are the other source's.
    explicit UnseenScreen(platform::ScreenSource& behind) : behind(behind) {}

    Outcome<platform::ShareableContent> content() override;
    std::shared_ptr<platform::ScreenStream>
    makeStream(const platform::ContentFilter& filter,
               const platform::StreamConfiguration& configuration) override {
        return behind.makeStream(filter, configuration);
    }

private:
    platform::ScreenSource& behind;
};

} // namespace marrowfin::session
