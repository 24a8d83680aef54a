# desktop openbox: --wm openbox
# desktop xfwm4: --wm xfwm4
# desktop twice: --wm openbox --scale 2 --monitor 3840x2160
"""The red banners on the screen: above everything, never with the keyboard, each where its user has put it."""

import json
import os

from lib.alerttest import (APERTURE, BANNER_SIZE, BANNERS, FORMAT, ISO, PLACES, SHUTTER, AlertTest, store,
                           store_places)
from lib.morlatest import SECONDS, control, main, script, xdotool
from desktoplib import accessibility

def expect_everything():
    """Settings of a photographer whom the camera as it is disappoints in every way."""
    store(isoAlertEnabled=True, isoExpectedValue="400", apertureAlertEnabled=True, apertureExpectedValue="f/4",
          shutterAlertEnabled=True, shutterExpectedValue="1/60")


class Banner(AlertTest):
    def test_comes_within_a_round_above_all_and_leaves_the_keyboard_to_whom_it_belongs(self):
        self.start_both()
        window, other = self.start_other_application()
        before = self.keyboard()
        self.make_mismatch()
        asked = self.trace.wait_for(script("status"), SECONDS, "the next round")["script"]
        banner, frame = self.expect_banner()
        rounds = [event["script"] for event in self.trace.events() if event.get("kind") == "status"]
        self.assertEqual(rounds[-1], asked, "another round was needed")
        self.assertEqual(frame, self.centred(BANNER_SIZE), "in the middle of the screen")
        self.expect_red(banner)
        self.assertEqual(self.keyboard(), before, "after it came")
        xdotool("mousemove", *self.centre(banner), "click", 1)
        self.assertEqual(self.keyboard(), before, "after a click on it")
        self.drag(banner, -400, 300)
        frame = [frame[0] - 400 / self.scale, frame[1] - 300 / self.scale, *BANNER_SIZE]
        self.expect_frame(FORMAT, frame)
        self.assertEqual(self.keyboard(), before, "after the drag")
        self.expect_keys(other)
        # The window is now as large as the screen, and still has the keyboard.
        self.display.ask_for_full_screen(window)
        filled = lambda: self.display.geometry(window) == self.display.geometry(self.display.root)
        self.assertTrue(self.display.wait_until(filled, SECONDS), "the window does not fill the screen")
        self.expect_red(banner)
        self.assertEqual(self.keyboard(), before, "below the banner")
        self.expect_keys(other)
        self.assertNotIn("focus out", other.output())
        # The camera is right: it goes; wrong again: it is back at its place, and so after a restart.
        self.between_rounds(lambda: control("set", "camera.format", "RAW"))
        self.expect_panel("hidden", FORMAT)
        self.make_mismatch()
        self.assertEqual(self.expect_banner()[1], frame)
        self.assertEqual(self.desktop.quit_morla(), 0)
        self.assertEqual([float(self.default(FORMAT + axis)) for axis in "XY"], frame[:2])
        self.start_morla()
        banner, again = self.expect_banner()
        self.assertEqual(again, frame)
        self.expect_red(banner)
        self.assertEqual(self.keyboard(), before, "after the restart")

    def expect_keys(self, program):
        """What is typed reaches the program."""
        before = program.output()
        xdotool("key", "a", "b")
        typed = "down a\nup a\ndown b\nup b\n"
        accessibility.wait_until(lambda: program.output() == before + typed, SECONDS, "the keys arrive, and nothing else")

    def test_the_four_of_them_have_their_own_places_and_follow_capture_one(self):
        store_places()
        expect_everything()
        self.start_capture_one()
        control("set", "camera.format", "TIFF")
        self.start_morla()
        banners = {}
        for name in BANNERS:
            banners[name], frame = self.expect_banner(name)
            self.assertEqual(frame, [*PLACES[name], *BANNER_SIZE])
        self.expect_spoken("Le format n'est pas : RAW", "Format détecté : TIFF", "L'ISO n'est pas : 400",
                           "ISO détecté : 100", "L'ouverture n'est pas : f/4", "Ouverture détectée : f/8",
                           "La vitesse n'est pas : 1/60", "Vitesse détectée : 1/125")
        for banner in banners.values():
            self.expect_red(banner)
        geometry = self.display.geometry(banners[ISO])
        control("set", "camera.iso", "640")
        self.expect_spoken("ISO détecté : 640")
        self.assertNotIn("ISO détecté : 100", self.spoken())
        self.assertEqual(self.display.geometry(banners[ISO]), geometry)
        moves = [event for event in self.trace.events()
                 if event.get("panel") in BANNERS and event["event"] in ("moved", "resized", "hidden")
                 and event["frame"][:2] != [*PLACES[event["panel"]]]]
        self.assertEqual(moves, [])
        control("quit")
        for name in BANNERS:
            self.expect_panel("hidden", name)
        self.trace.skip()
        self.assertEqual([name for name in BANNERS if self.top_level(name)], [])
        self.desktop.capture_one.wait(SECONDS)
        self.start_capture_one()
        control("set", "camera.format", "TIFF")
        shown = lambda: all(self.top_level(name) for name in BANNERS)
        self.assertTrue(self.display.wait_until(shown, SECONDS), "they are not all back")
        self.assertEqual(self.display.geometry(self.top_level(ISO)), geometry)


class StoredPlace(AlertTest):
    def write(self, settings):
        folder = os.path.join(os.environ["XDG_CONFIG_HOME"], "morla")
        os.makedirs(folder, exist_ok=True)
        with open(os.path.join(folder, "defaults.json"), "w", encoding="utf-8") as file:
            # Larger than any number that there is.
            file.write(json.dumps(settings).replace('"endless"', "1e999"))

    def test_counts_only_when_both_numbers_are_there_and_is_shown_on_a_display(self):
        self.write({FORMAT + "X": 40, ISO + "X": "12", ISO + "Y": 12, APERTURE + "X": 30, APERTURE + "Y": True,
                    SHUTTER + "X": 9000, SHUTTER + "Y": -700})
        expect_everything()
        self.start_capture_one()
        control("set", "camera.format", "JPEG")
        self.start_morla()
        for name in (FORMAT, ISO, APERTURE):
            self.assertEqual(self.expect_banner(name)[1], self.centred(BANNER_SIZE), name)
        banner, frame = self.expect_banner(SHUTTER)
        self.assertEqual(frame[:2], [9000, -700], "the place is kept for when its display returns")
        x, y, width, height = self.display.geometry(banner)
        self.assertTrue(0 <= x <= self.screen[0] * self.scale - width and
                        0 <= y <= self.screen[1] * self.scale - height, f"shown at {x}, {y}")
        self.assertEqual(self.desktop.quit_morla(), 0)
        self.assertEqual(self.default(FORMAT + "X"), "40")
        self.assertEqual([float(self.default(SHUTTER + axis)) for axis in "XY"], [9000, -700])

    def test_a_number_that_is_not_finite_counts_as_absent(self):
        self.write({FORMAT + "X": "endless", FORMAT + "Y": 10})
        self.start_capture_one()
        control("set", "camera.format", "JPEG")
        self.start_morla()
        self.assertEqual(self.expect_banner()[1], self.centred(BANNER_SIZE))


if __name__ == "__main__":
    main()
