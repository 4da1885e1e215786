"""The environment and the configuration files of a virtual desktop: everything lies in the desktop's own folder, and
nothing of the user's own settings is read."""

import os

BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir={folder}</listen>
  <servicedir>{folder}/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""

# No key bindings: the combinations belong to the programs under test.
OPENBOX = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>{focus_new}</focusNew><followMouse>no</followMouse></focus>
  <placement><policy>Smart</policy></placement>
  <theme><name>Clearlooks</name><animateIconify>no</animateIconify></theme>
  <desktops><number>2</number><firstdesk>1</firstdesk><popupTime>0</popupTime></desktops>
  <resize><popupShow>Never</popupShow></resize>
  <keyboard></keyboard>
  <mouse>
{press_focuses}    <context name="Titlebar">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
      <mousebind button="Left" action="Drag"><action name="Move"/></mousebind>
    </context>
  </mouse>
</openbox_config>
"""

PRESS_FOCUSES = """    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
"""

PICOM = """backend = "xrender";
vsync = false;
shadow = false;
fading = {fading};
fade-delta = 10;
fade-in-step = 0.03;
fade-out-step = 0.03;
no-fading-openclose = false;
log-level = "warn";
"""

# A bar at the bottom with the tray alone: nothing on it moves by itself, so two grabs of the screen are the same.
# What the tray below is painted in.
PANEL_COLOR = (0x30, 0x30, 0x30)
TINT2 = """rounded = 0
border_width = 0
background_color = #303030 100
panel_items = S
panel_monitor = all
panel_position = bottom center horizontal
panel_size = 100% 30
panel_background_id = 1
panel_layer = top
panel_dock = 0
strut_policy = follow_size
wm_menu = 0
systray_padding = 4 2 4
systray_sort = ascending
systray_icon_size = 22
systray_monitor = 1
"""

USER_DIRECTORIES = """XDG_DESKTOP_DIR="$HOME/Desktop"
XDG_PICTURES_DIR="$HOME/Pictures"
XDG_VIDEOS_DIR="$HOME/Videos"
"""

CLIPMAN = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="plugins" type="empty"><property name="clipman" type="empty"><property name="settings" type="empty">
    <property name="save-on-quit" type="bool" value="false"/>
    <property name="max-images-in-history" type="uint" value="5"/>
  </property></property></property>
</channel>
"""

# Windows come and go at once: what is looked at stands still. No wobbling, no fading, no shadows beside windows.
KWIN = """[Compositing]
AnimationSpeed=0
Enabled=true
LatencyPolicy=ExtremelyLow
[Plugins]
kwin4_effect_fadeEnabled=false
kwin4_effect_scaleEnabled=false
kwin4_effect_loginEnabled=false
kwin4_effect_fadingpopupsEnabled=false
kwin4_effect_maximizeEnabled=false
slidingpopupsEnabled=false
[Windows]
FocusStealingPreventionLevel=0
[Desktops]
Number=2
"""
KDE = """[KDE]
AnimationDurationFactor=0
"""

# What a desktop session may say that would make a program behave differently here.
DROPPED = ("WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "QT_QPA_PLATFORMTHEME", "QT_SCALE_FACTOR", "QT_STYLE_OVERRIDE",
           "QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI", "XAUTHORITY", "XMODIFIERS", "QT_IM_MODULE", "GTK_IM_MODULE",
           "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "SESSION_MANAGER", "MARROWFIN_CORRECTIONS", "PULSE_SERVER")


def environment(folder):
    home = os.path.join(folder, "home")
    runtime = os.path.join(folder, "runtime")
    temporary = os.path.join(folder, "tmp")
    config = os.path.join(home, ".config")
    for path in (home, config, temporary, os.path.join(home, "Pictures"), os.path.join(home, "Videos")):
        os.makedirs(path)
    os.mkdir(runtime, 0o700)
    write(os.path.join(config, "user-dirs.dirs"), USER_DIRECTORIES)
    values = {name: value for name, value in os.environ.items() if name not in DROPPED}
    values.update({
        "HOME": home,
        "LC_ALL": "C.UTF-8",
        "TMPDIR": temporary,
        "XDG_CACHE_HOME": os.path.join(home, ".cache"),
        "XDG_CONFIG_HOME": config,
        "XDG_DATA_HOME": os.path.join(home, ".local/share"),
        "XDG_RUNTIME_DIR": runtime,
        "XDG_SESSION_TYPE": "x11",
        "NO_AT_BRIDGE": "1",  # toolkits would wait for an accessibility bus that this desktop doesn't have
        "GTK_USE_PORTAL": "0",
    })
    return values


def write(path, text):
    with open(path, "w") as file:
        file.write(text)
    return path


def write_bus(folder):
    """Only the settings daemon that the clipboard manager needs may be started by the bus."""
    services = os.path.join(folder, "services")
    os.mkdir(services)
    xfconf = "/usr/share/dbus-1/services/org.xfce.Xfconf.service"
    if os.path.exists(xfconf):
        os.symlink(xfconf, os.path.join(services, "org.xfce.Xfconf.service"))
    return write(os.path.join(folder, "bus.conf"), BUS.format(folder=folder))


def write_openbox(folder, focus_new, press_focuses):
    return write(os.path.join(folder, "openbox.xml"),
                 OPENBOX.format(focus_new="yes" if focus_new else "no",
                                press_focuses=PRESS_FOCUSES if press_focuses else ""))


def write_settings_of_managers(folder):
    config = os.path.join(folder, "home/.config")
    write(os.path.join(config, "kwinrc"), KWIN)
    write(os.path.join(config, "kdeglobals"), KDE)


def write_picom(folder, fading):
    return write(os.path.join(folder, "picom.conf"), PICOM.format(fading="true" if fading else "false"))


def write_tint2(folder):
    return write(os.path.join(folder, "tint2rc"), TINT2)


def write_clipman(folder):
    place = os.path.join(folder, "home/.config/xfce4/xfconf/xfce-perchannel-xml")
    os.makedirs(place, exist_ok=True)
    return write(os.path.join(place, "xfce4-panel.xml"), CLIPMAN)
