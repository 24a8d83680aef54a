"""The little of Xlib that waiting for a desktop takes: properties, selection owners, windows, a wait without polling.

One connection, one thread. A window that vanishes in the middle of a question answers like one that never was.
"""

import ctypes
import os
import select
import time
from ctypes import (CFUNCTYPE, POINTER, Structure, Union, byref, c_char_p, c_int, c_long, c_ubyte, c_uint, c_ulong,
                    c_void_p)

ANY_PROPERTY_TYPE = 0
KEY_MASK = 1 << 0 | 1 << 1
BUTTON_MASK = 1 << 2 | 1 << 3
FOCUS_CHANGE_MASK = 1 << 21
KEY_PRESS, KEY_RELEASE, BUTTON_PRESS, BUTTON_RELEASE, FOCUS_IN, FOCUS_OUT, CLIENT_MESSAGE = 2, 3, 4, 5, 9, 10, 33
PROPERTY_CHANGE_MASK = 1 << 22
STRUCTURE_NOTIFY_MASK = 1 << 17
SUBSTRUCTURE_NOTIFY_MASK = 1 << 19
SUBSTRUCTURE_REDIRECT_MASK = 1 << 20
LEFT_POINTER_SHAPE = 68
IS_VIEWABLE = 2
RETAIN_PERMANENT = 1
NET_WM_STATE_ADD = 1


class _KeyEvent(Structure):
    _fields_ = [("type", c_int), ("serial", c_ulong), ("send_event", c_int), ("display", c_void_p), ("window", c_ulong),
                ("root", c_ulong), ("subwindow", c_ulong), ("time", c_ulong), ("x", c_int), ("y", c_int),
                ("x_root", c_int), ("y_root", c_int), ("state", c_uint), ("keycode", c_uint), ("same_screen", c_int)]


class _FocusEvent(Structure):
    _fields_ = [("type", c_int), ("serial", c_ulong), ("send_event", c_int), ("display", c_void_p), ("window", c_ulong),
                ("mode", c_int), ("detail", c_int)]


class _ClientMessage(Structure):
    _fields_ = [("type", c_int), ("serial", c_ulong), ("send_event", c_int), ("display", c_void_p), ("window", c_ulong),
                ("message_type", c_ulong), ("format", c_int), ("data", c_long * 5)]


class Event(Union):
    # XEvent is a union padded to 24 longs.
    _fields_ = [("type", c_int), ("key", _KeyEvent), ("focus", _FocusEvent), ("message", _ClientMessage),
                ("padding", c_long * 24)]

    @property
    def button(self):
        return self.key.keycode  # the same structure, the same place


class _Attributes(Structure):
    _fields_ = [("x", c_int), ("y", c_int), ("width", c_int), ("height", c_int), ("border_width", c_int),
                ("depth", c_int), ("visual", c_void_p), ("root", c_ulong), ("window_class", c_int),
                ("bit_gravity", c_int), ("win_gravity", c_int), ("backing_store", c_int), ("backing_planes", c_ulong),
                ("backing_pixel", c_ulong), ("save_under", c_int), ("colormap", c_ulong), ("map_installed", c_int),
                ("map_state", c_int), ("all_event_masks", c_long), ("your_event_mask", c_long),
                ("do_not_propagate_mask", c_long), ("override_redirect", c_int), ("screen", c_void_p)]


_ErrorHandler = CFUNCTYPE(c_int, c_void_p, c_void_p)
_ExitHandler = CFUNCTYPE(None, c_void_p, c_void_p)


@_ErrorHandler
def _ignore_error(_display, _event):
    """Xlib's own handler ends the process, and a window may vanish between two questions."""
    return 0


