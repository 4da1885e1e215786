#include "platform/Screens.h"

namespace marrowfin::platform {

double Screens::primaryHeight() {
    const std::vector<Screen> all = screens();
    return all.empty() ? 0 : all.front().frame.rect.height();
}

} // namespace marrowfin::platform
