# desktop openbox: --wm openbox
# desktop xfwm4: --wm xfwm4
"""The window of the alerts' settings under a person's hands: what is switched and picked in it is stored and watched,
and Capture One has the keyboard again after each click."""

import os
import shutil

from lib.alerttest import FORMAT, ISO, SETTINGS, SETTINGS_TITLE, AlertTest, store, store_places
from lib.morlatest import SECONDS, control, main, morla, xdotool
from lib.privacytest import PrivacyTest
from desktoplib import accessibility

BUNDLE = os.path.join(os.environ["HOME"], "Applications", "Capture One.app")
# Role, name and whether it can be used, of everything that does something.
CONTROLS = [("check box", "Format", True), ("check box", "ISO", True), ("combo box", "ISO attendu", False),
            ("check box", "Ouverture", True), ("combo box", "Ouverture attendue", False), ("check box", "Vitesse", True),
            ("combo box", "Vitesse attendue", False), ("push button", "Fermer", True)]


class Settings(AlertTest):
    def test_every_control_has_a_role_and_a_french_name(self):
        self.start_capture_one()
        self.start_morla()
        self.open_settings()
        self.switch("Format")
        self.assertEqual(accessibility.controls(self.desktop.morla.pid), CONTROLS)
        self.expect_spoken("Surveillance active", "MX-1 Studio", "Format", "ISO", "Ouverture", "Vitesse")

    def test_what_is_switched_and_picked_is_stored_and_watched(self):
        store_places()
        capture_one = self.start_capture_one()
        self.start_morla(watching=False)
        self.open_settings()
        self.expect_spoken("Aucune alerte activée")
        self.click(self.switch("Format"))
        self.expect_stored("formatMonitorEnabled", True)
        self.expect_spoken("Surveillance active", "MX-1 Studio")
        self.expect_keyboard(capture_one)
        self.click(self.switch("ISO"))
        self.expect_stored("isoAlertEnabled", True)
        self.expect_keyboard(capture_one)
        self.pick("ISO attendu", "400")
        self.expect_stored("isoExpectedValue", "400")
        self.expect_panel("shown", ISO)
        self.expect_spoken("1 alerte active", "L'ISO n'est pas : 400", "ISO détecté : 100")
        self.expect_keyboard(capture_one)
        accessibility.press(self.switch("Ouverture"))
        self.expect_stored("apertureAlertEnabled", True)
        control("set", "camera.format", "JPEG")
        self.expect_panel("shown", FORMAT)
        self.expect_spoken("2 alertes actives")
        self.click(self.switch("Format"))
        self.expect_stored("formatMonitorEnabled", False)
        for name in (FORMAT, ISO):
            self.expect_panel("hidden", name)
        self.expect_keyboard(capture_one)

    def pick(self, label, value):
        self.click(self.picker(label))
        self.wait_for_list()
        self.click(self.control_called("menu item", value))

    def list(self):
        """The window of an open list: it is MORLA's and has no name."""
        return next((each for each in reversed(self.display.children()) if self.display.override_redirect(each)
                     and self.display.geometry(each) and (self.display.text(each, "WM_CLASS") or "")[:6] == "morla\0"
                     and not self.display.text(each, "WM_NAME")), None)

    def wait_for_list(self):
        window = self.display.wait_until(self.list, SECONDS)
        self.assertTrue(window, "no list has opened")
        return window

    def test_an_open_list_stays_open_while_the_camera_is_asked(self):
        store(isoAlertEnabled=True)
        capture_one = self.start_both()
        self.open_settings()
        self.click(self.picker("ISO attendu"))
        opened = self.wait_for_list()
        self.trace.skip()
        control("set", "camera.iso", "800")
        self.expect("lastDetectedISO", "800")
        for _ in range(2):
            self.expect("isCameraConnected", True)
        self.assertEqual(self.list(), opened)
        row = self.control_called("menu item", "1600")
        self.click(row)
        self.expect_stored("isoExpectedValue", "1600")
        self.expect_keyboard(capture_one)

    def test_there_is_one_window_which_comes_forward_and_closes(self):
        capture_one = self.start_both()
        window = self.open_settings()
        self.expect_keyboard(capture_one)
        morla("do", "openAlerte")
        self.trace.skip()
        self.expect("isCameraConnected", True)
        own = [each for each in self.display.children() if self.display.text(each, "WM_NAME") == SETTINGS_TITLE]
        self.assertEqual(own, [window])
        self.click(self.control_called("push button", "Fermer"))
        self.expect_panel("hidden", SETTINGS)
        self.expect_keyboard(capture_one)
        window = self.open_settings()
        # Until the button is let go the window has the keyboard, which Escape needs.
        xdotool("mousemove", *self.centre(window), "mousedown", 1)
        has_keyboard = lambda: self.display.focus_window() == window
        self.assertTrue(self.display.wait_until(has_keyboard, SECONDS), "the press does not take the keyboard")
        xdotool("key", "Escape")
        self.expect_panel("hidden", SETTINGS)
        xdotool("mouseup", 1)
        self.expect_keyboard(capture_one)

    def test_whatever_the_camera_says_stays_inside_the_windows(self):
        store_places()
        store(isoAlertEnabled=True, isoExpectedValue="400")
        self.start_both()
        window = self.open_settings()
        settings = self.display.geometry(window)
        control("set", "camera.available.iso", "|".join(str(each) for each in range(1, 501)))
        self.trace.skip()
        for text, spoken in (("9" * 10000, "9" * 10000), ("עברית مرحبا", "עברית مرحبا"), ("📷👩‍👩‍👧‍👦🇫🇷", "📷👩‍👩‍👧‍👦🇫🇷"),
                             ("a\nb\tc\x07d", None)):
            control("set", "camera.iso", text)
            control("set", "camera.name", text)
            control("set", "camera.format", text)
            self.expect("lastDetectedISO", text)
            self.expect("lastDetectedFormat", text)
            self.expect("cameraName", text)
            if spoken:
                self.expect_spoken("ISO détecté : " + spoken, "Format détecté : " + spoken)
            for name in (FORMAT, ISO):
                banner = self.wait_for_top_level(name)
                self.assertEqual(self.display.geometry(banner)[2:], (300, 80), text[:20])
            # Two lines are nine points higher than one.
            x, y, width, height = self.display.geometry(window)
            more = 9 if "\n" in text else 0
            self.assertEqual((x, y, width, height - more), settings, text[:20])
        self.click(self.picker("ISO attendu"))
        x, y, width, height = self.display.geometry(self.wait_for_list())
        self.assertTrue(0 <= y and y + height <= 1080 and width < settings[2], (x, y, width, height))
        xdotool("key", "Escape")
        self.assertTrue(self.display.wait_until(lambda: not self.list(), SECONDS), "the list stays open")
        self.assertEqual(self.desktop.quit_morla(), 0)


