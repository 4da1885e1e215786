"""An open editor, from outside: its window, the places of its controls by their names, and the picture that its records
should make."""

import json
import os
import subprocess

from Xlib import X, Xatom
from Xlib.protocol import event

from support import pixels, windows
from support.accessibility import Accessibility
from support.program import ROOT
from support.story import Story
from support.waiting import wait_for

COMPOSITE = os.environ.get("MARROWFIN_COMPOSITE",
                           os.path.join(ROOT, "build/release/tests/desktop/editor/programs/editor_composite"))
# What the chrome takes of the window, in points: at the left, the top, and in all.
LEFT, TOP = 76, 56
WIDTH, HEIGHT = 96, 128
KEYS = {"select": "v", "crop": "c", "rectangle": "r", "ellipse": "e", "arrow": "a", "line": "l", "pen": "p",
        "highlight": "h", "blur": "b", "text": "t", "number": "n"}


class EditorStory(Story):
    """Places on the image are in its points; at most 1184 x 772 of them, so that one is a point of the window.

    A window manager that gives a pressed window the focus holds the press back till then; keys overtake it, and the
    server lets it go with the place that the pointer has by that time. A hand is slower, so here presses don't focus,
    and what a press does is waited for before the next key all the same.
    """

    settings = {"postCaptureAction": "Open Editor", "panelAutoClose": "Never"}

    def setUp(self):
        self.desktop_options = {"press_focuses": False, **self.desktop_options}
        super().setUp()
        self.steps = []

    def open_editor(self, rectangle=(320, 150, 700, 470)):
        """Captures the rectangle (native pixels), presses its card and waits for the editor with the keyboard."""
        self.assistance = Accessibility(self.desktop)
        self.start_program()
        self.bring_up_area_overlay()
        x, y, width, height = rectangle
        self.input.drag((x, y), (x + width, y + height))
        self.base = self.wait_for_capture()
        card = windows.wait_for_one(self.program.cards, "one card")
        self.input.click(*windows.center(card.rectangle))
        return self.wait_for_editor()

    def wait_for_editor(self):
        self.editor = windows.wait_for_one(self.editors, "one editor")
        wait_for(lambda: windows.active(self.display) == self.editor.window.id, "the editor with the keyboard")
        # Its contents answer, and the window has come to rest.
        self.assistance.find("Canvas")
        wait_for(lambda: windows.cardinals(self.display, self.editor.window, "_NET_FRAME_EXTENTS"), "a frame")
        return self.editor

    def editors(self):
        return [seen for seen in self.program.dialogs() if seen.name == "Marrowfin Editor"]

    # Places.

    def place(self, point):
        """A place on the image as one on the screen."""
        x, y, width, height = windows.rectangle_of(self.editor.window)
        rows, columns = self.base.shape[:2]
        left = LEFT + (width / self.scale - WIDTH - columns) / 2
        top = TOP + (height / self.scale - HEIGHT - rows) / 2
        return x + int((left + point[0]) * self.scale), y + int((top + point[1]) * self.scale)

    def press_control(self, name, **facts):
        """With the mouse, where it stands; assistive technology is told in points."""
        x, y = windows.center(self.assistance.find(name, enabled=True, **facts)["rectangle"])
        self.input.click(x * self.scale, y * self.scale)

    def wait_for_status(self, count, size=None):
        """So many records, and the image's size in pixels, unless it is that of the capture."""
        height, width = self.base.shape[:2]
        text = f"{size or f'{width} × {height}'} px" + (f" · {count}" if count else "")
        self.assistance.find(text, role="label")

    def record(self, kind, **facts):
        self.steps.append({"kind": kind, **facts})
        self.wait_for_status(len(self.steps))

    # Drawing. What is done is also written down in `steps`.

    def choose_tool(self, tool):
        self.input.key(KEYS[tool])

    def draw(self, kind, start, end, **style):
        self.choose_tool(kind)
        self.input.drag(self.place(start), self.place(end))
        self.record(kind, **{"from": start, "to": end}, **style)

    def draw_with_pen(self, points):
        """Each move is seen on the screen before the next: moves that pile up become one."""
        self.choose_tool("pen")
        self.input.move(*self.place(points[0]))
        self.input.press()
        for before, point in zip(points, points[1:]):
            middle = self.place(((before[0] + point[0]) // 2, (before[1] + point[1]) // 2))
            plain = pixels.pixel(self.display, *middle)
            self.input.move(*self.place(point))
            wait_for(lambda: pixels.pixel(self.display, *middle) != plain, f"the stroke to {point}")
        self.input.release()
        self.record("pen", points=points)

    def write(self, at, text):
        """Leaves the edit open."""
        self.choose_tool("text")
        self.input.click(*self.place(at))
        self.assistance.find("Text on the image", focused=True)
        self.input.type(text)
        self.steps.append({"kind": "text", "at": at, "text": text})

    def put_number(self, at):
        self.choose_tool("number")
        self.input.click(*self.place(at))
        self.record("number", at=at)

    def expected(self, steps=None):
        """The composite of the capture and the steps, made without an editor."""
        made = os.path.join(self.desktop.folder, "expected.png")
        subprocess.run([COMPOSITE, self.program.history()[0], made], env=self.desktop.environment, check=True,
                       input=json.dumps(self.steps if steps is None else steps).encode(), timeout=60)
        return pixels.read(made)

    def copied(self, press):
        """What another program pastes after `press`."""
        self.clipboard.take()
        press()
        self.clipboard.wait_for_copy()
        return self.clipboard.image()

    # The window manager's side.

    def ask_root(self, window, kind, data):
        message = event.ClientMessage(window=window, client_type=self.display.intern_atom(kind), data=(32, data))
        self.display.screen().root.send_event(message,
                                              event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.display.sync()

    def close_window(self, window):
        """As by the button of its title bar."""
        self.ask_root(window, "_NET_CLOSE_WINDOW", [X.CurrentTime, 2, 0, 0, 0])

    def title(self, window):
        return window.get_full_property(self.display.intern_atom("_NET_WM_NAME"),
                                        self.display.intern_atom("UTF8_STRING")).value.decode()

    def window_types(self, window):
        found = window.get_full_property(self.display.intern_atom("_NET_WM_WINDOW_TYPE"), Xatom.ATOM)
        return [self.display.get_atom_name(value) for value in found.value]
