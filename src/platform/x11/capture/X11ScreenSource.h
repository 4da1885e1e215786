// Displays and windows of the X server, and captures of them, on the grab queue and its own connection. Any
// thread.
#pragma once

#include "platform/ScreenSource.h"
#include "platform/x11/capture/GrabLink.h"

namespace marrowfin::x11 {

class X11ScreenSource final : public platform::ScreenSource {
public:
    // Connects in the background, so that the first capture finds the connection ready.
    explicit X11ScreenSource(std::shared_ptr<GrabLink> link);

    Outcome<platform::ShareableContent> content() override;
    std::shared_ptr<platform::ScreenStream>
    makeStream(const platform::ContentFilter& filter,
               const platform::StreamConfiguration& configuration) override;

private:
    std::shared_ptr<GrabLink> link;
};

} // namespace marrowfin::x11
