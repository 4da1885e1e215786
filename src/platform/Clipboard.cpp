#include "platform/Clipboard.h"

#include "platform/Pasteboard.h"
#include "platform/Services.h"

namespace marrowfin::platform {

Outcome<void> copyToClipboard(const imaging::Image& image) {
    services().pasteboard.clearContents();
    return services().pasteboard.writeImage(image);
}

} // namespace marrowfin::platform
