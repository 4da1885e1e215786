"""The accessibility bus of a virtual desktop, and what assistive technology reads and presses through it."""

import json
import os
import subprocess
import sys

from support.waiting import wait_for

LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
ASSISTANT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "assistant.py")


class Accessibility:
    """Started before the program: it asks once whether anybody listens."""

    def __init__(self, desktop):
        self.desktop = desktop
        if not os.path.exists(LAUNCHER):
            raise AssertionError(f"{LAUNCHER} is missing: install the package at-spi2-core")
        desktop.start_part("at-spi-bus-launcher", [LAUNCHER, "--launch-immediately", "--a11y=1"])
        wait_for(self.is_up, "the accessibility bus")

    def is_up(self):
        self.desktop.alive("at-spi-bus-launcher")
        return self._run("read").returncode == 0

    def _run(self, *arguments):
        return subprocess.run([sys.executable, ASSISTANT, *arguments], env=self.desktop.environment,
                              stdin=subprocess.DEVNULL, capture_output=True, timeout=60)

    def objects(self):
        answer = self._run("read")
        if answer.returncode != 0:
            raise AssertionError(f"assistive technology failed: {answer.stderr.decode()[-500:]}")
        return json.loads(answer.stdout)

    def find(self, name, **facts):
        """The only showing object of that name."""
        return wait_for(lambda: self._only(name, facts), f"an object called {name!r} with {facts}")

    def _only(self, name, facts):
        found = [one for one in self.objects() if one["name"] == name and one["showing"]
                 and all(one[key] == value for key, value in facts.items())]
        return found[0] if len(found) == 1 else None

    def press(self, name):
        if self._run("press", name).returncode != 0:
            raise AssertionError(f"{name!r} can't be pressed")
