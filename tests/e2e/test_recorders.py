# desktop: --tray none
# desktop xfwm4: --tray none --wm xfwm4
"""The shortcut recorders in a window of their own, under a person's hands."""

import os

from lib.keyboard import COMMAND, CONTROL, OPTION, SHIFT, Application, keyboard_of
from lib.morlatest import SECONDS, DesktopTest, main, morla, programs, xdotool
from desktoplib import accessibility

HOST = os.path.join(os.path.dirname(os.environ["MORLA_BIN"]), "tests", "recorder_host")
MIRROR = "ShortcutRecorderManager"
FOLDER = "CaptureOneFolderShortcutRecorderManager"
AIRDROP = "AirdropShortcutRecorderManager"
HOST_WINDOW = "recorder_host"
BUTTONS = (MIRROR, FOLDER, AIRDROP)
# What belongs to no recorder: Return confirms the window, Ctrl+K is a shortcut in it, letters go into its text field.


class Recorders(DesktopTest):
    window_classes = (*DesktopTest.window_classes, HOST_WINDOW)

    def setUp(self):
        super().setUp()
        self.keys = keyboard_of(self)

    def start_host(self):
        self.host = programs.Program([HOST, self.trace.path], os.path.join(self.folder, "host.log"))
        self.addCleanup(self.host.end)
        self.window = programs.wait_for_window(self.display, HOST_WINDOW, SECONDS)
        accessibility.wait_until(lambda: "ready" in self.told(), SECONDS, "the places of the buttons are told")
        self.places = {name: (int(x), int(y)) for _, name, x, y in
                       (line.split() for line in self.told() if line.startswith("at "))}

    def told(self):
        return self.host.output().splitlines()

    def others_got(self):
        return [line for line in self.told() if line.split()[0] in ("edited", "confirmed", "shortcut")]

    def click(self, name):
        x, y, _, _ = self.display.geometry(self.window)
        dx, dy = self.places[name]
        xdotool("mousemove", x + dx, y + dy, "click", 1)

    def record(self, recorder):
        self.click(f"button{BUTTONS.index(recorder)}")
        self.expect(recorder, "isRecording", True)

    def expect(self, recorder, name, value):
        self.trace.wait_for(lambda event: event.get("published") == f"{recorder}.{name}" and event["value"] == value,
                            SECONDS, f"{recorder}.{name} = {value!r}")

    def expect_stored(self, prefix, keys, mask):
        """After the recorder's write."""
        self.trace.wait_for(lambda event: event.get("default") == f"{prefix}Modifiers", SECONDS, "the chord is stored")
        self.assertEqual(morla("defaults", "read", f"{prefix}Chars").stdout.rstrip("\n"), keys)
        self.assertEqual(morla("defaults", "read", f"{prefix}Modifiers").stdout.strip(), str(mask))

    def test_take_chords_of_every_kind(self):
        self.start_host()
        for keys, stored, mask in ((("a",), "A", 0), (("b", "a"), "A+B", 0), (("c", "a", "b"), "A+B+C", 0),
                                   (("Super_L", "k"), "K", COMMAND), (("Shift_L", "Super_L", "k"), "K", COMMAND | SHIFT),
                                   (("Alt_L", "Shift_L", "F5"), "F5", OPTION | SHIFT),
                                   (("Control_L", "k"), "K", CONTROL), (("Super_L", "Return"), "↩", COMMAND),
                                   (("Return",), "↩", 0), (("space", "Tab"), "Espace+⇥", 0),
                                   (("Shift_L", "Delete"), "⌦", SHIFT), (("Left", "KP_5"), "5+←", 0)):
            with self.subTest(keys):
                self.record(MIRROR)
                self.keys.chord(*keys)
                self.expect(MIRROR, "currentChars", sorted(stored.split("+")))
                self.expect(MIRROR, "isRecording", False)
                self.expect_stored("hotkey", stored, mask)
        self.assertEqual(self.others_got(), [])

    def test_each_stores_the_chord_of_its_button(self):
        self.start_host()
        # Each another key: a chord that is there already is not typed, but fires.
        for recorder, prefix, key in ((AIRDROP, "airdropHotkey", "j"), (FOLDER, "captureOneFolderHotkey", "k"),
                                      (MIRROR, "hotkey", "l")):
            self.record(recorder)
            self.keys.chord("Control_L", key)
            self.expect(recorder, "currentChars", [key.upper()])
            self.expect_stored(prefix, key.upper(), CONTROL)

    def test_the_old_chord_does_not_fire_while_recording_and_the_new_one_does_afterwards(self):
        morla("defaults", "write", "hotkeyChars", "text", "A")
        self.start_host()
        self.keys.tap("a")
        self.expect_fired()
        self.record(MIRROR)
        self.keys.chord("a", "b")
        self.expect(MIRROR, "isRecording", False)
        self.expect_stored("hotkey", "A+B", 0)
        self.assertEqual(self.fires(), 1)
        self.keys.chord("b", "a")
        self.expect_fired()
        self.assertEqual(self.others_got(), [])

    def expect_fired(self):
        self.trace.wait_for(lambda event: event.get("notification") == "hotkeyPressed", SECONDS, "hotkeyPressed")

    def fires(self):
        return sum(event.get("notification") == "hotkeyPressed" for event in self.trace.events())

    def test_refuse_a_fourth_key(self):
        self.start_host()
        self.record(MIRROR)
        self.keys.down("Super_L", "Shift_L", "a")
        self.keys.tap("b")
        self.expect(MIRROR, "errorMessage", "Maximum 3 touches")
        self.keys.up("a", "Shift_L", "Super_L")
        self.expect(MIRROR, "currentChars", ["A"])
        self.expect_stored("hotkey", "A", COMMAND | SHIFT)

    def test_escape_brings_the_stored_chord_back_and_delete_clears_it_without_storing(self):
        morla("defaults", "write", "hotkeyChars", "text", "A+B")
        self.start_host()
        self.record(MIRROR)
        self.keys.tap("Escape")
        self.expect(MIRROR, "currentChars", ["A", "B"])
        self.expect(MIRROR, "isRecording", False)
        for key in ("BackSpace", "Delete"):
            self.record(MIRROR)
            self.keys.tap(key)
            self.expect(MIRROR, "currentChars", [])
            self.expect(MIRROR, "isRecording", False)
        self.assertEqual(morla("defaults", "read", "hotkeyChars").stdout.strip(), "A+B")

    def test_escape_while_another_key_is_held_is_part_of_the_chord(self):
        self.start_host()
        self.record(MIRROR)
        self.keys.chord("a", "Escape")
        self.expect(MIRROR, "currentChars", ["A", "⎋"])

    def test_a_key_that_is_held_and_repeats_stays_held(self):
        self.start_host()
        programs.run("xset", "r", "rate", "20", "100")
        self.keys.repeat(True)
        self.record(MIRROR)
        self.keys.down("a")
        for _ in range(5):  # each repeat is a key that is accepted
            self.expect(MIRROR, "errorMessage", "")
        self.keys.down("b")
        self.keys.up("b", "a")
        self.expect(MIRROR, "isRecording", False)
        self.expect_stored("hotkey", "A+B", 0)
        self.assertEqual(self.others_got(), [])

    def test_a_chord_of_another_button_fires_instead_of_being_recorded(self):
        morla("defaults", "write", "airdropHotkeyChars", "text", "J")
        self.start_host()
        self.record(MIRROR)
        self.keys.tap("j")
        self.trace.wait_for(lambda event: event.get("notification") == "airdropHotkeyPressed", SECONDS, "it fires")
        self.keys.tap("k")
        self.expect(MIRROR, "currentChars", ["K"])
        self.assertEqual(self.others_got(), [])

    def test_another_button_ends_the_recording_of_the_first(self):
        self.start_host()
        self.record(MIRROR)
        self.click("button2")
        self.expect(MIRROR, "isRecording", False)
        self.expect(AIRDROP, "isRecording", True)

    def test_keys_go_to_the_window_again_once_nothing_is_recorded(self):
        self.start_host()
        self.record(MIRROR)
        self.click("button0")
        self.expect(MIRROR, "isRecording", False)
        self.keys.tap("Return")
        self.click("edit")
        self.keys.tap("x")
        self.keys.chord("Control_L", "k")
        # What is typed and clicked comes in order, so this comes last.
        self.record(MIRROR)
        self.assertEqual(self.others_got(), ["confirmed", "edited x", "shortcut"])

    def test_keys_typed_into_another_application_are_recorded_and_reach_it(self):
        self.start_host()
        self.record(MIRROR)
        other = Application(self.display)
        self.addCleanup(other.end)
        self.keys.chord("Super_L", "g")
        self.expect(MIRROR, "currentChars", ["G"])
        self.expect_stored("hotkey", "G", COMMAND)
        other.lines_until(f"up {self.keys.code('g')}", SECONDS)

    def test_a_key_of_the_old_chord_that_is_held_when_the_recording_begins_disturbs_nothing(self):
        morla("defaults", "write", "hotkeyChars", "text", "A+B")
        self.start_host()
        self.keys.down("a")
        self.record(MIRROR)
        self.keys.up("a")
        self.keys.chord("b", "c")
        self.expect(MIRROR, "currentChars", ["B", "C"])
        self.expect_stored("hotkey", "B+C", 0)
        self.keys.chord("b", "c")
        self.expect_fired()
        self.assertEqual(self.others_got(), [])

    def test_a_keyboard_gives_the_names_of_the_layout_that_is_chosen(self):
        programs.run("setxkbmap", "-layout", "us,fr")
        self.addCleanup(programs.run, "setxkbmap", "-layout", "us")
        self.keys.connect()
        self.start_host()
        for layout, name in ((0, "Q"), (1, "A"), (0, "Q")):
            self.keys.lock_layout(layout)
            self.record(MIRROR)
            self.keys.chord("Super_L", "q")
            self.expect(MIRROR, "currentChars", [name])
            self.expect_stored("hotkey", name, COMMAND)

    def test_a_french_keyboard_gives_french_names(self):
        programs.run("setxkbmap", "-layout", "fr")
        self.addCleanup(programs.run, "setxkbmap", "-layout", "us")
        self.keys.connect()
        self.start_host()
        self.record(MIRROR)
        self.keys.chord("a", "eacute")
        self.expect(MIRROR, "currentChars", ["A", "É"])


if __name__ == "__main__":
    main()
