#!/usr/bin/python3
"""Times the program beside its peers on a private virtual desktop: the same screen, the same run, taking turns.

    bench/peers/peers.py [--sizes 1920x1080,3840x2160] [--rounds 11] [clipboard file overlay idle memory]

Each figure is a median, and each time begins with the program and its cards at rest; a ratio above 1 means that the program is that many times faster. A time begins when the key
is pressed or the peer's command is started (its daemon, where it has one, is up before), and ends when another program
has what it waited for. The release build is measured: ./dev build release first.
"""

import argparse
import glob
import os
import statistics
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tests", "desktop"))

from Xlib import X  # noqa: E402

from support import owned, pixels, windows  # noqa: E402
from support.clipboard import Clipboard  # noqa: E402
from support.input import Input  # noqa: E402
from support.program import Program  # noqa: E402
from support.samples import SampleWindow  # noqa: E402
from support.virtualdesktop import VirtualDesktop  # noqa: E402

PNG_END = b"\x00\x00\x00\x00IEND\xaeB`\x82"


def until(condition, limit=20.0):
    """Asks every half a millisecond: often enough to measure, and the cores are left to what is measured."""
    end = time.monotonic() + limit
    while not (value := condition()):
        if time.monotonic() > end:
            raise SystemExit("a peer or the program never finished")
        time.sleep(0.0005)
    return value


def milliseconds(action):
    begin = time.perf_counter()
    action()
    return (time.perf_counter() - begin) * 1000


def report(what, ours, peers):
    mine = statistics.median(ours)
    print(f"{what}: marrowfin {mine:.1f} ms")
    for name, times in peers.items():
        other = statistics.median(times)
        print(f"    {name} {other:.1f} ms, ratio {other / mine:.1f}")
    sys.stdout.flush()


