"""Other programs' windows as a screen reader knows them: what is there, and pressing it."""

import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

# Nobody tells when a program has become known to the accessibility bus, so one looks again and again.
GLANCE_MILLISECONDS = 20


def _children(accessible):
    return [child for child in (accessible.get_child_at_index(index) for index in range(accessible.get_child_count()))
            if child is not None]


def _below(accessible):
    yield accessible
    for child in _children(accessible):
        yield from _below(child)


def _applications(process_id):
    return [each for each in _children(Atspi.get_desktop(0)) if each.get_process_id() == process_id]


def find(process_id, role, name, seconds):
    """The accessible of that role ("push button") and name in the program's windows. Raises AssertionError when there
    is none within `seconds`."""
    end = time.monotonic() + seconds
    while True:
        try:
            for application in _applications(process_id):
                for each in _below(application):
                    if each.get_role_name() == role and each.get_name() == name:
                        return each
        except GLib.Error:
            pass  # it went in the middle of a question
        if time.monotonic() > end:
            raise AssertionError(f"no {role} {name!r} in process {process_id} within {seconds} s")
        GLib.timeout_add(GLANCE_MILLISECONDS, lambda: False)
        GLib.MainContext.default().iteration(True)


def texts(process_id):
    """The names of all labels of the program."""
    return [each.get_name() for application in _applications(process_id) for each in _below(application)
            if each.get_role_name() == "label"]


def press(accessible):
    if not accessible.do_action(0):
        raise AssertionError(f"{accessible.get_name()!r} cannot be pressed")


def middle(accessible):
    """Where to click it, in pixels of the screen."""
    extents = accessible.get_extents(Atspi.CoordType.SCREEN)
    return extents.x + extents.width // 2, extents.y + extents.height // 2
