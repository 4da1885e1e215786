#!/usr/bin/python3
"""Where a capture goes by the setting "postCaptureAction": clipboard, card, file. The history always has it."""

import datetime
import glob
import os
import re

from PIL import Image

from support import pixels, windows
from support.story import Story, main
from support.waiting import wait_for


class AfterACapture(Story):
    desktop_options = {"size": (640, 480)}

    def capture(self, settings):
        self.start_program(settings)
        screen = self.settled()
        self.clipboard.take()
        self.input.hot_key(3)
        saved = self.wait_for_capture()
        expected, soft = self.expected_area(screen, (0, 0, 640, 480))
        self.assert_same(expected, saved, "the history", soft)
        self.assert_same(expected, self.clipboard.image(), "the clipboard", soft)
        return saved

    def files(self):
        return sorted(glob.glob(os.path.join(self.program.pictures_folder, "*")))

    def wait_for_file(self):
        return wait_for(self.files, "a file in the pictures folder")[0]

    def test_copy_to_clipboard_makes_no_card_and_no_file(self):
        self.capture({"postCaptureAction": "Copy to Clipboard"})
        # The next capture is routed after this one: what this one did, it has done by then.
        self.clipboard.take()
        self.input.hot_key(3)
        self.clipboard.wait_for_copy()
        self.assertEqual(self.program.cards(), [])
        self.assertFalse(os.path.exists(self.program.pictures_folder))

    def test_open_editor_puts_up_a_card_and_writes_no_file(self):
        self.capture({"postCaptureAction": "Open Editor"})
        windows.wait_for_one(self.program.cards, "one card")
        self.assertFalse(os.path.exists(self.program.pictures_folder))

    def test_save_to_file_writes_a_png_named_by_the_time_in_gmt(self):
        before = datetime.datetime.now(datetime.timezone.utc)
        saved = self.capture({"postCaptureAction": "Save to File"})
        path = self.wait_for_file()
        windows.wait_for_one(self.program.cards, "one card")
        after = datetime.datetime.now(datetime.timezone.utc)
        match = re.fullmatch(r"Marrowfin (\d{4}-\d\d-\d\dT\d\d\.\d\d\.\d\d)\.png", os.path.basename(path))
        self.assertTrue(match, path)
        self.assertLessEqual(before.strftime("%Y-%m-%dT%H.%M.%S"), match[1])
        self.assertGreaterEqual(after.strftime("%Y-%m-%dT%H.%M.%S"), match[1])
        self.assert_same(saved, pixels.read(path), "the saved file")

    def test_the_stamp_is_gmt_in_any_time_zone(self):
        self.desktop.environment["TZ"] = "Pacific/Kiritimati"
        self.test_save_to_file_writes_a_png_named_by_the_time_in_gmt()

    def test_jpeg_has_its_extension_and_its_quality(self):
        self.capture({"postCaptureAction": "Save to File", "saveFormat": "JPEG", "jpegQuality": 0.85})
        path = self.wait_for_file()
        self.assertTrue(path.endswith(".jpg"), path)
        mine = os.path.join(self.desktop.folder, "mine.jpg")
        with Image.open(path) as image:
            self.assertEqual(image.format, "JPEG")
            image.save(mine, quality=85)
            with Image.open(mine) as reference:
                self.assertEqual(image.quantization, reference.quantization)

    def test_of_two_saves_in_one_second_the_later_replaces_the_earlier(self):
        self.start_program({"postCaptureAction": "Save to File", "panelAutoClose": "Never"})
        count = 0
        # Until the clock lets two fall into one second.
        while count == len(self.files()):
            count += 1
            self.assertLess(count, 100, "no two captures within one second")
            self.input.move(20 + count * 3, 100)
            self.clipboard.take()
            self.input.hot_key(3)
            newest = self.program.wait_for_history(count)
            self.clipboard.wait_for_copy()
            wait_for(lambda: any((pixels.read(path) == newest).all() for path in self.files()), "the newest saved")
        self.assert_same(newest, pixels.read(self.files()[-1]), "the later capture under the shared name")

    def test_files_and_folders_are_the_users_alone(self):
        self.capture({"postCaptureAction": "Save to File"})
        history = self.program.history()[0]
        self.assertEqual(os.stat(history).st_mode & 0o777, 0o600)
        self.assertEqual(os.stat(os.path.dirname(history)).st_mode & 0o777, 0o700)

    def test_settings_are_left_as_they_are(self):
        self.capture({"postCaptureAction": "Copy to Clipboard", "unknown": [1, 2]})
        with open(self.program.settings_path) as file:
            self.assertEqual(file.read(), '{"postCaptureAction": "Copy to Clipboard", "unknown": [1, 2]}')


if __name__ == "__main__":
    main()
