"""A person's fingers on the keyboard, as quick as they like, and what the application that has the focus got of it."""

import ctypes
import os
import select
import subprocess
import sys
from ctypes import c_char_p, c_int, c_uint, c_ulong, c_void_p

from .morlatest import SECONDS, DesktopTest, morla, programs
from desktoplib import otherapp  # where it is, morlatest has said

COMMAND, SHIFT, OPTION, CONTROL = 0x100, 0x200, 0x800, 0x1000
# A key of no chord in any test: what the application got before it, it got before now.
MARKER = "F9"
# Besides the keyboard that XTest types on, every virtual display has one that does nothing by itself.
SECOND_KEYBOARD = "Xvfb keyboard"
_CORE_KEYBOARD = 0x100  # XkbUseCoreKbd


class Keyboard:
    """Keys are told by the names of what is on them in X ("a", "Shift_L"), in the layout in use. `device`: the number of
    the keyboard, when it is not the one of XTest."""

    def __init__(self, device=None):
        self._x = ctypes.CDLL("libX11.so.6")
        self._test = ctypes.CDLL("libXtst.so.6")
        self._input = ctypes.CDLL("libXi.so.6")
        for name, result, arguments in (("XOpenDisplay", c_void_p, [c_char_p]), ("XCloseDisplay", c_int, [c_void_p]),
                                        ("XSync", c_int, [c_void_p, c_int]), ("XFlush", c_int, [c_void_p]),
                                        ("XStringToKeysym", c_ulong, [c_char_p]),
                                        ("XKeysymToKeycode", c_uint, [c_void_p, c_ulong]),
                                        ("XAutoRepeatOn", c_int, [c_void_p]), ("XAutoRepeatOff", c_int, [c_void_p]),
                                        ("XDefaultRootWindow", c_ulong, [c_void_p]),
                                        ("XGrabKey", c_int, [c_void_p, c_int, c_uint, c_ulong, c_int, c_int, c_int]),
                                        ("XUngrabKey", c_int, [c_void_p, c_int, c_uint, c_ulong]),
                                        ("XGrabPointer", c_int, [c_void_p, c_ulong, c_int, c_uint, c_int, c_int,
                                                                 c_ulong, c_ulong, c_ulong]),
                                        ("XUngrabPointer", c_int, [c_void_p, c_ulong]),
                                        ("XGrabKeyboard", c_int, [c_void_p, c_ulong, c_int, c_int, c_int, c_ulong]),
                                        ("XUngrabKeyboard", c_int, [c_void_p, c_ulong]),
                                        ("XkbLockGroup", c_int, [c_void_p, c_uint, c_uint])):
            function = getattr(self._x, name)
            function.restype, function.argtypes = result, arguments
        self._test.XTestFakeKeyEvent.argtypes = [c_void_p, c_uint, c_int, c_ulong]
        self._test.XTestFakeButtonEvent.argtypes = [c_void_p, c_uint, c_int, c_ulong]
        self._test.XTestFakeDeviceKeyEvent.argtypes = [c_void_p, c_void_p, c_uint, c_int, c_void_p, c_int, c_ulong]
        self._input.XOpenDevice.restype, self._input.XOpenDevice.argtypes = c_void_p, [c_void_p, c_ulong]
        self._number = device
        self._held = []
        self._display = None
        self.connect()

    def connect(self):
        """Also after a change of the layout, which a connection that is there already does not follow."""
        self.close()
        self._codes = {}
        self._display = self._x.XOpenDisplay(None)
        if not self._display:
            raise OSError("the X display does not open")
        self._device = self._input.XOpenDevice(self._display, self._number) if self._number else None

    def close(self):
        if self._display:
            self.up(*reversed(self._held))
            self._x.XSync(self._display, 0)
            self._x.XCloseDisplay(self._display)
        self._display = None

    def code(self, name):
        if name not in self._codes:
            self._codes[name] = self._x.XKeysymToKeycode(self._display, self._x.XStringToKeysym(name.encode()))
            if not self._codes[name]:
                raise AssertionError(f"no key {name} on this keyboard")
        return self._codes[name]

    def look_up(self, *names):
        """So that they stay the keys of this keyboard, also when the desktop has the layout of another."""
        for name in names:
            self.code(name)

    def down(self, *names):
        for name in names:
            self.send([(name, True)])
            self._held.append(name)

    def up(self, *names):
        for name in names:
            self.send([(name, False)])
            self._held.remove(name)

    def tap(self, *names):
        """Each is released before the next is pressed."""
        for name in names:
            self.down(name)
            self.up(name)

    def chord(self, *names):
        """Pressed in this order, released in the other."""
        self.down(*names)
        self.up(*reversed(names))

    def send(self, events):
        """(name, is it pressed) each, as quickly as they can be sent."""
        for name, is_pressed in events:
            if self._device:
                self._test.XTestFakeDeviceKeyEvent(self._display, self._device, self.code(name), int(is_pressed), None, 0,
                                                   0)
            else:
                self._test.XTestFakeKeyEvent(self._display, self.code(name), int(is_pressed), 0)
        self._x.XSync(self._display, 0)

    def click(self):
        """With the other hand, wherever the pointer is, without waiting for the server."""
        for is_pressed in (1, 0):
            self._test.XTestFakeButtonEvent(self._display, 1, is_pressed, 0)
        self._x.XFlush(self._display)

    def repeat(self, is_on):
        (self._x.XAutoRepeatOn if is_on else self._x.XAutoRepeatOff)(self._display)
        self._x.XSync(self._display, 0)

    def lock_layout(self, number):
        """Of the layouts of the keyboard, from 0."""
        self._x.XkbLockGroup(self._display, _CORE_KEYBOARD, number)
        self._x.XSync(self._display, 0)

    def take_keyboard(self):
        """Every key, as a menu of another program does while it is open. Gives whether it was to be had."""
        root = self._x.XDefaultRootWindow(self._display)
        return self._x.XGrabKeyboard(self._display, root, 0, 1, 1, 0) == 0

    def give_keyboard_back(self):
        self._x.XUngrabKeyboard(self._display, 0)
        self._x.XSync(self._display, 0)

    def take_for_itself(self, name, modifiers):
        """As another program does with a key of its own; `modifiers` as X counts them."""
        self._x.XGrabKey(self._display, self.code(name), modifiers, self._x.XDefaultRootWindow(self._display), 0, 1, 1)
        self._x.XSync(self._display, 0)

    def give_back(self, name, modifiers):
        self._x.XUngrabKey(self._display, self.code(name), modifiers, self._x.XDefaultRootWindow(self._display))
        self._x.XSync(self._display, 0)

    def take_pointer(self):
        """As another program does with an open menu, or while something is dragged in it."""
        status = self._x.XGrabPointer(self._display, self._x.XDefaultRootWindow(self._display), 0, 0, 1, 1, 0, 0, 0)
        if status != 0:
            raise AssertionError(f"the pointer is refused: {status}")

    def give_pointer_back(self):
        self._x.XUngrabPointer(self._display, 0)
        self._x.XSync(self._display, 0)


