"""What the tests about the alerts and their settings share: the banners on the screen, and the settings as a screen
reader knows them."""

import re
import time

from .morlatest import SECONDS, DesktopTest, control, morla, programs, xdotool
from desktoplib import accessibility

BANNER_SIZE = (300, 80)
FORMAT, ISO, APERTURE, SHUTTER = BANNERS = ("formatAlert", "isoAlert", "apertureAlert", "shutterAlert")
# Where the banners cover neither each other nor the settings, in points from the bottom left.
PLACES = {FORMAT: (20, 140), ISO: (420, 140), APERTURE: (120, 800), SHUTTER: (1500, 900)}
# Of light and dark windows.
REDS = ("FF3B30", "FF453A")
SETTINGS = "AlertePanel"
SETTINGS_TITLE = "Alertes"


def store(**settings):
    """MORLA's settings: flags, numbers and texts."""
    for key, value in settings.items():
        kind = {bool: "boolean", int: "number", float: "number", str: "text"}[type(value)]
        morla("defaults", "write", key, kind, str(value).lower() if kind == "boolean" else str(value))


def store_places():
    store(**{name + axis: value for name, place in PLACES.items() for axis, value in zip("XY", place)})


def pixel(x, y):
    """What is on the screen there, as six digits."""
    shown = programs.run("import", "-window", "root", "-crop", f"1x1+{x}+{y}", "-depth", "8", "txt:-").stdout
    return re.search(r"#([0-9A-F]{6})", shown).group(1)


class AlertTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.scale = int(re.search(r"Xft\.dpi:\s*(\d+)|$", programs.run("xrdb", "-query").stdout).group(1) or 96) // 96
        self.screen = [each // self.scale for each in self.display.geometry(self.display.root)[2:]]

    def centred(self, size):
        return [(self.screen[0] - size[0]) / 2, (self.screen[1] - size[1]) / 2, *size]

    # The banners.

    def make_mismatch(self):
        """The camera writes JPEG from the next round on."""
        self.between_rounds(lambda: control("set", "camera.format", "JPEG"))

    def expect_banner(self, name=FORMAT):
        """Shown; gives its window and its frame, in points from the bottom left."""
        frame = self.expect_panel("shown", name)["frame"]
        return self.wait_for_top_level(name), frame

    def expect_red(self, banner):
        """Six points in from the left edge of the banner, at half its height, on the screen: whatever lies above it
        would hide it."""
        x, y, _, height = self.display.geometry(banner)
        x, y = x + 6 * self.scale, y + height // 2
        end = time.monotonic() + SECONDS
        while (seen := pixel(x, y)) not in REDS:  # it is painted when the server asks for it
            self.assertLess(time.monotonic(), end, f"the pixel at {x}, {y} is {seen}")

    def spoken(self):
        return set(accessibility.texts(self.desktop.morla.pid))

    def expect_spoken(self, *texts):
        accessibility.wait_until(lambda: self.spoken() >= set(texts), SECONDS, f"{texts} on the screen")

    def drag(self, window, right, down):
        """From the middle of the window, in pixels, in steps as a hand makes them."""
        x, y = self.centre(window)
        moves = []
        for step in range(1, 11):
            moves += ["mousemove", x + right * step // 10, y + down * step // 10]
        xdotool("mousemove", x, y, "mousedown", 1, *moves, "mouseup", 1)

    def expect_frame(self, name, frame):
        self.trace.wait_for(lambda event: event.get("panel") == name and event.get("frame") == frame, SECONDS,
                            f"{name} at {frame}")

    # The settings.

    def open_settings(self):
        morla("do", "openAlerte")
        self.expect_panel("shown", SETTINGS)
        return self.wait_for_top_level(SETTINGS_TITLE)

    def control_called(self, role, name):
        return accessibility.find(self.desktop.morla.pid, role, name, SECONDS)

    def switch(self, title):
        return self.control_called("check box", title)

    def picker(self, label):
        return self.control_called("combo box", label)

    def click(self, accessible):
        """Where nothing covers it: a window manager that raises Capture One is faster than the panels."""
        x, y = accessibility.middle(accessible)
        self.assertTrue(self.display.wait_until(lambda: self.is_ours_at(x, y), SECONDS), f"({x}, {y}) is covered")
        xdotool("mousemove", x, y, "click", 1)

    def is_ours_at(self, x, y):
        for window in reversed(self.display.children()):
            frame = self.display.geometry(window)
            if frame and frame[0] <= x < frame[0] + frame[2] and frame[1] <= y < frame[1] + frame[3]:
                return bool(self.display.text(window, "WM_CLASS"))  # a frame round a window of others has none
        return False

    def expect_stored(self, key, value):
        self.trace.wait_for(lambda event: event.get("default") == key and event["value"] == value, SECONDS,
                            f"{key} = {value!r} is stored")

    def expect_keyboard(self, window):
        """That the window has it in every way, as it must in the end."""
        has = lambda: self.display.active_window() == window and self.display.focus_window() in (
            window, *self.display.children(window))
        self.assertTrue(self.display.wait_until(has, SECONDS), f"{window:#x} has not got the keyboard: "
                        f"{self.keyboard()}")
