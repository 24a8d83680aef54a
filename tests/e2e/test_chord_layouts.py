# desktop: --tray none
# desktop xfwm4: --tray none --wm xfwm4
"""Key chords on keyboards of several countries, and on keyboards that change while MORLA runs."""

from lib.keyboard import COMMAND, OPTION, KeyboardTest, pressed_and_released
from lib.morlatest import main, programs

SUPER = [("Super_L", True), ("Super_L", False)]


class Layout(KeyboardTest):
    def set_layout(self, layout):
        programs.run("setxkbmap", "-layout", layout)
        self.keys.connect()

    def setUp(self):
        super().setUp()
        self.addCleanup(self.set_layout, "us")

    def test_the_key_is_where_the_layout_has_it(self):
        for layout in ("fr", "de"):
            with self.subTest(layout):
                self.set_layout(layout)
                self.start_with_chord("A+Z", COMMAND)
                self.keys.chord("Super_L", "a", "z")
                self.expect(fires=1, gets=SUPER)
                self.keys.chord("Super_L", "q", "y")
                self.expect(fires=0, gets=[("Super_L", True), ("q", True), ("y", True), ("y", False), ("q", False),
                                           ("Super_L", False)])
                self.desktop.quit_morla()

    def test_an_accented_letter_is_a_key_of_a_french_chord(self):
        self.set_layout("fr")
        self.start_with_chord("É", 0)
        self.keys.tap("eacute", "a")
        self.expect(fires=1, gets=pressed_and_released("a"))

    def test_follows_a_layout_that_is_switched_while_it_runs(self):
        self.start_with_chord("A", 0)
        self.keys.tap("a")
        self.expect(fires=1, gets=[])
        old = self.keys.code("a")
        self.set_layout("fr")
        self.assertNotEqual(self.keys.code("a"), old)
        for _ in range(100):  # MORLA learns of it when the server tells it, which no other program is told
            self.keys.tap("a")
            if self.fired():
                break
        else:
            self.fail("the key of the new layout does not fire")
        self.received()
        self.keys.tap("a", "q")
        self.expect(fires=1, gets=pressed_and_released("q"))

    def test_what_altgr_types_reaches_the_application_and_fires_nothing(self):
        self.set_layout("fr")
        for mask in (0, OPTION):
            with self.subTest(mask=mask):
                self.start_with_chord("À", mask)
                self.keys.chord("ISO_Level3_Shift", "agrave")
                self.expect(fires=0, gets=[("ISO_Level3_Shift", True), *pressed_and_released("agrave"),
                                           ("ISO_Level3_Shift", False)])
                self.desktop.quit_morla()
        self.start_with_chord("À", OPTION)
        self.keys.chord("Alt_L", "agrave")
        self.expect(fires=1, gets=pressed_and_released("Alt_L"))


if __name__ == "__main__":
    main()
