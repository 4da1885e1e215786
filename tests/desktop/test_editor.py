#!/usr/bin/python3
"""The editor: a press on the card opens it with the keyboard; what is drawn, typed and cropped by hand is what other
programs paste and what is saved, to the pixel."""

import os
import subprocess

from Xlib import X

from support import owned, pixels, windows
from support.editing import EditorStory
from support.story import main
from support.waiting import wait_for

CORNERS = ((40, 60), (220, 160))


class EditorWindow(EditorStory):
    def test_a_press_on_the_card_opens_it_in_front_with_the_keyboard(self):
        other = self.sample("Other", (300, 100), (900, 700))
        self.open_editor((320, 150, 700, 470))
        self.assertEqual(self.title(self.editor.window), "Marrowfin Editor")
        self.assertEqual(self.editor.size, (700 + 96, 470 + 128))
        self.assertIn("_NET_WM_WINDOW_TYPE_NORMAL", self.window_types(self.editor.window))
        self.assertTrue(all(windows.frame_extents(self.display, self.editor.window)[2:3]), "no title bar")
        self.assertTrue(windows.cardinals(self.display, self.editor.window, "_NET_WM_ICON"), "no icon")
        wait_for(lambda: not self.program.cards(), "the card gone")
        # Keys arrive in it and not in the window that had them.
        other.window.change_attributes(event_mask=X.KeyPressMask)
        other.display.sync()
        self.input.key("e")
        self.assistance.find("Ellipse", checked=True)
        other.display.sync()
        events = [other.display.next_event() for _ in range(other.display.pending_events())]
        self.assertNotIn(X.KeyPress, [event.type for event in events])
        # It covers the other window wherever they meet, and shows the capture as it is.
        self.input.move(5, 5)
        # (Beside its edges, where the plates throw their shadows.)
        inner = (*self.place((60, 60)), 580, 350)
        wait_for(lambda: not pixels.difference(self.base[60:-60, 60:-60], self.grab(inner)), "the capture")

    def test_its_least_size_is_the_window_managers_business_too(self):
        self.open_editor((320, 150, 300, 200))
        self.assertEqual(self.editor.size, (760, 520))
        hints = self.editor.window.get_wm_normal_hints()
        self.assertEqual((hints.min_width, hints.min_height), (760, 520))
        for asked, given in (((300, 200), (760, 520)), ((1400, 920), (1400, 920)), ((500, 900), (760, 900))):
            with self.subTest(asked=asked):
                # Source and flags of a pager that sets width and height.
                self.ask_root(self.editor.window, "_NET_MOVERESIZE_WINDOW", [0x2C00, 0, 0, *asked])
                wait_for(lambda: windows.rectangle_of(self.editor.window)[2:] == given, f"the size {given}")

    def test_it_stands_in_the_middle_of_the_free_screen(self):
        self.open_editor((320, 150, 700, 470))
        x, y, width, height = windows.rectangle_of(self.editor.window)
        left, right, top, bottom = windows.frame_extents(self.display, self.editor.window)
        self.assertAlmostEqual(x + width / 2, 800, delta=1 + left)
        # The tray's panel takes 30 pixels at the bottom.
        self.assertAlmostEqual(y + height / 2, 970 / 2, delta=1 + top)

    def test_closing_it_with_unsaved_ink_asks_nothing(self):
        self.open_editor()
        self.draw("rectangle", *CORNERS)
        self.close_window(self.editor.window)
        wait_for(lambda: not self.program.dialogs(), "no window left")
        self.assertFalse(self.program.check_running())
        self.clipboard.take()
        self.input.hot_key(3)
        self.program.wait_for_history(2)

    def test_an_image_from_the_clipboard_opens_in_it(self):
        self.open_editor((320, 150, 300, 200))
        self.close_window(self.editor.window)
        wait_for(lambda: not self.program.dialogs(), "no window left")
        picture = pixels.save(self.base[:150], os.path.join(self.desktop.folder, "copied.png"))
        # It goes into the background once it owns the clipboard.
        subprocess.run([owned.require("xclip"), "-selection", "clipboard", "-t", "image/png", "-i", picture],
                       env=self.desktop.environment, timeout=30, stdout=subprocess.DEVNULL, check=True)
        self.choose_from_menu("Open from Clipboard")
        self.wait_for_editor()
        self.wait_for_status(0, "300 × 150")


class WhereOnlyPressesFocus(EditorStory):
    desktop_options = {"focus_new": False, "press_focuses": True}

    def test_the_editor_asks_for_the_keyboard_and_gets_it(self):
        self.open_editor()  # which waits for it to be the active window
        self.input.key("e")
        self.assistance.find("Ellipse", checked=True)


