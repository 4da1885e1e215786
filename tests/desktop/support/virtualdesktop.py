"""A private virtual desktop: X server, D-Bus, window manager and, as asked, compositor, tray, clipboard manager and
sound. It lives in a folder of its own, is ready when its parts can be observed to be, and takes along everything it
started. One at a time in a process."""

import dataclasses
import os
import shutil
import tempfile

from Xlib import X, Xatom
from Xlib.display import Display

from support import configuration, owned, pixels, wallpaper
from support.waiting import wait_for


# Window managers that bring a compositor of their own: what starts them, and what they want in their environment.
MANAGERS = {
    "xfwm4": (["xfwm4", "--compositor=on", "--vblank=off"], {}),
    "metacity": (["metacity", "--sm-disable", "--composite"], {"GSETTINGS_BACKEND": "memory"}),
    "kwin_x11": (["kwin_x11"], {"LIBGL_ALWAYS_SOFTWARE": "1", "KWIN_COMPOSE": "O2"}),
    "mutter": (["mutter", "--x11", "--sm-disable"], {"GSETTINGS_BACKEND": "memory", "LIBGL_ALWAYS_SOFTWARE": "1"}),
}


@dataclasses.dataclass
class Options:
    """Sizes are native pixels. `lane` is the compositor: none, picom or fading."""

    size: tuple = (1600, 1000)
    lane: str = "none"
    monitors: int = 1
    scale: int = 1
    tray: bool = True
    clipboard_manager: bool = False
    sound: bool = False
    window_manager: bool = True
    focus_new: bool = True  # new windows take the focus, as on most desktops
    press_focuses: bool = True  # so does a window that is pressed; the window manager holds the press back till then
    # One of MANAGERS in place of openbox and of the lane's compositor.
    manager: str = dataclasses.field(default_factory=lambda: os.environ.get("MARROWFIN_MANAGER", "openbox"))


