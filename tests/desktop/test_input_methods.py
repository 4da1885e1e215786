#!/usr/bin/python3
"""Text on the image through an input method: accents, ideographs by their strokes, and a script from right to left."""

import numpy

from support import pixels
from support.editing import EditorStory
from support.inputmethods import InputMethods
from support.story import main
from support.waiting import wait_for

ACCENTS, IDEOGRAPHS, HEBREW = "m17n:t:latn-post", "m17n:zh:cangjie", "m17n:he:kbd"
PLACE = (60, 120)


class InputMethod(EditorStory):
    def setUp(self):
        super().setUp()
        self.methods = InputMethods(self.desktop)

    def begin(self, engine):
        self.methods.use(engine)
        self.choose_tool("text")
        self.input.click(*self.place(PLACE))
        self.assistance.find("Text on the image", focused=True)

    def wait_for_text(self, text):
        """The input method answers when it gets to it."""
        self.assistance.find("Text on the image", text=text)

    def step(self, text):
        return {"kind": "text", "at": PLACE, "text": text}

    def assert_copies(self, text):
        self.steps.append(self.step(text))
        found = self.copied(lambda: self.press_control("Copy"))
        self.wait_for_status(len(self.steps))
        self.assert_same(self.expected(), found, "the copied picture")

    def wait_to_see(self, text, instead_of):
        """A pixel that only `text` has in its ink is in its colour."""
        wanted, other = (self.expected([*self.steps, self.step(each)]) for each in (text, instead_of))
        red = numpy.array((255, 59, 48))
        own = numpy.argwhere((wanted == red).all(axis=-1) & (other != red).any(axis=-1))
        y, x = (int(part) for part in own[0])
        wait_for(lambda: pixels.pixel(self.display, *self.place((x, y))) == tuple(red), f"{text!r} on the screen")

    def type_and_see(self, *steps):
        """At a person's pace: with keys typed ahead of its answers, one may overtake what the method commits."""
        seen = ""
        for key, text in steps:
            self.input.type(key)
            if key == " ":
                self.wait_for_text(text)
            else:
                self.wait_to_see(text, instead_of=seen)
            seen = text

    def test_accents(self):
        self.open_editor()
        self.begin(ACCENTS)
        self.type_and_see(("c", "c"), ("a", "ca"), ("f", "caf"), ("e", "cafe"), ("'", "café"), (" ", "café "),
                          ("n", "café n"), ("a", "café na"), ("i", "café nai"), ('"', "café naï"),
                          ("v", "café naïv"), ("e", "café naïve"), (" ", "café naïve "))
        self.assert_copies("café naïve ")

    def test_ideographs(self):
        self.open_editor()
        self.begin(IDEOGRAPHS)
        self.input.type("hqi ")
        self.wait_for_text("我")
        self.input.type("onf ")
        self.wait_for_text("我你")
        self.assert_copies("我你")

    def test_from_right_to_left_with_a_second_line(self):
        self.open_editor()
        self.begin(HEBREW)
        self.input.type("akuo\nakuo")
        self.wait_for_text("שלום\nשלום")
        self.assert_copies("שלום\nשלום")

    def test_what_is_still_being_composed_is_shown_in_its_place_and_copied(self):
        self.open_editor()
        self.begin(ACCENTS)
        self.type_and_see(("c", "c"), ("a", "ca"), ("f", "caf"), ("e", "cafe"), ("'", "café"))
        self.wait_for_text("caf")
        self.assert_copies("café")

    def test_the_next_text_begins_without_what_was_composed_before(self):
        self.open_editor()
        self.begin(ACCENTS)
        self.input.type("e")
        self.wait_to_see("e", instead_of="")
        self.press_control("Select")
        self.wait_for_status(1)
        self.steps.append(self.step("e"))
        self.input.key("Control_L", "z")
        self.wait_for_status(0)
        self.steps.clear()
        self.begin(ACCENTS)
        self.type_and_see(("'", "'"), ("x", "'x"), (" ", "'x "))
        self.assert_copies("'x ")


if __name__ == "__main__":
    main()
