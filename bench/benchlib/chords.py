"""The key chords: how soon they fire, and what they cost the keys of everybody else."""

import os
import select
import shutil
import statistics
import subprocess
import time

from desktoplib import programs

from . import process
from .figures import measurement
from .table import Mark, Row

# Keys by their numbers, which are the same in every layout: one for each program, and one that belongs to nobody.
OURS, BARE, SXHKD, XBINDKEYS, OPENBOX, FREE = "45", "44", "43", "42", "41", "53"
CHORD = "K"  # what is on the first of them
FIRED = "hotkeyPressed"
HERE = os.path.dirname(os.path.abspath(__file__))
OPENBOX_XML = os.path.join(HERE, "..", "..", "tools", "desktoplib", "openbox.xml")


class Pipe:
    """Somewhere to write to, which stays open when a writer goes."""

    def __init__(self, path):
        self.path = path
        os.mkfifo(path)
        self._descriptor = os.open(path, os.O_RDWR | os.O_NONBLOCK)

    def wait(self, word, seconds):
        """False when it does not come within that time."""
        text, end = b"", time.monotonic() + seconds
        while word.encode() not in text:
            if not select.select([self._descriptor], [], [], max(0.0, end - time.monotonic()))[0]:
                return False
            text += os.read(self._descriptor, 65536)
        return True

    def drain(self):
        while select.select([self._descriptor], [], [], 0.2)[0]:
            os.read(self._descriptor, 65536)


class Watcher:
    """A program that is told of `key` and lets `word` come out of its pipe then. `start` gives the process."""

    def __init__(self, bench, name, key, word, start):
        self.name, self.key, self.word = name, key, word
        self.pipe = Pipe(os.path.join(bench.folder, f"{name}.pipe"))
        self._program = start(self.pipe.path)
        # Not while it still takes its keys: some programs then forget the one that comes, and the keyboard stays frozen.
        process.settle(self._program.pid)
        for _ in range(50):
            if self._program.poll() is not None:
                raise AssertionError(f"{name} has ended with status {self._program.returncode}")
            programs.xdotool("key", key)
            if self.pipe.wait(word, 0.2):
                self.pipe.drain()
                return
        self.end()
        raise AssertionError(f"{name} does not see its key")

    def end(self):
        process.end(self._program)

    def arguments(self):
        return [self.key, self.pipe.path, self.word]


def quiet(argv, **options):
    return subprocess.Popen(argv, stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                            **{"stdout": subprocess.DEVNULL, **options})


def written(path, text):
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)
    return path


def start_morla(pipe):
    return quiet([programs.path_of("morla"), "--trace", pipe])


def start_bare(bench):
    def start(pipe):
        with open(pipe, "r+b", buffering=0) as output:
            return quiet([bench.path("bench_bare_chord"), BARE], stdout=output)
    return start


def start_sxhkd(bench):
    def start(pipe):
        # It runs its commands by the shell that the environment names, and gives up where it names none.
        return quiet(["sxhkd", "-c", written(os.path.join(bench.folder, "sxhkdrc"), f"h\n\techo x > {pipe}\n")],
                     env={**os.environ, "SHELL": "/bin/sh"})
    return start


def start_xbindkeys(bench):
    return lambda pipe: quiet(["xbindkeys", "--nodaemon", "--file",
                               written(os.path.join(bench.folder, "xbindkeysrc"), f'"echo x > {pipe}"\n  g\n')])


def start_openbox(bench):
    """In the place of the desktop's own, with one shortcut more."""
    def start(pipe):
        with open(OPENBOX_XML, encoding="utf-8") as file:
            text = file.read()
        binding = (f'<keyboard><keybind key="f"><action name="Execute"><command>sh -c "echo x > {pipe}"</command>'
                   "</action></keybind></keyboard>")
        changed = text.replace("<keyboard/>", binding)
        if changed == text:
            raise AssertionError(f"no <keyboard/> in {OPENBOX_XML}")
        return quiet(["openbox", "--replace", "--sm-disable", "--config-file",
                      written(os.path.join(bench.folder, "openbox.xml"), changed)])
    return start