class VirtualDesktop:
    def __init__(self, options=None, **changes):
        self.options = dataclasses.replace(options or Options(), **changes)
        self.folder = tempfile.mkdtemp(prefix="marrowfin-desktop-")
        self.logs = os.path.join(self.folder, "logs")
        os.mkdir(self.logs)
        self.owned = owned.Owned(self.logs)
        self.environment = configuration.environment(self.folder)
        self.parts = {}
        self.display = None

    def __enter__(self):
        try:
            self.start()
        except BaseException:
            self.end(keep_logs=True)
            raise
        return self

    def __exit__(self, kind, value, trace):
        self.end(keep_logs=kind is not None and not issubclass(kind, SystemExit))

    def start(self):
        owned.become_reaper()
        options = self.options
        self.start_server()
        self.start_bus()
        self.set_scale(options.scale)
        self.set_monitors(options.monitors)
        self.wallpaper = wallpaper.put_up(self.display)
        if options.window_manager:
            self.start_window_manager()
        self.start_compositor(options.lane if options.manager == "openbox" else "none")
        if options.tray:
            self.start_tray()
        if options.clipboard_manager:
            self.start_clipboard_manager()
        if options.sound:
            self.start_sound()

    def end(self, keep_logs=False):
        if self.display:
            try:
                self.display.close()
            except Exception:  # the server may be gone, which is what the display would complain about
                pass
            self.display = None
        self.owned.end_all()
        if keep_logs:
            print(f"The logs of the virtual desktop are in {self.logs}", flush=True)
        else:
            shutil.rmtree(self.folder, ignore_errors=True)

    # The parts. Each is in `parts` under its name, so that a test can end one.

    def start_part(self, name, command, **options):
        self.parts[name] = self.owned.start(command, name, self.environment, **options)
        return self.parts[name]

    def end_part(self, name):
        self.owned.end(self.parts.pop(name))

    def alive(self, name):
        """For conditions: raises at once when a part died instead of becoming ready."""
        code = self.parts[name].poll()
        if code is not None:
            raise RuntimeError(f"{name} ended with {code}; its log is {self.logs}/{name}.log")
        return True

    def start_server(self):
        width, height = self.options.size
        reader, writer = os.pipe()
        self.start_part("Xvfb", ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{width}x{height}x24",
                                 "-nolisten", "tcp", "-noreset", "-dpi", "96"], pass_fds=(writer,))
        os.close(writer)
        with os.fdopen(reader) as pipe:
            number = pipe.readline().strip()
        if not number:
            self.alive("Xvfb")
            raise RuntimeError(f"Xvfb named no display; its log is in {self.logs}")
        self.environment["DISPLAY"] = f":{number}"
        self.display = Display(f":{number}")

    def start_bus(self):
        config = configuration.write_bus(self.folder)
        reader, writer = os.pipe()
        self.start_part("dbus-daemon", ["dbus-daemon", f"--config-file={config}", "--nofork", "--nosyslog",
                                        f"--print-address={writer}"], pass_fds=(writer,))
        os.close(writer)
        with os.fdopen(reader) as pipe:
            address = pipe.readline().strip()
        if not address:
            raise RuntimeError(f"dbus-daemon gave no address; its log is in {self.logs}")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address

    def start_window_manager(self):
        name = self.options.manager
        if name == "openbox":
            config = configuration.write_openbox(self.folder, self.options.focus_new, self.options.press_focuses)
            self.start_part(name, ["openbox", "--sm-disable", "--config-file", config])
        else:
            command, environment = MANAGERS[name]
            self.environment.update(environment)
            configuration.write_settings_of_managers(self.folder)
            self.start_part(name, command)
            self.wait_for_owner(name, "_NET_WM_CM_S0", f"the compositor of {name}")
        wait_for(lambda: self.alive(name) and self.window_manager_ready(), "a window manager")
        self.wait_until_windows_are_managed()

    def window_manager_ready(self):
        check = self.display.intern_atom("_NET_SUPPORTING_WM_CHECK")
        found = self.display.screen().root.get_full_property(check, Xatom.WINDOW)
        return found and found.value[0]

    def wait_until_windows_are_managed(self):
        """It says that it is there before it has begun, and loses what is mapped until it has."""
        screen = self.display.screen()
        probe = screen.root.create_window(0, 0, 1, 1, 0, screen.root_depth)
        state = self.display.intern_atom("WM_STATE")

        def managed():
            probe.map()
            return self.alive(self.options.manager) and probe.get_full_property(state, X.AnyPropertyType)

        def forgotten():
            clients = screen.root.get_full_property(self.display.intern_atom("_NET_CLIENT_LIST"), Xatom.WINDOW)
            return self.alive(self.options.manager) and (clients is None or probe.id not in clients.value)

        wait_for(managed, "a window managed")
        probe.destroy()
        wait_for(forgotten, "that window forgotten")

    def start_compositor(self, lane):
        if lane == "none":
            return
        config = configuration.write_picom(self.folder, fading=lane == "fading")
        self.start_part("picom", ["picom", "--config", config])
        self.wait_for_owner("picom", "_NET_WM_CM_S0", "a compositor")

    def start_tray(self):
        config = configuration.write_tint2(self.folder)
        self.start_part("tint2", ["tint2", "-c", config])
        self.wait_for_owner("tint2", "_NET_SYSTEM_TRAY_S0", "a tray")
        self.wait_for_panel(1, self.options.size[0] - 2)

    def start_clipboard_manager(self):
        configuration.write_clipman(self.folder)
        self.start_part("xfce4-clipman", ["xfce4-clipman"])
        self.wait_for_owner("xfce4-clipman", "CLIPBOARD_MANAGER", "a clipboard manager")

    def start_sound(self):
        self.start_part("pulseaudio", [
            "pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
            "-L", "module-null-sink sink_name=null", "-L", "module-native-protocol-unix auth-anonymous=1"])
        socket = os.path.join(self.environment["XDG_RUNTIME_DIR"], "pulse", "native")
        wait_for(lambda: self.alive("pulseaudio") and os.path.exists(socket), "the sound server's socket")

    def wait_for_owner(self, part, selection, what):
        atom = self.display.intern_atom(selection)
        wait_for(lambda: self.alive(part) and self.display.get_selection_owner(atom) != X.NONE, what)

    # Screens.

    def set_scale(self, scale):
        """Text resolution is how an X11 desktop tells programs its scale."""
        resources = f"Xft.dpi:\t{96 * scale}\nXft.hinting:\t0\n".encode()
        self.display.screen().root.change_property(
            self.display.intern_atom("RESOURCE_MANAGER"), Xatom.STRING, 8, resources)
        self.display.sync()

    def set_monitors(self, count):
        """Two monitors L and R of half the screen each. The one real output belongs to the first."""
        if count == 1:
            return
        width, height = self.options.size
        half = width // 2
        self.change_monitors("--setmonitor", "*L", f"{half}/{half // 4}x{height}/{height // 4}+0+0", "screen")
        self.change_monitors("--setmonitor", "R", f"{half}/{half // 4}x{height}/{height // 4}+{half}+0", "none")

    def remove_monitor(self, name):
        self.change_monitors("--delmonitor", name)

    def change_monitors(self, *arguments):
        """The panel restarts for every change. Of two restarts in one moment the window manager may lose its window."""
        starts = self.tray_starts()
        self.xrandr(*arguments)
        if "tint2" in self.parts:
            wait_for(lambda: self.alive("tint2") and self.tray_starts() > starts, "the panel back after its restart")
            self.wait_for_panel(1)

    def wait_for_panel(self, *columns):
        """It has its selection some time before it is seen."""
        row = self.options.size[1] - 2
        wait_for(lambda: self.alive("tint2") and all(
            pixels.pixel(self.display, column, row) == configuration.PANEL_COLOR for column in columns),
                 "the panel at the bottom of the screen")

    def tray_starts(self):
        path = os.path.join(self.logs, "tint2.log")
        if not os.path.exists(path):
            return 0
        with open(path, errors="replace") as log:
            return log.read().count("systray started")

    def xrandr(self, *arguments):
        child = self.owned.start(["xrandr", *arguments], "xrandr", self.environment)
        if child.wait() != 0:
            raise RuntimeError(f"xrandr {' '.join(arguments)} failed; its log is in {self.logs}")
        self.owned.end(child)

    def home(self, *parts):
        return os.path.join(self.environment["HOME"], *parts)
