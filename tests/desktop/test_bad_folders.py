#!/usr/bin/python3
"""Folders that can't be written: what the user is told, what still works, and that no half-written file is left."""

import os
import shutil

from support import pixels, windows
from support.story import Story, main
from support.waiting import wait_for

FULL_DISK = os.environ.get("MARROWFIN_FULL_DISK", "")
# A user's own permissions don't bind root unless root gives up the right to override them.
WITHOUT_OVERRIDE = ["setpriv", "--inh-caps=-dac_override,-dac_read_search",
                    "--bounding-set=-dac_override,-dac_read_search"]


def write(path, data):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(data)


def everything_below(folder):
    return sorted(os.path.join(place, name) for place, _, names in os.walk(folder) for name in names)


class ABadHistory(Story):
    desktop_options = {"size": (800, 600)}
    settings = {"postCaptureAction": "Open Editor"}

    def history_path(self):
        return self.desktop.home(".local/share/Marrowfin/History")

    def assert_the_rest_works(self):
        """The line is printed, and the capture goes its way all the same: clipboard, then card."""
        screen = self.settled()
        self.clipboard.take()
        self.input.hot_key(3)
        line = self.program.wait_for_line("history")
        self.assertTrue(line.startswith("Failed to save history: "), line)
        self.assertGreater(len(line), len("Failed to save history: "))
        self.clipboard.wait_for_copy()
        expected, soft = self.expected_area(screen, (0, 0, 800, 600))
        self.assert_same(expected, self.clipboard.image(), "the clipboard", soft)
        windows.wait_for_one(self.program.cards, "one card")
        self.assertEqual(self.program.stop(), 0)
        self.assertEqual(len(self.program.lines), 1, self.program.lines)

    def test_it_is_a_file(self):
        write(self.history_path(), b"mine")
        self.start_program()
        self.assert_the_rest_works()
        with open(self.history_path(), "rb") as file:
            self.assertEqual(file.read(), b"mine")

    def test_its_parent_is_a_file(self):
        write(self.desktop.home(".local/share/Marrowfin"), b"mine")
        self.start_program()
        self.assert_the_rest_works()

    def test_it_is_read_only(self):
        os.makedirs(self.history_path())
        os.chmod(self.history_path(), 0o500)
        self.start_program(command=WITHOUT_OVERRIDE if os.geteuid() == 0 else [])
        self.assert_the_rest_works()
        self.assertEqual(os.listdir(self.history_path()), [])

    def test_the_disk_is_full(self):
        self.start_program(environment=self.full_below(self.history_path()))
        self.assert_the_rest_works()
        self.assertEqual(os.listdir(self.history_path()), [])

    def test_the_disk_fills_up_in_the_middle_of_a_file(self):
        self.start_program(environment=self.full_below(self.history_path(), after=5000))
        self.assert_the_rest_works()
        self.assertEqual(os.listdir(self.history_path()), [])

    def test_it_vanished_while_the_program_runs(self):
        self.start_program({"postCaptureAction": "Copy to Clipboard"})
        self.input.hot_key(3)
        self.program.wait_for_history(1)
        shutil.rmtree(self.history_path())
        self.clipboard.take()
        self.input.hot_key(3)
        self.program.wait_for_line("^Failed to save history: .")
        self.clipboard.wait_for_copy()
        self.assertFalse(os.path.exists(self.history_path()))

    def full_below(self, folder, after=0):
        self.assertTrue(os.path.exists(FULL_DISK), "MARROWFIN_FULL_DISK names the library that refuses writes")
        return {"LD_PRELOAD": FULL_DISK, "FULL_FOLDER": folder, "FULL_AFTER": str(after)}


class ABadPicturesFolder(Story):
    desktop_options = {"size": (800, 600)}
    settings = {"postCaptureAction": "Save to File"}

    def assert_the_rest_works(self):
        screen = self.settled()
        self.clipboard.take()
        self.input.hot_key(3)
        expected, soft = self.expected_area(screen, (0, 0, 800, 600))
        self.assert_same(expected, self.program.wait_for_history(1), "the history", soft)
        self.clipboard.wait_for_copy()
        self.assert_same(expected, self.clipboard.image(), "the clipboard", soft)
        windows.wait_for_one(self.program.cards, "one card")
        self.assertEqual(self.program.stop(), 0)
        self.assertEqual(self.program.lines, [])

    def test_it_cannot_be_made(self):
        os.rmdir(self.desktop.home("Pictures"))
        write(self.desktop.home("Pictures"), b"mine")
        self.start_program()
        self.assert_the_rest_works()
        with open(self.desktop.home("Pictures"), "rb") as file:
            self.assertEqual(file.read(), b"mine")

    def test_it_is_read_only(self):
        folder = self.desktop.home("Pictures", "Marrowfin")
        os.makedirs(folder)
        os.chmod(folder, 0o500)
        self.start_program(command=WITHOUT_OVERRIDE if os.geteuid() == 0 else [])
        self.assert_the_rest_works()
        self.assertEqual(os.listdir(folder), [])

    def test_the_disk_is_full(self):
        folder = self.desktop.home("Pictures")
        self.start_program(environment=ABadHistory.full_below(self, folder))
        self.assert_the_rest_works()
        self.assertEqual(everything_below(folder), [])

    def test_the_user_has_none(self):
        write(self.desktop.home(".config/user-dirs.dirs"), b"XDG_PICTURES_DIR=\"$HOME/\"\n")
        self.start_program()
        screen = self.settled()
        self.input.hot_key(3)
        expected, soft = self.expected_area(screen, (0, 0, 800, 600))
        self.assert_same(expected, self.program.wait_for_history(1), "the history", soft)
        windows.wait_for_one(self.program.cards, "one card")


if __name__ == "__main__":
    main()
