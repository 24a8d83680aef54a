# desktop openbox: --wm openbox
# desktop xfwm4: --wm xfwm4
"""The user's permissions: MORLA asks, the window about them shows them, and every state is reached."""

import json
import os
import shutil
import signal
import subprocess
import unittest.mock

from lib import accessibility
from lib.morlatest import SECONDS, DesktopTest, Display, control, main, morla, programs, script, xdotool

# What the consent window is called.
CONSENT = "Autorisation"
QUESTION = "MORLA souhaite contrôler « Capture One »"
BUNDLE = os.path.join(os.environ["HOME"], "Applications", "Capture One.app")
# In this long a running poll would have asked three times.
SEVERAL_ROUNDS_SECONDS = 4


class PrivacyTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.decide("undecided")

    def store_path(self):
        return os.path.join(os.environ["XDG_DATA_HOME"], "privacy", "permissions.json")

    def stored(self):
        with open(self.store_path(), encoding="utf-8") as file:
            return json.load(file)["automation"]["app.morla.MORLA"]["com.captureone.captureone16"]

    def decide(self, decision):
        """Without any of the programs."""
        with open(self.store_path(), encoding="utf-8") as file:
            store = json.load(file)
        store["automation"]["app.morla.MORLA"]["com.captureone.captureone16"] = decision
        with open(self.store_path() + ".new", "w", encoding="utf-8") as file:
            json.dump(store, file)
        os.replace(self.store_path() + ".new", self.store_path())

    def window_called(self, title):
        return next((each for each in self.display.clients()
                     if self.display.text(each, "_NET_WM_NAME") == title and self.display.geometry(each)), None)

    def wait_for_consent(self):
        """The window, once it has the keyboard."""
        def in_front():
            window = self.window_called(CONSENT)
            return window if window and self.display.active_window() == window else None

        window = self.display.wait_until(in_front, SECONDS)
        self.assertTrue(window, "the consent window is not in front")
        return window

    def expect_closed(self, window):
        self.assertTrue(self.display.wait_until(lambda: window not in self.display.clients(), SECONDS),
                        "the consent window is still there")

    def expect_active(self, window):
        self.assertTrue(self.display.wait_until(lambda: self.display.active_window() == window, SECONDS),
                        "the window did not get the keyboard back")

    def button(self, name, program=None):
        return accessibility.find((program or self.desktop.morla).pid, "push button", name, SECONDS)

    def start_asking(self):
        """Both programs, up to the question; gives Capture One's window and the consent window."""
        capture_one = self.start_capture_one()
        self.start_morla()
        self.expect("permissionState", "checking")
        return capture_one, self.wait_for_consent()


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
        with unittest.mock.patch.dict(os.environ, DISPLAY=name):
            self.start_morla()
        other = Display(name)
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


class Settings(PrivacyTest):
    """The window about the permissions."""

    AUTOMATION = "Confidentialité : Automatisation"
    SCREEN = "Confidentialité : Enregistrement de l’écran"
    SCREEN_ADDRESS = "x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture"
    CHOICE = "MORLA : Capture One"

    def setUp(self):
        super().setUp()
        self.addCleanup(self.end_settings)

    def wait_in_front(self, title):
        window = self.display.wait_until(
            lambda: next((each for each in [self.window_called(title)] if each == self.display.active_window()), None)
            if self.window_called(title) else None, SECONDS)
        self.assertTrue(window, f"{title} is not in front")
        return window

    def process(self):
        """Of the window's program; None when it does not run."""
        answer = programs.run("dbus-send", "--session", "--print-reply=literal", "--dest=org.freedesktop.DBus", "/",
                              "org.freedesktop.DBus.GetConnectionUnixProcessID",
                              "string:com.apple.systempreferences", check=False)
        return int(answer.stdout.split()[-1]) if answer.returncode == 0 else None

    def end_settings(self):
        if self.process():
            os.kill(self.process(), signal.SIGTERM)

    def open_settings(self, *address):
        self.settings = programs.Program([programs.path_of("captureone-sim"), "--privacy", *address],
                                         os.path.join(self.folder, "privacy.log"))
        self.addCleanup(self.settings.end)

    def choice(self):
        return accessibility.find(self.process(), "combo box", self.CHOICE, SECONDS)

    def expect_choice(self, value):
        accessibility.wait_until(lambda: self.choice().get_name() == value, SECONDS, f"{self.CHOICE} is {value}")

    def choose(self, value):
        """As a hand does, through the list that opens."""
        xdotool("mousemove", *accessibility.middle(self.choice()), "click", 1)
        item = accessibility.find(self.process(), "list item", value, SECONDS)
        accessibility.wait_until(lambda: accessibility.middle(item)[0] > 0, SECONDS, "the list is open")
        xdotool("mousemove", *accessibility.middle(item), "click", 1)

    def test_morla_opens_it_on_its_page_and_in_front(self):
        self.decide("allow")
        capture_one = self.start_both()
        morla("do", "openAutomationSettings")
        settings = self.wait_in_front(self.AUTOMATION)
        programs.bring_to_front(self.display, capture_one)
        morla("do", "openAutomationSettings")
        self.assertEqual(self.wait_in_front(self.AUTOMATION), settings, "a second window")

    def test_it_is_the_front_application_under_the_identifier_of_the_system_settings(self):
        self.decide("allow")
        self.start_both()
        morla("do", "openAutomationSettings")
        self.wait_in_front(self.AUTOMATION)
        self.trace.wait_for(lambda event: event.get("id") == "com.apple.systempreferences" and
                            event.get("front") == "Confidentialité", SECONDS, "the settings are in front")

    def test_a_second_start_switches_the_page_of_the_first(self):
        self.open_settings()
        window = self.wait_in_front(self.AUTOMATION)
        first = self.settings
        self.start_other_application()
        self.open_settings(self.SCREEN_ADDRESS)
        self.assertEqual(self.settings.wait(SECONDS), 0)
        self.assertEqual(self.wait_in_front(self.SCREEN), window)
        self.assertIsNone(first.poll())

    def test_morla_is_listed_although_the_store_does_not_know_it(self):
        os.remove(self.store_path())
        self.open_settings()
        self.wait_in_front(self.AUTOMATION)
        self.expect_choice("À demander")

    def test_a_choice_is_stored_and_morla_obeys(self):
        self.decide("allow")
        self.start_both()
        self.open_settings()
        self.wait_in_front(self.AUTOMATION)
        self.expect_choice("Autorisé")
        self.choose("Refusé")
        self.expect("permissionState", "permissionDenied")
        self.assertEqual(self.stored(), "deny")

    def test_it_follows_what_others_decide(self):
        self.start_capture_one()
        self.open_settings()
        self.wait_in_front(self.AUTOMATION)
        for decision, shown in (("deny", "Refusé"), ("allow", "Autorisé"), ("undecided", "À demander")):
            control("set", "automation", decision)
            self.expect_choice(shown)

    def test_a_choice_there_answers_the_question_that_is_open(self):
        _, consent = self.start_asking()
        morla("do", "openAutomationSettings")
        self.wait_in_front(self.AUTOMATION)
        self.choose("Autorisé")
        self.expect("permissionState", "ready")
        self.expect_closed(consent)


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
