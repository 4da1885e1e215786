// The services of the desktop that the program runs on: one provider for each, chosen by probing (see
// ProviderChoice), and what they share. Main thread.
#pragma once

#include "base/Result.h"
#include "platform/ServiceSet.h"
#include "platform/Services.h"

#include <memory>

namespace marrowfin::x11 {
class X11Backend;
}

namespace marrowfin::session {

struct ChosenServices {
    platform::ServiceSet parts;
    platform::Services services; // into the parts
};

// The error is a sentence for the user: without screens, pixels and windows there is no program.
Result<std::unique_ptr<ChosenServices>> chooseServices(std::unique_ptr<x11::X11Backend> backend);

} // namespace marrowfin::session
