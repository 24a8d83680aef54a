"""What the tests about the user's permissions share: each begins with MORLA's permission undecided."""

import json
import os

from .morlatest import SECONDS, DesktopTest
from desktoplib import accessibility

# What the consent window is called.
CONSENT = "Autorisation"


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
