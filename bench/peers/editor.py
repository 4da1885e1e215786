#!/usr/bin/python3
"""Times the editor of a 4K capture on a private virtual desktop: from the press on the card to the first full frame,
what the open editor holds in memory, and from the press on Copy, with fifty records, to the PNG in another program's
hands beside a peer's capture of the whole screen, taking turns in the same run.

    bench/peers/editor.py [--size 3840x2160] [--rounds 11]

Medians; a ratio above 1 means that the program is that many times faster. The release build is measured.
"""

import argparse
import statistics
import sys

from peers import Bench, milliseconds, report, until

from support import pixels, windows
from support.editing import HEIGHT, LEFT, TOP, WIDTH

WINDOW = (1280, 900)
# The middles of the palette's buttons, from its top.
PALETTE_HEIGHT = 395
BUTTONS = {"rectangle": 96, "ellipse": 128, "arrow": 160, "line": 192, "pen": 224, "highlight": 267, "blur": 299,
           "number": 374}
KINDS = ("rectangle", "ellipse", "arrow", "line", "pen", "highlight", "blur", "number", "rectangle", "arrow")
COPY, SAVE = (1280 - 14 - 6 - 60 - 6 - 36, 25), (1280 - 14 - 6 - 10, 25)


class EditorBench(Bench):
    def place(self, x, y):
        """Of the window, on the screen."""
        left, top = windows.rectangle_of(self.editor.window)[:2]
        return left + int(x), top + int(y)

    def capture(self):
        count = len(self.program.history()) + 1
        self.clipboard.take()
        self.input.hot_key(3)
        self.program.wait_for_history(count)
        until(self.clipboard.taken_over)
        until(self.program.cards)
        self.rest()

    def editors(self):
        return [seen for seen in self.program.dialogs() if seen.name == "Marrowfin Editor"]

    def press_card(self):
        self.input.click(*windows.center(self.program.cards()[-1].rectangle))

    def open(self):
        self.press_card()
        self.editor = until(self.editors)[0]
        until(lambda: windows.active(self.display) == self.editor.window.id)
        until(lambda: not self.program.cards())
        self.rest()

    def close(self):
        self.ask_to_close()
        until(lambda: not self.editors())
        self.rest()

    def ask_to_close(self):
        from Xlib import X
        from Xlib.protocol import event
        kind = self.display.intern_atom("_NET_CLOSE_WINDOW")
        message = event.ClientMessage(window=self.editor.window, client_type=kind, data=(32, [0, 2, 0, 0, 0]))
        self.display.screen().root.send_event(message,
                                              event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.display.sync()

    def probes(self):
        """Places of a full frame: ground, image, plates and the prominent button."""
        places = [SAVE, (35, 450), (640, 870), (5, 5), (1270, 890)]
        places += [(LEFT + 100 + x * 250, TOP + 120 + y * 200) for x in range(5) for y in range(3)]
        return [self.place(*place) for place in places]

    def measure_opening(self):
        self.capture()
        self.open()
        places = self.probes()
        wanted = [pixels.pixel(self.display, *place) for place in places]
        self.close()
        if all(pixels.pixel(self.display, *place) == color for place, color in zip(places, wanted)):
            raise SystemExit("the screen without the editor looks the same")
        times = []
        for _ in range(self.rounds):
            self.capture()

            def full_frame():
                return all(pixels.pixel(self.display, *place) == color for place, color in zip(places, wanted))

            def once():
                self.press_card()
                until(full_frame)

            times.append(milliseconds(once))
            self.editor = until(self.editors)[0]
            until(lambda: not self.program.cards())
            self.close()
        print(f"press on the card to the first full frame, {self.name}: median {statistics.median(times):.0f} ms, "
              f"worst of {len(times)} {max(times):.0f} ms")

    def draw_fifty(self):
        top = round((WINDOW[1] - PALETTE_HEIGHT) / 2)
        for number in range(50):
            kind = KINDS[number % len(KINDS)]
            self.input.click(*self.place(35, top + BUTTONS[kind]))
            x, y = LEFT + 40 + (number * 97) % 950, TOP + 80 + (number * 61) % 520
            if kind == "number":
                self.input.click(*self.place(x, y))
            else:
                self.input.drag(self.place(x, y), self.place(x + 60 + number * 3, y + 40 + number % 7 * 10), steps=8)
            self.rest(0.02)

    def measure_memory_and_copy(self):
        raw = self.desktop.options.size[0] * self.desktop.options.size[1] * 4 / 2**20
        self.rest(1)
        without = self.private_kib() / 1024
        self.capture()
        self.open()
        self.rest(1)
        opened = self.private_kib() / 1024
        self.draw_fifty()
        self.rest(1)
        drawn = self.private_kib() / 1024
        self.start_flameshot()
        ours, peer = [], []
        for _ in range(self.rounds):
            self.rest()
            ours.append(self.to_clipboard(lambda: self.input.click(*self.place(*COPY))))
            children = []
            peer.append(self.to_clipboard(lambda: children.append(self.spawn("flameshot", "full", "-c"))))
            children[0].wait()
        report(f"Copy pressed, with 50 records, to the PNG read from the clipboard, {self.name}", ours,
               {"flameshot full -c": peer})
        self.rest(1)
        copied = self.private_kib() / 1024
        for what, mebibytes in (("opened", opened), ("with 50 records", drawn), ("after copying", copied)):
            print(f"private memory beyond the program's own {without:.1f} MiB, {what}: {mebibytes - without:.1f} MiB, "
                  f"{(mebibytes - without) / raw:.2f} times the raw pixels")
        self.to_clipboard(lambda: self.input.click(*self.place(*COPY)))
        pixels.save(self.clipboard.image(), "bench-editor.png")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--size", default="3840x2160")
    parser.add_argument("--rounds", type=int, default=11)
    arguments = parser.parse_args()
    size = tuple(int(side) for side in arguments.size.split("x"))
    assert size[0] >= WINDOW[0] - WIDTH and size[1] >= WINDOW[1] - HEIGHT
    for measure in ("opening", "memory_and_copy"):
        with EditorBench(size, arguments.rounds, {"panelAutoClose": "Never"}) as bench:
            bench.name = arguments.size
            getattr(bench, f"measure_{measure}")()
            sys.stdout.flush()


if __name__ == "__main__":
    main()
