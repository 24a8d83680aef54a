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


def wait_until(condition, seconds, what):
    """Asks `condition()` until it gives a true value, and returns that. Raises AssertionError, with `what`, after
    `seconds`."""
    end = time.monotonic() + seconds
    while True:
        try:
            value = condition()
        except GLib.Error:
            value = None  # it went in the middle of a question
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"not within {seconds} s: {what}")
        GLib.timeout_add(GLANCE_MILLISECONDS, lambda: False)
        GLib.MainContext.default().iteration(True)


def find(process_id, role, name, seconds):
    """The accessible of that role ("push button") and name, or description, in the program's windows. Raises
    AssertionError when there is none within `seconds`."""
    return wait_until(
        lambda: next((each for application in _applications(process_id) for each in _below(application)
                      if each.get_role_name() == role and name in (each.get_name(), each.get_description())), None),
        seconds, f"{role} {name!r} in process {process_id}")


def texts(process_id):
    """The names of all labels of the program."""
    return [each.get_name() for application in _applications(process_id) for each in _below(application)
            if each.get_role_name() == "label"]


def press(accessible):
    if not accessible.do_action(0):
        raise AssertionError(f"{accessible.get_name()!r} cannot be pressed")


def is_enabled(accessible):
    return accessible.get_state_set().contains(Atspi.StateType.ENABLED)


def middle(accessible):
    """Where to click it, in pixels of the screen."""
    extents = accessible.get_extents(Atspi.CoordType.SCREEN)
    return extents.x + extents.width // 2, extents.y + extents.height // 2


def controls(process_id):
    """Role, name and whether it can be used, of all that does something in the program's shown windows, in order."""
    roles = ("check box", "combo box", "push button", "text")
    return [(each.get_role_name(), each.get_name(), each.get_state_set().contains(Atspi.StateType.ENABLED))
            for application in _applications(process_id) for each in _below(application)
            if each.get_role_name() in roles and each.get_state_set().contains(Atspi.StateType.SHOWING)]
