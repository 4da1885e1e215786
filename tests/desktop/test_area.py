#!/usr/bin/python3
"""Super+Shift+4 and a drag: the dragged rectangle, no dim, and the ways not to take it."""

from support import windows
from support.story import COPY_ONLY, Story, main
from support.waiting import wait_for


class AreaStory(Story):
    settings = COPY_ONLY

    def capture(self, start, end, count=1):
        """Drags from start to end; checks the image against the screen."""
        screen = self.settled()
        self.clipboard.take()
        self.bring_up_area_overlay()
        self.input.drag(start, end)
        image = self.wait_for_capture(count)
        self.wait_for_no_overlay()
        rectangle = (min(start[0], end[0]), min(start[1], end[1]), abs(end[0] - start[0]), abs(end[1] - start[1]))
        expected, soft = self.expected_area(screen, rectangle)
        self.assert_same(expected, image, f"a drag from {start} to {end}", soft)
        self.assert_same(image, self.clipboard.image(), "the clipboard")
        return image

    def assert_cancelled(self):
        self.wait_for_no_overlay()
        # What a cancelled selection leaves undone shows by what comes next: a full capture is the first file.
        self.assertFalse(self.clipboard.taken_over())
        self.input.hot_key(3)
        self.program.wait_for_history(1)


class Area(AreaStory):
    def test_a_drag_in_any_direction(self):
        self.sample("Alpha", (150, 120), (500, 400))
        self.start_program()
        left, top, right, bottom = 200, 200, 613, 431
        corners = [((left, top), (right, bottom)), ((right, bottom), (left, top)),
                   ((left, bottom), (right, top)), ((right, top), (left, bottom))]
        for count, (start, end) in enumerate(corners, 1):
            with self.subTest(start=start):
                self.assertEqual(self.capture(start, end, count).shape, (231, 413, 3))

    def test_six_points_are_a_selection(self):
        self.start_program()
        self.assertEqual(self.capture((300, 300), (306, 306)).shape, (6, 6, 3))

    def test_five_points_are_a_cancel(self):
        self.start_program()
        self.clipboard.take()
        self.bring_up_area_overlay()
        self.input.drag((300, 300), (305, 305))
        self.assert_cancelled()

    def test_a_click_is_a_cancel(self):
        self.start_program()
        self.clipboard.take()
        self.bring_up_area_overlay()
        self.input.click(300, 300)
        self.assert_cancelled()

    def test_escape_before_a_drag(self):
        window = self.sample("Alpha", (150, 120), (500, 400))
        self.start_program()
        self.clipboard.take()
        self.bring_up_area_overlay()
        self.input.key("Escape")
        self.wait_for_no_overlay()
        self.assertEqual(windows.active(self.display), window.window.id, "the user's window keeps the focus")
        wait_for(lambda: not windows.keyboard_is_grabbed(self.display), "the keyboard given back")
        self.assert_cancelled()

    def test_escape_during_a_drag(self):
        self.start_program()
        self.clipboard.take()
        self.bring_up_area_overlay()
        self.input.move(300, 300)
        self.input.press()
        self.input.move(500, 450)
        self.input.key("Escape")
        self.wait_for_no_overlay()
        self.input.release()
        self.assert_cancelled()

    def test_the_top_left_and_the_bottom_right_of_the_screen(self):
        self.start_program()
        self.capture((0, 0), (120, 90))
        self.capture((1400, 800), (1599, 999), 2)


class OverAnOverlay(AreaStory):
    """What comes while a selection is up leaves it its keys."""

    def overlay_gone(self, left):
        wait_for(lambda: len(self.program.overlays()) == left or self.program.check_running(),
                 f"{left} overlays left")

    def test_hot_keys_work_and_escape_ends_one_overlay_after_the_other(self):
        self.start_program()
        self.bring_up_area_overlay()
        self.input.hot_key(3)
        self.program.wait_for_history(1)
        self.input.hot_key(4)
        wait_for(lambda: len(self.program.overlays()) == 2 or self.program.check_running(), "a second overlay")
        self.input.key("Escape")
        self.overlay_gone(1)
        self.input.key("Escape")
        self.overlay_gone(0)
        wait_for(lambda: not windows.keyboard_is_grabbed(self.display), "the keyboard given back")


class UnderAMenu(AreaStory):
    desktop_options = {"monitors": 2}

    def test_escape_still_ends_the_selection_after_the_menu_on_another_monitor(self):
        self.sample("Alpha", (900, 200), (400, 300))
        self.start_program()
        self.bring_up_area_overlay()
        self.open_menu()
        self.input.key("Escape")
        wait_for(lambda: not self.program.menus(), "the menu closed")
        wait_for(lambda: windows.keyboard_is_grabbed(self.display), "the overlay with the keyboard again")
        self.input.key("Escape")
        self.wait_for_no_overlay()


class AreaOnTheSecondMonitor(AreaStory):
    desktop_options = {"monitors": 2}

    def test_the_overlay_covers_the_screen_of_the_active_window(self):
        self.sample("Alpha", (900, 200), (400, 300))
        self.start_program()
        overlay = self.bring_up_area_overlay()
        self.assertEqual(overlay.rectangle, (800, 0, 800, 1000))
        self.input.key("Escape")
        self.wait_for_no_overlay()

    def test_what_is_dragged_there_is_captured(self):
        self.sample("Alpha", (900, 200), (400, 300))
        self.start_program()
        self.assertEqual(self.capture((950, 250), (1250, 475)).shape, (225, 300, 3))


class AreaAt2x(AreaStory):
    desktop_options = {"scale": 2}

    def test_400_by_300_points_are_800_by_600_pixels(self):
        self.start_program()
        self.assertEqual(self.capture((200, 100), (1000, 700)).shape, (600, 800, 3))

    def test_five_and_a_half_points_are_a_selection(self):
        self.start_program()
        self.assertEqual(self.capture((300, 300), (311, 311)).shape, (11, 11, 3))

    def test_five_points_are_a_cancel(self):
        self.start_program()
        self.clipboard.take()
        self.bring_up_area_overlay()
        self.input.drag((300, 300), (310, 310))
        self.assert_cancelled()


if __name__ == "__main__":
    main()
