#!/usr/bin/python3
"""From launch to end: hot keys that are taken, a tray that comes late, SIGTERM, the clipboard after the end."""

import signal

from Xlib import X

from support import pixels, reading, windows
from support.program import HOT_KEY_CODES, SUPER_SHIFT, Program
from support.slowdisk import SlowCapture
from support.story import COPY_ONLY, Story, main
from support.waiting import wait_for

FLAGS = ("--self-test", "--panel-preview", "--editor-proof", "--crop-proof", "--editor-ui-proof", "--ocr-ui-proof",
         "--hero-demo", "--blur-demo", "--crop-demo")


class ATakenKey(Story):
    settings = COPY_ONLY

    def take_key(self, *numbers):
        """As another program would, under every lock."""
        root = self.display.screen().root
        for number in numbers:
            for locks in (0, X.LockMask, X.Mod2Mask, X.LockMask | X.Mod2Mask):
                root.grab_key(HOT_KEY_CODES[number], SUPER_SHIFT | locks, False, X.GrabModeAsync, X.GrabModeAsync)
        self.display.sync()

    def start_with_alert(self):
        self.program = Program(self.desktop, settings=self.settings)
        self.program.start(wait_until_ready=False)
        alert = windows.wait_for_one(lambda: self.program.check_running() or self.program.dialogs(), "the alert")
        return alert, reading.text_of(self.desktop, self.settled(alert.rectangle))

    def test_the_alert_names_it_and_the_other_two_work(self):
        self.take_key(4)
        alert, text = self.start_with_alert()
        self.assertIn("area capture", text)
        self.assertIn("9878", text)
        self.assertNotIn("fullscreen capture", text)
        self.assertNotIn("window capture", text)
        self.assertTrue(windows.tray_icons(self.display), "the icon stands behind the alert")
        self.input.key("Escape")
        wait_for(lambda: not self.program.dialogs(), "the alert closed")
        screen = self.settled()
        self.input.hot_key(3)
        expected, soft = self.expected_area(screen, (0, 0, 1600, 1000))
        self.assert_same(expected, self.program.wait_for_history(1), "the key that is free", soft)
        self.input.hot_key(5)
        wait_for(lambda: self.program.overlays() or self.program.check_running(), "the window selector")

    def test_one_alert_for_all_three(self):
        self.take_key(3, 4, 5)
        _, text = self.start_with_alert()
        for purpose in ("fullscreen capture", "area capture", "window capture"):
            self.assertIn(purpose, text)


class HotKeys(Story):
    settings = COPY_ONLY

    def test_they_work_under_every_lock(self):
        self.start_program()
        for count, lock in enumerate(("Caps_Lock", "Num_Lock"), 1):
            with self.subTest(lock=lock):
                self.input.key(lock)
                self.input.hot_key(3)
                self.program.wait_for_history(count)

    def start_mode(self, *flags):
        """Its one line. It can't reach the desktop, so no item stands in the tray and no key is held."""
        self.program = Program(self.desktop, arguments=flags, environment={"DISPLAY": ":987"})
        self.program.start(wait_until_ready=False)
        self.assertEqual(self.program.wait(), 1)
        self.assertEqual(self.program.errors, [])
        self.assertEqual(len(self.program.lines), 1, self.program.lines)
        return self.program.lines[0]

    def test_each_flag_of_a_later_version_is_said_to_be_missing_and_needs_no_desktop(self):
        for flag in FLAGS:
            with self.subTest(flag=flag):
                self.assertEqual(self.start_mode(flag), f"{flag} isn't built yet.")

    def test_of_two_flags_the_order_of_the_modes_decides(self):
        self.assertIn("--self-test", self.start_mode("--crop-demo", "--self-test"))

    def test_arguments_that_the_toolkit_knows_are_unknown_to_the_program(self):
        for arguments in (["-display", ":77"], ["--platform", "nonsense"], ["-style", "nonsense", "-reverse"]):
            with self.subTest(arguments=arguments):
                self.start_program(arguments=arguments)
                self.assertEqual(self.program.stop(), 0)
                self.assertEqual(self.program.errors, [])

    def test_what_merely_begins_with_a_flag_starts_the_program(self):
        self.start_program(arguments=["--self-tests"])


