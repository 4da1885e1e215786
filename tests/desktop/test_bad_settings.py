#!/usr/bin/python3
"""A settings file that isn't one: the program starts with the defaults, captures, and leaves the file as it is."""

import os
import random

from support import windows
from support.program import Program
from support.story import Story, main


class BadSettings(Story):
    desktop_options = {"size": (800, 600)}

    def start_with(self, data):
        self.program = Program(self.desktop)
        os.makedirs(os.path.dirname(self.program.settings_path), exist_ok=True)
        with open(self.program.settings_path, "wb") as file:
            file.write(data)
        self.program.start()

    def assert_defaults(self):
        """A card shows and no file is saved, as by default; the file is what it was."""
        self.input.hot_key(3)
        self.program.wait_for_history(1)
        windows.wait_for_one(self.program.cards, "one card")
        self.assertFalse(os.path.exists(self.program.pictures_folder))
        self.assertEqual(self.program.stop(), 0)

    def assert_kept(self, data):
        with open(self.program.settings_path, "rb") as file:
            self.assertEqual(file.read(), data)

    def check(self, data):
        self.start_with(data)
        self.assert_defaults()
        self.assert_kept(data)

    def test_empty(self):
        self.check(b"")

    def test_truncated(self):
        self.check(b'{"postCaptureAction": "Copy to Clipb')

    def test_another_kind_of_document(self):
        self.check(b'["postCaptureAction", "Copy to Clipboard"]')

    def test_values_of_other_types(self):
        self.check(b'{"postCaptureAction": 3, "saveFormat": [], "jpegQuality": "high", "panelAutoClose": {},'
                   b' "showCursor": "yes", "captureSystemAudio": 1, "historyRetentionDays": 1.5}')

    def test_names_that_mean_nothing(self):
        self.check(b'{"postCaptureAction": "Print", "saveFormat": "TIFF", "panelAutoClose": "2 seconds"}')

    def test_ten_megabytes_of_noise(self):
        self.check(random.Random(1).randbytes(10_000_000))

    def test_a_link_to_nowhere(self):
        self.program = Program(self.desktop)
        os.makedirs(os.path.dirname(self.program.settings_path), exist_ok=True)
        os.symlink("/nowhere/at/all", self.program.settings_path)
        self.program.start()
        self.assert_defaults()
        self.assertEqual(os.readlink(self.program.settings_path), "/nowhere/at/all")

    def test_a_folder(self):
        self.program = Program(self.desktop)
        os.makedirs(self.program.settings_path)
        self.program.start()
        self.assert_defaults()


if __name__ == "__main__":
    main()
