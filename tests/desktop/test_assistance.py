#!/usr/bin/python3
"""The editor through assistive technology: every control has its name and its state, and can be pressed without a
mouse."""

from support.editing import EditorStory
from support.story import main
from support.waiting import wait_for

TOOLS = ("Select", "Crop", "Rectangle", "Ellipse", "Arrow", "Line", "Pen", "Highlight", "Blur", "Text", "Number")
STYLE = ("Red", "Orange", "Yellow", "Green", "Blue", "Purple", "White", "Black", "Custom Color", "Thin — 2 pt",
         "Regular — 3 pt", "Thick — 5 pt", "Heavy — 8 pt")
ACTIONS = ("Undo", "Redo", "Pin", "Copy", "Save…")
ASPECTS = ("Free", "Original", "1:1", "16:9", "4:3", "3:2")


class Assistance(EditorStory):
    def showing(self, *roles):
        return {one["name"]: one for one in self.assistance.objects() if one["showing"] and one["role"] in roles}

    def names(self, *roles):
        return set(self.showing(*roles))

    def checked(self):
        return {name for name, one in self.showing("check box").items() if one["checked"]}

    def test_every_control_is_there_by_its_name_and_with_its_state(self):
        self.open_editor()
        self.assertEqual(self.names("check box"), {*TOOLS, *STYLE})
        self.assertEqual(self.names("push button"), set(ACTIONS))
        self.assertEqual(self.checked(), {"Arrow", "Red", "Regular — 3 pt"})
        buttons = self.showing("push button")
        self.assertEqual([name for name in ACTIONS if not buttons[name]["enabled"]], ["Undo", "Redo"])
        self.assertEqual(self.showing("label").keys(), {"700 × 470 px"})
        self.assertIn("Canvas", self.names("filler"))

    def test_what_is_hidden_is_not_offered_and_the_crop_bar_comes_with_its_tool(self):
        self.open_editor()
        self.assistance.press("Crop")
        wait_for(lambda: self.names("check box") == {*TOOLS, *ASPECTS}, "the crop bar and no style bar")
        wait_for(lambda: self.names("push button") == {*ACTIONS, "Cancel", "Apply"}, "its two buttons")
        self.assertEqual(self.checked(), {"Crop", "Free"})
        self.assistance.find("Apply", enabled=False)
        self.assistance.find("Drag to crop")

    def test_controls_are_pressed_without_a_mouse(self):
        self.open_editor()
        self.assistance.press("Ellipse")
        self.assistance.press("Green")
        self.assistance.press("Thick — 5 pt")
        wait_for(lambda: self.checked() == {"Ellipse", "Green", "Thick — 5 pt"}, "tool and style chosen")
        self.input.drag(self.place((100, 80)), self.place((400, 300)))
        self.record("ellipse", **{"from": (100, 80), "to": (400, 300)}, color="#28cd41", width=5)
        found = self.copied(lambda: self.assistance.press("Copy"))
        self.assert_same(self.expected(), found, "the copied picture")
        self.assistance.press("Undo")
        self.wait_for_status(0)
        self.assistance.find("Redo", enabled=True)

    def test_a_control_that_is_pressed_this_way_leaves_the_keys_with_the_canvas(self):
        self.open_editor()
        self.assistance.press("Line")
        self.assistance.find("Line", checked=True)
        self.input.key("r")
        self.assistance.find("Rectangle", checked=True)

    def test_the_focus_stands_in_the_text_that_is_being_typed(self):
        self.open_editor()
        self.write((60, 120), "words")
        self.assistance.find("Text on the image", focused=True)
        self.input.key("Escape")
        self.assistance.find("Canvas", focused=True)


if __name__ == "__main__":
    main()
