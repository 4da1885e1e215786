#!/usr/bin/python3
"""Fifty captures in a row, without a compositor, with one, and with one that fades: never a pixel of the overlay or
of the menu that was on its way out."""

from support.story import COPY_ONLY, Story, main
from support.waiting import wait_for

TIMES = 50


class Repeated:
    settings = COPY_ONLY

    def wait_for_the_screen(self, screen):
        """The last overlay or menu has faded for good, so that the next one is seen to come."""
        wait_for(lambda: (self.grab() == screen).all() or self.program.check_running(), "the screen as it was")

    def test_fifty_areas(self):
        self.sample("Alpha", (150, 120), (500, 400))
        self.start_program()
        screen = self.settled()
        for count in range(1, TIMES + 1):
            start, end = (100 + count * 7, 100 + count * 5), (700 + count * 11, 500 + count * 3)
            self.bring_up_area_overlay()
            self.input.drag(start, end, steps=2)
            image = self.program.wait_for_history(count)
            expected, soft = self.expected_area(screen, (*start, end[0] - start[0], end[1] - start[1]))
            self.assert_same(expected, image, f"capture {count}", soft)
            self.wait_for_the_screen(screen)

    def test_fifty_screens_chosen_from_the_menu(self):
        self.sample("Alpha", (150, 120), (500, 400))
        self.start_program()
        screen = self.settled()
        for count in range(1, TIMES + 1):
            self.choose_from_menu("Capture Fullscreen")
            image = self.program.wait_for_history(count)
            expected, soft = self.expected_area(screen, (0, 0, 1600, 1000))
            self.assert_same(expected, image, f"capture {count}", soft)
            self.wait_for_the_screen(screen)


class WithoutACompositor(Repeated, Story):
    desktop_options = {"lane": "none"}


class WithACompositor(Repeated, Story):
    desktop_options = {"lane": "picom"}


class WithAFadingCompositor(Repeated, Story):
    desktop_options = {"lane": "fading"}


if __name__ == "__main__":
    main()
