# desktop: --tray top
# desktop xfwm4: --tray top --wm xfwm4
"""Key chords, pressed while another application has the focus: they fire, and that application sees none of their keys
and all of the others."""

import itertools
import json
import os

from lib.keyboard import COMMAND, CONTROL, OPTION, SHIFT, KeyboardTest, pressed_and_released
from lib.morlatest import SECONDS, main, programs

CLICKS = 300  # some of them while it is decided what becomes of a key
SUPER = [("Super_L", True), ("Super_L", False)]


class Chord(KeyboardTest):
    def test_of_one_key_without_modifiers(self):
        self.start_with_chord("K", 0)
        self.keys.tap("k")
        self.expect(fires=1, gets=[])
        self.keys.tap("j", "k", "k", "l")
        self.expect(fires=2, gets=pressed_and_released("j", "l"))

    def test_of_one_key_with_each_modifier(self):
        for mask, key in ((COMMAND, "Super_L"), (SHIFT, "Shift_L"), (OPTION, "Alt_L"), (CONTROL, "Control_L"),
                          (COMMAND, "Super_R"), (SHIFT, "Shift_R"), (OPTION, "Alt_R"), (CONTROL, "Control_R")):
            with self.subTest(key):
                self.start_with_chord("K", mask)
                self.keys.chord(key, "k")
                self.expect(fires=1, gets=pressed_and_released(key))
                self.keys.tap("k")
                self.expect(fires=0, gets=pressed_and_released("k"))
                self.desktop.quit_morla()

    def test_of_two_keys_in_either_order(self):
        self.start_with_chord("A+B", COMMAND)
        for order in itertools.permutations("ab"):
            with self.subTest(order):
                self.keys.chord("Super_L", *order)
                self.expect(fires=1, gets=SUPER)

    def test_of_three_keys_in_every_order(self):
        self.start_with_chord("A+B+C", 0)
        for order in itertools.permutations("abc"):
            with self.subTest(order):
                self.keys.chord(*order)
                self.expect(fires=1, gets=[])

    def test_of_two_modifiers_fires_with_exactly_these(self):
        self.start_with_chord("K", COMMAND | SHIFT)
        self.keys.chord("Shift_L", "Super_L", "k")
        self.expect(fires=1, gets=[("Shift_L", True), *SUPER, ("Shift_L", False)])
        self.keys.chord("Shift_L", "k")
        self.expect(fires=0, gets=[("Shift_L", True), *pressed_and_released("k"), ("Shift_L", False)])
        self.keys.chord("Shift_L", "Super_L", "Control_L", "k")
        self.assertEqual(self.fired(), [])
        self.assertIn(("k", True), self.received())

    def test_other_keys_in_between_pass_and_do_not_disturb_it(self):
        self.start_with_chord("A+B", COMMAND)
        self.keys.down("Super_L", "a")
        self.keys.tap("x")
        self.keys.down("y")
        self.keys.down("b")
        self.keys.up("b", "y", "a", "Super_L")
        self.expect(fires=1, gets=[("Super_L", True), *pressed_and_released("x"), ("y", True), ("y", False),
                                   ("Super_L", False)])

    def test_clicks_reach_the_application_also_while_a_key_of_it_is_held(self):
        self.start_with_chord("A+B", 0)
        programs.xdotool("mousemove", *self.centre(programs.managed_window(self.display, programs.OTHER)))
        self.keys.down("a")
        told = []
        for _ in range(CLICKS):
            self.keys.send([("x", True), ("x", False)])
            self.keys.click()
            # One at a time: some window managers lose their hold of the pointer over clicks that come too quickly.
            told += self.application.lines_until("release 1", SECONDS)
        self.keys.up("a")
        self.assertEqual(told.count("press 1"), CLICKS)
        self.assertEqual((told + self.told()).count(f"down {self.keys.code('x')}"), CLICKS)

    def test_one_key_released_and_pressed_again_fires_again(self):
        self.start_with_chord("A+B", 0)
        self.keys.down("a", "b")
        self.keys.tap("x")
        self.keys.up("a")
        self.keys.down("a")
        self.keys.up("a", "b")
        self.expect(fires=2, gets=pressed_and_released("x"))

    def test_a_modifier_in_the_middle_starts_it_anew(self):
        self.start_with_chord("A+B", COMMAND)
        self.keys.down("Super_L", "a")
        self.keys.tap("Shift_L")
        self.keys.down("b")
        self.keys.up("b", "a", "Super_L")
        self.expect(fires=0, gets=[("Super_L", True), *pressed_and_released("Shift_L"), ("Super_L", False)])

    def test_held_it_repeats_nothing_and_the_application_gets_no_repeats(self):
        self.start_with_chord("K", 0)
        # Sooner than any desktop has it, so that repeats come at once.
        programs.run("xset", "r", "rate", "20", "100")
        self.keys.repeat(True)
        self.keys.down("k")
        self.trace.wait_for(lambda event: event.get("notification") == "hotkeyPressed", 15, "hotkeyPressed")
        self.trace.expect_none(lambda event: event.get("notification") == "hotkeyPressed", 0.5, "a repeat")
        self.keys.up("k")
        # Keys do repeat. Not while "k" is held: the server may go on with its repeats instead of those of the later key.
        self.keys.down("x")
        before = [line for _ in range(5) for line in self.application.lines_until(f"down {self.keys.code('x')}", SECONDS)]
        self.assertNotIn(f"down {self.keys.code('k')}", before)
        self.keys.up("x")
        self.keys.repeat(False)
        got = {name for name, _ in self.received()}
        self.assertEqual(got, {"x"})
        self.assertEqual(self.fired(), ["hotkeyPressed"])

    def test_a_key_that_repeats_already_when_the_modifier_comes_fires_nothing(self):
        self.start_with_chord("K", COMMAND)
        # Slowly: a repeat that comes before MORLA has learnt of the modifier passes for a press, on a machine that is busy.
        programs.run("xset", "r", "rate", "200", "5")
        self.keys.repeat(True)
        code = self.keys.code("k")
        self.keys.down("k")
        for _ in range(3):
            self.application.lines_until(f"down {code}", SECONDS)
        self.keys.down("Super_L")
        self.trace.expect_none(lambda event: event.get("notification") == "hotkeyPressed", 0.5,
                               "the chord of a key that repeats already")
        self.keys.repeat(False)
        self.keys.up("k", "Super_L")
        got = self.received()
        self.assertEqual(got[got.index(SUPER[0]):], SUPER)
        self.keys.chord("Super_L", "k")
        self.expect(fires=1, gets=SUPER)

    def test_with_caps_lock_and_num_lock_on(self):
        self.start_with_chord("K", 0)
        for lock in ("Caps_Lock", "Num_Lock"):
            with self.subTest(lock):
                self.keys.tap(lock)
                self.addCleanup(self.keys.tap, lock)
                self.received()
                self.keys.tap("k", "x")
                self.expect(fires=1, gets=pressed_and_released("x"))


    def test_of_a_key_that_has_a_name_never_fires_and_its_key_stays_the_applications(self):
        for name, key in (("F5", "F5"), ("Espace", "space"), ("↩", "Return"), ("→", "Right")):
            with self.subTest(name):
                self.start_with_chord(name, 0)
                self.keys.tap(key)
                self.expect(fires=0, gets=pressed_and_released(key))
                self.desktop.quit_morla()


