#!/usr/bin/python3
"""The icon's place in trays that forget it or don't want it."""

from support import windows
from support.playedtray import SIDE, PlayedTray
from support.story import COPY_ONLY, Story, main
from support.waiting import wait_for


class PlayedTrays(Story):
    desktop_options = {"tray": False}
    settings = COPY_ONLY

    def play_tray(self, **options):
        if not self.program:
            self.start_program()
        tray = PlayedTray(self.desktop, **options)
        self.addCleanup(tray.close)
        return tray


class ATrayThatLosesRequests(PlayedTrays):

    def test_is_asked_again_and_the_icon_works_there(self):
        tray = self.play_tray()
        tray.wait_for_request(1, self.program)
        icon = tray.wait_for_request(2, self.program)
        tray.dock(icon)
        wait_for(lambda: (self.grab((0, 0, SIDE, SIDE)) > 200).any() or self.program.check_running(), "the drawn icon")
        self.assertEqual(windows.wait_for_one(lambda: windows.tray_icons(self.display), "the icon").window.id, icon)
        screen = self.settled()
        self.choose_from_menu("Capture Fullscreen")
        expected, soft = self.expected_area(screen, (0, 0, 1600, 1000))
        self.assert_same(expected, self.program.wait_for_history(1), "a capture from that icon's menu", soft)

    def test_is_left_alone_after_a_while(self):
        tray = self.play_tray()
        line = self.program.wait_for_line("The status area doesn't take the icon", stream="err")
        self.assertEqual(line, "[Marrowfin] The status area doesn't take the icon")
        # The first, and three more.
        self.assertEqual(len(tray.read()), 4)
        self.assertEqual(self.program.surfaces(), [], "no icon strays over the desktop")


class TraysOfManyKinds(PlayedTrays):
    def test_one_that_restarts_twice_in_a_moment(self):
        self.start_program()
        first = PlayedTray(self.desktop)
        first.wait_for_request(1, self.program)
        first.close()
        PlayedTray(self.desktop).close()
        last = self.play_tray()
        last.dock(last.wait_for_request(1, self.program))
        wait_for(lambda: (self.grab((0, 0, SIDE, SIDE)) > 200).any() or self.program.check_running(), "the drawn icon")
        windows.wait_for_one(lambda: windows.tray_icons(self.display), "the icon")

    def test_one_that_wants_icons_with_alpha(self):
        visual = next(visual.visual_id for depth in self.display.screen().allowed_depths if depth.depth == 32
                      for visual in depth.visuals)
        tray = self.play_tray(visual=visual)
        tray.dock(tray.wait_for_request(1, self.program))
        wait_for(lambda: (self.grab((0, 0, SIDE, SIDE)) > 200).any() or self.program.check_running(), "the drawn icon")
        icon = windows.wait_for_one(lambda: windows.tray_icons(self.display), "the icon")
        self.assertEqual(icon.window.get_geometry().depth, 32)

    def test_one_that_goes_with_all_its_windows(self):
        first = self.play_tray()
        first.dock(first.wait_for_request(1, self.program))
        windows.wait_for_one(lambda: windows.tray_icons(self.display), "the icon")
        first.window.destroy()
        first.display.sync()
        last = self.play_tray()
        last.dock(last.wait_for_request(1, self.program))
        wait_for(lambda: (self.grab((0, 0, SIDE, SIDE)) > 200).any() or self.program.check_running(), "the drawn icon")


if __name__ == "__main__":
    main()