class WayToThePermission(AlertTest, PrivacyTest):
    def test_leads_from_the_question_to_the_watch(self):
        self.decide("undecided")
        self.start_capture_one()
        self.start_morla()
        self.wait_for_consent()
        settings = self.open_settings()
        self.expect_spoken("Vérification...")
        xdotool("key", "Escape")
        self.expect("permissionState", "needsPermission")
        self.expect_spoken("Autorisation requise")
        # Who has just closed the question is not asked at once.
        self.trace.expect_none(lambda event: "script" in event, 3.5, "a script that the settings have not sent")
        accessibility.press(self.button("Autoriser"))
        _, top, _, height = self.display.geometry(self.wait_for_consent())
        self.assertLessEqual(top + height, self.display.geometry(settings)[1], "the settings cover the question")
        accessibility.press(self.button("OK"))
        self.expect("permissionState", "ready")
        self.expect("isCameraConnected", True)
        self.expect_spoken("Surveillance active")

    def test_a_refusal_can_be_taken_back(self):
        self.decide("deny")
        self.start_capture_one()
        self.start_morla()
        self.expect("permissionState", "permissionDenied")
        self.open_settings()
        self.expect_spoken("Permission refusée")
        accessibility.press(self.button("Réglages"))
        title = "Confidentialité : Automatisation"
        opened = self.display.wait_until(lambda: self.window_called(title), SECONDS)
        self.assertTrue(opened, "the privacy settings did not open")
        self.decide("allow")
        accessibility.press(self.button("Réessayer"))
        self.expect("permissionState", "ready")
        self.expect_spoken("Surveillance active")

    def test_a_missing_capture_one_is_looked_for_again(self):
        self.decide("allow")
        shutil.move(BUNDLE, BUNDLE + ".away")
        self.addCleanup(shutil.move, BUNDLE + ".away", BUNDLE)
        self.start_morla()
        self.expect("permissionState", "captureOneMissing")
        self.open_settings()
        self.expect_spoken("Capture One introuvable")
        self.start_capture_one()
        accessibility.press(self.button("Réessayer"))
        self.expect("permissionState", "ready")
        self.expect("isCameraConnected", True)


if __name__ == "__main__":
    main()
