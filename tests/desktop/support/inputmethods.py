"""An input method framework on the virtual desktop, for programs that are started afterwards."""

import subprocess

from support import owned
from support.waiting import wait_for


class InputMethods:
    def __init__(self, desktop):
        self.desktop = desktop
        desktop.environment["QT_IM_MODULE"] = "ibus"
        desktop.start_part("ibus-daemon", ["ibus-daemon", "--panel=disable", "--emoji-extension=disable",
                                           "--config=/usr/libexec/ibus-memconf", "--cache=none"])
        wait_for(lambda: desktop.alive("ibus-daemon") and "unix:" in self._run("address"), "the input method's bus")

    def _run(self, *arguments):
        return subprocess.run([owned.require("ibus"), *arguments], env=self.desktop.environment, text=True,
                              stdin=subprocess.DEVNULL, capture_output=True, timeout=60).stdout

    def use(self, engine):
        """For every program from now on."""
        self._run("engine", engine)
        wait_for(lambda: self._run("engine").strip() == engine, f"the engine {engine}")
