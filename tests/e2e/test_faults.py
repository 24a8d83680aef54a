# desktop: --tray none
"""Capture One at its worst: what the camera watch publishes when it refuses, quits or talks nonsense."""

from lib.morlatest import SECONDS, DesktopTest, control, main, published, script

# What the status script asks for: the documents, the camera, and eight of its properties.
EVENTS_OF_A_ROUND = 10
# In this long a running poll would have asked twice.
SILENCE_SECONDS = 2.5
# The longest argument of a program is a little more, and a reply has eight fields.
AN_EIGHTH_OF_A_MEGABYTE = 131_000


class Fault(DesktopTest):
    def expect_word(self, *words):
        """The next format or status word, which must be one of these."""
        found = self.trace.wait_for(
            lambda event: event.get("published") == "FormatMonitor.lastDetectedFormat", SECONDS, "a format")["value"]
        self.assertIn(found, words)
        return found

    def expect_answer(self):
        """The answer of the next status script: its text and the number of its error."""
        number = self.trace.wait_for(script("status"), SECONDS, "a status script")["script"]
        answer = self.trace.wait_for(lambda event: event.get("script") == number and "ms" in event, SECONDS,
                                     "its answer")
        return answer["text"], answer["error"] and answer["error"]["number"]

    def set_between_rounds(self, key, value):
        """So that faults that count events begin with the first one of a round."""
        self.between_rounds(lambda: control("set", key, str(value)))


class Replies(Fault):
    """The script joins eight replies, so there is no end-to-end way to fewer than eight fields."""

    def test_are_published_as_they_came(self):
        self.start_both()
        real = {each: control("get", "camera." + each) for each in ("iso", "aperture", "shutter")}
        lists = {each: control("get", "camera.available." + each).split("|") for each in ("iso", "aperture")}
        long = "x" * AN_EIGHTH_OF_A_MEGABYTE
        rows = (
            ("eight fields", "fault.reply", "a", ["a"] * 4, [["a"]] * 3, "a"),
            ("nine fields", "camera.format", "RAW||9", ["RAW", "9", real["iso"], real["aperture"]],
             [[real["shutter"]], lists["iso"], lists["aperture"]], control("get", "camera.available.shutter")),
            ("sixteen fields", "fault.reply", "a||b", ["a", "b", "a", "b"], [["a"], ["b"], ["a"]], "b"),
            ("nothing but separators", "fault.reply", "||", [""] * 4, [[]] * 3, ""),
            ("a megabyte", "fault.reply", long, [long] * 4, [[long]] * 3, long),
            ("bytes that are no UTF-8", "fault.reply", "\udcff|\udcc3", ["\ufffd|\ufffd"] * 4,
             [["\ufffd", "\ufffd"]] * 3, "\ufffd|\ufffd"),
        )
        for label, key, value, settings, available, name in rows:
            with self.subTest(label):
                control("set", key, value)
                self.trace.skip()
                for kind, setting in zip(("Format", "ISO", "Aperture", "Shutter"), settings):
                    self.expect("lastDetected" + kind, setting)
                self.expect("isCameraConnected", True)
                for kind, offers in zip(("ISOs", "Apertures", "Shutters"), available):
                    self.expect("available" + kind, offers)
                self.expect("cameraName", name)
                control("reset")

    def test_that_are_no_text_leave_no_reading(self):
        self.start_both()
        for kind, word, clears in (("integer", "ERROR", False), ("missing", "CAMERA_OFF", True),
                                   ("nothing", "CAMERA_OFF", True)):
            with self.subTest(kind):
                self.set_between_rounds("fault.reply-kind", kind)
                # A whole number joined with text is a list, which has no text: no answer, and no error either.
                self.assertEqual(self.expect_answer(), (word if clears else None, None))
                self.expect_word(word)
                control("set", "fault.reply-kind", "text")
                if clears:
                    self.expect("lastDetectedISO", None)
                    self.expect("isCameraConnected", False)
                else:
                    self.trace.expect_none(published("FormatMonitor.isCameraConnected", False), 0.5, "a cleared camera")
                self.expect("isCameraConnected", True)

    def test_an_empty_setting_is_a_reading_all_the_same(self):
        self.start_both()
        control("set", "camera.iso", "")
        self.expect("lastDetectedISO", "")
        self.expect("isCameraConnected", True)


class EveryEvent(Fault):
    def test_a_round_has_ten(self):
        def count():
            rounds = [event for event in self.trace.events()
                      if "ms" in event and "MX-1 Studio" in (event["text"] or "")]
            return int(control("get", "events")), len(rounds)

        self.start_both()
        self.expect_answer()
        events, rounds = self.between_rounds(count)
        self.assertEqual(events, EVENTS_OF_A_ROUND * rounds)
        self.assertGreaterEqual(rounds, 2)

    def test_quitting_at_any_is_published_and_nothing_starts_it_again(self):
        self.start_both()
        for k in range(1, EVENTS_OF_A_ROUND + 1):
            with self.subTest(k):
                self.set_between_rounds("fault.quit-at-event", k)
                # The first event comes before the script's `try`, which takes every later failure for a camera that
                # is off.
                self.assertEqual(self.expect_answer(), (None, -609) if k == 1 else ("CAMERA_OFF", None))
                self.expect_word("ERROR" if k == 1 else "CAMERA_OFF")
                self.assertEqual(self.desktop.capture_one.wait(SECONDS), 0)
                self.assertEqual(control("get", "events", check=False), "", "something has started it again")
                if k in (1, EVENTS_OF_A_ROUND):
                    self.expect("lastDetectedFormat", "NOT_RUNNING")
                    self.expect("lastDetectedISO", None)
                self.start_capture_one()
        self.expect("isCameraConnected", True)

    def test_a_refusal_of_the_first_ends_the_watch_and_of_any_other_is_a_camera_that_is_off(self):
        self.start_both()
        for k in range(EVENTS_OF_A_ROUND, 1, -1):
            with self.subTest(k):
                self.set_between_rounds("fault.refuse-at-event", k)
                self.assertEqual(self.expect_answer(), ("CAMERA_OFF", None))
                self.expect_word("CAMERA_OFF")
                self.expect("isCameraConnected", False)
        self.set_between_rounds("fault.refuse-at-event", 1)
        self.assertEqual(self.expect_answer(), (None, -1743))
        self.expect("permissionState", "permissionDenied")
        self.expect("lastDetectedFormat", None)
        self.trace.expect_none(script("status"), SILENCE_SECONDS, "a status script after the refusal")
        self.assertEqual(self.default("automationPermissionDenied"), "true")


if __name__ == "__main__":
    main()
