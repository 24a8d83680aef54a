"""What the end-to-end tests share. Each file runs on a virtual desktop of its own; each test in it starts the programs
it needs, with settings and permissions as on the first day, and waits for events, never for time to pass."""

import os
import shutil
import signal
import sys
import tempfile
import unittest

REPOSITORY = os.path.dirname(os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__)))))
sys.path.insert(0, os.path.join(REPOSITORY, "tools"))

from desktoplib import home, programs  # noqa: E402
from desktoplib.programs import control, morla, xdotool  # noqa: E402
from desktoplib.trace import panel, published, ready, script  # noqa: E402
from desktoplib.xlib import Display  # noqa: E402

__all__ = ["BUTTON", "DesktopTest", "Display", "REPOSITORY", "SECONDS", "control", "main", "morla", "panel", "programs",
           "published", "ready", "script", "xdotool"]

# What the window, and the panel in the trace, are called.
BUTTON = "FloatingButtonPanel"
# One round of the poll takes a second; the rest is for a busy machine.
SECONDS = 15


class DesktopTest(unittest.TestCase):
    """A display, the two programs, their trace; what was started ends with the test."""

    maxDiff = None
    window_classes = (programs.CAPTURE_ONE, programs.OTHER)

    def setUp(self):
        shutil.rmtree(os.path.join(os.environ["XDG_CONFIG_HOME"], "morla"), ignore_errors=True)
        shutil.rmtree(os.path.join(os.environ["XDG_DATA_HOME"], "privacy"), ignore_errors=True)
        home.allow(os.environ["XDG_DATA_HOME"])
        self.display = Display()
        self.addCleanup(self.display.close)
        # Windows of the test before, whose program has ended, would be taken for those of this one.
        self.assertTrue(self.display.wait_until(lambda: not self.windows_left(), SECONDS), self.windows_left())
        self.folder = tempfile.mkdtemp(prefix=self.id().rpartition(".")[2] + ".")
        self.desktop = programs.Desktop(self.folder)
        self.trace = self.desktop.trace
        self.addCleanup(self.desktop.end)

    def windows_left(self):
        return [name for name in self.window_classes if programs.managed_window(self.display, name)]

    def start_capture_one(self):
        """Gives its window, which is in front."""
        return self.desktop.start_capture_one(self.display)

    def start_morla(self, *, watching=True):
        """With the camera watch switched on, unless told otherwise."""
        if watching:
            morla("defaults", "write", "formatMonitorEnabled", "boolean", "true")
        self.trace.skip()
        self.desktop.start_morla()

    def start_both(self):
        """Up to the first complete reading; gives Capture One's window."""
        window = self.start_capture_one()
        self.start_morla()
        self.expect("isCameraConnected", True)
        return window

    def between_rounds(self, action):
        """Does `action` while no script is under way, and none can begin; gives its result. Waits then begin with what
        happens from there on."""
        morla_id = self.desktop.morla.pid
        while True:
            os.kill(morla_id, signal.SIGSTOP)
            try:
                os.waitid(os.P_PID, morla_id, os.WSTOPPED)
                self.trace.read_all()
                scripts = [event for event in self.trace.events() if "script" in event]
                if not scripts or "ms" in scripts[-1]:
                    result = action()
                    self.trace.skip()
                    return result
                self.trace.skip()
            finally:
                os.kill(morla_id, signal.SIGCONT)
            self.trace.wait_for(lambda event: "script" in event and "ms" in event, SECONDS, "an answer")

    def start_other_application(self):
        """Gives the window, which is in front, and the program."""
        other = programs.start_other_application(self.folder)
        self.addCleanup(other.end)
        return programs.wait_for_window(self.display, programs.OTHER, SECONDS), other

    def expect(self, name, value):
        """The next write of `value` to the camera watch's published `name`."""
        return self.trace.wait_for(published(f"FormatMonitor.{name}", value), SECONDS, f"{name} = {value!r}")

    def expect_panel(self, what, name=BUTTON):
        return self.trace.wait_for(panel(name, what), SECONDS, f"{name} {what}")

    def top_level(self, title):
        """The shown window of that title that no window manager has framed, or None."""
        return next((each for each in reversed(self.display.children())
                     if self.display.text(each, "WM_NAME") == title and self.display.override_redirect(each)
                     and self.display.geometry(each)), None)

    def wait_for_top_level(self, title):
        window = self.display.wait_until(lambda: self.top_level(title), SECONDS)
        self.assertTrue(window, f"no window {title} within {SECONDS} s")
        return window

    def centre(self, window):
        x, y, width, height = self.display.geometry(window)
        return x + width // 2, y + height // 2

    def keyboard(self):
        """Who has it, in every way in which that can be asked."""
        return {"active": self.display.active_window(), "focus": self.display.focus_window(),
                "xdotool": xdotool("getwindowfocus").strip()}

    def default(self, key):
        return morla("defaults", "read", key).stdout.strip()


class _Result(unittest.TextTestResult):
    """Keeps what there is to see at the moment of a failure, before the programs end."""

    def addError(self, test, err):
        self._keep(test)
        super().addError(test, err)

    def addFailure(self, test, err):
        self._keep(test)
        super().addFailure(test, err)

    def _keep(self, test):
        if not isinstance(test, DesktopTest) or not hasattr(test, "desktop"):
            return
        sys.stderr.write(f"\n{test.desktop.logs()}== {test.trace.last()}\n")
        folder = os.path.join(REPOSITORY, "build", "desktop-failures")
        os.makedirs(folder, exist_ok=True)
        path = os.path.join(folder, test.id() + ".png")
        try:
            programs.screenshot(path)
            sys.stderr.write(f"== screenshot: {path}\n")
        except (AssertionError, OSError) as error:
            sys.stderr.write(f"== no screenshot: {error}\n")


def main():
    unittest.main(testRunner=unittest.TextTestRunner(resultclass=_Result, verbosity=2))
