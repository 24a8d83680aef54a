"""The measurements. Each is a function that is given a `Bench` and gives the rows that it announces:

    @measurement("name", "first row", "second row")
    def _(bench): return [Row(...), Row(...)]

A new row needs nothing else: `bench/run` prints it, and the test that runs all of them quickly expects it."""

import json
import os
import shutil
import subprocess
import tempfile
import time

from desktoplib import programs
from desktoplib.xlib import Display

from . import process
from .table import Mark, Row

PATIENCE = 30
# Programs with an icon in the tray that Debian has; whichever is installed is measured beside ours.
PEERS = {"copyq": ["copyq"], "flameshot": ["flameshot"], "keepassxc": ["keepassxc"]}

MINIMAL = "minimal tray program"
BARE = "its events as bare calls"

MEASUREMENTS = []


class Measurement:
    def __init__(self, name, names, function):
        self.name, self.names, self._function = name, names, function

    def rows(self, bench):
        """Raises AssertionError when they are not those that were announced."""
        rows = self._function(bench)
        if [row.what for row in rows] != list(self.names):
            raise AssertionError(f"gave {[row.what for row in rows]} instead of {list(self.names)}")
        return rows


def measurement(name, *names):
    return lambda function: MEASUREMENTS.append(Measurement(name, names, function))


def chosen(word):
    return [each for each in MEASUREMENTS if word in each.name]


class Bench:
    """The programs of one build on this desktop, Capture One among them, which runs all the time."""

    def __init__(self, build, quick):
        self.build, self.quick = build, quick
        self.folder = tempfile.mkdtemp(prefix="bench.")
        self.display = Display()
        self._started = []
        self._desktops = 0

    def __enter__(self):
        self.desktop().start_capture_one(self.display)
        return self

    def __exit__(self, *_):
        for each in reversed(self._started):
            each.end()
        self.display.close()
        shutil.rmtree(self.folder)

    def keep(self, program):
        """To be ended with the bench."""
        self._started.append(program)

    def count(self, usual, quick):
        return quick if self.quick else usual

    def path(self, name):
        return os.path.join(self.build, "bench", name)

    def desktop(self):
        """A place for the two programs, which are ended with the bench."""
        self._desktops += 1
        folder = os.path.join(self.folder, str(self._desktops))
        os.mkdir(folder)
        self._started.append(programs.Desktop(folder))
        return self._started[-1]

    def morla(self, *, watching):
        """A running MORLA, with the camera watch on or off."""
        programs.morla("defaults", "write", "formatMonitorEnabled", "boolean", "true" if watching else "false")
        desktop = self.desktop()
        desktop.start_morla()
        return desktop

    def lines(self, *argv):
        """The output of a program of the build's bench folder, as lists of words."""
        argv = [self.path(argv[0]), *argv[1:]]
        done = subprocess.run(argv, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False,
                              timeout=600)
        if done.returncode != 0:
            raise AssertionError(f"{argv}: status {done.returncode}: {done.stderr}")
        return [line.split() for line in done.stdout.splitlines()]


# --- Start

def milliseconds_to_line(argv, marker, environment=None):
    """From the start of the process to the line that has `marker`, which it writes into the pipe whose path stands for
    PIPE in `argv`, or to its output."""
    read, write = os.pipe()
    argv = [each.replace("PIPE", f"/dev/fd/{write}") for each in argv]
    start = time.perf_counter()
    program = subprocess.Popen(argv, pass_fds=[write], stdin=subprocess.DEVNULL, stdout=write,
                               stderr=subprocess.DEVNULL, env=environment)
    os.close(write)
    try:
        text = b""
        while marker not in text:
            more = os.read(read, 65536)
            if not more:
                raise AssertionError(f"{argv[0]} ended before it was ready")
            text += more
        return (time.perf_counter() - start) * 1000
    finally:
        os.close(read)
        process.end(program)


@measurement("start", "start to `ready`, watch off")
def _(bench):
    programs.morla("defaults", "write", "formatMonitorEnabled", "boolean", "false")
    ours, peer = [], []
    for _ in range(bench.count(25, 2)):  # in turn, so that both meet the same noise
        ours.append(milliseconds_to_line([programs.path_of("morla"), "--trace", "PIPE"], b'"ready"'))
        peer.append(milliseconds_to_line([bench.path("bench_minimal_tray")], b"ready"))
    return [Row("start to `ready`, watch off", "ms", ours, peer, MINIMAL, Mark(2, of_ratio=True))]


def icons(display):
    """How many icons are in the tray: they are below its window, and say that they are embedded."""
    def below(window):
        children = display.children(window)
        return sum(bool(display.numbers(each, "_XEMBED_INFO")) for each in children) + sum(map(below, children))

    top = next((each for each in display.clients() if programs.window_class(display, each) .lower() == "trayer"), None)
    return below(top) if top else 0


