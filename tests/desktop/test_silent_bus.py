#!/usr/bin/python3
"""A session bus that takes connections and never answers, or answers late."""

import subprocess

from support import owned
from support.program import Program
from support.silentbus import SilentBus
from support.story import COPY_ONLY, Story, main
from support.waiting import wait_for


class ASilentBus(Story):
    settings = COPY_ONLY

    def start_on_silent_bus(self):
        bus = SilentBus(self.desktop)
        self.addCleanup(bus.close)
        self.program = Program(self.desktop, settings=self.settings,
                               environment={"DBUS_SESSION_BUS_ADDRESS": bus.address})
        self.program.start()
        self.assertTrue(bus.spoken_to.is_set(), "the bus was asked")
        return bus

    def names_on_the_bus(self):
        answer = subprocess.run([owned.require("dbus-send"), "--session", "--print-reply",
                                 "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
                                 "org.freedesktop.DBus.ListNames"], env=self.desktop.environment,
                                capture_output=True, text=True, timeout=60)
        return answer.stdout

    def test_the_program_works_without_it(self):
        self.start_on_silent_bus()
        screen = self.settled()
        self.choose_from_menu("Capture Fullscreen")
        expected, soft = self.expected_area(screen, (0, 0, 1600, 1000))
        self.assert_same(expected, self.program.wait_for_history(1), "a capture from the menu", soft)
        self.assertEqual(self.program.stop(), 0)

    def test_it_is_used_once_it_answers(self):
        bus = self.start_on_silent_bus()
        self.assertNotIn("io.tessaly.marrowfin", self.names_on_the_bus())
        bus.speak()
        self.program.wait_for_line("session bus answers", stream="err")
        wait_for(lambda: "io.tessaly.marrowfin" in self.names_on_the_bus() or self.program.check_running(),
                 "the program's name on the bus")


if __name__ == "__main__":
    main()
