# desktop: --tray none
"""Clocks that jump and programs that stand still: no round too many, no round lost, no wait for ever."""

import os
import signal
import struct
from unittest import mock

from lib.morlatest import SECONDS, DesktopTest, control, main, script

TEN_YEARS = 10 * 365 * 24 * 3600
HOUR = 3600
# AppleScript's own, after which a reply is given up.
REPLY_TIMEOUT = 120


class ShiftedClock(DesktopTest):
    def setUp(self):
        super().setUp()
        self.shift_file = os.path.join(self.folder, "shift")
        self.shift()

    def shift(self, wall=0, forward=0):
        """Puts MORLA's clocks ahead of the real ones by so many seconds. In one write, and in the same file, which it
        has mapped."""
        with open(self.shift_file, "r+b" if os.path.exists(self.shift_file) else "wb") as file:
            file.write(struct.pack("qq", wall, forward))

    def start_both(self):
        self.start_capture_one()
        library = os.path.join(os.environ["MORLA_BIN"], "..", "tests", "libshifted_clock.so")
        self.assertTrue(os.path.exists(library), library)
        with mock.patch.dict(os.environ, {
                "LD_PRELOAD": library, "SHIFTED_CLOCK": self.shift_file,
                "ASAN_OPTIONS": "verify_asan_link_order=0:" + os.environ.get("ASAN_OPTIONS", "")}):
            self.start_morla()
        self.expect_reading()

    def expect_reading(self):
        """Returns at the end of a round that has read the camera."""
        self.expect("isCameraConnected", True)
        self.expect("cameraName", control("get", "camera.name"))

    def next_start(self):
        """When the next status script was sent, in milliseconds since MORLA's start."""
        return self.trace.wait_for(script("status"), SECONDS, "a status script")["t"]

    def expect_event(self):
        """Returns when Capture One has got the first event of a round, which is under way."""
        before = int(control("get", "events"))
        self.trace.skip()
        self.next_start()
        control("wait", "events", str(before + 1), str(SECONDS))

    def expect_one_a_second(self, rounds):
        starts = [self.next_start() for _ in range(rounds)]
        for earlier, later in zip(starts, starts[1:]):
            self.assertTrue(1000 <= later - earlier < 1000 * SECONDS, f"rounds began at {starts} ms")

    def stop_morla(self):
        os.kill(self.desktop.morla.pid, signal.SIGSTOP)
        os.waitid(os.P_PID, self.desktop.morla.pid, os.WSTOPPED)

    def continue_morla(self):
        os.kill(self.desktop.morla.pid, signal.SIGCONT)

    def test_the_wall_clock_makes_no_difference(self):
        self.start_both()
        for wall in (TEN_YEARS, -TEN_YEARS):
            with self.subTest(wall):
                self.shift(wall=wall)
                self.expect_one_a_second(2)
                self.expect_reading()

    def test_after_an_hour_of_standing_still_the_rounds_go_on_one_a_second(self):
        self.start_both()
        self.stop_morla()
        self.shift(forward=HOUR)
        self.trace.skip()
        self.continue_morla()
        self.assertGreater(self.next_start(), HOUR * 1000)
        self.expect_one_a_second(3)
        self.expect_reading()

    def test_an_answer_that_came_while_it_stood_still_counts(self):
        self.start_both()
        control("set", "fault.delay", "0.3")
        self.expect_event()
        self.stop_morla()
        control("set", "fault.delay", "0")
        self.trace.skip()
        self.trace.expect_none(lambda event: True, 0.5, "a program that stands still tells nothing")
        self.shift(forward=HOUR)
        self.continue_morla()
        answer = self.trace.wait_for(lambda event: "script" in event and "ms" in event, SECONDS, "an answer")
        self.assertIn("MX-1 Studio", answer["text"] or "", answer)
        self.expect_reading()

    def test_a_silent_capture_one_is_given_up_after_two_minutes_and_asked_again(self):
        self.start_both()
        control("set", "fault.silent", "true")
        self.expect_event()
        self.shift(forward=REPLY_TIMEOUT - 2)
        answered = lambda event: "script" in event and "ms" in event
        self.trace.expect_none(answered, 0.5, "an answer before its time")
        control("set", "fault.silent", "false")
        self.shift(forward=REPLY_TIMEOUT + 1)
        self.assertEqual(self.trace.wait_for(answered, SECONDS, "the answer")["error"]["number"], -1712)
        self.expect("lastDetectedFormat", "ERROR")
        self.expect_reading()


if __name__ == "__main__":
    main()
