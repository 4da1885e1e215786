// Where each desktop keeps its keyboard shortcuts, in its own words. Pure.
#pragma once

#include <QString>

namespace marrowfin::x11 {

// Of a value of XDG_CURRENT_DESKTOP, a list like "ubuntu:GNOME"; the first name that is known counts.
QString keyboardSettingsPlace(const QString& currentDesktop);

} // namespace marrowfin::x11