class Corrections(Story):
    settings = COPY_ONLY

    def start_line(self, corrections):
        self.start_program(corrections=corrections)
        self.assertEqual(self.program.stop(), 0)
        self.assertEqual(self.program.lines, [])
        return self.program.errors

    def test_one_line_at_the_start_names_those_that_are_active(self):
        self.assertEqual(self.start_line("all"), [
            "[Marrowfin] corrections: window-rectangles,scroll-point,recording-area,recording-take"])
        self.assertEqual(self.start_line("window-rectangles"), ["[Marrowfin] corrections: window-rectangles"])

    def test_the_bare_program_has_none_and_says_nothing(self):
        self.assertEqual(self.start_line(None), [])


class ASecondProgram(Story):
    settings = COPY_ONLY

    def test_it_finds_the_keys_taken_and_runs_beside_the_first(self):
        self.start_program()
        first = self.program
        self.program = Program(self.desktop)
        self.program.start(wait_until_ready=False)
        alert = windows.wait_for_one(lambda: self.program.check_running() or self.program.dialogs(), "the alert")
        text = reading.text_of(self.desktop, self.settled(alert.rectangle))
        for purpose in ("fullscreen capture", "area capture", "window capture"):
            self.assertIn(purpose, text)
        wait_for(lambda: len(windows.tray_icons(self.display)) == 2, "both icons")
        self.input.hot_key(3)
        self.program.wait_for_history(1)
        self.assertEqual(self.program.stop(), 0)
        self.input.hot_key(3)
        first.wait_for_history(2)
        self.assertEqual(first.stop(), 0)


class ALateTray(Story):
    desktop_options = {"tray": False}
    settings = COPY_ONLY

    def test_the_icon_appears_with_the_tray(self):
        self.start_program()
        self.desktop.start_tray()
        wait_for(lambda: windows.tray_icons(self.display) or self.program.check_running(), "the icon in the late tray")
        screen = self.settled()
        self.choose_from_menu("Capture Fullscreen")
        expected, soft = self.expected_area(screen, (0, 0, 1600, 1000))
        self.assert_same(expected, self.program.wait_for_history(1), "a capture from the late menu", soft)


class TheEnd(Story):
    settings = COPY_ONLY

    def test_sigterm_sigint_and_sighup_give_the_keys_back(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(signal=number):
                self.start_program()
                self.assertEqual(self.program.stop(number), 0)
                for code in HOT_KEY_CODES.values():
                    self.assertFalse(windows.key_is_taken(self.display, code, SUPER_SHIFT))
                self.assertEqual(windows.tray_icons(self.display), [])

    def test_a_second_launch_is_as_the_first(self):
        for count in (1, 2):
            self.start_program()
            self.input.hot_key(3)
            self.program.wait_for_history(count)
            self.assertEqual(self.program.stop(), 0)
            self.assertEqual(self.program.lines, [])

    def test_sigterm_while_an_overlay_is_up(self):
        self.start_program()
        self.bring_up_area_overlay()
        self.assertEqual(self.program.stop(), 0)
        self.assertFalse(windows.keyboard_is_grabbed(self.display))

    def test_sigterm_while_a_capture_is_being_written(self):
        """The disk is slow: the program has given the keys back before it could write the file."""
        capture = SlowCapture(self)
        self.program.child.send_signal(signal.SIGTERM)
        wait_for(lambda: not windows.key_is_taken(self.display, HOT_KEY_CODES[3], SUPER_SHIFT), "the keys given back")
        capture.let_go()
        self.assertEqual(self.program.wait(), 0)
        self.assertEqual(len(self.program.everything_in_the_history()), 1)
        expected, soft = capture.expected
        self.assert_same(expected, pixels.read(self.program.history()[0]), "the capture", soft)


class TheClipboardAfterTheEnd(Story):
    desktop_options = {"clipboard_manager": True}
    settings = COPY_ONLY

    def test_the_image_survives_with_a_clipboard_manager(self):
        self.start_program()
        self.input.hot_key(3)
        image = self.program.wait_for_history(1)
        wait_for(lambda: self.clipboard.png(), "the image on the clipboard")
        self.assertEqual(self.program.stop(), 0)
        wait_for(lambda: self.clipboard.png(), "the image on the clipboard after the end")
        self.assert_same(image, self.clipboard.image(), "what the clipboard manager kept")


if __name__ == "__main__":
    main()
