// Takes what a Damage object has gathered. Thread: the connection's.
#pragma once

#include "platform/x11/server/Connection.h"

#include <QRegion>

namespace marrowfin::x11 {

// Empties the object and returns the area, in the drawable's coordinates; empty when the drawable is gone.
QRegion takeDamage(const Connection& connection, std::uint32_t damage);

} // namespace marrowfin::x11
