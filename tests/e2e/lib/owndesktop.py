"""A desktop for each test, of which a test may end any part: the X server, the bus, the window manager, the tray."""

import argparse
import os
import signal
import subprocess
import tempfile
from unittest import mock

from desktoplib import home, process, session
from lib.morlatest import DesktopTest, REPOSITORY


class OwnDesktopTest(DesktopTest):
    wm = "openbox"
    tray = "none"

    def setUp(self):
        process.adopt_orphans()  # what the parts have started must not outlive the test
        base = tempfile.mkdtemp(prefix="morla-own-")
        self.addCleanup(process.remove_folder, base)
        programs = os.path.abspath(os.environ.get("MORLA_BIN") or os.path.join(REPOSITORY, "build", "release", "bin"))
        environment = home.environment(base, programs)
        home.install_capture_one(os.path.join(environment["HOME"], "Applications"), environment["XDG_DATA_HOME"],
                                 os.path.join(programs, "captureone-sim"))
        logs = os.path.join(base, "logs")
        os.mkdir(logs)
        options = argparse.Namespace(monitors=[argparse.Namespace(width=1920, height=1080, x=0, y=0)], wm=self.wm,
                                     tray=self.tray, compositor=False, scale=1, layout="us")
        stop, never = os.pipe()
        for end in (stop, never):
            self.addCleanup(os.close, end)
        patched = mock.patch.dict(os.environ, environment, clear=True)
        patched.start()
        self.addCleanup(patched.stop)
        self.addCleanup(process.end_descendants)
        self.session = session.Session(options, base, logs, environment, stop)
        self.session.start()
        os.environ.update(self.session.environment)
        super().setUp()

    def kill(self, program):
        """Ends a part without a word; gives the arguments that it was started with."""
        part = self.session.process_of(program)
        with open(f"/proc/{part}/cmdline", "rb") as file:
            arguments = [os.fsdecode(each) for each in file.read().split(b"\0")[:-1]]
        os.kill(part, signal.SIGKILL)
        os.waitpid(part, 0)
        return arguments

    def start(self, arguments):
        """As above, another time."""
        log = os.path.join(self.folder, os.path.basename(arguments[0]) + ".log")
        with open(log, "ab") as output:
            part = subprocess.Popen(arguments, stdin=subprocess.DEVNULL, stdout=output, stderr=output)
        self.addCleanup(part.wait)
        self.addCleanup(part.kill)
        return part
