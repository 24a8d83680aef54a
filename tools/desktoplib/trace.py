"""MORLA's trace, read while it runs: waiting for an event wakes when it comes."""

import json
import os
import threading


# The key of the line that this reader writes itself when a run has ended.
END = "run that has ended"
# The same for a place up to which everything shall be read.
MARK = "read up to here"


class NotSeen(AssertionError):
    """An event that was due did not come, or one came that must not."""


class Trace:
    """The lines that `morla --trace` writes into `path`, a pipe that is made here. Several runs of the program, one
    after the other, may write into it.

    Every wait begins after the last event that an earlier wait has returned, so that a test tells the story in order.
    """

    def __init__(self, path):
        self.path = path
        os.mkfifo(path, 0o600)
        # Open for writing as well: the pipe does not end when the program does.
        self._pipe = os.open(path, os.O_RDWR | os.O_CLOEXEC)
        self._news = threading.Condition()
        self._events = []
        self._seen = 0
        self._runs = 0
        self._marks = self._last_mark = 0
        self._has_ended = False  # the last run, and all it wrote has been read
        # A thread, so that the program never waits for its reader.
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        rest = b""
        while True:
            lines = (rest + os.read(self._pipe, 65536)).split(b"\n")
            rest = lines.pop()
            with self._news:
                for line in filter(None, lines):
                    self._take(line)
                self._news.notify_all()

    def _take(self, line):
        try:
            event = json.loads(line)
        except ValueError:  # cut off when the program was killed
            event = {"broken": line.decode("utf-8", "replace")}
        if END in event:
            self._has_ended = self._has_ended or event[END] == self._runs
        elif MARK in event:
            self._last_mark = event[MARK]
        else:
            self._events.append(event)

    def written_by(self, program):
        """From here on the end of `program` ends every wait."""
        with self._news:
            self._runs += 1
            self._has_ended = False
            threading.Thread(target=self._note_end_of, args=(program, self._runs), daemon=True).start()

    def _note_end_of(self, program, run):
        program.wait()
        # Through the pipe, so that it comes after all that the program wrote.
        os.write(self._pipe, b"\n" + json.dumps({END: run}).encode() + b"\n")

    def read_all(self):
        """Returns when all that has been written so far has been read."""
        with self._news:
            self._marks += 1
            mark = self._marks
            # Through the pipe, so that it comes after all that.
            os.write(self._pipe, b"\n" + json.dumps({MARK: mark}).encode() + b"\n")
            self._news.wait_for(lambda: self._last_mark >= mark)

    def skip(self):
        """Forgets what has come so far: waits begin with what happens from here on."""
        with self._news:
            self._seen = len(self._events)

    def mark(self):
        """For `rewind`."""
        return self._seen

    def rewind(self, mark):
        """Lets the next wait begin where it would have begun when `mark` was taken."""
        self._seen = mark

    def wait_for(self, matches, seconds, what):
        """The next event for which `matches(event)` is true. Raises NotSeen after `seconds`, or when the program has
        ended; `what` says there what was waited for."""
        position, match = self._seen, []

        def found():
            nonlocal position
            while position < len(self._events) and not match:
                match.extend(filter(matches, [self._events[position]]))
                position += 1
            return match

        with self._news:
            self._news.wait_for(lambda: found() or self._has_ended, seconds)
            if not match:
                reason = "MORLA has ended" if self._has_ended else f"not within {seconds} s"
                raise NotSeen(f"{what}: {reason}\n{self.last()}")
            self._seen = position
            return match[0]

    def expect_none(self, matches, seconds, what):
        """Watches for `seconds`; raises NotSeen as soon as there is an event that must not come."""
        position = self._seen

        def found():
            nonlocal position
            while position < len(self._events):
                position += 1
                if matches(self._events[position - 1]):
                    return True
            return False

        with self._news:
            if self._news.wait_for(found, seconds):
                raise NotSeen(f"{what}: {self._events[position - 1]}\n{self.last()}")
            self._seen = position

    def events(self):
        with self._news:
            return list(self._events)

    def last(self, count=40):
        """The last lines, for a failure's message."""
        lines = [json.dumps(event, ensure_ascii=False) for event in self._events[-count:]]
        return f"the last {len(lines)} lines of the trace:\n  " + "\n  ".join(lines)


def published(name, value):
    """Matches a write of `value` to the published property."""
    return lambda event: event.get("published") == name and event.get("value") == value


def panel(name, what):
    return lambda event: event.get("panel") == name and event.get("event") == what


def script(kind):
    return lambda event: event.get("kind") == kind and "script" in event


def default(key):
    return lambda event: event.get("default") == key


def ready(event):
    return event.get("ready") is True
