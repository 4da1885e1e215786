"""The clipboard as another program sees it."""

import subprocess

from Xlib import X, Xatom

from support import owned, pixels
from support.waiting import wait_for


class Clipboard:
    def __init__(self, desktop):
        self.desktop = desktop
        self.display = desktop.display
        self.atom = self.display.intern_atom("CLIPBOARD")
        self.holder = self.display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)

    def take(self):
        """Owns the clipboard, with nothing to offer: whoever owns it next has copied something."""
        # A selection is owned from a moment of the server's time, and an earlier moment than the last owner's is
        # ignored: a property change tells the time.
        self.holder.change_attributes(event_mask=X.PropertyChangeMask)
        self.holder.change_property(self.atom, Xatom.STRING, 8, b"")
        moment = self._property_event().time
        self.holder.set_selection_owner(self.atom, moment)
        self.display.sync()

    def _property_event(self):
        def next_one():
            while self.display.pending_events():
                event = self.display.next_event()
                if event.type == X.PropertyNotify and event.window == self.holder:
                    return event
            return None

        return wait_for(next_one, "the server's time")

    def taken_over(self):
        owner = self.display.get_selection_owner(self.atom)
        return owner != X.NONE and owner != self.holder

    def wait_for_copy(self):
        wait_for(self.taken_over, "anything copied")

    def targets(self):
        return self.read("TARGETS").decode().split()

    def read(self, target):
        answer = subprocess.run([owned.require("xclip"), "-selection", "clipboard", "-t", target, "-o"],
                                env=self.desktop.environment, stdin=subprocess.DEVNULL, capture_output=True,
                                timeout=60)
        return answer.stdout if answer.returncode == 0 else b""

    def png(self):
        return self.read("image/png")

    def image(self):
        data = self.png()
        if not data:
            raise AssertionError("the clipboard offers no PNG")
        return pixels.decoded(data)
