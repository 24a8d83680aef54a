# desktop: --tray top
"""From Capture One's camera to MORLA's published state, through the real programs."""

from lib.morlatest import DesktopTest, control, main, morla, programs, script

# In this long a running poll would have asked twice.
SILENCE_SECONDS = 3


class Start(DesktopTest):
    def test_reads_the_camera_once_the_permission_is_known(self):
        self.start_capture_one()
        self.start_morla()
        self.expect("permissionState", "checking")
        self.expect("permissionState", "ready")
        self.expect("lastDetectedFormat", control("get", "camera.format"))
        self.expect("lastDetectedISO", control("get", "camera.iso"))
        self.expect("lastDetectedAperture", control("get", "camera.aperture"))
        self.expect("lastDetectedShutter", control("get", "camera.shutter"))
        self.expect("isCameraConnected", True)
        self.expect("availableISOs", control("get", "camera.available.iso").split("|"))
        self.expect("availableApertures", control("get", "camera.available.aperture").split("|"))
        self.expect("availableShutters", control("get", "camera.available.shutter").split("|"))
        self.expect("cameraName", control("get", "camera.name"))

    def test_asks_for_the_permission_but_not_for_the_camera_while_the_watch_is_off(self):
        self.start_capture_one()
        self.start_morla(watching=False)
        self.expect("permissionState", "ready")
        self.trace.expect_none(script("status"), SILENCE_SECONDS, "a status script although the watch is off")

    def test_with_capture_one_installed_but_not_running_it_waits_for_it_and_does_not_start_it(self):
        self.start_morla()
        self.expect("permissionState", "ready")
        self.expect("lastDetectedFormat", "NOT_RUNNING")
        self.expect("lastDetectedFormat", "NOT_RUNNING")
        self.assertEqual(control("get", "events", check=False), "", "something started Capture One")
        self.start_capture_one()
        self.expect("isCameraConnected", True)


class Poll(DesktopTest):
    def test_follows_format_and_iso(self):
        self.start_both()
        for key, name, value in (("camera.format", "lastDetectedFormat", "JPEG"),
                                 ("camera.iso", "lastDetectedISO", "800"),
                                 ("camera.aperture", "lastDetectedAperture", "f/2.8"),
                                 ("camera.shutter", "lastDetectedShutter", "1/60")):
            with self.subTest(key):
                control("set", key, value)
                self.expect(name, value)

    def test_publishes_that_the_camera_is_off_and_clears_its_values(self):
        self.start_both()
        control("set", "camera.power", "false")
        self.expect("lastDetectedFormat", "CAMERA_OFF")
        self.expect("lastDetectedISO", None)
        self.expect("isCameraConnected", False)
        control("set", "camera.power", "true")
        self.expect("isCameraConnected", True)

    def test_publishes_that_no_document_is_open(self):
        self.start_both()
        control("set", "document.open", "0")
        self.expect("lastDetectedFormat", "NO_DOCUMENT")
        self.expect("isCameraConnected", False)
        control("set", "document.open", "1")
        self.expect("isCameraConnected", True)

    def test_goes_on_while_capture_one_is_away_without_starting_it(self):
        self.start_both()
        control("quit")
        self.assertEqual(self.desktop.capture_one.wait(programs.ENDS_WITHIN_SECONDS), 0)
        self.expect("lastDetectedFormat", "NOT_RUNNING")
        self.expect("lastDetectedFormat", "NOT_RUNNING")  # a second round
        self.assertEqual(control("get", "events", check=False), "", "something started Capture One again")
        self.start_capture_one()
        self.expect("isCameraConnected", True)

    def test_publishes_that_no_answer_came_when_capture_one_ends_in_the_middle_of_an_event(self):
        self.start_both()
        control("set", "fault.quit-at-event", "2")
        self.trace.wait_for(  # which one depends on whether the script was inside its `try`
            lambda event: event.get("value") in ("ERROR", "CAMERA_OFF")
            and event.get("published") == "FormatMonitor.lastDetectedFormat", 15, "the lost answer is published")
        self.expect("lastDetectedFormat", "NOT_RUNNING")


class Permission(DesktopTest):
    def test_a_refusal_stops_the_poll(self):
        self.start_both()
        control("set", "automation", "deny")
        self.expect("permissionState", "permissionDenied")
        self.expect("lastDetectedFormat", None)
        self.trace.expect_none(script("status"), SILENCE_SECONDS, "a status script after the refusal")
        self.assertEqual(self.default("automationPermissionDenied"), "true")

    def test_the_poll_runs_again_after_a_restart_with_the_permission(self):
        self.start_both()
        control("set", "automation", "deny")
        self.expect("permissionState", "permissionDenied")
        control("set", "automation", "allow")
        self.assertEqual(self.desktop.quit_morla(), 0)
        self.start_morla()
        self.expect("permissionState", "ready")
        self.expect("isCameraConnected", True)
        self.assertEqual(self.default("automationPermissionDenied"), "false")

    def test_a_refusal_before_the_start_is_known_from_the_probe(self):
        self.start_capture_one()
        control("set", "automation", "deny")
        self.start_morla()
        self.expect("permissionState", "permissionDenied")
        self.trace.expect_none(script("status"), SILENCE_SECONDS, "a status script without permission")


class Front(DesktopTest):
    def test_the_button_goes_with_capture_one(self):
        capture_one = self.start_capture_one()
        self.start_morla()
        self.expect_panel("shown")
        other, _ = self.start_other_application()
        self.expect_panel("hidden")
        programs.bring_to_front(self.display, capture_one)
        self.expect_panel("shown")
        programs.bring_to_front(self.display, other)
        self.expect_panel("hidden")

    def test_the_button_stays_away_when_another_application_is_in_front_from_the_start(self):
        self.start_capture_one()
        self.start_other_application()
        self.start_morla()
        self.expect("isCameraConnected", True)
        self.assertFalse(self.top_level("FloatingButtonPanel"))

    def test_switching_window_mode_off_hides_the_button_and_on_shows_it(self):
        self.start_capture_one()
        self.start_morla()
        self.expect_panel("shown")
        morla("do", "toggleWindowMode")
        self.trace.wait_for(lambda event: event.get("notification") == "windowModeChanged", 15, "windowModeChanged")
        self.expect_panel("hidden")
        morla("do", "toggleWindowMode")
        self.expect_panel("shown")


if __name__ == "__main__":
    main()
