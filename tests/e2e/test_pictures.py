# desktop: --wm openbox
# desktop large: --wm openbox --monitor 3840x2160+0+0 --scale 2
"""The simulated Capture One under a person's hands: pictures, recipes and the processing queue in its window."""

import os

from lib.morlatest import DesktopTest, SECONDS, control, main, programs, xdotool
from desktoplib import accessibility


class Pictures(DesktopTest):
    def setUp(self):
        super().setUp()
        self.window = self.start_capture_one()

    def item(self, name, role="list item"):
        found = accessibility.find(self.desktop.capture_one.pid, role, name, SECONDS)
        accessibility.wait_until(lambda: found.get_extents(0).width > 0, SECONDS, f"{name} has a place")
        return found

    def place(self, name, role):
        """In pixels of the screen. Qt tells assistive programs points; the window shows how many pixels one has."""
        frame = self.item("Capture One", "frame").get_extents(0)
        x, y, width, _ = self.display.geometry(self.window)
        middle = accessibility.middle(self.item(name, role))
        return x + (middle[0] - frame.x) * width // frame.width, y + (middle[1] - frame.y) * width // frame.width

    def click(self, name, *modifiers, role="list item"):
        place = self.place(name, role)
        for each in modifiers:
            xdotool("keydown", each)
        try:
            xdotool("mousemove", *place, "click", 1)
        finally:
            for each in modifiers:
                xdotool("keyup", each)

    def expect_key(self, key, value):
        control("wait", key, value, str(SECONDS))

    def run_script(self, line):
        return programs.run(programs.path_of("applescript"), "-e", line).stdout.strip()

    def test_clicks_select_as_in_any_program(self):
        self.click("Atelier_0002")
        self.expect_key("variants.selected", "2")
        self.click("Atelier_0005", "ctrl")
        self.expect_key("variants.selected", "2|5")
        self.click("Atelier_0003", "ctrl")
        self.expect_key("variants.selected", "2|3|5")
        self.click("Atelier_0005", "ctrl")
        self.expect_key("variants.selected", "2|3")
        self.click("Atelier_0001")
        self.expect_key("variants.selected", "1")
        self.click("Atelier_0004", "shift")
        self.expect_key("variants.selected", "1|2|3|4")

    def test_keys_select_too(self):
        self.click("Atelier_0001")
        self.expect_key("variants.selected", "1")
        xdotool("key", "Right")
        self.expect_key("variants.selected", "2")
        xdotool("key", "ctrl+a")
        self.expect_key("variants.selected", "|".join(str(each) for each in range(1, 13)))

    def test_scripts_see_what_is_selected_by_hand(self):
        self.click("Atelier_0002")
        self.click("Atelier_0003", "ctrl")
        self.expect_key("variants.selected", "2|3")
        names = self.run_script('tell application "Capture One" to get name of (every variant of current document '
                                'whose selected is true)')
        self.assertEqual(names, "Atelier_0002, Atelier_0003")

    def test_what_a_key_selects_is_seen(self):
        control("set", "variants.selected", "2|3|7")
        self.item("3 sur 12 sélectionnées", "label")

    def test_a_recipe_is_enabled_by_the_keyboard(self):
        self.click("JPEG web")
        xdotool("key", "space")
        self.expect_key("recipes.enabled", "JPEG pleine taille|JPEG web|Épreuve rapide")
        self.click("Ajouter une recette", role="push button")
        self.expect_key("recipes", "JPEG pleine taille|JPEG web|Épreuve rapide|Recette 4")

    def test_the_queue_is_seen_until_its_files_are_written(self):
        control("set", "process.stall", "true")
        self.click("Atelier_0004")
        self.expect_key("variants.selected", "4")
        self.run_script('tell application "Capture One" to process (every variant of current document whose selected '
                        'is true)')
        self.expect_key("queue.length", "2")
        self.item("Atelier_0004, JPEG pleine taille, en attente")
        self.click("Traitement à l’arrêt", role="check box")
        self.expect_key("process.stall", "false")
        self.expect_key("queue.length", "0")
        self.item("2 fichiers traités", "label")
        session = os.path.dirname(control("get", "captures"))
        self.assertTrue(os.path.exists(os.path.join(session, "Output", "Pleine taille", "Atelier_0004.jpg")))


if __name__ == "__main__":
    main()