class Managers(KeyboardTest):
    def test_each_fires_for_its_own_chord_when_they_share_keys(self):
        self.store_chord("A+B", COMMAND)
        self.store_chord("A+C", COMMAND, "airdropHotkey")
        self.store_chord("A", CONTROL, "captureOneFolderHotkey")
        self.start_morla(watching=False)
        self.keys.chord("Super_L", "a", "b")
        self.keys.chord("Super_L", "c", "a")
        self.keys.chord("Control_L", "a")
        self.assertEqual(self.received(), [*SUPER, *SUPER, ("Control_L", True), ("Control_L", False)])
        # A key that two chords have goes to the one that was registered last, and the other never sees it.
        self.assertEqual(self.fired(), ["airdropHotkeyPressed", "captureOneFolderHotkeyPressed"])

    def test_nothing_is_swallowed_without_a_stored_chord(self):
        self.start_morla(watching=False)
        self.keys.tap("a", "b", "c")
        self.expect(fires=0, gets=pressed_and_released("a", "b", "c"))


class Limits(KeyboardTest):
    def test_the_keyboard_works_at_once_after_a_kill_in_the_middle_of_a_chord(self):
        self.start_with_chord("A+B", 0)
        self.keys.down("a")
        self.keys.tap("x")
        self.assertEqual(self.received(), pressed_and_released("x"))
        self.desktop.morla.kill()
        self.desktop.morla.wait()
        self.keys.up("a")
        self.keys.tap("a", "b")
        self.assertEqual(self.received(), [("a", False), *pressed_and_released("a", "b")])

    def test_the_keyboard_works_at_once_after_it_quits_in_the_middle_of_a_chord(self):
        self.start_with_chord("A+B", 0)
        self.keys.down("a")
        self.keys.tap("x")
        self.assertEqual(self.received(), pressed_and_released("x"))
        self.assertEqual(self.desktop.quit_morla(), 0)
        self.keys.up("a")
        self.keys.tap("a", "b")
        self.assertEqual(self.received(), [("a", False), *pressed_and_released("a", "b")])

    def test_while_another_program_has_the_whole_keyboard_nothing_fires_and_afterwards_everything_does(self):
        self.start_with_chord("K", COMMAND)
        self.assertTrue(self.keys.take_keyboard())
        self.keys.chord("Super_L", "k")
        self.keys.give_keyboard_back()
        self.expect(fires=0, gets=[])
        self.keys.chord("Super_L", "k")
        self.expect(fires=1, gets=SUPER)

    def test_a_keyboard_that_another_program_takes_in_the_middle_of_a_chord_starts_it_anew(self):
        self.start_with_chord("A+B", 0)
        self.assertTrue(self.keys.take_keyboard())
        self.keys.down("a")
        self.keys.give_keyboard_back()
        self.keys.tap("b")
        self.keys.up("a")
        self.expect(fires=0, gets=[("a", False)])
        self.keys.chord("a", "b")
        self.expect(fires=1, gets=[])

    def test_without_the_permission_there_is_a_line_and_no_chord(self):
        for decision in ("deny", "undecided"):
            with self.subTest(decision):
                path = os.path.join(os.environ["XDG_DATA_HOME"], "privacy", "permissions.json")
                with open(path, encoding="utf-8") as file:
                    permissions = json.load(file)
                permissions["accessibility"]["app.morla.MORLA"] = decision
                with open(path, "w", encoding="utf-8") as file:
                    json.dump(permissions, file)
                self.start_with_chord("K", 0)
                self.assertIn("Impossible de créer l'event tap - vérifiez les permissions d'accessibilité",
                              self.desktop.morla.output())
                self.keys.tap("k")
                self.expect(fires=0, gets=pressed_and_released("k"))
                self.desktop.quit_morla()

    def test_a_key_that_another_program_has_for_itself_makes_no_tap(self):
        self.keys.take_for_itself("k", 0)
        self.start_with_chord("K", 0)
        self.assertIn("Impossible de créer l'event tap", self.desktop.morla.output())
        self.keys.give_back("k", 0)
        self.keys.tap("k")
        self.expect(fires=0, gets=pressed_and_released("k"))


if __name__ == "__main__":
    main()
