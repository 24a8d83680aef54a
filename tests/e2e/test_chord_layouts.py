# desktop: --tray none
# desktop xfwm4: --tray none --wm xfwm4
"""Key chords on keyboards of several countries, and on keyboards that change while MORLA runs."""

from lib.keyboard import (COMMAND, MARKER, OPTION, SECOND_KEYBOARD, SHIFT, Keyboard, KeyboardTest,
                          pressed_and_released)
from lib.morlatest import SECONDS, main, programs

SUPER = [("Super_L", True), ("Super_L", False)]
MASTER_KEYBOARD = "Virtual core keyboard"


def keyboard_number():
    return int(programs.run("xinput", "list", "--id-only", SECOND_KEYBOARD).stdout)


class LayoutTest(KeyboardTest):
    def set_layout(self, layout, *options):
        programs.run("setxkbmap", "-option", "", "-layout", layout, *options)
        self.keys.connect()

    def setUp(self):
        super().setUp()
        self.addCleanup(self.set_layout, "us")

    def press_until_it_fires(self, press):
        """MORLA learns of another keyboard when the server tells it, which no other program is told."""
        for _ in range(100):
            press()
            if self.fired():
                return
        self.fail("the key of the new layout does not fire")


class Layout(LayoutTest):
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
        self.press_until_it_fires(lambda: self.keys.tap("a"))
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

    def test_follows_the_second_layout_of_a_keyboard_and_back_again(self):
        self.set_layout("us,fr", "-option", "grp:menu_toggle")
        for mask, modifiers in ((0, []), (COMMAND, ["Super_L"])):
            with self.subTest(mask=mask):
                self.start_with_chord("A", mask)
                self.keys.chord(*modifiers, "a")
                self.expect(fires=1, gets=[*((each, True) for each in modifiers), *((each, False) for each in modifiers)])
                for switch in (lambda: self.keys.lock_layout(1), lambda: self.keys.tap("ISO_Next_Group")):
                    switch()
                    self.press_until_it_fires(lambda: self.keys.chord(*modifiers, "q"))  # where the French "a" is
                    self.received()
                    self.keys.chord(*modifiers, "a")
                    self.assertIn(("a", True), self.received())
                    self.assertEqual(self.fired(), [])
                    self.keys.lock_layout(0)
                    self.press_until_it_fires(lambda: self.keys.chord(*modifiers, "a"))
                    self.received()
                self.desktop.quit_morla()

    def test_a_shifted_sign_is_what_the_layout_has_above_the_key(self):
        for layout, sign, key in (("us", "!", "1"), ("fr", "1", "ampersand"), ("de", "?", "ssharp")):
            with self.subTest(layout):
                self.set_layout(layout)
                self.start_with_chord(sign, SHIFT)
                self.keys.chord("Shift_L", key)
                self.expect(fires=1, gets=pressed_and_released("Shift_L"))
                self.keys.tap(key)
                self.expect(fires=0, gets=pressed_and_released(key))
                self.desktop.quit_morla()

    def test_the_locks_do_not_matter_in_any_layout(self):
        for layout, chord, keys in (("fr", "É+A", ("eacute", "a")), ("de", "Ü+Z", ("udiaeresis", "z"))):
            self.set_layout(layout)
            self.start_with_chord(chord, COMMAND)
            for locks in ((), ("Caps_Lock",), ("Num_Lock",), ("Caps_Lock", "Num_Lock")):
                with self.subTest((layout, *locks)):
                    self.keys.tap(*locks)
                    self.received()
                    self.keys.chord("Super_L", *keys)
                    self.expect(fires=1, gets=SUPER)
                    self.keys.tap(*locks)
                    self.received()
            self.desktop.quit_morla()


class SecondKeyboard(LayoutTest):
    """Another keyboard on the same desktop, whose keys mean something else."""

    def setUp(self):
        super().setUp()
        self.number = keyboard_number()
        self.addCleanup(programs.run, "setxkbmap", "-device", str(self.number), "-layout", "us")
        self.keys.tap("Shift_L")  # the one in use would not hand its new layout on to the desktop
        programs.run("setxkbmap", "-device", str(self.number), "-layout", "fr")
        self.second = Keyboard(self.number)
        self.addCleanup(self.second.close)
        # The desktop has the layout of the keyboard that was used last, and names of keys are looked up in that.
        for keyboard in (self.second, self.keys):
            keyboard.tap("Shift_L")
            keyboard.connect()
            keyboard.look_up("a", "q", "Super_L", MARKER)
        self.assertNotEqual(self.second.code("a"), self.keys.code("a"))
        self.received()

    def test_each_fires_by_its_own_key_whichever_was_used_last(self):
        self.start_with_chord("A", COMMAND)
        for keyboard in (self.keys, self.second, self.keys, self.second):
            self.press_until_it_fires(lambda: keyboard.chord("Super_L", "a"))
            self.received()

    def test_the_place_of_the_other_keyboards_key_is_free(self):
        self.start_with_chord("A", COMMAND)
        self.press_until_it_fires(lambda: self.second.chord("Super_L", "a"))
        self.second.chord("Super_L", "q")
        place = self.second.code("q")
        self.assertEqual(self.application.lines_until(f"up {place}", SECONDS)[-1], f"down {place}")
        self.assertEqual(self.fired(), [])


class Unplugged(KeyboardTest):
    """A keyboard of two, which comes and goes."""

    def setUp(self):
        super().setUp()
        self.number = keyboard_number()
        self.second = Keyboard(self.number)
        self.addCleanup(self.second.close)
        self.addCleanup(self.plug_in)

    def unplug(self):
        programs.run("xinput", "float", str(self.number))

    def plug_in(self):
        programs.run("xinput", "reattach", str(self.number), MASTER_KEYBOARD)

    def test_in_the_middle_of_a_chord_its_keys_are_up_and_the_chord_starts_anew(self):
        self.start_with_chord("A+K", 0)
        self.second.down("k")
        self.unplug()
        self.keys.tap("a")
        self.expect(fires=0, gets=[])
        self.keys.tap("x")
        self.expect(fires=0, gets=pressed_and_released("x"))
        self.keys.chord("a", "k")
        self.expect(fires=1, gets=[])

    def test_and_plugged_in_again_it_types_and_fires_as_before(self):
        self.start_with_chord("A+K", 0)
        self.unplug()
        self.keys.chord("a", "k")
        self.expect(fires=1, gets=[])
        self.plug_in()
        for keyboard in (self.keys, self.second):
            keyboard.chord("a", "k")
            keyboard.tap("x")
            self.expect(fires=1, gets=pressed_and_released("x"))

    def test_with_a_key_of_the_chord_held_on_the_other_it_stays_held(self):
        self.start_with_chord("A+K", 0)
        self.keys.down("a")
        self.unplug()
        self.keys.tap("k")
        self.keys.up("a")
        self.expect(fires=1, gets=[])


if __name__ == "__main__":
    main()