def milliseconds_to_icon(display, argv):
    """From the start of the process to its icon in the tray, asked about every millisecond; None when none comes."""
    before = icons(display)
    start = time.perf_counter()
    program = subprocess.Popen(argv, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        while time.perf_counter() - start < PATIENCE / 3:
            if icons(display) > before:
                return (time.perf_counter() - start) * 1000
            if program.poll() is not None:
                return None
            time.sleep(0.001)
        return None
    finally:
        process.end(program)
        end = time.monotonic() + PATIENCE
        while icons(display) > before and time.monotonic() < end:
            time.sleep(0.01)


def show_icon_of_keepassxc():
    """Which has one only when it is told to."""
    folder = os.path.join(os.environ["XDG_CONFIG_HOME"], "keepassxc")
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "keepassxc.ini"), "w", encoding="ascii") as file:
        file.write("[General]\nUpdateCheckMessageShown=true\n[GUI]\nShowTrayIcon=true\nMinimizeOnStartup=true\n")


@measurement("tray", "start to the icon in the tray", "the same of other programs")
def _(bench):
    programs.morla("defaults", "write", "formatMonitorEnabled", "boolean", "false")
    ours, peer, others, told = [], [], [], []
    morla, minimal = [programs.path_of("morla")], [bench.path("bench_minimal_tray")]
    for _ in range(bench.count(15, 1)):
        ours.append(milliseconds_to_icon(bench.display, morla))
        peer.append(milliseconds_to_icon(bench.display, minimal))
    if None in ours or None in peer:
        raise AssertionError("no icon came into the tray")
    show_icon_of_keepassxc()
    for name, argv in PEERS.items():
        if not shutil.which(name):
            told.append(f"no {name}")
            continue
        taken = [milliseconds_to_icon(bench.display, argv) for _ in range(bench.count(5, 1))]
        taken = sorted(each for each in taken if each is not None)
        told.append(f"{name} {taken[len(taken) // 2]:.0f} ms" if taken else f"{name}: no icon")
        others += taken[len(taken) // 2:len(taken) // 2 + 1]
    return [Row("start to the icon in the tray", "ms", ours, peer, MINIMAL),
            Row("the same of other programs", "ms", ours, others, ", ".join(told))]


# --- At rest

@measurement("rest", "wake-ups with the watch off", "processor time with the watch off", "resident memory, watch off")
def _(bench):
    seconds = bench.count(20, 1)
    desktop = bench.morla(watching=False)
    minimal = subprocess.Popen([bench.path("bench_minimal_tray")], stdout=subprocess.PIPE)
    try:
        minimal.stdout.readline()
        pids = desktop.morla.pid, minimal.pid
        for pid in pids:
            process.settle(pid)
        before = [process.usage(pid) for pid in pids]
        time.sleep(seconds)
        ours, peer = (process.used(then, process.usage(pid)) for then, pid in zip(before, pids))
        memory = [process.resident_mebibytes(pid) for pid in pids]
    finally:
        process.end(minimal)
        desktop.end()
    return [Row("wake-ups with the watch off", "/s", [ours.waits / seconds], [peer.waits / seconds], MINIMAL, Mark(0)),
            Row("processor time with the watch off", "% of one core", [ours.seconds / seconds * 100],
                [peer.seconds / seconds * 100], MINIMAL),
            Row("resident memory, watch off", "MiB", memory[:1], memory[1:], MINIMAL, Mark(40))]


def resident_of(name, argv):
    """Of another program, once it is quiet."""
    if not shutil.which(name):
        return [], f"no {name}"
    program = subprocess.Popen(argv, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        time.sleep(2)
        if program.poll() is not None:
            return [], f"{name} ended"
        process.settle(program.pid, 5)
        return [process.resident_mebibytes(program.pid)], name
    finally:
        process.end(program)


# --- The watch

@measurement("watch", "wake-ups a second with the watch on", "of these beyond the events themselves",
             "processor time with the watch on", "resident memory, watch on", "a round a second, from the trace")
def _(bench):
    rounds = bench.count(20, 2)
    desktop = bench.morla(watching=True)
    is_status = {}

    def took(event):
        if event.get("kind") == "status":
            is_status[event["script"]] = True
        return "ms" in event and is_status.get(event["script"])

    try:
        for _ in range(bench.count(3, 1)):  # the dictionary, the threads, the caches
            desktop.trace.wait_for(took, PATIENCE, "a round")
        usages, replies, start = [process.usage(desktop.morla.pid)], [], time.monotonic()
        for _ in range(rounds):
            replies.append(desktop.trace.wait_for(took, PATIENCE, "a round"))
            usages.append(process.usage(desktop.morla.pid))
        seconds = time.monotonic() - start
        used = process.used(usages[0], usages[-1])
        memory = process.resident_mebibytes(desktop.morla.pid)
    finally:
        desktop.end()
    if any(reply["error"] for reply in replies):
        raise AssertionError(f"a round failed: {replies[-1]}")
    # The same events, once a second, by a client that does nothing else.
    lines = bench.lines("bench_round", str(bench.count(10, 1)), "1000" if not bench.quick else "0")
    bare = [float(each[1]) / 1000 for each in lines if each[0] == "bare"]
    # A reply that is there already is not waited for, so a busy machine counts too few: the most is what they need.
    of_events = max(int(each[2]) for each in lines if each[0] == "bare") * rounds / seconds
    waits = [process.used(*pair).waits * rounds / seconds for pair in zip(usages, usages[1:])]
    copyq, peer = resident_of("copyq", PEERS["copyq"])
    return [Row("wake-ups a second with the watch on", "/s", waits, [of_events],
                "the waits of its ten events as bare calls"),
            Row("of these beyond the events themselves", "/s", [each - of_events for each in waits], mark=Mark(4)),
            Row("processor time with the watch on", "% of one core", [used.seconds / seconds * 100], mark=Mark(0.3)),
            Row("resident memory, watch on", "MiB", [memory], copyq, peer, Mark(40)),
            Row("a round a second, from the trace", "ms", [reply["ms"] for reply in replies], bare, BARE, Mark(5))]


@measurement("round", "a round, back to back")
def _(bench):
    lines = bench.lines("bench_round", str(bench.count(300, 5)), "0")
    ours, bare = ([float(each[1]) / 1000 for each in lines if each[0] == what] for what in ("script", "bare"))
    return [Row("a round, back to back", "ms", ours, bare, BARE, Mark(5))]


@measurement("export", "the export script")
def _(bench):
    lines = bench.lines("bench_export", str(bench.count(50, 2)))
    ours, shell = ([float(each[1]) / 1000 for each in lines if each[0] == what] for what in ("script", "shell"))
    return [Row("the export script", "ms", ours, shell, "its two shell commands", Mark(60))]


def benchmarked(bench, program):
    """What a program of Google Benchmark's measured, by name, in milliseconds."""
    argv = [bench.path(program), "--benchmark_format=json", f"--benchmark_repetitions={bench.count(9, 1)}",
            f"--benchmark_min_time={0.2 if not bench.quick else 0.001}"]
    done = subprocess.run(argv, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=True, timeout=600)
    times = {}
    for each in json.loads(done.stdout)["benchmarks"]:
        if each.get("error_occurred"):
            raise AssertionError(f"{each['name']}: {each['error_message']}")
        if each["run_type"] == "iteration":
            times.setdefault(each["run_name"], []).append(each["real_time"] / 1e6)
    return times


PYTHON_ADDITIONS = """
import time
for _ in range(%d):
    start = time.perf_counter()
    x = 0
    for i in range(1, 1000001):
        x = x + 1
    print((time.perf_counter() - start) * 1000)
"""


def python_additions(bench):
    """How long a million additions take in the interpreter that runs this, in milliseconds."""
    program = PYTHON_ADDITIONS % bench.count(9, 1)
    done = subprocess.run(["/usr/bin/python3", "-c", program], stdout=subprocess.PIPE, text=True, check=True,
                          timeout=600)
    return [float(line) for line in done.stdout.split()]


@measurement("script", "status script in one process, compile", "status script in one process, compile and run",
             "a megabyte of script, compiled", "a loop of a million additions", "100,000 times `& \"x\"` to a text",
             "100,000 items to the end of a list", "100,000 items of a list read")
def _(bench):
    times = benchmarked(bench, "bench_script")
    half = "half as many"

    def growing(what, name):
        return Row(what, "ms", times[f"{name}/100000"], times[f"{name}/50000"], half, Mark(2.5, of_ratio=True))

    return [Row("status script in one process, compile", "ms", times["compileStatusScript"]),
            Row("status script in one process, compile and run", "ms", times["compileAndRunStatusScript"],
                times["answerItsEvents"], "the application's own part", Mark(0.3)),
            Row("a megabyte of script, compiled", "ms", times["compileAMegabyte"], mark=Mark(200)),
            Row("a loop of a million additions", "ms", times["addAMillionTimes"], python_additions(bench),
                "python3", Mark(10, of_ratio=True)),
            growing("100,000 times `& \"x\"` to a text", "buildText"),
            growing("100,000 items to the end of a list", "buildList"),
            growing("100,000 items of a list read", "readList")]


# --- The views

@measurement("view", "the alert settings, described", "the alert settings, described and compared")
def _(bench):
    times = benchmarked(bench, "bench_view")
    return [Row("the alert settings, described", "ms", times["describeSettings"]),
            Row("the alert settings, described and compared", "ms", times["describeAndCompareSettings"],
                mark=Mark(1))]


@measurement("refresh", "widgets touched by a round without news", "memory that 10,000 refreshes add")
def _(bench):
    rounds = bench.count(100, 2)
    lines = bench.lines("bench_refreshes", str(rounds), str(bench.count(10000, 100)))
    touched = [int(each[1]) / rounds for each in lines if each[0] == "touched"]
    memory = [int(each[1]) / 1024 for each in lines if each[0] == "kilobytes"]
    return [Row("widgets touched by a round without news", "widgets", touched, mark=Mark(0)),
            Row("memory that 10,000 refreshes add", "MiB", [memory[-1] - memory[0]], mark=Mark(0.5))]
