// Numbers for the names by which portals and compositors call their displays and windows. A name keeps its
// number as long as this lives, and no number is given twice. Any thread.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <mutex>
#include <optional>

namespace marrowfin::platform {

class StringIds {
public:
    // 1 and up; 0 stands for no name, that is an empty one.
    std::uint32_t idOf(const QString& name);
    // Nothing for 0 and for a number that was never given.
    std::optional<QString> nameOf(std::uint32_t id) const;

private:
    mutable std::mutex lock;
    QHash<QString, std::uint32_t> ids;
    QStringList names; // at its number, less one
};

} // namespace marrowfin::platform