class Application:
    """A program of its own with a window that has the focus."""

    def __init__(self, display):
        script = os.path.abspath(otherapp.__file__)
        self._program = subprocess.Popen([sys.executable, script, "--codes"], stdin=subprocess.DEVNULL,
                                         stdout=subprocess.PIPE)
        self._rest = b""
        # The window manager alone may still speak of the window of the test before.
        self.lines_until("focus in", SECONDS)
        programs.wait_for_window(display, programs.OTHER, SECONDS)

    def end(self):
        self._program.terminate()
        self._program.wait(programs.ENDS_WITHIN_SECONDS)
        self._program.stdout.close()

    def lines_until(self, last, seconds):
        """What it told up to the line `last`, without it. It may be silent for `seconds`, no longer."""
        lines = []
        while True:
            while b"\n" in self._rest:
                line, self._rest = self._rest.split(b"\n", 1)
                if line.decode() == last:
                    return lines
                lines.append(line.decode())
            if not select.select([self._program.stdout], [], [], seconds)[0]:
                raise AssertionError(f"{last!r} did not come, nor anything for {seconds} s, after {lines[-10:]}")
            piece = os.read(self._program.stdout.fileno(), 65536)
            if not piece:
                raise AssertionError(f"the application has ended, after {lines[-10:]}")
            self._rest += piece


def keyboard_of(test):
    """For the time of one test, without repeats."""
    os.environ["MORLA_KEY_DECISION_MS"] = "10000"  # a busy machine must not look like a main thread that is stuck
    keys = Keyboard()
    test.addCleanup(keys.close)
    keys.repeat(False)
    test.addCleanup(keys.repeat, True)
    return keys


class KeyboardTest(DesktopTest):
    """Another application has the focus, and tells each key that it gets. Keys do not repeat unless a test wants it."""

    def setUp(self):
        super().setUp()
        self.keys = keyboard_of(self)
        self.application = Application(self.display)
        self.addCleanup(self.application.end)
        self._told = 0

    def start_morla(self, **options):
        super().start_morla(**options)
        self._told = len(self._notifications())

    def store_chord(self, characters, modifiers, name="hotkey"):
        morla("defaults", "write", f"{name}Chars", "text", characters)
        morla("defaults", "write", f"{name}Modifiers", "integer", str(modifiers))

    def start_with_chord(self, characters, modifiers):
        self.store_chord(characters, modifiers)
        self.start_morla(watching=False)

    def told(self):
        """What the application has told since the last call, up to now; at the end it is the press of the marker."""
        self.keys.tap(MARKER)
        return self.application.lines_until(f"up {self.keys.code(MARKER)}", SECONDS)

    def received(self):
        """The keys among it: (name of the key, was it pressed) each."""
        lines = [line.split() for line in self.told()]
        names = {str(code): name for name, code in self.keys._codes.items()}
        events = [(names.get(code, code), what == "down") for what, code in lines if what in ("down", "up")]
        self.assertEqual(events.pop(), (MARKER, True))
        return events

    def fired(self):
        """The chords' notifications since the last call, up to now."""
        # Whatever was posted before this has come when it comes.
        morla("do", "toggleCheckMode")
        self.trace.wait_for(lambda event: event.get("notification") == "checkModeChanged", SECONDS, "checkModeChanged")
        told = self._notifications()
        news, self._told = told[self._told:], len(told)
        return news

    def _notifications(self):
        return [event["notification"] for event in self.trace.events()
                if event.get("notification", "").lower().endswith("hotkeypressed")]

    def expect(self, *, fires, gets):
        """How often the chord of the window has fired, and which keys the application has got."""
        self.assertEqual(self.received(), gets)
        self.assertEqual(self.fired(), ["hotkeyPressed"] * fires)


def pressed_and_released(*names):
    """What an application gets when each is released before the next is pressed."""
    return [(name, is_pressed) for name in names for is_pressed in (True, False)]
