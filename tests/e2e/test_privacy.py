# desktop openbox: --wm openbox
# desktop xfwm4: --wm xfwm4
"""The user's permission to control Capture One: MORLA asks for it, and every state of it is reached."""

import os
import shutil
import subprocess
import unittest.mock

from lib.morlatest import SECONDS, Display, control, main, morla, programs, script, xdotool
from lib.privacytest import CONSENT, PrivacyTest
from desktoplib import accessibility

QUESTION = "MORLA souhaite contrôler « Capture One »"
BUNDLE = os.path.join(os.environ["HOME"], "Applications", "Capture One.app")
# In this long a running poll would have asked twice.
SEVERAL_ROUNDS_SECONDS = 3


class Consent(PrivacyTest):
    def test_ok_allows_and_the_script_goes_on(self):
        capture_one, consent = self.start_asking()
        self.assertIn(QUESTION, accessibility.texts(self.desktop.morla.pid))
        xdotool("mousemove", *accessibility.middle(self.button("OK")), "click", 1)
        self.expect("permissionState", "ready")
        self.expect("isCameraConnected", True)
        self.assertEqual(self.stored(), "allow")
        self.expect_closed(consent)
        self.expect_active(capture_one)
        self.assertEqual(self.default("automationPermissionDenied"), "false")

    def test_a_refusal_is_remembered_and_nobody_is_asked_again(self):
        capture_one, consent = self.start_asking()
        accessibility.press(self.button("Refuser"))
        self.expect("permissionState", "permissionDenied")
        self.assertEqual(self.stored(), "deny")
        self.expect_closed(consent)
        self.expect_active(capture_one)
        self.assertEqual(self.default("automationPermissionDenied"), "true")
        self.trace.expect_none(script("status"), SEVERAL_ROUNDS_SECONDS, "a status script after the refusal")
        self.assertEqual(self.desktop.quit_morla(), 0)
        self.start_morla()
        self.expect("permissionState", "permissionDenied")
        self.assertIsNone(self.window_called(CONSENT))

    def test_escape_decides_nothing(self):
        capture_one, consent = self.start_asking()
        xdotool("key", "Escape")
        self.expect("permissionState", "needsPermission")
        self.assertEqual(self.stored(), "undecided")
        self.expect_closed(consent)
        self.expect_active(capture_one)
        self.assertEqual(morla("defaults", "read", "automationPermissionDenied", check=False).returncode, 1)

    def test_autoriser_asks_at_once_what_was_closed_a_moment_ago(self):
        _, consent = self.start_asking()
        morla("do", "openAlerte")
        for _ in range(2):
            programs.bring_to_front(self.display, consent)
            xdotool("key", "Escape")
            self.expect_closed(consent)
            autoriser = self.button("Autoriser")
            accessibility.wait_until(lambda: accessibility.is_enabled(autoriser), SECONDS, "Autoriser is enabled")
            accessibility.press(autoriser)
            consent = self.wait_for_consent()
        accessibility.press(self.button("OK"))
        self.expect("permissionState", "ready")

    def test_closing_by_the_window_manager_decides_nothing(self):
        _, consent = self.start_asking()
        self.display.ask_to_close(consent)
        self.expect("permissionState", "needsPermission")
        self.assertEqual(self.stored(), "undecided")

    def test_without_an_answer_an_earlier_refusal_still_counts(self):
        morla("defaults", "write", "automationPermissionDenied", "boolean", "true")
        self.start_asking()
        xdotool("key", "Escape")
        self.expect("permissionState", "permissionDenied")
        self.assertEqual(self.stored(), "undecided")

    def test_keys_reach_both_buttons_but_decide_nothing_by_themselves(self):
        self.start_asking()
        xdotool("key", "Return", "space")
        self.trace.expect_none(lambda event: event.get("value") in ("ready", "permissionDenied"), 1,
                               "an answer that nobody gave")
        xdotool("key", "Tab", "Tab", "Return")
        self.expect("permissionState", "ready")
        self.assertEqual(self.stored(), "allow")

    def test_the_space_bar_refuses_where_the_keyboard_is_on_refuser(self):
        self.start_asking()
        xdotool("key", "Tab", "space")
        self.expect("permissionState", "permissionDenied")

    def test_nothing_else_stands_still_meanwhile(self):
        capture_one, _ = self.start_asking()
        programs.bring_to_front(self.display, capture_one)
        self.start_other_application()
        self.expect_panel("hidden")
        morla("do", "toggleCheckMode")
        self.assertEqual(self.default("checkModeEnabled"), "true")

    def test_it_stays_above_the_application_in_front(self):
        capture_one, consent = self.start_asking()
        programs.bring_to_front(self.display, capture_one)
        self.assertTrue(is_above(self.display, consent, capture_one))

    def test_a_decision_made_elsewhere_takes_the_question_away(self):
        for decision, state in (("allow", "ready"), ("deny", "permissionDenied")):
            with self.subTest(decision):
                _, consent = self.start_asking()
                control("set", "automation", decision)
                self.expect("permissionState", state)
                self.expect_closed(consent)
                control("set", "automation", "undecided")
                self.desktop.end()

    def test_quitting_meanwhile_ends_the_program(self):
        self.start_asking()
        self.assertEqual(self.desktop.quit_morla(), 0)

    def test_it_is_asked_for_an_application_that_does_not_run_and_starts_nothing(self):
        self.start_morla()
        self.wait_for_consent()
        xdotool("key", "Tab", "Tab", "Return")
        self.expect("permissionState", "ready")
        self.expect("lastDetectedFormat", "NOT_RUNNING")
        self.assertEqual(control("get", "events", check=False), "", "something started Capture One")


