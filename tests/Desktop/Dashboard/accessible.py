"""Prints what assistive programs see of one program's windows, as a list of objects in JSON.

Runs in the environment of the private desktop: the accessibility bus belongs to its session.
"""
import json
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

STATES = {"focused": Atspi.StateType.FOCUSED, "focusable": Atspi.StateType.FOCUSABLE, "enabled": Atspi.StateType.ENABLED,
          "showing": Atspi.StateType.SHOWING, "checked": Atspi.StateType.CHECKED}


def described(item):
    states = item.get_state_set()
    area = item.get_component_iface() and item.get_extents(Atspi.CoordType.SCREEN)
    return {
        "role": item.get_role_name(),
        "name": item.get_name() or "",
        "description": item.get_description() or "",
        "states": [name for name, state in STATES.items() if states.contains(state)],
        "area": [area.x, area.y, area.width, area.height] if area else None,
    }


def walk(item, found):
    for index in range(item.get_child_count()):
        child = item.get_child_at_index(index)
        if child is None:
            continue
        found.append(described(child))
        walk(child, found)


def main(process):
    found = []
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        application = desktop.get_child_at_index(index)
        if application is not None and application.get_process_id() == process:
            walk(application, found)
    json.dump(found, sys.stdout)


main(int(sys.argv[1]))
