#include "platform/Services.h"

#include "base/Invariant.h"

#include <optional>

namespace marrowfin::platform {

namespace {
// A struct of references can't be assigned; a pointer to a kept copy can.
std::optional<Services> installed;
} // namespace

void install(const Services& services) {
    installed.emplace(services);
}
void uninstall() {
    installed.reset();
}
bool isInstalled() {
    return installed.has_value();
}

const Services& services() {
    MARROWFIN_INVARIANT(installed.has_value());
    return *installed;
}

} // namespace marrowfin::platform
