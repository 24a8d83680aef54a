"""A third application: a window of class Autre that takes the keyboard and tells on standard output what it receives,
a line each: `focus in`, `focus out`, of keys `down NAME`, `up NAME`, of the mouse `press BUTTON`, `release BUTTON`. With
--codes it tells keycodes instead of what is on the keys. Ends when its window is closed."""

import os
import sys

if __name__ == "__main__":
    sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))

from desktoplib import xlib  # noqa: E402

LINES = {xlib.FOCUS_IN: "focus in", xlib.FOCUS_OUT: "focus out", xlib.KEY_PRESS: "down", xlib.KEY_RELEASE: "up",
         xlib.BUTTON_PRESS: "press", xlib.BUTTON_RELEASE: "release"}
# Focus events that a keyboard grab of another program causes are no change of focus, nor are those that say that the
# pointer is in this window.
BY_GRABS = (1, 2)
OF_THE_POINTER = 5


def main():
    display = xlib.Display()
    window = display.make_window("Autre", "Autre application", 760, 330, 560, 380, 0xD8DEE9)
    display.show(window)
    while True:
        event = display.next_event()
        if display.asks_to_close(event, window):
            return 0
        if event.type in (xlib.FOCUS_IN, xlib.FOCUS_OUT):
            if event.focus.mode not in BY_GRABS and event.focus.detail != OF_THE_POINTER:
                print(LINES[event.type], flush=True)
        elif event.type in (xlib.KEY_PRESS, xlib.KEY_RELEASE):
            name = event.key.keycode if "--codes" in sys.argv else display.key_name(event)
            print(LINES[event.type], name, flush=True)
        elif event.type in (xlib.BUTTON_PRESS, xlib.BUTTON_RELEASE):
            print(LINES[event.type], event.button, flush=True)


if __name__ == "__main__":
    sys.exit(main())
