"""What a test on the virtual desktop begins with. A failing story leaves a picture of its desktop under out/desktop
and the logs of everything that ran."""

import os
import sys
import unittest

from support import pixels, windows
from support.clipboard import Clipboard
from support.input import Input
from support.program import Program
from support.samples import SampleWindow
from support.virtualdesktop import VirtualDesktop
from support.waiting import wait_for

# The rows of the main menu that can be chosen, in their order.
ROWS = ("All-In-One", "Capture Area", "Capture Previous Area", "Capture Fullscreen", "Capture Window",
        "Scrolling Capture", "Self-Timer", "Capture Text (OCR)", "Open from Clipboard", "Pin to Screen",
        "Record Screen", "Capture History...", "Settings...", "Check for Updates...", "Quit Marrowfin")
ALL_IN_ONE_ROWS = ("Capture Area", "Capture Window", "Capture Fullscreen", "Scrolling Capture", "Capture Text (OCR)",
                   "Record Screen")
COPY_ONLY = {"postCaptureAction": "Copy to Clipboard"}


class Story(unittest.TestCase):
    """`desktop_options` are those of the virtual desktop, `settings` the program's settings file."""

    desktop_options = {}
    settings = None

    def setUp(self):
        self.desktop = VirtualDesktop(**self.desktop_options)
        self.program = None
        self.addCleanup(self.end_desktop)
        self.desktop.start()
        self.display = self.desktop.display
        self.input = Input(self.display)
        self.clipboard = Clipboard(self.desktop)
        self.scale = self.desktop.options.scale

    def end_desktop(self):
        result = self._outcome.result
        failed = any(self in (test, getattr(test, "test_case", None)) for test, _ in result.failures + result.errors)
        if failed:
            self.leave_traces()
        self.desktop.end(keep_logs=failed)

    def leave_traces(self):
        try:
            name = f"desktop/{self.id().replace('__main__.', '')}.png"
            os.makedirs(os.path.join(pixels.OUT, "desktop"), exist_ok=True)
            print("The desktop at the failure:", pixels.save(pixels.grab(self.display), name), file=sys.stderr)
        except Exception as error:
            print(f"No picture of the desktop: {error!r}", file=sys.stderr)
        if self.program:
            print(f"The program said {self.program.lines} and logged {self.program.errors}", file=sys.stderr)

    def start_program(self, settings=None, **options):
        self.program = Program(self.desktop, settings=settings or self.settings, **options)
        self.program.start()
        return self.program

    def sample(self, *arguments, **options):
        window = SampleWindow(self.desktop, *arguments, **options)
        self.addCleanup(window.close)
        return window

    # Comparing.

    def grab(self, rectangle=None):
        return pixels.grab(self.display, rectangle)

    def settled(self, rectangle=None):
        """The screen once two looks at it in a row are the same: window managers repaint when they get to it."""
        last = [self.grab(rectangle)]

        def same():
            self.display.sync()
            seen = self.grab(rectangle)
            if (seen == last[0]).all():
                self.steady = getattr(self, "steady", 0) + 1
            else:
                self.steady = 0
            last[0] = seen
            return self.steady > 10

        self.steady = 0
        wait_for(same, "a screen at rest")
        return last[0]

    def assert_same(self, expected, actual, what, soft=None):
        found = pixels.difference(expected, actual, soft)
        if found:
            folder = os.path.join(pixels.OUT, "desktop")
            os.makedirs(folder, exist_ok=True)
            name = self.id().replace("__main__.", "")
            pixels.save(expected, f"desktop/{name}.expected.png")
            pixels.save(actual, f"desktop/{name}.actual.png")
        self.assertEqual(found, "", what)

    def expected_area(self, before, rectangle):
        """The part of the screen as it was before, with the pointer as it stands now, without our overlays."""
        self.wait_for_no_overlay()
        x, y, width, height = rectangle
        return pixels.with_cursor(self.display, before[y:y + height, x:x + width], (x, y))

    # Doing.

    def wait_for_capture(self, count=1):
        """The newest of `count` captures in the history, once the clipboard has it too."""
        image = self.program.wait_for_history(count)
        self.clipboard.wait_for_copy()
        return image

    def bring_up_area_overlay(self, press=None):
        """Presses hot key 4 (or does `press`) and waits until the screen is dim and the overlay has the keyboard."""
        before = self.grab()
        (press or (lambda: self.input.hot_key(4)))()
        overlay = wait_for(lambda: self.program.overlays() or self.program.check_running(), "the area overlay")[-1]
        x, y, width, height = overlay.rectangle
        place = (x + width - 3, y + 3)
        bright = sum(int(part) for part in before[place[1], place[0]])
        wait_for(lambda: sum(pixels.pixel(self.display, *place)) < bright * 0.5, "the dim")
        wait_for(lambda: windows.keyboard_is_grabbed(self.display), "the overlay with the keyboard")
        return overlay

    def wait_for_no_overlay(self):
        wait_for(lambda: not self.program.overlays() or self.program.check_running(), "the overlay gone")

    def open_menu(self):
        icon = self.program.tray_icon()
        self.input.click(*windows.center(icon.rectangle))
        return self.wait_for_menu()

    def wait_for_menu(self):
        menu = wait_for(lambda: self.program.menus() or self.program.check_running(), "the menu")[-1]
        wait_for(lambda: windows.keyboard_is_grabbed(self.display), "the menu with the keyboard")
        return menu

    def choose(self, row, rows=ROWS):
        """Chooses a row of the open menu by the keyboard."""
        for _ in range(rows.index(row) + 1):
            self.input.key("Down")
        self.input.key("Return")

    def choose_from_menu(self, row):
        self.open_menu()
        self.choose(row)


def main():
    unittest.main(verbosity=2)
