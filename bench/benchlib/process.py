"""What the kernel says of a running program, all its threads together."""

import os
import re
import subprocess
import time
import typing

CONTEXT_SWITCHES = re.compile(r"^voluntary_ctxt_switches:\s*(\d+)$", re.MULTILINE)
RESIDENT = re.compile(r"^VmRSS:\s*(\d+) kB$", re.MULTILINE)


class Usage(typing.NamedTuple):
    waits: int  # how often a thread went to sleep, which is how often one woke up
    seconds: float  # processor time


def _read(path):
    with open(path, encoding="ascii", errors="replace") as file:
        return file.read()


def usage(pid):
    """By thread; a thread that has ended since takes its counts with it."""
    threads = {}
    for thread in os.listdir(f"/proc/{pid}/task"):
        try:
            waits = CONTEXT_SWITCHES.search(_read(f"/proc/{pid}/task/{thread}/status"))
            nanoseconds = _read(f"/proc/{pid}/task/{thread}/schedstat").split()[0]
        except FileNotFoundError:
            continue
        threads[thread] = Usage(int(waits.group(1)), int(nanoseconds) / 1e9)
    return threads


def used(before, after):
    """What was used between two calls of `usage`."""
    total = Usage(0, 0.0)
    for thread, now in after.items():
        then = before.get(thread, Usage(0, 0.0))
        total = Usage(total.waits + now.waits - then.waits, total.seconds + now.seconds - then.seconds)
    return total


def resident_mebibytes(pid):
    return int(RESIDENT.search(_read(f"/proc/{pid}/status")).group(1)) / 1024


def settle(pid, seconds=20.0):
    """Returns when the program has been asleep for a quarter of a second, or after `seconds`."""
    end = time.monotonic() + seconds
    before = usage(pid)
    while time.monotonic() < end:
        time.sleep(0.25)
        after = usage(pid)
        if before.keys() == after.keys() and used(before, after).waits == 0:
            return
        before = after


def end(program):
    """A program that was started here."""
    program.terminate()
    try:
        program.wait(10)
    except subprocess.TimeoutExpired:
        program.kill()
        program.wait()
