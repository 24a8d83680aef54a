# desktop: without
"""A desktop on which parts are missing, end, or start again: a clear message or a fallback, never a stuck program."""

import os
import signal
import subprocess
import unittest

from lib.morlatest import SECONDS, control, main, morla, programs
from lib.owndesktop import OwnDesktopTest

MORLA_ENDS_WITH_FAILURE = 1


def start_of_morla(**changes):
    """Runs MORLA, which must end by itself, in a changed environment."""
    environment = {**os.environ, **changes}
    return subprocess.run([programs.path_of("morla")], env=environment, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=20, check=False)


class WithoutServer(unittest.TestCase):
    def test_a_display_that_cannot_be_opened_is_named(self):
        done = start_of_morla(DISPLAY=":47011", DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")
        self.assertEqual((done.returncode, done.stdout, done.stderr),
                         (MORLA_ENDS_WITH_FAILURE, "", "morla: the X display :47011 cannot be opened\n"))


class WithoutWindowManager(OwnDesktopTest):
    wm = "none"

    def test_the_camera_is_watched_and_the_status_item_stands_on_the_screen(self):
        self.desktop.capture_one = programs.Program([programs.path_of("captureone-sim")],
                                                    os.path.join(self.folder, "captureone-sim.log"))
        control("wait", "events", "0", str(SECONDS))
        self.start_morla()
        self.wait_for_top_level("StatusItem")
        self.expect("isCameraConnected", True)
        self.assertEqual(self.desktop.quit_morla(), 0)


class Parts(OwnDesktopTest):
    def memory_of(self, program):
        """Where it lies in its memory, which is elsewhere when the same process has loaded it again."""
        with open(f"/proc/{self.session.process_of(program)}/maps", encoding="ascii") as file:
            return file.readline()

    def expect_front_to_be_followed(self, capture_one):
        """From another application to Capture One, which is known by its button."""
        other, program = self.start_other_application()
        self.expect_panel("hidden")
        programs.bring_to_front(self.display, capture_one)
        self.expect_panel("shown")
        program.end()

    def test_without_a_bus_it_ends_with_one_line(self):
        done = start_of_morla(DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")
        self.assertEqual((done.returncode, done.stdout), (MORLA_ENDS_WITH_FAILURE, ""))
        self.assertRegex(done.stderr, r"^morla: there is no session bus \(.+\), and MORLA needs one\n$")

    def test_a_window_manager_that_starts_again_by_itself_changes_nothing(self):
        capture_one = self.start_capture_one()
        self.start_morla()
        self.expect_panel("shown")
        before = self.memory_of("openbox")
        programs.run("openbox", "--restart")
        restarted = lambda: self.display.window_manager() and self.memory_of("openbox") != before
        self.assertTrue(self.display.wait_until(restarted, SECONDS), "the window manager did not start again")
        self.expect_front_to_be_followed(capture_one)

    def test_a_window_manager_may_be_killed_and_another_one_started(self):
        capture_one = self.start_capture_one()
        self.start_morla()
        self.expect_panel("shown")
        self.kill("openbox")
        self.expect("isCameraConnected", True)
        self.start(["xfwm4", "--compositor=off"])
        # It says that it is there before it has taken over the windows, and gives those none of the keyboard.
        has_frame = lambda: self.display.window_manager() and capture_one not in self.display.children()
        self.assertTrue(self.display.wait_until(has_frame, SECONDS), "no window manager")
        self.expect_front_to_be_followed(capture_one)

    def test_the_end_of_the_x_server_ends_it_with_one_line(self):
        self.start_capture_one()
        self.start_morla()
        self.expect_panel("shown")
        self.display.close()
        self.kill("Xvfb")
        self.assertEqual(self.desktop.morla.wait(SECONDS), MORLA_ENDS_WITH_FAILURE)
        self.assertRegex(self.desktop.morla.output(), r"^morla: the X server has gone\n$")

    def test_it_outlives_the_bus(self):
        self.start_capture_one()
        self.start_morla()
        self.expect("isCameraConnected", True)
        self.kill("dbus-daemon")
        self.trace.wait_for(lambda event: event.get("log", "").startswith("[Bus] the session bus has gone"), SECONDS,
                            "a line about the bus")
        self.assertEqual(self.desktop.capture_one.wait(SECONDS), 0, "the simulated Capture One goes with it")
        self.expect("lastDetectedFormat", "NOT_RUNNING")
        self.expect("lastDetectedFormat", "NOT_RUNNING")
        done = morla("do", "quit", check=False)
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stderr, r"^morla do: there is no session bus")
        self.assertEqual(self.desktop.morla.output().count("\n"), 1, self.desktop.morla.output())
        self.start_other_application()
        self.trace.wait_for(lambda event: event.get("front") == programs.OTHER, SECONDS, "the front is still followed")
        self.assertEqual(self.desktop.morla.end(signal.SIGTERM), -signal.SIGTERM)


class Tray(OwnDesktopTest):
    tray = "top"

    def test_a_tray_that_goes_leaves_the_item_on_the_screen_and_one_that_comes_takes_it_in(self):
        self.start_morla()
        self.assertIsNone(self.top_level("StatusItem"))
        arguments = self.kill("trayer")
        self.wait_for_top_level("StatusItem")
        self.start(arguments)
        gone = lambda: self.top_level("StatusItem") is None
        self.assertTrue(self.display.wait_until(gone, SECONDS), "the item still stands on the screen")
        self.assertEqual(self.desktop.quit_morla(), 0)


if __name__ == "__main__":
    main()