def _load():
    lib = ctypes.CDLL("libX11.so.6")
    fixes = ctypes.CDLL("libXfixes.so.3")
    fixes.XFixesQueryExtension.argtypes = [c_void_p, POINTER(c_int), POINTER(c_int)]
    fixes.XFixesSelectSelectionInput.argtypes = [c_void_p, c_ulong, c_ulong, c_ulong]
    signatures = {
        "XOpenDisplay": (c_void_p, [c_char_p]),
        "XCloseDisplay": (c_int, [c_void_p]),
        "XConnectionNumber": (c_int, [c_void_p]),
        "XDefaultRootWindow": (c_ulong, [c_void_p]),
        "XInternAtom": (c_ulong, [c_void_p, c_char_p, c_int]),
        "XSelectInput": (c_int, [c_void_p, c_ulong, c_long]),
        "XPending": (c_int, [c_void_p]),
        "XNextEvent": (c_int, [c_void_p, POINTER(Event)]),
        "XSync": (c_int, [c_void_p, c_int]),
        "XFree": (c_int, [c_void_p]),
        "XGetSelectionOwner": (c_ulong, [c_void_p, c_ulong]),
        "XGetWindowProperty": (c_int, [c_void_p, c_ulong, c_ulong, c_long, c_long, c_int, c_ulong, POINTER(c_ulong),
                                       POINTER(c_int), POINTER(c_ulong), POINTER(c_ulong), POINTER(c_void_p)]),
        "XGetWindowAttributes": (c_int, [c_void_p, c_ulong, POINTER(_Attributes)]),
        "XTranslateCoordinates": (c_int, [c_void_p, c_ulong, c_ulong, c_int, c_int, POINTER(c_int), POINTER(c_int),
                                          POINTER(c_ulong)]),
        "XQueryTree": (c_int, [c_void_p, c_ulong, POINTER(c_ulong), POINTER(c_ulong), POINTER(c_void_p),
                               POINTER(c_uint)]),
        "XGetInputFocus": (c_int, [c_void_p, POINTER(c_ulong), POINTER(c_int)]),
        "XDefaultGC": (c_void_p, [c_void_p, c_int]),
        "XSetForeground": (c_int, [c_void_p, c_void_p, c_ulong]),
        "XCreatePixmap": (c_ulong, [c_void_p, c_ulong, c_uint, c_uint, c_uint]),
        "XFillRectangle": (c_int, [c_void_p, c_ulong, c_void_p, c_int, c_int, c_uint, c_uint]),
        "XSetWindowBackgroundPixmap": (c_int, [c_void_p, c_ulong, c_ulong]),
        "XChangeProperty": (c_int, [c_void_p, c_ulong, c_ulong, c_ulong, c_int, c_int, POINTER(c_ulong), c_int]),
        "XSetCloseDownMode": (c_int, [c_void_p, c_int]),
        "XClearWindow": (c_int, [c_void_p, c_ulong]),
        "XCreateFontCursor": (c_ulong, [c_void_p, c_uint]),
        "XDefineCursor": (c_int, [c_void_p, c_ulong, c_ulong]),
        "XCreateSimpleWindow": (c_ulong, [c_void_p, c_ulong, c_int, c_int, c_uint, c_uint, c_uint, c_ulong, c_ulong]),
        "XMapWindow": (c_int, [c_void_p, c_ulong]),
        "XSendEvent": (c_int, [c_void_p, c_ulong, c_int, c_long, POINTER(Event)]),
        "XSetWMProtocols": (c_int, [c_void_p, c_ulong, POINTER(c_ulong), c_int]),
        "XkbKeycodeToKeysym": (c_ulong, [c_void_p, c_uint, c_int, c_int]),
        "XKeysymToString": (c_char_p, [c_ulong]),
        "XSetErrorHandler": (c_void_p, [_ErrorHandler]),
        "XSetIOErrorExitHandler": (None, [c_void_p, _ExitHandler, c_void_p]),
    }
    for name, (result, arguments) in signatures.items():
        function = getattr(lib, name)
        function.restype = result
        function.argtypes = arguments
    lib.XSetErrorHandler(_ignore_error)
    return lib, fixes


