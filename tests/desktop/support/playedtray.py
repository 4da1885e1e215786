"""A tray that a test plays: it owns the tray's selection and docks, or refuses, what asks for it. Real ones restart when
a monitor is plugged, and lose what was asked of them in that moment."""

from Xlib import X, Xatom
from Xlib.display import Display
from Xlib.protocol import event

from support.waiting import wait_for

SIDE = 24


class PlayedTray:
    """Stands at the top left of the screen and has a connection of its own. Owned by the test, which closes it."""

    def __init__(self, desktop, visual=None):
        """`visual` is the one that it wants icons in."""
        self.display = Display(desktop.environment["DISPLAY"])
        screen = self.display.screen()
        self.window = screen.root.create_window(0, 0, SIDE, SIDE, 0, screen.root_depth, override_redirect=True,
                                                background_pixel=screen.black_pixel, event_mask=X.SubstructureNotifyMask)
        self.window.map()
        self.requests = []
        if visual:
            self.window.change_property(self.display.intern_atom("_NET_SYSTEM_TRAY_VISUAL"), Xatom.VISUALID, 32, [visual])
        selection = self.display.intern_atom("_NET_SYSTEM_TRAY_S0")
        self.window.set_selection_owner(selection, X.CurrentTime)
        announcement = event.ClientMessage(window=screen.root, client_type=self.display.intern_atom("MANAGER"),
                                           data=(32, [X.CurrentTime, selection, self.window.id, 0, 0]))
        screen.root.send_event(announcement, event_mask=X.StructureNotifyMask)
        self.display.sync()
        self.opcode = self.display.intern_atom("_NET_SYSTEM_TRAY_OPCODE")

    def wait_for_request(self, number, program):
        """The window that the `number`th request of all names."""
        wait_for(lambda: len(self.read()) >= number or program.check_running(), f"request {number} to be docked")
        return self.requests[number - 1]

    def read(self):
        while self.display.pending_events():
            seen = self.display.next_event()
            if seen.type == X.ClientMessage and seen.client_type == self.opcode:
                self.requests.append(seen.data[1][2])
        return self.requests

    def dock(self, window):
        icon = self.display.create_resource_object("window", window)
        icon.configure(width=SIDE, height=SIDE)
        icon.reparent(self.window, 0, 0)
        icon.map()
        self.display.sync()

    def close(self):
        self.display.close()
