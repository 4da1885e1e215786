// The surfaces on X11: windows that no window manager manages, kept in order by restacking, seen to be gone
// before a grab. Main thread.
#pragma once

#include "base/Result.h"
#include "platform/SurfaceHost.h"

#include <memory>

namespace marrowfin::x11 {

class GrabLink;

// Unavailable when the application doesn't run on X11. Surfaces may outlive the host. Stills are read with
// the link.
Result<std::unique_ptr<platform::SurfaceHost>> makeSurfaceHost(std::shared_ptr<GrabLink> grabs);

} // namespace marrowfin::x11
