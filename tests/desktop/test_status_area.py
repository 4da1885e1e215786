#!/usr/bin/python3
"""The icon's place in trays that forget it or don't want it."""

from support import windows
from support.playedtray import SIDE, PlayedTray
from support.story import COPY_ONLY, Story, main
from support.waiting import wait_for


class ATrayThatLosesRequests(Story):
    desktop_options = {"tray": False}
    settings = COPY_ONLY

    def play_tray(self):
        self.start_program()
        tray = PlayedTray(self.desktop)
        self.addCleanup(tray.close)
        return tray

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
        # The toolkit's own, and three of ours.
        self.assertEqual(len(tray.read()), 4)
        self.assertEqual(self.program.surfaces(), [], "no icon strays over the desktop")


if __name__ == "__main__":
    main()
