#!/usr/bin/python3
"""Makes the pictures of the documentation: the program at work on a private virtual desktop, light.

    ./dev build release && docs/pictures/make.py
"""

import os
import sys
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "..", "tests", "desktop"))

import numpy  # noqa: E402
from PIL import Image  # noqa: E402

from support import pixels, wallpaper, windows  # noqa: E402
from support.input import Input  # noqa: E402
from support.program import Program  # noqa: E402
from support.samples import SampleWindow  # noqa: E402
from support.virtualdesktop import VirtualDesktop  # noqa: E402
from support.waiting import wait_for  # noqa: E402


def calm(width, height):
    """A quiet slope of colour instead of the mosaic that tests look for faults on."""
    slope = numpy.add.outer(numpy.linspace(0, 1, height), numpy.linspace(0, 1, width)) / 2
    picture = numpy.empty((height, width, 4), numpy.uint8)
    for channel, (start, end) in enumerate(((150, 190), (120, 130), (70, 110), (255, 255))):
        picture[..., channel] = start + (end - start) * slope
    return picture


class Camera:
    def __init__(self, desktop):
        self.desktop = desktop
        self.input = Input(desktop.display)
        self.program = Program(desktop, settings={"panelAutoClose": "Never"}, corrections="all").start()

    def shoot(self, name):
        """Once nothing moves any more; without a name it only waits for that."""
        last, since = pixels.grab(self.desktop.display), time.monotonic()

        def still():
            nonlocal last, since
            before, last = last, pixels.grab(self.desktop.display)
            if (before != last).any():
                since = time.monotonic()
            return time.monotonic() - since > 0.4

        wait_for(still, "a screen at rest")
        if name:
            Image.fromarray(last).save(os.path.join(HERE, name), optimize=True)

    def capture_of_the_screen(self):
        self.input.move(1100, 200)
        self.input.hot_key(3)
        wait_for(self.program.cards, "a card")
        self.shoot("card.png")

    def card_under_the_pointer(self):
        self.input.move(140, self.desktop.options.size[1] - 130)
        self.shoot("card-hovered.png")

    def selection_of_an_area(self):
        self.input.hot_key(4)
        wait_for(lambda: windows.keyboard_is_grabbed(self.desktop.display), "the overlay")
        self.input.move(320, 180)
        self.input.press()
        self.input.move(500, 300)
        self.input.move(860, 480)
        self.shoot("area.png")
        self.input.key("Escape")
        self.input.release()
        wait_for(lambda: not self.program.overlays(), "no overlay")

    def editor(self):
        """An area, opened by its card, with a box, an arrow, two badges, a marker, a blur and a line of text."""
        self.input.move(140, self.desktop.options.size[1] - 130)
        self.shoot(None)
        self.input.click(212, self.desktop.options.size[1] - 81)  # the close button in the bar
        wait_for(lambda: not self.program.cards(), "no card")
        self.input.hot_key(4)
        wait_for(lambda: windows.keyboard_is_grabbed(self.desktop.display), "the overlay")
        self.input.drag((360, 60), (1200, 560))
        wait_for(lambda: self.program.cards(), "its card")
        self.shoot(None)
        self.input.click(140, self.desktop.options.size[1] - 130)
        window = windows.wait_for_one(lambda: [seen for seen in self.program.dialogs()
                                               if seen.name == "Marrowfin Editor"], "the editor").window
        wait_for(lambda: windows.active(self.desktop.display) == window.id, "the editor with the keyboard")
        left, top = windows.rectangle_of(window)[:2]

        def draw(key, start, end):
            self.shoot(None)  # the window manager lets a press through when it gets to it
            self.input.key(key)
            self.input.drag((left + 76 + start[0], top + 56 + start[1]), (left + 76 + end[0], top + 56 + end[1]))

        draw("r", (24, 58), (182, 110))
        draw("n", (24, 58), (24, 58))
        draw("h", (212, 214), (500, 240))
        draw("n", (212, 214), (212, 214))
        draw("b", (212, 262), (500, 312))
        draw("a", (640, 390), (520, 246))
        draw("t", (580, 430), (580, 430))
        time.sleep(0.5)
        self.input.type("Ship this one!")
        self.input.key("Escape")
        self.input.key("v")
        self.input.move(left + 700, top + 330)
        self.shoot("editor.png")
        self.program.stop()

    def menu(self):
        # The panel at the bottom begins with the status area, and ours is the only icon in it.
        self.input.click(15, self.desktop.options.size[1] - 15)
        wait_for(lambda: windows.keyboard_is_grabbed(self.desktop.display), "the menu")
        self.shoot("menu.png")
        self.input.key("Escape")
        wait_for(lambda: not self.program.menus(), "the menu gone")


def main():
    wallpaper.mosaic = calm
    with VirtualDesktop(size=(1280, 800), lane="picom") as desktop:
        samples = [SampleWindow(desktop, "Notes", (380, 90), (640, 420)),
                   SampleWindow(desktop, "Mail", (560, 220), (620, 420), (225, 235, 250))]
        camera = Camera(desktop)
        camera.selection_of_an_area()
        camera.capture_of_the_screen()
        camera.card_under_the_pointer()
        camera.menu()
        camera.editor()
        for sample in samples:
            sample.close()


if __name__ == "__main__":
    main()
