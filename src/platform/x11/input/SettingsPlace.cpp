#include "platform/x11/input/SettingsPlace.h"

#include <QStringList>
#include <array>

namespace marrowfin::x11 {

namespace {

struct Place {
    const char* desktop;
    const char* words;
};
constexpr std::array places = {
    Place{"gnome", "Settings > Keyboard > View and Customize Shortcuts > Screenshots"},
    Place{"unity", "System Settings > Keyboard > Shortcuts > Screenshots"},
    Place{"budgie", "Settings > Keyboard > Shortcuts > Screenshots"},
    Place{"pantheon", "System Settings > Keyboard > Shortcuts > Screenshots"},
    Place{"kde", "System Settings > Shortcuts"},
    Place{"xfce", "Settings Manager > Keyboard > Application Shortcuts"},
    Place{"x-cinnamon", "System Settings > Keyboard > Shortcuts > System > Screenshots and Recording"},
    Place{"mate", "Control Center > Keyboard Shortcuts"},
    Place{"lxqt", "LXQt Configuration Center > Shortcut Keys"},
    Place{"deepin", "Control Center > Keyboard and Language > Shortcuts"},
    Place{"enlightenment", "Settings Panel > Input > Key Bindings"},
    Place{"lxde", "~/.config/openbox/lxde-rc.xml, in its section \"keyboard\""},
    Place{"openbox", "~/.config/openbox/rc.xml, in its section \"keyboard\""},
    Place{"i3", "~/.config/i3/config, in its lines \"bindsym\""},
};

} // namespace

QString keyboardSettingsPlace(const QString& currentDesktop) {
    for (const QString& name : currentDesktop.split(QLatin1Char(':'), Qt::SkipEmptyParts)) {
        for (const Place& place : places) {
            if (name.trimmed().compare(QLatin1String(place.desktop), Qt::CaseInsensitive) == 0)
                return QString::fromLatin1(place.words);
        }
    }
    return QStringLiteral("Settings > Keyboard > Shortcuts");
}

} // namespace marrowfin::x11
