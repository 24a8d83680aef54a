# desktop: --tray none
"""A Capture One that is slow, silent, stopped, killed or replaced: it holds up its own round and nothing else."""

import os
import signal
import subprocess
import sys
import textwrap

from lib.morlatest import BUTTON, SECONDS, DesktopTest, control, main, morla, panel, script

# Takes its place among those who wait for Capture One's name, and says when it has got it. It answers nothing.
NEXT_OWNER = textwrap.dedent("""
    from gi.repository import Gio, GLib
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    Gio.bus_own_name_on_connection(bus, "com.captureone.captureone16", Gio.BusNameOwnerFlags.NONE,
                                   lambda *_: print("owner", flush=True), lambda *_: print("waiting", flush=True))
    GLib.MainLoop().run()
    """)


def answer(event):
    return "script" in event and "ms" in event


def any_published(event):
    return "published" in event


class Slow(DesktopTest):
    def test_a_slow_capture_one_stretches_the_period(self):
        self.start_both()
        control("set", "fault.delay", "0.1")
        self.trace.skip()
        self.trace.wait_for(script("status"), SECONDS, "a status script")  # perhaps from before
        starts = []
        for _ in range(2):
            started = self.trace.wait_for(script("status"), SECONDS, "a status script")
            ended = self.trace.wait_for(answer, SECONDS, "its answer")
            self.assertEqual(ended["script"], started["script"], "rounds overlap")
            self.assertGreater(ended["ms"], 10 * 100)
            self.expect("isCameraConnected", True)
            starts.append((started["t"], ended["t"]))
        pause = starts[1][0] - starts[0][1]
        self.assertGreaterEqual(pause, 1000, "ms between a round and the next")


class Silent(DesktopTest):
    def start_silence(self):
        """Returns when the first event of a round waits for its answer."""
        self.start_both()
        before = int(self.between_rounds(lambda: control("set", "fault.silent", "true") + control("get", "events")))
        control("wait", "events", str(before + 1), str(SECONDS))
        self.trace.wait_for(script("status"), SECONDS, "a status script")

    def expect_loss(self):
        self.assertEqual(self.trace.wait_for(answer, SECONDS, "the answer")["error"]["number"], -609)
        self.expect("lastDetectedFormat", "ERROR")

    def test_a_silent_capture_one_holds_up_its_round_and_nothing_else(self):
        self.start_silence()
        morla("do", "toggleCheckMode")
        self.trace.wait_for(lambda event: event.get("default") == "checkModeEnabled", SECONDS, "check mode is stored")
        self.start_other_application()
        self.trace.wait_for(panel(BUTTON, "hidden"), SECONDS, "the button follows the front")
        self.trace.expect_none(any_published, 1.5, "a value out of nothing")
        self.assertEqual(self.desktop.quit_morla(), 0)

    def test_killed_in_the_middle_of_an_event_it_is_no_answer_and_then_not_running(self):
        self.start_silence()
        self.desktop.capture_one.kill()
        self.desktop.capture_one.wait()
        self.expect_loss()
        self.expect("lastDetectedFormat", "NOT_RUNNING")
        self.start_capture_one()
        self.expect("isCameraConnected", True)

    def test_another_owner_of_its_name_that_is_no_capture_one_is_not_taken_for_it(self):
        self.start_silence()
        other = subprocess.Popen([sys.executable, "-c", NEXT_OWNER], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                 text=True)
        self.addCleanup(other.stdout.close)
        self.addCleanup(other.wait)
        self.addCleanup(other.kill)
        self.assertEqual(other.stdout.readline(), "waiting\n")
        self.desktop.capture_one.kill()
        self.desktop.capture_one.wait()
        self.assertEqual(other.stdout.readline(), "owner\n")
        self.expect_loss()
        self.expect("lastDetectedFormat", "NOT_RUNNING")
        self.trace.expect_none(script("status"), 1.5, "a script to somebody else")
        other.kill()
        other.wait()
        self.start_capture_one()
        self.expect("isCameraConnected", True)


class Stopped(DesktopTest):
    def stop(self, program):
        os.kill(program.pid, signal.SIGSTOP)
        self.addCleanup(lambda: program.poll() is None and program.send_signal(signal.SIGCONT))

    def test_a_stopped_capture_one_is_read_again_when_it_goes_on(self):
        self.start_both()
        self.between_rounds(lambda: self.stop(self.desktop.capture_one))
        self.trace.wait_for(script("status"), SECONDS, "a status script")
        self.trace.expect_none(any_published, 1.5, "a value out of nothing")
        os.kill(self.desktop.capture_one.pid, signal.SIGCONT)
        self.expect("isCameraConnected", True)

    def test_a_start_beside_a_stopped_capture_one_is_no_longer_and_the_watch_begins_when_it_goes_on(self):
        self.start_capture_one()
        self.stop(self.desktop.capture_one)
        self.start_morla()
        ready = self.trace.wait_for(lambda event: event.get("ready") is True, SECONDS, "ready")
        # It never answers while it is stopped: start-up would wait for AppleScript's two minutes.
        self.assertLess(ready["t"], 10_000, "start-up waited for an application that is stopped")
        self.trace.wait_for(script("probe"), SECONDS, "it is not missing: the permission is asked for")
        os.kill(self.desktop.capture_one.pid, signal.SIGCONT)
        self.expect("permissionState", "ready")
        self.expect("isCameraConnected", True)

    def test_started_again_between_two_rounds_it_is_the_new_one_that_is_read(self):
        def start_again():
            self.desktop.capture_one.kill()
            self.desktop.capture_one.wait()
            self.start_capture_one()
            control("set", "camera.iso", "Hi 2")

        self.start_both()
        self.between_rounds(start_again)
        self.assertEqual(self.trace.wait_for(
            lambda event: event.get("published") == "FormatMonitor.lastDetectedISO", SECONDS, "a round")["value"],
                         "Hi 2")
        self.expect("isCameraConnected", True)


if __name__ == "__main__":
    main()
