#!/usr/bin/python3
"""A program as assistive technology sees it, told by a process of its own on the desktop's buses:

    assistant.py read              every object of Marrowfin's windows, one JSON list
    assistant.py press NAME        does the first action of the showing object of that name
"""

import json
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PROGRAM = "marrowfin"


def applications():
    root = Atspi.get_desktop(0)
    for index in range(root.get_child_count()):
        application = root.get_child_at_index(index)
        if application and (application.get_name() or "").lower() == PROGRAM:
            yield application


def objects(parent):
    """Those that vanish meanwhile are left out, as a card does that is fading."""
    try:
        children = [parent.get_child_at_index(index) for index in range(parent.get_child_count())]
    except GLib.GError:
        return
    for child in filter(None, children):
        yield child
        yield from objects(child)


def has(thing, state):
    return thing.get_state_set().contains(state)


def described(thing):
    component, action, text = thing.get_component_iface(), thing.get_action_iface(), thing.get_text_iface()
    place = component.get_extents(Atspi.CoordType.SCREEN) if component else None
    return {
        "name": thing.get_name() or "",
        "description": thing.get_description() or "",
        "role": thing.get_role_name(),
        "showing": has(thing, Atspi.StateType.SHOWING),
        "enabled": has(thing, Atspi.StateType.ENABLED),
        "focused": has(thing, Atspi.StateType.FOCUSED),
        "checked": has(thing, Atspi.StateType.CHECKED),
        "rectangle": [place.x, place.y, place.width, place.height] if place else None,
        "actions": [action.get_action_name(index) for index in range(action.get_n_actions())] if action else [],
        "text": text.get_text(0, -1) if text else None,
    }


def every_object():
    for application in applications():
        yield from objects(application)


def read():
    for thing in every_object():
        try:
            yield described(thing)
        except GLib.GError:
            pass  # gone meanwhile


def press(name):
    for thing in list(every_object()):
        if thing.get_name() == name and has(thing, Atspi.StateType.SHOWING) and thing.get_action_iface():
            return thing.get_action_iface().do_action(0)
    return False


def main(command, *arguments):
    if command == "read":
        print(json.dumps(list(read())))
        return 0
    return 0 if press(*arguments) else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
