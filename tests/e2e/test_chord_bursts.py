# desktop: --tray none
"""Key chords under random hammering: what the application gets, and what fires, is exactly what a model says.

MORLA_CHORD_SEEDS says how many bursts of each kind there are."""

import os
import random
from unittest import mock

from lib.keyboard import COMMAND, CONTROL, OPTION, SHIFT, KeyboardTest
from lib.morlatest import main
from lib.relay import Relay

EVENTS = 1500
SEEDS = int(os.environ.get("MORLA_CHORD_SEEDS", "2"))
MODIFIERS = {"Super_L": COMMAND, "Shift_L": SHIFT, "Alt_L": OPTION, "Control_L": CONTROL}
KEYS = "abklm"
# Settings' names in the order in which the chords are registered at start-up.
CHORDS = ("hotkey", "captureOneFolderHotkey", "airdropHotkey")


class Model:
    """Says what becomes of each event. `chords` are (name, keys, mask), the last registered first."""

    def __init__(self, chords):
        self._chords = [(name, set(keys), mask, set()) for name, keys, mask in chords]
        self._mask = 0
        self._swallowed = set()
        self.passed = []
        self.fired = []

    def send(self, key, is_down):
        if key in MODIFIERS:
            self._mask ^= MODIFIERS[key]
            for *_, held in self._chords:
                held.clear()
            self.passed.append((key, is_down))
            return
        wanted = any(self._offer(chord, key, is_down) for chord in self._chords)
        if is_down and wanted:
            self._swallowed.add(key)
        elif is_down or key not in self._swallowed or not wanted:
            # Who saw a key go down sees it come up.
            self._swallowed.discard(key)
            self.passed.append((key, is_down))
        else:
            self._swallowed.discard(key)

    def _offer(self, chord, key, is_down):
        """True when the chord takes the event."""
        name, keys, mask, held = chord
        if mask != self._mask:
            held.clear()
            return False
        if key not in keys:
            return False
        if is_down:
            held.add(key)
            if held == keys:
                self.fired.append(name + "Pressed")
        else:
            held.discard(key)
        return True


def hammering(generator, modifiers):
    """Random presses and releases; in the end nothing is held."""
    down = set()
    events = []
    names = list(KEYS) + modifiers
    while len(events) < EVENTS - len(down):
        # Modifiers seldom, or no chord would ever be complete.
        name = generator.choice(names if generator.random() < 0.2 else KEYS)
        events.append((name, name not in down))
        down ^= {name}
    return events + [(name, False) for name in sorted(down)]


def is_part_of(some, events):
    """In the same order, with others in between."""
    rest = iter(events)
    return all(event in rest for event in some)


class Bursts(KeyboardTest):
    three_chords = {"hotkey": ("ab", COMMAND), "captureOneFolderHotkey": ("abk", 0), "airdropHotkey": ("bl", COMMAND)}

    def start_with_chords(self, chords):
        """name -> (keys, mask)"""
        for name in CHORDS:
            keys, mask = chords.get(name, ("", 0))
            self.store_chord("+".join(sorted(keys)).upper(), mask, name)
        self.start_morla(watching=False)

    def run_burst(self, seed, chords, modifiers):
        self.start_with_chords(chords)
        try:
            return self.check_burst(seed, chords, modifiers)
        finally:
            self.desktop.quit_morla()

    def events_and_model(self, seed, chords, modifiers):
        events = hammering(random.Random(seed), modifiers)
        model = Model([(name, *chords[name]) for name in reversed(CHORDS) if name in chords])
        for event in events:
            model.send(*event)
        return events, model

    def check_burst(self, seed, chords, modifiers):
        events, model = self.events_and_model(seed, chords, modifiers)
        self.keys.send(events)
        got = self.received()
        if got != model.passed:
            at = next((i for i, pair in enumerate(zip(got, model.passed)) if pair[0] != pair[1]),
                      min(len(got), len(model.passed)))
            around = slice(max(0, at - 4), at + 8)
            self.fail(f"{len(got)} events came instead of {len(model.passed)}, from number {at} on others:\n"
                      f"{got[around]}\n{model.passed[around]}")
        fired = self.fired()
        self.assertEqual(fired, model.fired)
        return len(fired)

    def test_one_chord_of_up_to_three_keys(self):
        total = 0
        for seed in range(SEEDS):
            generator = random.Random(f"chord {seed}")
            keys = generator.sample(KEYS, generator.randint(1, 3))
            modifiers = generator.sample(sorted(MODIFIERS), generator.randint(0, 3 - len(keys)))
            mask = sum(MODIFIERS[each] for each in modifiers)
            with self.subTest(seed=seed, keys=keys, modifiers=modifiers):
                total += self.run_burst(seed, {"hotkey": (keys, mask)}, sorted(MODIFIERS))
        self.assertGreater(total, 0)

    def test_three_chords_that_share_keys(self):
        total = 0
        for seed in range(SEEDS):
            with self.subTest(seed=seed):
                total += self.run_burst(1000 + seed, self.three_chords, ["Super_L", "Shift_L"])
        self.assertGreater(total, 0)

    def test_a_server_that_serves_others_in_between(self):
        relay = Relay()
        self.addCleanup(relay.close)
        with mock.patch.dict(os.environ, DISPLAY=relay.display):
            self.assertGreater(self.run_burst(0, self.three_chords, ["Super_L", "Shift_L"]), 0)
        self.assertGreater(relay.held_back, 0)

    def test_another_program_has_the_pointer(self):
        """Keys of the chord may slip through then, but no other, it never fires too often, and afterwards all is well."""
        chords = {"hotkey": ("abk", 0)}
        self.start_with_chords(chords)
        for seed in range(SEEDS):
            with self.subTest(seed=seed):
                events, model = self.events_and_model(2000 + seed, chords, [])
                self.keys.take_pointer()
                self.keys.send(events)
                got = self.received()
                self.keys.give_pointer_back()
                self.assertTrue(is_part_of(got, events), got)
                self.assertEqual([event for event in got if event[0] in "lm"], model.passed)
                self.assertLessEqual(len(self.fired()), len(model.fired))
                self.keys.chord("a", "b", "k")
                self.assertEqual(self.received(), [])
                self.assertEqual(self.fired(), ["hotkeyPressed"])


if __name__ == "__main__":
    main()
