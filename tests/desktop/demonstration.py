#!/usr/bin/python3
"""The main job on a virtual desktop with sample windows, by real input: each capture is compared with the screen as
another connection sees it. Pictures of the desktop at each step lie under out/. Exits 0 when every pixel is right."""

import os
import signal
import sys
import unittest

from support import pixels, windows
from support.samples import SampleWindow
from support.story import ROWS, Story
from support.waiting import wait_for


class Demonstration(Story):
    desktop_options = {"lane": "picom"}

    def runTest(self):
        self.step = 0
        self.right = True
        self.windows = [SampleWindow(self.desktop, "Notes", (120, 90), (620, 430), (255, 236, 205)),
                        SampleWindow(self.desktop, "Letters", (560, 300), (640, 420), (208, 232, 255)),
                        SampleWindow(self.desktop, "Plans", (980, 120), (480, 330), (214, 245, 214))]
        # The cards stay for the pictures, however slow the machine is.
        self.start_program({"panelAutoClose": "Never"}, corrections="all")
        self.picture("the desktop")
        self.fullscreen()
        self.area()
        self.window()
        self.previous_area()
        status = self.program.stop()
        print(f"The program ended with status {status} on SIGTERM.")
        self.assertTrue(self.right and status == 0, "a capture was wrong, see above")

    def picture(self, name):
        self.step += 1
        path = pixels.save(pixels.grab(self.display), f"{self.step:02}-{name.replace(' ', '-')}.png")
        print(f"    {os.path.relpath(path)}: {name}")

    def report(self, count, expected, soft):
        """One line on where the newest capture went and whether it is right."""
        image = self.program.wait_for_history(count)
        self.clipboard.wait_for_copy()
        copied = self.clipboard.image()
        wait_for(lambda: len(self.program.cards()) >= min(count, 4) or self.program.check_running(), "the card")
        file = self.program.history()[-1]
        wrong = pixels.difference(expected, image, soft) or pixels.difference(image, copied)
        print(f"    {pixels.size_text(image)} pixels")
        print(f"    clipboard: {pixels.size_text(copied)}, image/png")
        print(f"    history: {file}")
        print(f"    card: {self.program.cards()[-1].rectangle}")
        print("    right in every pixel" if not wrong else f"    WRONG: {wrong}", flush=True)
        self.right = self.right and not wrong
        pixels.save(image, f"{self.step:02}-capture.png")

    def fullscreen(self):
        print("Super+Shift+3: the screen")
        self.input.move(800, 250)
        self.clipboard.take()
        screen = self.settled()
        expected, soft = self.expected_area(screen, (0, 0, *self.desktop.options.size))
        self.input.hot_key(3)
        self.report(1, expected, soft)
        self.picture("after the screen")

    def area(self):
        print("Super+Shift+4 and a drag: an area")
        self.clipboard.take()
        screen = self.grab()
        self.bring_up_area_overlay()
        self.input.move(500, 180)
        self.input.press()
        self.input.move(900, 400)
        self.input.move(1139, 611)
        self.picture("dragging an area")
        self.input.release()
        wait_for(lambda: len(self.program.history()) == 2 or self.program.check_running(), "the capture")
        expected, soft = self.expected_area(screen, (500, 180, 639, 431))
        self.report(2, expected, soft)
        self.picture("after the area")

    def window(self):
        print("Super+Shift+5 and a click: a window, partly covered by another")
        self.clipboard.take()
        notes = self.windows[0]
        # As the window looks alone: with the others out of the way for a moment.
        places = [window.content[:2] for window in self.windows[1:]]
        for window in self.windows[1:]:
            window.move(1100, 640)
        x, y, width, height = notes.frame
        expected = self.settled()[y:y + height, x:x + width]
        for window, place in zip(self.windows[1:], places):
            window.move(*place)
        self.settled((0, 0, 1600, 600))
        place = (250, 300)
        before = pixels.pixel(self.display, *place)
        self.input.hot_key(5)
        wait_for(lambda: pixels.pixel(self.display, *place) != before, "the window's rectangle")
        self.picture("picking a window")
        self.input.click(*place)
        self.report(3, expected, None)
        self.picture("after the window")

    def previous_area(self):
        print("The status icon, then Capture Previous Area")
        self.clipboard.take()
        self.open_menu()
        self.picture("the menu")
        screen = self.grab()
        place = self.place_of_row("Capture Previous Area")
        self.input.click(*place)
        wait_for(lambda: len(self.program.history()) == 4 or self.program.check_running(), "the capture")
        expected, soft = self.expected_area(screen, (500, 180, 639, 431))
        self.report(4, expected, soft)
        self.picture("after the previous area")

    def place_of_row(self, row):
        """Where the row is: the keyboard goes down to it, and what lights up there is it."""
        menu = self.program.menus()[-1].rectangle
        for number in range(ROWS.index(row) + 1):
            before = self.grab(menu)
            self.input.key("Down")
            wait_for(lambda: (self.grab(menu) != before).any(), f"row {number + 1} lit up")
        lit = self.settled(menu)
        changed = (lit != before).any(axis=(1, 2)).nonzero()[0]
        # The light left one row and came to the next: the lower half of what changed is the row.
        return menu[0] + menu[2] // 2, menu[1] + int(changed.max()) - 6


def main():
    signal.signal(signal.SIGTERM, lambda number, frame: sys.exit(128 + number))
    for name in os.listdir(pixels.OUT) if os.path.isdir(pixels.OUT) else []:
        if name[:2].isdigit() and name.endswith(".png"):
            os.remove(os.path.join(pixels.OUT, name))
    result = unittest.TextTestRunner(verbosity=0).run(Demonstration())
    return 0 if result.wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())
