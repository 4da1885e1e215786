"""Windows of other programs, with contents that are known to the pixel. The server itself repaints them (their
background is a pixmap), so nothing depends on when a client gets to draw."""

import os

import numpy
from PIL import Image, ImageDraw
from Xlib import X, Xatom, Xutil
from Xlib.display import Display

from support import wallpaper, windows
from support.waiting import wait_for


def picture(width, height, color, text=""):
    """As (height, width, 4) bytes in the server's order: a page in `color` with a fine grid and lines of text."""
    y, x = numpy.mgrid[0:height, 0:width]
    page = numpy.empty((height, width, 3), numpy.uint8)
    for channel in range(3):
        page[..., channel] = numpy.clip(color[channel] - 20 * ((x + y) % 7 == 0) - (x * 24 // width), 0, 255)
    image = Image.fromarray(page)
    draw = ImageDraw.Draw(image)
    for line in range(0, height - 20, 24):
        draw.text((12, line + 8), f"{text} line {line // 24}: the quick brown fox jumps over it", fill=(20, 20, 40))
    return numpy.concatenate([numpy.asarray(image)[..., ::-1], numpy.full((height, width, 1), 255, numpy.uint8)], -1)


class SampleWindow:
    """An ordinary managed window on a connection of its own, as of another program. Shown and placed when the
    constructor returns; the place is that of its contents."""

    def __init__(self, desktop, title="Sample", place=(100, 100), size=(400, 300), color=(250, 240, 220)):
        self.desktop = desktop
        self.display = Display(desktop.environment["DISPLAY"])
        self.title = title
        screen = self.display.screen()
        self.pixels = picture(*size, color, title)
        pixmap = screen.root.create_pixmap(*size, screen.root_depth)
        wallpaper.put_pixels(pixmap, self.pixels, screen.root_depth)
        self.window = screen.root.create_window(*place, *size, 0, screen.root_depth, background_pixmap=pixmap)
        self.window.set_wm_name(title)
        self.window.set_wm_class("sample", "Sample")
        self.window.change_property(self.atom("_NET_WM_PID"), Xatom.CARDINAL, 32, [os.getpid()])
        self.window.set_wm_normal_hints(flags=Xutil.USPosition | Xutil.USSize | Xutil.PWinGravity,
                                         win_gravity=X.StaticGravity)
        self.window.set_wm_protocols([self.display.intern_atom("WM_DELETE_WINDOW")])
        self.window.map()
        self.display.sync()
        wait_for(self.is_shown, f"the window {title}")

    def atom(self, name):
        return self.display.intern_atom(name)

    def is_shown(self):
        """Mapped, framed where there is a window manager, and the active one, as new windows are."""
        if self.window.get_attributes().map_state != X.IsViewable:
            return False
        if not self.desktop.options.window_manager:
            return True
        return windows.active(self.display) == self.window.id and self.has_frame()

    def has_frame(self):
        return windows.cardinals(self.display, self.window, "_NET_FRAME_EXTENTS") is not None

    @property
    def content(self):
        return windows.rectangle_of(self.window)

    @property
    def frame(self):
        """With the window manager's decoration."""
        left, right, top, bottom = windows.frame_extents(self.display, self.window)
        x, y, width, height = self.content
        return (x - left, y - top, width + left + right, height + top + bottom)

    def activate(self):
        """Raised and focused, the way a pager asks for it."""
        message = self.atom("_NET_ACTIVE_WINDOW")
        self._ask_root(message, [2, X.CurrentTime, 0, 0, 0])
        wait_for(lambda: windows.active(self.display) == self.window.id, f"{self.title} active")

    def move(self, x, y):
        """Moves the contents there."""
        self.window.configure(x=x, y=y)
        self.display.sync()
        wait_for(lambda: self.content[:2] == (x, y), f"{self.title} at ({x}, {y})")

    def _ask_root(self, kind, data):
        from Xlib.protocol import event
        message = event.ClientMessage(window=self.window, client_type=kind, data=(32, data))
        self.display.screen().root.send_event(message,
                                              event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.display.sync()

    def close(self):
        """Gone from the server when this returns."""
        if self.display:
            self.window.destroy()
            self.display.sync()
            self.display.close()
            self.display = None