def store_chord(characters):
    programs.morla("defaults", "write", "formatMonitorEnabled", "boolean", "false")
    # What the chord does, which is to bring Capture One to the front, is not what is measured.
    programs.morla("defaults", "write", "windowModeEnabled", "boolean", "false")
    programs.morla("defaults", "write", "hotkeyChars", "text", characters)
    programs.morla("defaults", "write", "hotkeyModifiers", "integer", "0")


def milliseconds(lines):
    return [float(line[-1]) / 1e6 for line in lines]


@measurement("chords fire", "a chord's key to its notification", "the same of other programs' actions")
def _(bench):
    store_chord(CHORD)
    makers = {"sxhkd": (SXHKD, start_sxhkd(bench)), "xbindkeys": (XBINDKEYS, start_xbindkeys(bench)),
              "openbox": (OPENBOX, start_openbox(bench))}
    watchers = [Watcher(bench, "morla", OURS, FIRED, start_morla),
                Watcher(bench, "bare", BARE, "x", start_bare(bench))]
    try:
        for name, (key, start) in makers.items():
            if shutil.which(name):
                watchers.append(Watcher(bench, name, key, "x", start))
        lines = bench.lines("bench_keys", "fire", str(bench.count(300, 5)),
                            *(each for watcher in watchers for each in watcher.arguments()))
    finally:
        for each in watchers:
            # Without a window manager nothing else works here.
            if each.name != "openbox":
                each.end()
            else:
                bench.keep(each)
    times = [milliseconds(line for line in lines if line[1] == str(i)) for i in range(len(watchers))]
    others = dict(zip((each.name for each in watchers[2:]), times[2:]))
    told = ", ".join(f"{name} {statistics.median(taken):.2f} ms" if taken else f"no {name}"
                     for name, taken in ((name, others.get(name)) for name in makers))
    best = min(others.values(), key=statistics.median, default=[])
    return [Row("a chord's key to its notification", "ms", times[0], times[1], "a bare grab", Mark(4, of_ratio=True)),
            Row("the same of other programs' actions", "ms", times[0], best, told, Mark(0.1, of_ratio=True))]


@measurement("chords and other keys", "another key to the application that has the focus", "the same while a chord's key is held",
             "keys lost of a flood", "keys lost of a flood with chords in it")
def _(bench):
    store_chord(CHORD)
    blocks, keys = bench.count(10, 1), str(bench.count(200, 5))
    without, with_it, held = [], [], []
    for _ in range(blocks):  # in turn, so that all of them meet the same noise
        without += milliseconds(bench.lines("bench_keys", "pass", keys, FREE))
        desktop = bench.morla(watching=False)
        try:
            with_it += milliseconds(bench.lines("bench_keys", "pass", keys, FREE))
            held += milliseconds(bench.lines("bench_keys", "pass", keys, FREE, OURS))
        finally:
            desktop.end()
    desktop = bench.morla(watching=False)
    try:
        count = bench.count(100000, 200)
        lost = dict(bench.lines("bench_keys", "flood", str(count), FREE))
        among = dict(bench.lines("bench_keys", "flood", str(count // 10), FREE, "10", OURS))
    finally:
        desktop.end()
    beyond = [each - statistics.median(without) for each in held]
    return [Row("another key to the application that has the focus", "ms", with_it, without, "without MORLA",
                Mark(1.1, of_ratio=True)),
            Row("the same while a chord's key is held", "ms beyond that", beyond, mark=Mark(0.2)),
            Row("keys lost of a flood", f"of {2 * count} events", [int(lost["lost"])], mark=Mark(0)),
            Row("keys lost of a flood with chords in it", f"of {2 * (count // 10)} events", [int(among["lost"])],
                beside=f"{among['through']} of {count // 100} chords came through", mark=Mark(0))]


@measurement("chords at rest", "wake-ups with a chord stored, nothing typed")
def _(bench):
    store_chord(CHORD)
    seconds = bench.count(20, 1)
    desktop = bench.morla(watching=False)
    try:
        programs.xdotool("key", OURS, FREE)
        process.settle(desktop.morla.pid)
        before = process.usage(desktop.morla.pid)
        time.sleep(seconds)
        waits = process.used(before, process.usage(desktop.morla.pid)).waits
    finally:
        desktop.end()
        store_chord("")
    return [Row("wake-ups with a chord stored, nothing typed", "/s", [waits / seconds], mark=Mark(0))]
