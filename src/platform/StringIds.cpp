#include "platform/StringIds.h"

namespace marrowfin::platform {

std::uint32_t StringIds::idOf(const QString& name) {
    if (name.isEmpty())
        return 0;
    const std::lock_guard hold(lock);
    std::uint32_t& id = ids[name];
    if (id == 0) {
        names.append(name);
        id = static_cast<std::uint32_t>(names.size());
    }
    return id;
}

std::optional<QString> StringIds::nameOf(std::uint32_t id) const {
    const std::lock_guard hold(lock);
    if (id == 0 || id > static_cast<std::uint32_t>(names.size()))
        return std::nullopt;
    return names.at(static_cast<qsizetype>(id) - 1);
}

} // namespace marrowfin::platform