class Bench:
    def __init__(self, size, rounds, settings):
        self.desktop = VirtualDesktop(size=size)
        self.rounds = rounds
        self.settings = settings

    def __enter__(self):
        self.desktop.start()
        self.display = self.desktop.display
        width, height = self.desktop.options.size
        self.windows = [SampleWindow(self.desktop, "Notes", (width // 16, height // 10), (width // 2, height // 2)),
                        SampleWindow(self.desktop, "Mail", (width // 3, height // 4), (width // 2, height * 5 // 9),
                                     (225, 235, 250))]
        self.input = Input(self.display)
        self.clipboard = Clipboard(self.desktop)
        self.program = Program(self.desktop, settings=self.settings).start()
        return self

    def __exit__(self, *problem):
        self.program.stop()
        self.desktop.end()

    def spawn(self, *command):
        return subprocess.Popen([owned.require(command[0]), *command[1:]], env=self.desktop.environment,
                                stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def run(self, *command):
        self.spawn(*command).wait()

    def start_flameshot(self):
        self.daemon = self.desktop.owned.start(["flameshot"], "flameshot", self.desktop.environment)
        until(lambda: subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                                      "org.freedesktop.DBus.GetNameOwner", "string:org.flameshot.Flameshot"],
                                     env=self.desktop.environment, capture_output=True).returncode == 0)

    # Key press, or start of the command, to the whole PNG in another program's hands.

    def to_clipboard(self, start):
        self.clipboard.take()

        def once():
            start()
            until(self.clipboard.taken_over)
            data = until(self.clipboard.png)
            assert data.endswith(PNG_END)

        return milliseconds(once)

    def measure_clipboard(self, name):
        self.start_flameshot()
        ours, peer = [], []
        for _ in range(self.rounds):
            self.rest()
            ours.append(self.to_clipboard(lambda: self.input.hot_key(3)))
            self.program.wait_for_history(len(ours))
            children = []
            peer.append(self.to_clipboard(lambda: children.append(self.spawn("flameshot", "full", "-c"))))
            children[0].wait()
        report(f"key press to PNG read from the clipboard, {name}", ours, {"flameshot full -c": peer})

    # Key press, or start of the command, to the complete file.

    def complete(self, pattern, before):
        for path in set(glob.glob(pattern)) - before:
            with open(path, "rb") as file:
                file.seek(0, os.SEEK_END)
                if file.tell() > len(PNG_END):
                    file.seek(-len(PNG_END), os.SEEK_END)
                    return file.read() == PNG_END
        return False

    def to_file(self, start, pattern):
        before = set(glob.glob(pattern))

        def once():
            start()
            until(lambda: self.complete(pattern, before))

        return milliseconds(once)

    def measure_file(self, name):
        self.start_flameshot()
        folder = self.desktop.home("peers")
        os.makedirs(folder)
        history = os.path.join(self.program.history_folder, "*.png")
        pattern = os.path.join(folder, "*.png")
        ours, scrot, flameshot = [], [], []
        for number in range(self.rounds):
            self.rest()
            ours.append(self.to_file(lambda: self.input.hot_key(3), history))
            file = os.path.join(folder, f"scrot{number}.png")
            scrot.append(milliseconds(lambda: self.run("scrot", file)))
            children = []
            flameshot.append(self.to_file(
                lambda: children.append(self.spawn("flameshot", "full", "-p", folder)), pattern))
            children[0].wait()
        report(f"key press to complete file, {name}", ours, {"scrot": scrot, "flameshot full -p": flameshot})

    # Key press, or start of the command, to an overlay that can be seen (or, where a peer shows none, used).

    def pointer_is_grabbed(self):
        status = self.display.screen().root.grab_pointer(False, 0, X.GrabModeAsync, X.GrabModeAsync, X.NONE, X.NONE,
                                                         X.CurrentTime)
        if status == X.GrabSuccess:
            self.display.ungrab_pointer(X.CurrentTime)
            self.display.sync()
        return status != X.GrabSuccess

    def to_overlay(self, start, seen=None):
        rested = pixels.pixel(self.display, 5, 5)
        seen = seen or (lambda: pixels.pixel(self.display, 5, 5) != rested)

        def once():
            start()
            until(seen)

        taken = milliseconds(once)
        return taken, lambda: until(lambda: pixels.pixel(self.display, 5, 5) == rested)

    def measure_overlay(self, name):
        self.start_flameshot()
        self.input.move(300, 300)
        peers = {"flameshot gui": (("flameshot", "gui"), None), "maim -s": (("maim", "-s"), self.pointer_is_grabbed),
                 "scrot -s": (("scrot", "-s", "/dev/null"), self.pointer_is_grabbed),
                 "spectacle -r": (("spectacle", "-b", "-n", "-r"), None)}
        times = {peer: [] for peer in peers}
        ours = []
        for _ in range(self.rounds):
            self.rest()
            taken, gone = self.to_overlay(lambda: self.input.hot_key(4))
            ours.append(taken)
            until(lambda: windows.keyboard_is_grabbed(self.display))
            self.input.key("Escape")
            gone()
            for peer, (command, seen) in peers.items():
                children = []
                try:
                    taken, gone = self.to_overlay(lambda: children.append(self.spawn(*command)), seen)
                    times[peer].append(taken)
                except SystemExit:
                    gone = lambda: None  # noqa: E731
                    times[peer].append(float("inf"))
                children[0].poll() is None and self.input.key("Escape")
                if peer != "flameshot gui":
                    children[0].terminate()
                children[0].wait()
                gone()
        report(f"key press to overlay, {name}", ours, times)

    # At rest.

    def switches(self):
        total = 0
        for status in glob.glob(f"/proc/{self.program.child.pid}/task/*/status"):
            with open(status) as file:
                total += sum(int(line.split()[1]) for line in file if "ctxt_switches" in line)
        return total

    def private_kib(self):
        with open(f"/proc/{self.program.child.pid}/smaps_rollup") as file:
            return sum(int(line.split()[1]) for line in file if line.startswith("Private_"))

    def rest(self, quiet=0.1):
        """Until two looks at the program that are so many seconds apart find that it did nothing."""
        def rested():
            before = self.switches()
            time.sleep(quiet)
            return self.switches() == before

        until(rested, 60)

    def settled_switches(self):
        """Once start-up has come to rest."""
        self.rest(1)
        return self.switches()

    def measure_idle(self, name):
        before = self.settled_switches()
        time.sleep(20)
        print(f"at rest for 20 s, {name}: {self.switches() - before} context switches of all threads, "
              f"{self.private_kib() / 1024:.1f} MiB private memory")
        sys.stdout.flush()

    def measure_memory(self, name):
        marks = {}
        for number in range(1, 501):
            self.clipboard.take()
            self.input.hot_key(3)
            until(self.clipboard.taken_over)
            if number in (20, 500):
                self.settle_cards()
                marks[number] = self.private_kib() / 1024
        growth = (marks[500] / marks[20] - 1) * 100
        print(f"private memory, {name}: {marks[20]:.1f} MiB after 20 captures, {marks[500]:.1f} after 500 "
              f"({growth:+.1f}%)")
        sys.stdout.flush()

    def settle_cards(self):
        if self.settings.get("panelAutoClose") != "Never":
            until(lambda: not self.program.cards(), 60)
        self.settled_switches()


MEASURES = ("clipboard", "file", "overlay", "idle", "memory")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("measures", nargs="*", default=list(MEASURES), metavar="measure", help=", ".join(MEASURES))
    parser.add_argument("--sizes", default="1920x1080,3840x2160")
    parser.add_argument("--rounds", type=int, default=11)
    arguments = parser.parse_args()
    for text in arguments.sizes.split(","):
        size = tuple(int(side) for side in text.split("x"))
        for measure in arguments.measures:
            # A card that counts down is never at rest.
            kinds = [{"panelAutoClose": "Never"}]
            if measure == "memory":
                kinds.append({"panelAutoClose": "5 seconds"})
            for settings in kinds:
                with Bench(size, arguments.rounds, settings) as bench:
                    label = text if measure != "memory" else f"{text}, cards for {settings['panelAutoClose'].lower()}"
                    getattr(bench, f"measure_{measure}")(label)


if __name__ == "__main__":
    main()
