#!/usr/bin/python3
"""On a Wayland session (here by its environment alone) the program says that it can't see the screen."""

from support import reading, windows
from support.story import COPY_ONLY, Story, main
from support.waiting import wait_for


class AWaylandSession(Story):
    settings = COPY_ONLY

    def start_on_wayland(self, **more):
        return self.start_program(environment={"XDG_SESSION_TYPE": "wayland", **more})

    def test_the_menu_says_why_there_is_no_capture(self):
        self.start_on_wayland()
        self.choose_from_menu("Capture Fullscreen")
        alert = windows.wait_for_one(lambda: self.program.check_running() or self.program.dialogs(), "the alert")
        text = reading.text_of(self.desktop, self.settled(alert.rectangle))
        self.assertIn("Screen Recording Permission Required", text)
        self.assertIn("relaunch the app", text)
        self.assertIn("This is a Wayland session", text)
        self.input.key("Escape")
        wait_for(lambda: not self.program.dialogs(), "the alert closed")
        self.assertEqual([], self.program.everything_in_the_history())

    def test_a_hot_key_prints_its_line_and_takes_no_black_picture(self):
        self.start_on_wayland()
        self.input.hot_key(3)
        self.program.wait_for_line("^Fullscreen capture failed: This is a Wayland session")
        self.bring_up_area_overlay()
        self.input.drag((300, 200), (700, 500))
        self.program.wait_for_line("^Capture failed: This is a Wayland session")
        self.assertEqual([], self.program.everything_in_the_history())

    def test_the_display_of_a_compositor_is_enough(self):
        self.start_program(environment={"WAYLAND_DISPLAY": "wayland-0"})
        self.input.hot_key(3)
        self.program.wait_for_line("^Fullscreen capture failed: This is a Wayland session")

    def test_captures_are_let_through_on_demand(self):
        self.start_on_wayland(WAYLAND_DISPLAY="wayland-0", MARROWFIN_CAPTURE_XWAYLAND="1")
        screen = self.settled()
        self.input.hot_key(3)
        expected, soft = self.expected_area(screen, (0, 0, 1600, 1000))
        self.assert_same(expected, self.program.wait_for_history(1), "the screen", soft)


if __name__ == "__main__":
    main()
