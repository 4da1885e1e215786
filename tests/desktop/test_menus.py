#!/usr/bin/python3
"""The commands that only the menus have: the previous area, the self-timer, All-In-One."""

from Xlib import X

from support import pixels, windows
from support.story import ALL_IN_ONE_ROWS, COPY_ONLY, Story, main
from support.waiting import wait_for


class Menus(Story):
    settings = COPY_ONLY

    def take_area(self, start, end, count):
        self.bring_up_area_overlay()
        self.input.drag(start, end)
        image = self.program.wait_for_history(count)
        self.wait_for_no_overlay()
        return image

    def assert_shows(self, screen, rectangle, image):
        expected, soft = self.expected_area(screen, rectangle)
        self.assert_same(expected, image, f"the area {rectangle}", soft)

    def test_either_button_opens_the_menu_on_release(self):
        self.start_program()
        place = windows.center(self.program.tray_icon().rectangle)
        for button in (1, 3):
            with self.subTest(button=button):
                self.input.click(*place, button=button)
                self.wait_for_menu()
                self.input.key("Escape")
                wait_for(lambda: not self.program.menus(), "the menu closed")

    def test_the_previous_area_is_taken_again_without_an_overlay(self):
        self.start_program()
        screen = self.settled()
        self.take_area((300, 200), (700, 500), 1)
        window = self.sample("New", (350, 250), (200, 150))
        screen = self.settled()
        self.choose_from_menu("Capture Previous Area")
        self.assert_shows(screen, (300, 200, 400, 300), self.program.wait_for_history(2))
        window.close()

    def test_without_a_previous_area_one_is_selected(self):
        self.start_program()
        screen = self.settled()
        self.bring_up_area_overlay(lambda: self.choose_from_menu("Capture Previous Area"))
        self.input.drag((300, 200), (700, 500))
        self.assert_shows(screen, (300, 200, 400, 300), self.program.wait_for_history(1))

    def test_a_cancelled_selection_leaves_the_previous_area(self):
        self.start_program()
        screen = self.settled()
        self.take_area((300, 200), (700, 500), 1)
        self.bring_up_area_overlay()
        self.input.key("Escape")
        self.wait_for_no_overlay()
        self.choose_from_menu("Capture Previous Area")
        self.assert_shows(screen, (300, 200, 400, 300), self.program.wait_for_history(2))

    def test_an_area_that_lies_across_two_displays_comes_out_whole(self):
        """Selected on one wide display, which then became two."""
        self.start_program()
        screen = self.settled()
        self.take_area((600, 200), (1000, 500), 1)
        self.desktop.set_monitors(2)
        screen = self.settled()
        self.choose_from_menu("Capture Previous Area")
        image = self.program.wait_for_history(2)
        self.assert_shows(screen, (600, 200, 400, 300), image)

    def test_the_self_timer_lets_clicks_through_and_is_not_in_the_picture(self):
        window = self.sample("Beneath", (300, 250), (500, 400))
        window.window.change_attributes(event_mask=X.ButtonPressMask)
        window.display.sync()
        self.start_program()
        screen = self.settled()
        self.start_the_self_timer()
        self.wait_for_a_digit(screen)
        self.input.click(500, 400)
        self.assertEqual(self.next_press(window), (500, 400))
        # The area overlay follows the countdown: it takes the keyboard, which the countdown doesn't.
        wait_for(lambda: windows.keyboard_is_grabbed(self.display), "the area overlay")
        self.bring_up_area_overlay(press=lambda: None) if not self.program.overlays() else None
        wait_for(lambda: self.is_dim(screen, (1590, 8)), "the dim of the area overlay")
        self.input.drag((300, 200), (700, 500))
        self.assert_shows(screen, (300, 200, 400, 300), self.program.wait_for_history(1))

    def test_without_a_compositor_the_screen_lives_on_around_the_countdowns_digits(self):
        window = self.sample("Beneath", (100, 250), (300, 200))
        self.start_program()
        screen = self.settled()
        self.start_the_self_timer()
        self.wait_for_a_digit(screen)
        overlay = self.program.overlays()[-1].window
        window.move(1000, 600)
        wait_for(lambda: (self.grab((1010, 610, 280, 180)) == window.pixels[10:190, 10:290, 2::-1]).all()
                 or self.program.check_running(), "the window where it was moved to")
        self.assertIn(overlay, [seen.window for seen in self.program.overlays()], "during the countdown")
        self.input.move(1590, 990)
        wait_for(lambda: windows.keyboard_is_grabbed(self.display), "the area overlay")
        self.input.key("Escape")
        self.wait_for_no_overlay()

    def start_the_self_timer(self):
        self.open_menu()
        for _ in range(7):
            self.input.key("Down")
        self.input.key("Right")
        wait_for(lambda: len(self.program.menus()) == 2, "the three durations")
        self.input.key("Return")

    def next_press(self, window):
        """Where the window was pressed, on the screen."""

        def press():
            while window.display.pending_events():
                event = window.display.next_event()
                if event.type == X.ButtonPress:
                    return event.root_x, event.root_y
            return None

        return wait_for(press, "the click in the window beneath")

    def wait_for_a_digit(self, screen):
        """It is centred."""
        wait_for(lambda: (self.grab((760, 440, 80, 120)) != screen[440:560, 760:840]).any(), "a digit")

    def is_dim(self, screen, place):
        return sum(pixels.pixel(self.display, *place)) < sum(int(part) for part in screen[place[1], place[0]]) * 0.75

    def test_all_in_one_opens_at_the_pointer(self):
        self.start_program()
        screen = self.settled()
        self.choose_from_menu("All-In-One")
        wait_for(self.all_in_one_is_up, "the second menu")
        wait_for(lambda: windows.keyboard_is_grabbed(self.display), "the menu with the keyboard")
        self.choose("Capture Fullscreen", ALL_IN_ONE_ROWS)
        self.assert_shows(screen, (0, 0, 1600, 1000), self.program.wait_for_history(1))

    def all_in_one_is_up(self):
        """It has six rows, the main menu more than twice as many."""
        # Looked at once: between two looks the first menu may have gone.
        menus = self.program.menus()
        return len(menus) == 1 and menus[0].rectangle[3] < 300

    def test_what_is_not_built_yet_says_so_in_one_line(self):
        self.start_program()
        for row in ("Scrolling Capture", "Capture Text (OCR)", "Record Screen", "Capture History...", "Settings...",
                    "Check for Updates..."):
            with self.subTest(row=row):
                before = len(self.program.lines)
                self.choose_from_menu(row)
                wait_for(lambda: len(self.program.lines) > before or self.program.check_running(), "a line")
                wait_for(lambda: not self.program.menus(), "the menu closed")
                self.assertEqual(len(self.program.lines), before + 1, self.program.lines)

    def test_quit_ends_the_program(self):
        self.start_program()
        self.choose_from_menu("Quit Marrowfin")
        self.assertEqual(self.program.wait(), 0)


if __name__ == "__main__":
    main()
