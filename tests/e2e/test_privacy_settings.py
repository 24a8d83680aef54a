# desktop openbox: --wm openbox
# desktop xfwm4: --wm xfwm4
"""The window about the user's permissions, and MORLA's way to it."""

import os
import signal

from lib.morlatest import SECONDS, control, main, morla, programs, xdotool
from lib.privacytest import PrivacyTest
from desktoplib import accessibility


class Settings(PrivacyTest):
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
        """With its window, which the next test must not take for its own."""
        if process := self.process():
            os.kill(process, signal.SIGTERM)
        gone = self.display.wait_until(
            lambda: not any(self.window_called(title) for title in (self.AUTOMATION, self.SCREEN)), SECONDS)
        self.assertTrue(gone, "the window of the settings is still there")

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


if __name__ == "__main__":
    main()