class LostDisplay(PrivacyTest):
    def start_server(self):
        """Another X server, without a window manager, and its name."""
        reader, writer = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(writer), "-screen", "0", "800x600x24", "-nolisten", "tcp"],
                                  pass_fds=[writer], stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(server.wait)
        self.addCleanup(server.kill)
        os.close(writer)
        with os.fdopen(reader, encoding="ascii") as report:
            return server, ":" + report.readline().strip()

    def test_the_program_ends_when_its_display_goes_while_it_asks(self):
        server, name = self.start_server()
        other = Display(name)  # first: whoever is alone on a server and goes takes it along to a new start
        with unittest.mock.patch.dict(os.environ, DISPLAY=name):
            self.start_morla()
        asks = other.wait_until(lambda: any(other.text(each, "_NET_WM_NAME") == CONSENT and other.geometry(each)
                                            for each in other.children()), SECONDS)
        other.close()
        self.assertTrue(asks, "the consent window is not there")
        server.kill()
        self.assertEqual(self.desktop.morla.wait(SECONDS), 1)
        self.assertEqual(self.stored(), "undecided")


class Poll(PrivacyTest):
    def start_and_take_back(self):
        """Up to the question that a round of the poll asks."""
        self.decide("allow")
        self.start_both()
        control("set", "automation", "undecided")
        return self.wait_for_consent()

    def test_waits_for_the_answer_and_goes_on(self):
        self.start_and_take_back()
        self.trace.skip()
        self.trace.expect_none(script("status"), SEVERAL_ROUNDS_SECONDS, "a round that overlaps the one that waits")
        accessibility.press(self.button("OK"))
        self.expect("isCameraConnected", True)

    def test_does_not_come_back_each_second_to_a_question_that_was_closed(self):
        consent = self.start_and_take_back()
        xdotool("key", "Escape")
        self.expect_closed(consent)
        self.expect("lastDetectedFormat", "ERROR")
        for _ in range(4):
            self.expect("lastDetectedFormat", "ERROR")
            self.assertIsNone(self.window_called(CONSENT), "the question came back")
        control("set", "automation", "allow")
        self.expect("isCameraConnected", True)

    def test_a_refusal_ends_it(self):
        self.start_and_take_back()
        accessibility.press(self.button("Refuser"))
        self.expect("permissionState", "permissionDenied")
        self.expect("lastDetectedFormat", None)
        self.trace.expect_none(script("status"), SEVERAL_ROUNDS_SECONDS, "a status script after the refusal")


class Missing(PrivacyTest):
    def test_capture_one_neither_running_nor_installed_is_said_and_nobody_is_asked(self):
        shutil.move(BUNDLE, BUNDLE + ".away")
        self.addCleanup(shutil.move, BUNDLE + ".away", BUNDLE)
        self.start_morla()
        self.expect("permissionState", "checking")
        self.expect("permissionState", "captureOneMissing")
        self.trace.expect_none(script("probe"), 1, "a probe for nobody")
        self.assertIsNone(self.window_called(CONSENT))


def is_above(display, upper, lower):
    """Whether the frame around one managed window lies above that around another."""
    order = [window for frame in display.children() for window in (frame, *display.children(frame),
                                                                   *inner(display, frame))]
    return order.index(upper) > order.index(lower)


def inner(display, frame):
    return [window for child in display.children(frame) for window in display.children(child)]


if __name__ == "__main__":
    main()
