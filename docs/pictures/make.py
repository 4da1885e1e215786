#!/usr/bin/python3
"""Makes the pictures of the documentation: the program at work on a private virtual desktop, light.

    ./dev build release && docs/pictures/make.py
"""

import os
import sys

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
        """Once nothing moves any more."""
        last = pixels.grab(self.desktop.display)

        def still():
            nonlocal last
            before, last = last, pixels.grab(self.desktop.display)
            return (before == last).all()

        wait_for(still, "a screen at rest")
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

    def menu(self):
        # The panel at the bottom begins with the status area, and ours is the only icon in it.
        self.input.click(15, self.desktop.options.size[1] - 15)
        wait_for(lambda: windows.keyboard_is_grabbed(self.desktop.display), "the menu")
        self.shoot("menu.png")
        self.input.key("Escape")


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
        camera.program.stop()
        for sample in samples:
            sample.close()


if __name__ == "__main__":
    main()