class Display:
    """A connection to the display; `name` None means that of DISPLAY. Raises OSError when it does not open."""

    def __init__(self, name=None):
        self._lib, self._fixes = _load()
        self._display = self._lib.XOpenDisplay(name.encode() if name else None)
        if not self._display:
            raise OSError(f"the X display {name or ''} does not open")
        self._is_lost = False
        self._on_lost = _ExitHandler(self._lose)  # kept: Xlib would end the process when the server goes
        self._lib.XSetIOErrorExitHandler(self._display, self._on_lost, None)
        self._fixes.XFixesQueryExtension(self._display, byref(c_int()), byref(c_int()))
        self.root = self._lib.XDefaultRootWindow(self._display)
        self._atoms = {}
        self._lib.XSelectInput(self._display, self.root,
                               PROPERTY_CHANGE_MASK | STRUCTURE_NOTIFY_MASK | SUBSTRUCTURE_NOTIFY_MASK)
        self._lib.XSync(self._display, 0)

    def _lose(self, _display, _data):
        self._is_lost = True

    def close(self):
        if self._display and not self._is_lost:
            self._lib.XCloseDisplay(self._display)
        self._display = None

    def fileno(self):
        return self._lib.XConnectionNumber(self._display)

    def atom(self, name):
        if name not in self._atoms:
            self._atoms[name] = self._lib.XInternAtom(self._display, name.encode(), 0)
        return self._atoms[name]

    def watch(self, window):
        """Lets changes of the window's properties, place and visibility wake `wait_until`."""
        self._lib.XSelectInput(self._display, window, PROPERTY_CHANGE_MASK | STRUCTURE_NOTIFY_MASK)

    def watch_selection(self, name):
        """Lets a new owner of the selection wake `wait_until`."""
        self._fixes.XFixesSelectSelectionInput(self._display, self.root, self.atom(name), 1)

    def numbers(self, window, name):
        """The 32-bit items of a property; empty when there is none."""
        data = self._property(window, name, 32)
        return [] if data is None else data

    def text(self, window, name):
        """The bytes of a property as text; None when there is none."""
        data = self._property(window, name, 8)
        return None if data is None else data.decode("utf-8", "replace")

    def _property(self, window, name, wanted_format):
        kind, form, count, rest, data = c_ulong(), c_int(), c_ulong(), c_ulong(), c_void_p()
        status = self._lib.XGetWindowProperty(self._display, window, self.atom(name), 0, 1 << 20, 0, ANY_PROPERTY_TYPE,
                                              byref(kind), byref(form), byref(count), byref(rest), byref(data))
        if status != 0 or not data:
            return None
        try:
            if form.value != wanted_format:
                return None
            if wanted_format == 32:  # Xlib hands these out as longs
                return list(ctypes.cast(data, POINTER(c_ulong))[:count.value])
            return bytes(ctypes.cast(data, POINTER(c_ubyte))[:count.value])
        finally:
            self._lib.XFree(data)

    def selection_owner(self, name):
        return self._lib.XGetSelectionOwner(self._display, self.atom(name))

    def window_manager(self):
        """The window by which a living window manager answers, else None: it points at itself."""
        for window in self.numbers(self.root, "_NET_SUPPORTING_WM_CHECK")[:1]:
            if self.numbers(window, "_NET_SUPPORTING_WM_CHECK")[:1] == [window]:
                return window
        return None

    def active_window(self):
        return next(iter(self.numbers(self.root, "_NET_ACTIVE_WINDOW")), 0)

    def focus_window(self):
        window, revert = c_ulong(), c_int()
        self._lib.XGetInputFocus(self._display, byref(window), byref(revert))
        return window.value

    def clients(self):
        """The managed windows, oldest first."""
        return self.numbers(self.root, "_NET_CLIENT_LIST")

    def children(self, window=None):
        """The windows directly below one (the root), bottom to top."""
        root, parent, data, count = c_ulong(), c_ulong(), c_void_p(), c_uint()
        if not self._lib.XQueryTree(self._display, window or self.root, byref(root), byref(parent), byref(data),
                                    byref(count)):
            return []
        if not data:
            return []
        try:
            return list(ctypes.cast(data, POINTER(c_ulong))[:count.value])
        finally:
            self._lib.XFree(data)

    def geometry(self, window):
        """(x, y, width, height) on the root window in pixels, while the window is shown; else None."""
        attributes = _Attributes()
        if not self._lib.XGetWindowAttributes(self._display, window, byref(attributes)):
            return None
        if attributes.map_state != IS_VIEWABLE:
            return None
        x, y, child = c_int(), c_int(), c_ulong()
        self._lib.XTranslateCoordinates(self._display, window, self.root, 0, 0, byref(x), byref(y), byref(child))
        return x.value, y.value, attributes.width, attributes.height

    def override_redirect(self, window):
        attributes = _Attributes()
        return bool(self._lib.XGetWindowAttributes(self._display, window, byref(attributes))
                    and attributes.override_redirect)

    def dress_root(self, colour):
        """A plain background and the usual arrow: a bare server shows black and a cross."""
        gc = self._lib.XDefaultGC(self._display, 0)
        _x, _y, width, height = self.geometry(self.root)  # the whole, since some compositors do not tile
        pixmap = self._lib.XCreatePixmap(self._display, self.root, width, height, 24)
        self._lib.XSetForeground(self._display, gc, colour)
        self._lib.XFillRectangle(self._display, pixmap, gc, 0, 0, width, height)
        self._lib.XSetWindowBackgroundPixmap(self._display, self.root, pixmap)
        self._lib.XClearWindow(self._display, self.root)
        # A compositor paints the background itself and finds it here, also after this connection has closed.
        self.set_numbers(self.root, "_XROOTPMAP_ID", "PIXMAP", [pixmap])
        self._lib.XSetCloseDownMode(self._display, RETAIN_PERMANENT)
        cursor = self._lib.XCreateFontCursor(self._display, LEFT_POINTER_SHAPE)
        self._lib.XDefineCursor(self._display, self.root, cursor)
        self._lib.XSync(self._display, 0)

    def make_window(self, class_name, title, x, y, width, height, colour):
        """A plain window that wants the keyboard; not shown yet."""
        window = self._lib.XCreateSimpleWindow(self._display, self.root, x, y, width, height, 0, 0, colour)
        self._lib.XSelectInput(self._display, window, KEY_MASK | BUTTON_MASK | FOCUS_CHANGE_MASK)
        self.set_text(window, "WM_CLASS", "STRING", f"{class_name.lower()}\0{class_name}\0")
        self.set_text(window, "WM_NAME", "STRING", title)
        self.set_text(window, "_NET_WM_NAME", "UTF8_STRING", title)
        self.set_numbers(window, "_NET_WM_PID", "CARDINAL", [os.getpid()])
        uses_input = 1
        self.set_numbers(window, "WM_HINTS", "WM_HINTS", [uses_input, 1, 0, 0, 0, 0, 0, 0, 0])
        hints = [1 << 0 | 1 << 1, x, y, width, height] + [0] * 13  # position and size as a user gave them
        self.set_numbers(window, "WM_NORMAL_HINTS", "WM_SIZE_HINTS", hints)
        self._lib.XSetWMProtocols(self._display, window, byref(c_ulong(self.atom("WM_DELETE_WINDOW"))), 1)
        return window

    def show(self, window):
        self._lib.XMapWindow(self._display, window)
        self._lib.XSync(self._display, 0)

    def set_text(self, window, name, kind, text):
        data = text.encode()
        self._lib.XChangeProperty(self._display, window, self.atom(name), self.atom(kind), 8, 0,
                                  ctypes.cast(ctypes.c_char_p(data), POINTER(c_ulong)), len(data))

    def set_numbers(self, window, name, kind, numbers):
        data = (c_ulong * len(numbers))(*numbers)
        self._lib.XChangeProperty(self._display, window, self.atom(name), self.atom(kind), 32, 0, data, len(numbers))

    def ask_to_close(self, window):
        """Has the window manager close it, as a task bar does."""
        event = Event()
        event.message = _ClientMessage(type=CLIENT_MESSAGE, window=window, format=32,
                                       message_type=self.atom("_NET_CLOSE_WINDOW"))
        self._lib.XSendEvent(self._display, self.root, 0, SUBSTRUCTURE_NOTIFY_MASK | SUBSTRUCTURE_REDIRECT_MASK,
                             byref(event))
        self._lib.XSync(self._display, 0)

    def ask_for_full_screen(self, window):
        """Has the window manager show it over the whole display, as a film player does."""
        event = Event()
        event.message = _ClientMessage(type=CLIENT_MESSAGE, window=window, format=32,
                                       message_type=self.atom("_NET_WM_STATE"))
        event.message.data[0] = NET_WM_STATE_ADD
        event.message.data[1] = self.atom("_NET_WM_STATE_FULLSCREEN")
        self._lib.XSendEvent(self._display, self.root, 0, SUBSTRUCTURE_NOTIFY_MASK | SUBSTRUCTURE_REDIRECT_MASK,
                             byref(event))
        self._lib.XSync(self._display, 0)

    def next_event(self):
        """Waits for it."""
        event = Event()
        self._lib.XNextEvent(self._display, byref(event))
        return event

    def asks_to_close(self, event, window):
        return (event.type == CLIENT_MESSAGE and event.message.window == window
                and event.message.message_type == self.atom("WM_PROTOCOLS")
                and event.message.data[0] == self.atom("WM_DELETE_WINDOW"))

    def key_name(self, event):
        """What is on the key without modifiers."""
        name = self._lib.XKeysymToString(self._lib.XkbKeycodeToKeysym(self._display, event.key.keycode, 0, 0))
        return name.decode() if name else f"keycode {event.key.keycode}"

    def _drain(self):
        event = Event()
        while not self._is_lost and self._lib.XPending(self._display) > 0:
            self._lib.XNextEvent(self._display, byref(event))

    def wait_until(self, condition, seconds, others=()):
        """Asks `condition()` now and after each event until it gives a true value, and returns that; None when the time
        is over. `others` are further descriptors that wake it; `condition` must read what they hold. Raises OSError
        when the server is gone."""
        end = time.monotonic() + seconds
        while True:
            self._drain()
            value = condition()
            if self._is_lost:
                raise OSError("the X server is gone")
            if value:
                return value
            # The questions of `condition` may have read events into Xlib's queue, where select does not see them.
            if self._lib.XPending(self._display) > 0:
                continue
            left = end - time.monotonic()
            if left <= 0:
                return None
            select.select([self, *others], [], [], left)
