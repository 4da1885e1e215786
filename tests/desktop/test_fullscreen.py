#!/usr/bin/python3
"""Super+Shift+3: the whole screen, with the pointer, on the clipboard and in the history."""

from support import pixels, windows
from support.story import Story, main


class Fullscreen(Story):
    def test_clipboard_and_history_hold_the_screen_with_the_pointer(self):
        self.sample("Alpha", (150, 120), (500, 400), (255, 230, 200))
        self.sample("Beta", (500, 300), (600, 400), (210, 240, 255))
        self.start_program()
        self.input.move(700, 480)
        screen = self.settled()
        expected, soft = pixels.with_cursor(self.display, screen)
        self.clipboard.take()
        self.input.hot_key(3)
        saved = self.wait_for_capture()
        self.assert_same(expected, saved, "the history", soft)
        self.assert_same(expected, self.clipboard.image(), "the clipboard", soft)

    def test_the_clipboard_holds_the_very_bytes_of_the_history_file(self):
        self.start_program()
        self.clipboard.take()
        self.input.hot_key(3)
        self.wait_for_capture()
        with open(self.program.history()[0], "rb") as file:
            self.assertEqual(file.read(), self.clipboard.png())

    def test_with_two_monitors_it_is_the_first(self):
        self.desktop.set_monitors(2)
        self.start_program()
        self.input.move(1200, 300)
        screen = self.settled((0, 0, 800, 1000))
        self.input.hot_key(3)
        self.assert_same(screen, self.wait_for_capture(), "the first display")

    def test_a_card_shows_it_at_the_bottom_left_above_the_panel(self):
        self.start_program()
        self.input.hot_key(3)
        self.wait_for_capture()
        card = self.only_card()
        # 24 points inset, 18 and 22 of halo around the card, above the panel of 30 pixels.
        self.assertEqual(card.rectangle, (6, 1000 - 30 - 24 + 22 - 194, 276, 194))

    def test_a_card_that_stands_there_is_in_the_next_capture(self):
        """Nothing is kept out of a capture but what is on its way out."""
        self.start_program({"panelAutoClose": "Never"})
        without, soft = pixels.with_cursor(self.display, self.settled())
        self.input.hot_key(3)
        self.wait_for_capture()
        x, y, width, height = self.only_card().rectangle
        self.settled()
        self.clipboard.take()
        self.input.hot_key(3)
        image = self.wait_for_capture(2)
        card = (slice(y, y + height), slice(x, x + width))
        self.assertGreater((image[card] != without[card]).any(axis=-1).mean(), 0.5, "the card")
        image = image.copy()
        image[card] = without[card]
        self.assert_same(without, image, "the screen around the card", soft)

    def only_card(self):
        return windows.wait_for_one(self.program.cards, "one card")


class FullscreenAt2x(Story):
    desktop_options = {"scale": 2}

    def test_every_native_pixel_is_in_it(self):
        self.start_program()
        screen, soft = pixels.with_cursor(self.display, self.settled())
        self.input.hot_key(3)
        self.assert_same(screen, self.wait_for_capture(), "the history", soft)


if __name__ == "__main__":
    main()
