"""Keys and pointer through XTest, as if from the user's own devices. Places are native pixels of the screen."""

from Xlib import X, XK
from Xlib.ext import xtest

# The number row by its physical keys, whatever the layout prints on them.
NUMBER_ROW = {str((number + 1) % 10): 10 + number for number in range(10)}

SIGNS = {" ": "space", "\n": "Return", ".": "period", ",": "comma", "/": "slash", "-": "minus", "_": "underscore",
         "'": "apostrophe", "?": "question", "!": "exclam", '"': "quotedbl", ":": "colon"}
SHIFTED = '_?!":'


class Input:
    def __init__(self, display):
        self.display = display
        xtest.get_version(display, 2, 2)

    def code(self, key):
        if key in NUMBER_ROW:
            return NUMBER_ROW[key]
        code = self.display.keysym_to_keycode(XK.string_to_keysym(key))
        if not code:
            raise ValueError(f"no key gives {key}")
        return code

    def key(self, *keys):
        """Presses the keys in order, as in key("Super_L", "Shift_L", "3"), and lets them go in reverse."""
        codes = [self.code(key) for key in keys]
        for code in codes:
            xtest.fake_input(self.display, X.KeyPress, code)
        for code in reversed(codes):
            xtest.fake_input(self.display, X.KeyRelease, code)
        self.display.sync()

    def type(self, text):
        """Plain words, as typed on a keyboard of the us layout."""
        for character in text:
            name = SIGNS.get(character, character)
            self.key(*(["Shift_L"] if character.isupper() or character in SHIFTED else []), name)

    def hot_key(self, number):
        self.key("Super_L", "Shift_L", str(number))

    def move(self, x, y):
        xtest.fake_input(self.display, X.MotionNotify, x=int(x), y=int(y))
        self.display.sync()

    def press(self, button=1):
        xtest.fake_input(self.display, X.ButtonPress, button)
        self.display.sync()

    def release(self, button=1):
        xtest.fake_input(self.display, X.ButtonRelease, button)
        self.display.sync()

    def click(self, x, y, button=1):
        self.move(x, y)
        self.press(button)
        self.release(button)

    def drag(self, start, end, steps=4):
        self.move(*start)
        self.press()
        for step in range(1, steps + 1):
            self.move(start[0] + (end[0] - start[0]) * step / steps, start[1] + (end[1] - start[1]) * step / steps)
        self.release()

    def pointer(self):
        state = self.display.screen().root.query_pointer()
        return state.root_x, state.root_y
