"""The program under test, from outside: its lines, its files, its windows."""

import glob
import json
import os
import re
import signal
import subprocess
import threading

from Xlib import X

from support import pixels, windows
from support.waiting import wait_for

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", ".."))
PROGRAM = os.environ.get("MARROWFIN_PROGRAM", os.path.join(ROOT, "build", "release", "marrowfin"))
SUPER_SHIFT = X.Mod4Mask | X.ShiftMask
HOT_KEY_CODES = {3: 12, 4: 13, 5: 14}


class Program:
    def __init__(self, desktop, settings=None, corrections=None, environment=None, arguments=(),
                 command=()):
        self.desktop = desktop
        self.display = desktop.display
        self.environment = dict(desktop.environment, **(environment or {}))
        if corrections:
            self.environment["MARROWFIN_CORRECTIONS"] = corrections
        self.command = [*command, PROGRAM, *arguments]
        self.lines = []
        self.errors = []
        if settings is not None:
            self.write_settings(json.dumps(settings))

    # Its folders.

    @property
    def settings_path(self):
        return os.path.join(self.environment["XDG_CONFIG_HOME"], "Marrowfin", "defaults.json")

    @property
    def history_folder(self):
        return os.path.join(self.environment["XDG_DATA_HOME"], "Marrowfin", "History")

    @property
    def pictures_folder(self):
        return self.desktop.home("Pictures", "Marrowfin")

    def write_settings(self, text):
        os.makedirs(os.path.dirname(self.settings_path), exist_ok=True)
        with open(self.settings_path, "w") as file:
            file.write(text)

    def history(self):
        """Complete files, oldest first by the seconds in the name, then by the order of the file system."""
        found = glob.glob(os.path.join(self.history_folder, "capture_*.png"))
        return sorted(found, key=lambda path: (os.stat(path).st_mtime_ns, path))

    def everything_in_the_history(self):
        """The names of all files, hidden and half-written ones too."""
        return os.listdir(self.history_folder) if os.path.isdir(self.history_folder) else []

    def wait_for_history(self, count):
        wait_for(lambda: len(self.history()) >= count or self.check_running(), f"{count} captures in the history")
        found = self.history()
        if len(found) != count:
            raise AssertionError(f"{len(found)} captures in the history instead of {count}")
        return pixels.read(found[-1])

    # Its life.

    def start(self, wait_until_ready=True):
        self.child = self.desktop.owned.start(self.command, "marrowfin", self.environment, log=False,
                                              stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.readers = [self._collect(self.child.stdout, self.lines, "out"),
                        self._collect(self.child.stderr, self.errors, "err")]
        if wait_until_ready:
            self.wait_until_ready()
        return self

    def _collect(self, stream, lines, name):
        def read():
            with stream, open(os.path.join(self.desktop.logs, f"marrowfin.{name}.log"), "ab") as log:
                for line in stream:
                    log.write(line)
                    log.flush()
                    lines.append(line.decode(errors="replace").rstrip("\n"))

        thread = threading.Thread(target=read, daemon=True)
        thread.start()
        return thread

    def check_running(self):
        """For conditions: false while it runs, an error with its last words when it doesn't."""
        code = self.child.poll()
        if code is not None:
            raise AssertionError(f"the program ended with {code}: {self.lines[-3:]} {self.errors[-5:]}")
        return False

    def wait_until_ready(self):
        """Its icon stands in the tray, when there is one, and the free hot keys are held."""
        if self.desktop.options.tray and "tint2" in self.desktop.parts:
            wait_for(lambda: windows.tray_icons(self.display) or self.check_running(), "the icon in the tray")
        wait_for(lambda: self.holds_hot_keys() or self.check_running(), "the hot keys held")

    def holds_hot_keys(self, numbers=(3, 4, 5)):
        return all(windows.key_is_taken(self.display, HOT_KEY_CODES[number], SUPER_SHIFT) for number in numbers)

    def stop(self, number=signal.SIGTERM):
        """Ends it as the session would. Its exit status, negative for a signal."""
        if self.child.poll() is None:
            self.child.send_signal(number)
        code = self.wait()
        return code

    def wait(self, deadline=30):
        code = self.child.wait(deadline)
        for reader in self.readers:
            reader.join(deadline)
        self.desktop.owned.end(self.child)
        return code

    # Its lines.

    def wait_for_line(self, pattern, stream="out"):
        lines = self.lines if stream == "out" else self.errors
        return wait_for(lambda: next((line for line in lines if re.search(pattern, line)), None)
                        or self.check_running(), f"a line with {pattern!r}, only {lines}")

    # Its windows.

    def surfaces(self):
        """Its windows that no window manager manages: overlays, cards, menus. In stacking order."""
        return [seen for seen in windows.of_class(self.display, "marrowfin") if seen.override_redirect]

    def dialogs(self):
        return [seen for seen in windows.of_class(self.display, "marrowfin")
                if not seen.override_redirect and seen.name and seen.size > (20, 20)]

    def overlays(self):
        sizes = self.screen_sizes()
        return [seen for seen in self.surfaces() if seen.size in sizes]

    def screen_sizes(self):
        width, height = self.desktop.options.size
        return {(width // self.desktop.options.monitors, height), (width, height)}

    def cards(self):
        scale = self.desktop.options.scale
        return [seen for seen in self.surfaces() if seen.size == (276 * scale, 194 * scale)]

    def menus(self):
        """Neither overlays nor cards, and larger than a tray icon or a tool tip."""
        others = self.screen_sizes() | {(276 * self.desktop.options.scale, 194 * self.desktop.options.scale)}
        return [seen for seen in self.surfaces() if seen.size not in others and min(seen.size) >= 60]

    def tray_icon(self):
        return windows.wait_for_one(lambda: windows.tray_icons(self.display), "one icon in the tray")

    def start_line(self):
        return self.lines[0] if self.lines else ""
