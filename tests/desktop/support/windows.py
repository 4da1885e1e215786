"""What stands on the screen, as the X server tells any client. Rectangles are (x, y, width, height) in native pixels,
from the top left of the root."""

import dataclasses

from Xlib import X, Xatom, error

from support.waiting import wait_for


@dataclasses.dataclass
class Seen:
    """A mapped window, in stacking order from the bottom where a list holds several."""

    window: object
    rectangle: tuple
    override_redirect: bool
    classes: tuple
    name: str

    @property
    def size(self):
        return self.rectangle[2:]


def _seen(window):
    attributes = window.get_attributes()
    if attributes.map_state != X.IsViewable:
        return None
    return Seen(window, rectangle_of(window), bool(attributes.override_redirect), window.get_wm_class() or (),
                window.get_wm_name() or "")


def rectangle_of(window):
    geometry = window.get_geometry()
    place = window.display.screen().root if hasattr(window.display, "screen") else geometry.root
    corner = place.translate_coords(window, 0, 0)
    return (corner.x, corner.y, geometry.width, geometry.height)


def all_mapped(display):
    """Every viewable window, at any depth, in stacking order. Windows that vanish meanwhile are left out."""
    found = []

    def walk(window):
        for child in window.query_tree().children:
            try:
                seen = _seen(child)
                if seen:
                    found.append(seen)
                    walk(child)
            except (error.BadWindow, error.BadDrawable, error.BadMatch):
                pass

    walk(display.screen().root)
    return found


def of_class(display, name):
    """Windows of a program by its class, its surfaces and dialogs alike."""
    return [seen for seen in all_mapped(display) if any(name == part.lower() for part in seen.classes)]


def active(display):
    found = display.screen().root.get_full_property(display.intern_atom("_NET_ACTIVE_WINDOW"), Xatom.WINDOW)
    return found.value[0] if found else 0


def cardinals(display, window, name):
    found = window.get_full_property(display.intern_atom(name), Xatom.CARDINAL)
    return list(found.value) if found else None


def frame_extents(display, window):
    """Left, right, top, bottom."""
    return cardinals(display, window, "_NET_FRAME_EXTENTS") or [0, 0, 0, 0]


def _under_server_grab(display, question):
    """No other client gets a word in between, so that the question can't change the answer for them."""
    display.grab_server()
    try:
        return question(display.screen().root)
    finally:
        display.ungrab_server()
        display.sync()


def key_is_taken(display, code, modifiers):
    """True when a client holds this combination on the root."""

    def question(root):
        caught = error.CatchError(error.BadAccess)
        root.grab_key(code, modifiers, False, X.GrabModeAsync, X.GrabModeAsync, onerror=caught)
        display.sync()
        if caught.get_error():
            return True
        root.ungrab_key(code, modifiers)
        display.sync()
        return False

    return _under_server_grab(display, question)


def keyboard_is_grabbed(display):
    def question(root):
        if root.grab_keyboard(False, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime) != X.GrabSuccess:
            return True
        display.ungrab_keyboard(X.CurrentTime)
        return False

    return _under_server_grab(display, question)


def tray_icons(display):
    """The icons that are docked in the tray, as Seen."""
    owner = display.get_selection_owner(display.intern_atom("_NET_SYSTEM_TRAY_S0"))
    if owner == X.NONE:
        return []
    info = display.intern_atom("_XEMBED_INFO")
    # Toolkits set the property on larger windows too.
    return [seen for seen in all_mapped(display)
            if max(seen.size) <= 96 and _has(seen.window, info) and _is_embedded(seen.window)]


def _is_embedded(window):
    try:
        tree = window.query_tree()
    except error.BadWindow:
        return False
    return tree.parent != tree.root


def _has(window, atom):
    try:
        return window.get_full_property(atom, X.AnyPropertyType) is not None
    except (error.BadWindow, error.BadMatch):
        return False


def center(rectangle):
    x, y, width, height = rectangle
    return x + width // 2, y + height // 2


def wait_for_one(find, what):
    """The only window that `find` lists; several are as wrong as none."""
    return wait_for(lambda: (lambda found: found if len(found) == 1 else None)(find()), what)[0]
