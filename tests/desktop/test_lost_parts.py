#!/usr/bin/python3
"""Parts of the desktop that go away at the worst moment: a monitor, the compositor, the tray, the X server."""

import os

from support import pixels, windows
from support.program import Program
from support.slowdisk import SlowCapture
from support.story import COPY_ONLY, Story, main
from support.waiting import wait_for


class LostMonitor(Story):
    desktop_options = {"monitors": 2}
    settings = COPY_ONLY

    def test_it_goes_while_the_overlay_is_up(self):
        self.sample("Alpha", (900, 200), (400, 300))
        self.start_program()
        self.bring_up_area_overlay()
        self.desktop.remove_monitor("R")
        self.wait_for_no_overlay()
        wait_for(lambda: not windows.keyboard_is_grabbed(self.display), "the keyboard given back")
        self.input.hot_key(3)
        self.program.wait_for_history(1)

    def test_it_goes_while_its_card_is_up(self):
        self.start_program({"postCaptureAction": "Open Editor"})
        self.input.move(1200, 500)
        self.input.hot_key(3)
        self.program.wait_for_history(1)
        card = windows.wait_for_one(self.program.cards, "a card on the second monitor")
        self.assertGreaterEqual(card.rectangle[0], 800 - 18)
        self.desktop.remove_monitor("R")
        self.input.move(300, 500)
        self.input.hot_key(3)
        self.program.wait_for_history(2)
        wait_for(lambda: any(card.rectangle[0] < 400 for card in self.program.cards()) or
                 self.program.check_running(), "a card on the first monitor")


class LostCompositor(Story):
    desktop_options = {"lane": "picom"}
    settings = COPY_ONLY

    def test_it_dies_in_the_middle_of_a_drag(self):
        self.start_program()
        screen = self.settled()
        self.bring_up_area_overlay()
        self.input.move(300, 200)
        self.input.press()
        self.input.move(500, 400)
        self.desktop.end_part("picom")
        self.input.move(700, 500)
        self.input.release()
        expected, soft = self.expected_area(screen, (300, 200, 400, 300))
        self.assert_same(expected, self.program.wait_for_history(1), "the area", soft)

    def test_it_dies_and_comes_back_between_captures(self):
        self.start_program()
        screen = self.settled()
        self.desktop.end_part("picom")
        for count in (1, 2):
            self.bring_up_area_overlay()
            self.input.drag((300, 200), (700, 500))
            expected, soft = self.expected_area(screen, (300, 200, 400, 300))
            self.assert_same(expected, self.program.wait_for_history(count), f"capture {count}", soft)
            self.wait_for_no_overlay()
            if count == 1:
                self.desktop.start_compositor("picom")
                self.settled()


class LostTray(Story):
    settings = COPY_ONLY

    def test_it_goes_and_another_comes(self):
        self.start_program()
        self.desktop.end_part("tint2")
        self.input.hot_key(3)
        self.program.wait_for_history(1)
        self.desktop.start_tray()
        wait_for(lambda: windows.tray_icons(self.display) or self.program.check_running(), "the icon in the new tray")
        self.choose_from_menu("Capture Fullscreen")
        self.program.wait_for_history(2)


class LostServer(Story):
    settings = COPY_ONLY

    def assert_ended_in_order(self):
        self.assertEqual(self.program.wait(), 1)
        self.assertEqual(len(self.program.errors), 1, self.program.errors)
        for line in self.program.lines:
            self.assertIn("capture failed: ", line, "only a capture on its way may say that it failed")
        for name in self.program.everything_in_the_history():
            self.assertRegex(name, r"^capture_.*\.png$", "no half-written file, not a hidden one either")
            pixels.read(os.path.join(self.program.history_folder, name))

    def test_it_goes_while_the_program_is_idle(self):
        self.start_program()
        self.desktop.end_part("Xvfb")
        self.assert_ended_in_order()

    def test_it_goes_while_the_overlay_is_up(self):
        self.start_program()
        self.bring_up_area_overlay()
        self.desktop.end_part("Xvfb")
        self.assert_ended_in_order()

    def test_it_goes_right_after_the_keys(self):
        self.start_program()
        for _ in range(5):
            self.input.hot_key(3)
        self.desktop.end_part("Xvfb")
        self.assert_ended_in_order()

    def test_it_goes_while_a_capture_is_being_written(self):
        """The disk is slow: the program has heard of the loss before it could write the file."""
        capture = SlowCapture(self)
        self.desktop.end_part("Xvfb")
        self.program.wait_for_line("X server is lost", "err")
        capture.let_go()
        self.assert_ended_in_order()
        self.assertEqual(len(self.program.history()), 1)
        expected, soft = capture.expected
        self.assert_same(expected, pixels.read(self.program.history()[0]), "the capture", soft)


class NoServer(Story):
    def test_it_was_never_there(self):
        self.program = Program(self.desktop, environment={"DISPLAY": ":987"})
        self.program.start(wait_until_ready=False)
        self.assertEqual(self.program.wait(), 1)
        self.assertEqual(len(self.program.lines), 1, self.program.lines)
        self.assertTrue(self.program.lines[0].startswith("Marrowfin needs an X11 desktop: "), self.program.lines[0])
        self.assertEqual(self.program.errors, [])


if __name__ == "__main__":
    main()