class Drawing(EditorStory):
    def test_one_of_each_kind_is_copied_as_it_was_drawn(self):
        self.sample("Page", (330, 200), (500, 350))
        self.open_editor((320, 150, 700, 470))
        self.draw("rectangle", (40, 60), (180, 140))
        self.draw("ellipse", (220, 60), (330, 150))
        self.draw("arrow", (360, 140), (480, 70))
        self.draw("line", (520, 60), (660, 150))
        self.draw_with_pen([(40, 200), (80, 240), (140, 190), (200, 250)])
        self.draw("highlight", (240, 190), (420, 260))
        self.draw("blur", (450, 180), (650, 290))
        self.put_number((60, 330))
        self.put_number((110, 330))
        self.write((200, 340), "First line\nand a second")
        self.press_control("Select")  # a press on the chrome ends the edit
        self.wait_for_status(10)
        found = self.copied(lambda: self.press_control("Copy"))
        self.assert_same(self.expected(), found, "the copied picture")
        self.program.wait_for_line("^Copied to clipboard$")

    def test_swatch_and_width_are_those_of_the_next_record(self):
        self.open_editor()
        self.draw("rectangle", (40, 60), (180, 140))
        self.press_control("Blue")
        self.press_control("Heavy — 8 pt")
        self.draw("line", (220, 60), (400, 200), color="#007aff", width=8)
        found = self.copied(lambda: self.press_control("Copy"))
        self.assert_same(self.expected(), found, "the copied picture")

    def test_a_crop_at_16_to_9_with_undo_and_redo(self):
        self.open_editor()
        self.draw("rectangle", (140, 100), (300, 220))
        self.press_control("Crop", role="check box")
        self.press_control("16:9")
        self.input.drag(self.place((100, 80)), self.place((580, 330)))
        self.assistance.find("480 × 270 px", role="label")  # in the crop bar
        self.press_control("Apply")
        self.wait_for_status(1, "480 × 270")
        self.press_control("Undo")
        self.wait_for_status(1)
        self.assert_same(self.expected(), self.copied(lambda: self.press_control("Copy")), "after undo")
        self.input.key("Control_L", "Shift_L", "z")
        self.wait_for_status(1, "480 × 270")
        self.steps.append({"kind": "crop", "rect": [100, 80, 480, 270]})
        self.assert_same(self.expected(), self.copied(lambda: self.press_control("Copy")), "after redo")

    def test_copy_in_the_middle_of_typing_takes_the_text_along(self):
        self.open_editor()
        self.write((60, 120), "still being typed")
        found = self.copied(lambda: self.press_control("Copy"))
        self.assert_same(self.expected(), found, "the copied picture")
        self.wait_for_status(1)
        # The keys are the canvas's again.
        self.input.key("e")
        self.assistance.find("Ellipse", checked=True)

    def test_escape_keeps_what_was_typed_and_typing_is_one_step(self):
        self.open_editor()
        self.write((60, 120), "one")
        self.input.key("Escape")
        self.wait_for_status(1)
        self.input.key("Control_L", "z")
        self.wait_for_status(0)
        self.steps.clear()
        self.assert_same(self.expected(), self.copied(lambda: self.press_control("Copy")), "after undo")


class Saving(EditorStory):
    def open_save_dialog(self):
        self.input.key("Control_L", "s")
        dialog = wait_for(lambda: [seen for seen in self.program.dialogs() if seen.name == "Save"], "the dialog")[0]
        wait_for(lambda: windows.active(self.display) == dialog.window.id, "the dialog with the keyboard")
        return dialog

    def test_the_dialog_is_answered_by_keys_and_a_png_lies_there(self):
        self.open_editor()
        self.draw("arrow", (80, 80), (300, 200))
        self.write((60, 300), "saved while typing")
        self.open_save_dialog()
        path = os.path.join(self.desktop.home("Pictures"), "mine.png")
        self.input.key("Control_L", "a")
        self.input.type("mine.png\n")
        self.program.wait_for_line(f"^Saved to {path}$")
        self.assert_same(self.expected(), pixels.read(path), "the saved file")
        with open(path, "rb") as file:
            self.assertEqual(file.read(8), b"\x89PNG\r\n\x1a\n")

    def test_a_cancelled_dialog_writes_nothing_and_leaves_the_editor_as_it_was(self):
        self.open_editor()
        self.draw("arrow", (80, 80), (300, 200))
        self.open_save_dialog()
        self.input.key("Escape")
        wait_for(lambda: self.program.dialogs() == self.editors(), "the dialog gone")
        self.wait_for_status(1)
        self.assertEqual(os.listdir(self.desktop.home("Pictures")), [])
        self.assertEqual([line for line in self.program.lines if "Saved" in line], [])


class EditorAt2x(EditorStory):
    desktop_options = {"scale": 2}

    def test_what_is_drawn_lands_on_the_native_pixels(self):
        self.open_editor((320, 150, 600, 400))
        # One size unit a pixel: the capture opens at twice its points, in points of the window.
        self.assertEqual(self.editor.size, (2 * 760, 2 * 528))
        self.draw("rectangle", (40, 60), (180, 140))
        self.draw("arrow", (220, 60), (400, 200))
        self.put_number((100, 300))
        found = self.copied(lambda: self.press_control("Copy"))
        self.assert_same(self.expected(), found, "the copied picture")


if __name__ == "__main__":
    main()
