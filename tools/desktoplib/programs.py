"""The programs on a virtual desktop: starting and ending them, asking them, and the person's hands."""

import os
import signal
import subprocess
import sys

from .trace import Trace, ready

ENDS_WITHIN_SECONDS = 10
COMMAND_SECONDS = 20
# The class of a third application, which has nothing to do with the other two.
OTHER = "Autre"
CAPTURE_ONE = "Capture One"


def path_of(name):
    return os.path.join(os.environ["MORLA_BIN"], name)


class Program(subprocess.Popen):
    """A program whose output goes into a file of its own, and which can be waited for from several threads."""

    def __init__(self, argv, log, **options):
        self.log = log
        with open(log, "ab") as output:
            super().__init__(argv, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT, **options)

    def output(self):
        with open(self.log, encoding="utf-8", errors="replace") as file:
            return file.read()

    def end(self, number=signal.SIGTERM):
        """Ends it if it still runs; gives the exit status. Raises when it does not end."""
        if self.poll() is None:
            self.send_signal(number)
        try:
            return self.wait(ENDS_WITHIN_SECONDS)
        except subprocess.TimeoutExpired:
            self.kill()
            self.wait()
            raise AssertionError(f"{self.args} did not end on signal {number}") from None


def run(*argv, check=True):
    """A short command, its output as text. With `check`, raises when its exit status is not 0."""
    done = subprocess.run(argv, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                          timeout=COMMAND_SECONDS, check=False)
    if check and done.returncode != 0:
        raise AssertionError(f"{' '.join(argv)}: status {done.returncode}: {done.stderr}{done.stdout}")
    return done


def morla(*arguments, check=True):
    return run(path_of("morla"), *arguments, check=check)


def control(*arguments, check=True):
    """captureonectl; gives its output without the end of line."""
    return run(path_of("captureonectl"), *arguments, check=check).stdout.rstrip("\n")


class Desktop:
    """The two programs and what they leave: `folder` takes the logs."""

    def __init__(self, folder):
        self.folder = folder
        self.trace = Trace(os.path.join(folder, "trace"))
        self.morla = None
        self.capture_one = None

    def start_capture_one(self, display):
        """Returns when it answers and its window has the focus."""
        self.capture_one = Program([path_of("captureone-sim")], os.path.join(self.folder, "captureone-sim.log"))
        window = wait_for_window(display, CAPTURE_ONE, 20)
        control("get", "events")
        if self.capture_one.poll() is not None:
            raise AssertionError(f"it was another one that answered: {self.capture_one.output()}")
        return window

    def start_morla(self, *arguments):
        """Returns when start-up has ended; the next wait begins with what happened on the way."""
        self.trace.read_all()  # what a killed one left behind ends here
        self.morla = Program([path_of("morla"), "--trace", self.trace.path, *arguments],
                             os.path.join(self.folder, "morla.log"))
        self.trace.written_by(self.morla)
        start = self.trace.mark()
        self.trace.wait_for(ready, 20, "MORLA is ready")
        self.trace.rewind(start)

    def quit_morla(self):
        """Through its own command; gives the exit status."""
        morla("do", "quit")
        return self.morla.wait(ENDS_WITHIN_SECONDS)

    def end(self):
        for program in (self.morla, self.capture_one):
            if program is not None:
                program.end()

    def logs(self):
        return "".join(f"== {program.log}\n{program.output()}" for program in (self.morla, self.capture_one) if program)


def start_other_application(folder, *arguments):
    script = os.path.join(os.path.dirname(os.path.abspath(__file__)), "otherapp.py")
    return Program([sys.executable, script, *arguments],
                   os.path.join(folder, "other.log"))


def window_class(display, window):
    """The class, the second of the two texts of WM_CLASS."""
    return (display.text(window, "WM_CLASS") or "").rstrip("\0").rpartition("\0")[2]


def managed_window(display, wanted):
    return next((each for each in display.clients() if window_class(display, each) == wanted), None)


def wait_for_window(display, wanted, seconds):
    """The window of the class, as soon as the window manager has given it the front."""
    def in_front():
        window = managed_window(display, wanted)
        return window if window and display.active_window() == window else None

    window = display.wait_until(in_front, seconds)
    if not window:
        raise AssertionError(f"no window of {wanted} came to the front within {seconds} s")
    return window


def bring_to_front(display, window, seconds=10):
    """As a click on a task bar does."""
    run("xdotool", "windowactivate", str(window))
    if not display.wait_until(lambda: display.active_window() == window, seconds):
        raise AssertionError(f"window {window:#x} did not come to the front within {seconds} s")


def xdotool(*arguments):
    return run("xdotool", *(str(each) for each in arguments)).stdout


def screenshot(path):
    run("import", "-window", "root", path)
