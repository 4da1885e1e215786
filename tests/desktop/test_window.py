#!/usr/bin/python3
"""Super+Shift+5 and a click: one window, whole and by itself."""

import numpy

from support import pixels, windows
from support.story import COPY_ONLY, Story, main
from support.waiting import wait_for


class WindowStory(Story):
    settings = COPY_ONLY

    def bring_up_selector(self, place):
        """Presses hot key 5 and waits until a rectangle is seen at `place`."""
        before = pixels.pixel(self.display, *place)
        self.input.hot_key(5)
        wait_for(lambda: self.program.overlays() or self.program.check_running(), "the window selector")
        wait_for(lambda: pixels.pixel(self.display, *place) != before, f"a rectangle at {place}")
        wait_for(lambda: windows.keyboard_is_grabbed(self.display), "the selector with the keyboard")

    def framed(self, window):
        """The window as the screen shows it, frame included, while nothing covers it."""
        screen = self.settled()
        x, y, width, height = window.frame
        return screen[y:y + height, x:x + width]

    def assert_same(self, expected, actual, what, soft=None):
        """Other managers' frames have round corners, beyond which the screen shows what is behind and a capture nothing
        or black.
        KWin's title bars come from the screen, where a window in front throws its shadow on them."""
        manager = self.desktop.options.manager
        if manager != "openbox" and expected.shape == actual.shape:
            corner, title = 8 * self.scale, 40 * self.scale
            settled = numpy.zeros(expected.shape[:2], bool)
            for rows in (slice(corner), slice(-corner, None)):
                settled[rows, :corner] = settled[rows, -corner:] = True
            darker = (actual <= expected).all(axis=-1)
            settled &= pixels.not_opaque(self.program.history()[-1]) | darker
            if manager == "kwin_x11":
                settled[:title] |= darker[:title]
            expected = numpy.where(settled[..., None], actual, expected)
        super().assert_same(expected, actual, what, soft)

    def covered_pair(self):
        """Alpha with another window over its right half; and how Alpha looked before, without the focus."""
        alpha = self.sample("Alpha", (200, 150), (500, 400), (255, 230, 200))
        beta = self.sample("Beta", (900, 500), (600, 400), (210, 240, 255))
        expected = self.framed(alpha)
        beta.move(500, 200)
        self.settled()
        return alpha, beta, expected


class AWindow(WindowStory):
    def test_a_covered_window_comes_out_whole_with_its_frame(self):
        alpha, _, expected = self.covered_pair()
        self.start_program(corrections="window-rectangles")
        self.clipboard.take()
        self.bring_up_selector((300, 300))
        self.input.click(300, 300)
        image = self.wait_for_capture()
        self.assertEqual((image.shape[1], image.shape[0]), alpha.frame[2:])
        self.assert_same(expected, image, "the covered window")
        self.assert_same(expected, self.clipboard.image(), "the clipboard")

    def test_the_front_window_takes_the_click_where_two_overlap(self):
        _, beta, _ = self.covered_pair()
        expected = self.framed(beta)
        self.start_program(corrections="window-rectangles")
        self.bring_up_selector((600, 350))
        self.input.click(600, 350)
        self.assert_same(expected, self.wait_for_capture(), "the front window")

    def test_as_settled_a_rectangle_lies_mirrored_about_the_height_of_the_screen(self):
        alpha = self.sample("Alpha", (200, 100), (400, 200), (255, 230, 200))
        expected = self.framed(alpha)
        x, y, width, height = alpha.frame
        mirrored = (x + width // 2, 1000 - y - height // 2)
        self.start_program()
        self.bring_up_selector(mirrored)
        self.input.click(*mirrored)
        self.assert_same(expected, self.wait_for_capture(), "the window that stands mirrored from the click")

    def test_a_window_that_closed_after_the_pick_prints_a_line_and_changes_nothing(self):
        window = self.sample("Alpha", (200, 150), (500, 400))
        self.start_program(corrections="window-rectangles")
        self.clipboard.take()
        self.bring_up_selector((300, 300))
        window.close()
        self.input.click(300, 300)
        line = self.program.wait_for_line("Window capture failed")
        self.assertEqual(line, "Window capture failed: streamStartFailed")
        self.assertEqual(self.program.history(), [])
        self.assertFalse(self.clipboard.taken_over())
        self.input.hot_key(3)
        self.program.wait_for_history(1)

    def test_escape_ends_the_selection(self):
        self.sample("Alpha", (200, 150), (500, 400))
        self.start_program(corrections="window-rectangles")
        self.bring_up_selector((300, 300))
        self.input.key("Escape")
        self.wait_for_no_overlay()
        self.input.hot_key(3)
        self.program.wait_for_history(1)

    def test_a_click_beside_the_rectangles_keeps_the_selector_up(self):
        self.sample("Alpha", (200, 150), (500, 400))
        self.start_program(corrections="window-rectangles")
        self.bring_up_selector((300, 300))
        self.input.click(1200, 800)
        self.input.click(300, 300)
        self.program.wait_for_history(1)

    def test_a_release_beside_the_pressed_rectangle_picks_nothing(self):
        self.sample("Alpha", (200, 150), (500, 400))
        self.start_program(corrections="window-rectangles")
        self.bring_up_selector((300, 300))
        self.input.drag((300, 300), (1200, 800))
        self.input.key("Escape")
        self.wait_for_no_overlay()
        # What wasn't captured shows by what comes next: the whole screen is the first file.
        self.input.hot_key(3)
        self.assertEqual(self.program.wait_for_history(1).shape, (1000, 1600, 3))

    def test_its_own_card_is_no_candidate(self):
        alpha = self.sample("Alpha", (0, 700), (600, 200))
        self.start_program({"postCaptureAction": "Open Editor"}, corrections="window-rectangles")
        self.input.hot_key(3)
        self.program.wait_for_history(1)
        card = windows.wait_for_one(self.program.cards, "one card")
        place = windows.center(card.rectangle)
        self.bring_up_selector((550, 720))
        self.input.click(*place)
        image = self.program.wait_for_history(2)
        self.assertEqual((image.shape[1], image.shape[0]), alpha.frame[2:])


class AWindowUnderACompositor(WindowStory):
    desktop_options = {"lane": "picom"}

    def test_a_covered_window_comes_out_whole_with_its_frame(self):
        AWindow.test_a_covered_window_comes_out_whole_with_its_frame(self)

    def test_ten_in_a_row_show_nothing_of_the_selector(self):
        _, _, expected = self.covered_pair()
        self.start_program(corrections="window-rectangles")
        for count in range(1, 11):
            self.bring_up_selector((300, 300))
            self.input.click(300, 300)
            self.assert_same(expected, self.program.wait_for_history(count), f"capture {count}")
            self.wait_for_no_overlay()


class AWindowAt2x(WindowStory):
    desktop_options = {"scale": 2}

    def test_it_has_its_own_pixels(self):
        alpha, _, expected = self.covered_pair()
        self.start_program(corrections="window-rectangles")
        self.bring_up_selector((300, 300))
        self.input.click(300, 300)
        self.assert_same(expected, self.wait_for_capture(), "the covered window")


if __name__ == "__main__":
    main()
