#!/usr/bin/python3
"""Captures that wait for a slow disk, a disk that never answers, a kill in the middle of a file, a reader of our lines
that went away: what was captured is kept, and the program ends."""

import glob
import os
import shutil
import signal
import subprocess

from support import windows
from support.program import HOT_KEY_CODES, SUPER_SHIFT, Program
from support.slowdisk import SlowCapture
from support.story import COPY_ONLY, Story, main
from support.waiting import wait_for

DISK_LOG = os.environ.get("MARROWFIN_DISK_LOG", "")


class ASlowDisk(Story):
    desktop_options = {"size": (640, 900)}  # room for a column of three cards
    settings = {"postCaptureAction": "Save to File", "panelAutoClose": "Never"}

    def saves(self):
        return glob.glob(os.path.join(self.program.pictures_folder, "Marrowfin *.png"))

    def test_the_capture_reaches_clipboard_file_and_card_all_the_same(self):
        SlowCapture(self)
        self.clipboard.wait_for_copy()
        wait_for(lambda: self.saves() or self.program.check_running(), "the automatic save")
        windows.wait_for_one(self.program.cards, "one card")
        self.assertEqual(self.program.history(), [])

    def check_that_all_are_kept_at(self, number):
        capture = SlowCapture(self)
        # One after the other: a key released and pressed in one moment counts as held.
        for cards in (1, 2, 3):
            wait_for(lambda: len(self.program.cards()) == cards or self.program.check_running(), f"{cards} cards")
            if cards < 3:
                self.input.hot_key(3)
        self.input.hot_key(3)
        self.program.child.send_signal(number)
        wait_for(lambda: not windows.key_is_taken(self.display, HOT_KEY_CODES[3], SUPER_SHIFT), "the keys given back")
        capture.let_go()
        self.assertEqual(self.program.wait(), 0)
        self.assertGreaterEqual(len(self.program.history()), 3)
        self.assertEqual(len(self.program.everything_in_the_history()), len(self.program.history()))
        self.assertTrue(self.saves())

    def test_all_that_waited_is_kept_at_sigterm(self):
        self.check_that_all_are_kept_at(signal.SIGTERM)

    def test_all_that_waited_is_kept_at_sighup(self):
        self.check_that_all_are_kept_at(signal.SIGHUP)


class ADiskThatHangs(Story):
    desktop_options = {"size": (640, 480)}
    settings = COPY_ONLY

    def test_the_program_ends_at_sigterm(self):
        SlowCapture(self)
        self.assertEqual(self.program.stop(), 0)

    def test_the_program_ends_when_the_server_goes(self):
        SlowCapture(self)
        self.desktop.end_part("Xvfb")
        self.assertEqual(self.program.wait(), 1)

    def test_a_pictures_folder_that_hangs_keeps_no_card_back(self):
        self.settings = {"postCaptureAction": "Save to File"}
        SlowCapture(self, self.desktop.home("Pictures"))
        windows.wait_for_one(self.program.cards, "the card")
        self.program.wait_for_history(1)
        self.input.hot_key(3)
        wait_for(lambda: len(self.program.history()) == 2 or self.program.check_running(), "the next capture")
        wait_for(lambda: len(self.program.cards()) == 2 or self.program.check_running(), "its card")
        self.assertEqual(self.program.stop(), 0)


class AKill(Story):
    desktop_options = {"size": (640, 480)}
    settings = COPY_ONLY

    def test_in_the_middle_of_a_file_leaves_nothing(self):
        SlowCapture(self)
        self.assertEqual(self.program.stop(signal.SIGKILL), -signal.SIGKILL)
        self.assertEqual(self.program.everything_in_the_history(), [])

    def test_what_killed_runs_left_goes_at_the_next_start(self):
        dead = subprocess.run(["sh", "-c", "echo $$"], capture_output=True, check=True, text=True).stdout.strip()
        self.program = Program(self.desktop, settings=self.settings)
        left = [os.path.join(folder, f".marrowfin.{dead}.1") for folder in
                (self.program.history_folder, os.path.dirname(self.program.settings_path), self.program.pictures_folder)]
        for path in left:
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "w") as file:
                file.write("half")
        self.program.start()
        wait_for(lambda: not any(map(os.path.exists, left)) or self.program.check_running(), "the leftovers gone")


class ALostReader(Story):
    desktop_options = {"size": (640, 480)}
    settings = COPY_ONLY

    def test_the_program_goes_on_without_it(self):
        # A shell between them: its pipe's other end goes when the reader has read a line that never comes.
        pipe = os.path.join(self.desktop.folder, "lines")
        os.mkfifo(pipe)
        reader = os.open(pipe, os.O_RDONLY | os.O_NONBLOCK)
        self.start_program(command=["sh", "-c", f'exec "$0" "$@" >{pipe} 2>&1'])
        os.close(reader)
        self.input.hot_key(3)
        self.program.wait_for_history(1)
        shutil.rmtree(self.program.history_folder)
        self.clipboard.take()
        self.input.hot_key(3)
        self.clipboard.wait_for_copy()
        self.assertFalse(os.path.exists(self.program.history_folder), "the history's line was printed")
        self.assertEqual(self.program.stop(), 0)


class TheDisk(Story):
    desktop_options = {"size": (640, 480)}

    def operations(self, folder):
        """What was done to files below the folder, in order."""
        with open(self.log) as file:
            done = [line.rstrip("\n").split(" ", 1) for line in file]
        return [what for what, path in done if path.startswith(folder + os.sep)]

    def start_logged(self, settings):
        self.assertTrue(os.path.exists(DISK_LOG), "MARROWFIN_DISK_LOG names the library that keeps the log")
        self.log = os.path.join(self.desktop.folder, "disk.log")
        self.start_program(settings, environment={"LD_PRELOAD": DISK_LOG, "DISK_LOG": self.log})

    def test_captures_are_named_when_whole_and_kept_by_one_request_each_afterwards(self):
        self.start_logged({"postCaptureAction": "Save to File"})
        self.input.hot_key(3)
        self.program.wait_for_history(1)
        windows.wait_for_one(self.program.cards, "one card")
        self.assertEqual(self.program.stop(), 0)
        for folder in (self.program.history_folder, self.program.pictures_folder):
            self.assertEqual(self.operations(folder), ["named", "synced"], folder)

    def test_settings_are_kept_right_after_they_were_named(self):
        self.start_logged({"postCaptureAction": "Open Editor", "panelAutoClose": "Never"})
        self.input.hot_key(3)
        card = windows.wait_for_one(self.program.cards, "one card")
        self.settled()
        self.input.move(*windows.center(card.rectangle))  # the hint is counted
        folder = os.path.dirname(self.program.settings_path)
        wait_for(lambda: "synced" in self.operations(folder) or self.program.check_running(), "the count kept")
        self.assertEqual(self.operations(folder), ["named", "synced"])


if __name__ == "__main__":
    main()
