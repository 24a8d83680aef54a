"""What makes a display a desktop: the X server, monitors, the bus, the window manager, the tray, the compositor."""

import os
import secrets
import select
import shutil
import struct
import subprocess
import time

from .process import descendants, spawn
from .xlib import Display

HERE = os.path.dirname(os.path.abspath(__file__))
READY_SECONDS = 10
TRAY_HEIGHT = 24
BACKGROUND = 0x4A5568
TRAY_SELECTION = "_NET_SYSTEM_TRAY_S0"
COMPOSITOR_SELECTION = "_NET_WM_CM_S0"

BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path={run}/bus</listen>
  <auth>EXTERNAL</auth>
  <servicedir>{data}/dbus-1/services</servicedir>
  <servicedir>{system}</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
  <limit name="reply_timeout">2000000000</limit>
</busconfig>
"""
# Of the machine's services only these may be started: nothing of the person's own desktop shall wake up here.
SYSTEM_SERVICES = ("org.a11y.Bus", "org.xfce.Xfconf")

NO_SHORTCUTS = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-keyboard-shortcuts" version="1.0">
  <property name="{group}" type="empty"><property name="custom" type="empty">
    <property name="override" type="bool" value="true"/>
  </property></property>
</channel>
"""
XFWM_SETTINGS = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfwm4" version="1.0">
  <property name="general" type="empty">
    <property name="use_compositing" type="bool" value="false"/>
    <property name="workspace_count" type="int" value="2"/>
    <property name="focus_new" type="bool" value="true"/>
  </property>
</channel>
"""


class NotReady(Exception):
    """A part of the desktop did not answer; the text says which."""


class Session:
    """Starts the parts, each with a log `NAME.log` in `logs`, as children of this process."""

    def __init__(self, options, base, logs, environment, stop):
        self.options = options
        self.base = base
        self.logs = logs
        self.environment = environment
        self.server = None  # process id
        self._stop = stop  # readable when the desktop is asked to end before it has begun
        self._parts = {}  # process id -> (name, descriptor that is readable when it has ended)
        self._end = time.monotonic() + READY_SECONDS

    def start(self):
        """Returns when everything has answered; raises NotReady else."""
        self._start_server()
        display = self._connect()
        try:
            display.dress_root(BACKGROUND)
            self._set_monitors()
            self._set_keyboard_and_scale()
            self._start_bus()
            accessibility = self._start_accessibility()
            self._start_window_manager(display)
            self._start_compositor(display)
            self._start_tray(display)
            self._finish(accessibility, "the accessibility bus")
        except OSError as error:
            raise NotReady(str(error)) from error
        finally:
            display.close()

    def process_of(self, program):
        """The process id of the part that is this program."""
        return next(child for child, (name, _ended) in self._parts.items() if name == program)

    def _left(self):
        return max(0.0, self._end - time.monotonic())

    def _spawn(self, name, argv, keep=()):
        child = spawn(argv, self.environment, log=os.path.join(self.logs, name + ".log"), keep=keep)
        self._parts[child] = argv[0], os.pidfd_open(child)
        return child

    def _check_alive(self):
        """A part that has ended will never answer: no use in waiting for the time to pass."""
        for child, (name, _ended) in self._parts.items():
            ended, status = os.waitpid(child, os.WNOHANG)
            if ended:
                del self._parts[child]
                raise NotReady(f"{name} has ended with status {os.waitstatus_to_exitcode(status)}")
        if select.select([self._stop], [], [], 0)[0]:
            raise NotReady("asked to end")

    def _run(self, *argv):
        """A short command that must succeed."""
        try:
            done = subprocess.run(argv, env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                  stderr=subprocess.STDOUT, timeout=self._left() or 0.001, text=True, errors="replace")
        except FileNotFoundError:
            raise NotReady(f"{argv[0]} is not installed") from None
        except subprocess.TimeoutExpired:
            raise NotReady(f"{argv[0]} does not answer") from None
        if done.returncode != 0:
            raise NotReady(f"{' '.join(argv)}: {done.stdout.strip()}")
        return done.stdout

    def _begin(self, *argv):
        try:
            return subprocess.Popen(argv, env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                    stderr=subprocess.DEVNULL)
        except FileNotFoundError:
            raise NotReady(f"{argv[0]} is not installed") from None

    def _finish(self, process, what):
        try:
            if process.wait(self._left() or 0.001) != 0:
                raise NotReady(f"{what} does not answer")
        except subprocess.TimeoutExpired:
            raise NotReady(f"{what} does not answer") from None

    def _start_server(self):
        width = max(each.x + each.width for each in self.options.monitors)
        height = max(each.y + each.height for each in self.options.monitors)
        self._write_authority()
        read, write = os.pipe()
        # -noreset: else the monitors vanish with the last client. Without GLX, which nothing here draws with, it starts
        # faster and smaller.
        self.server = self._spawn("x", [
            "Xvfb", "-displayfd", str(write), "-screen", "0", f"{width}x{height}x24", "-dpi", "96", "-noreset",
            "-nolisten", "tcp", "-auth", self.environment["XAUTHORITY"],
            "-extension", "GLX"], keep=(write,))
        os.close(write)
        number = self._read_answer(read, self.server, "the X server")
        self.environment["DISPLAY"] = ":" + number
        os.environ["XAUTHORITY"] = self.environment["XAUTHORITY"]

    def _read_answer(self, descriptor, child, what):
        """The line by which a part tells that it is there; closes the descriptor."""
        text = b""
        while not text.endswith(b"\n") and select.select([descriptor], [], [], self._left())[0]:
            piece = os.read(descriptor, 256)
            if not piece:  # it ends, or has closed its end too soon: then it does not answer
                select.select([self._parts[child][1]], [], [], self._left())
                self._check_alive()
                break
            text += piece
        os.close(descriptor)
        if not text.strip():
            raise NotReady(f"{what} does not answer")
        return text.decode().strip()

    def _write_authority(self):
        """Only who knows the cookie may connect, not everybody on the machine. One entry for every display name, since
        the number is not known yet: family, address, number, name and data, each with its length."""
        fields = [b"", b"", b"MIT-MAGIC-COOKIE-1", secrets.token_bytes(16)]
        wildcard_family = 0xFFFF
        data = struct.pack(">H", wildcard_family) + b"".join(struct.pack(">H", len(each)) + each for each in fields)
        descriptor = os.open(self.environment["XAUTHORITY"], os.O_WRONLY | os.O_CREAT, 0o600)
        os.write(descriptor, data)
        os.close(descriptor)

    def _connect(self):
        try:
            return Display(self.environment["DISPLAY"])
        except OSError as error:
            raise NotReady(str(error)) from error

    def _set_monitors(self):
        monitors = self.options.monitors
        if len(monitors) == 1 and (monitors[0].x, monitors[0].y) == (0, 0):
            return
        millimetres = lambda pixels: round(pixels * 25.4 / 96)
        for index, each in enumerate(monitors):
            size = f"{each.width}/{millimetres(each.width)}x{each.height}/{millimetres(each.height)}"
            self._run("xrandr", "--setmonitor", f"{'*' if index == 0 else ''}DISPLAY-{index + 1}",
                      f"{size}+{each.x}+{each.y}", "screen" if index == 0 else "none")

    def _set_keyboard_and_scale(self):
        if self.options.layout != "us":
            self._run("setxkbmap", "-layout", self.options.layout)
        if self.options.scale != 1:
            subprocess.run(["xrdb", "-merge", "-nocpp"], env=self.environment, text=True, check=False,
                           input=f"Xft.dpi: {96 * self.options.scale}\n", timeout=self._left() or 0.001)

    def _start_bus(self):
        system = os.path.join(self.base, "services")
        os.mkdir(system)
        for name in SYSTEM_SERVICES:
            source = f"/usr/share/dbus-1/services/{name}.service"
            if os.path.exists(source):
                self._copy_service(source, os.path.join(system, os.path.basename(source)))
        run = self.environment["XDG_RUNTIME_DIR"]
        configuration = os.path.join(self.base, "bus.conf")
        with open(configuration, "w", encoding="utf-8") as file:
            file.write(BUS_CONFIGURATION.format(run=run, data=self.environment["XDG_DATA_HOME"], system=system))
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={run}/bus"
        read, write = os.pipe()
        bus = self._spawn("bus", ["dbus-daemon", "--nofork", "--nopidfile", "--config-file", configuration,
                                  f"--print-address={write}"], keep=(write,))
        os.close(write)
        self._read_answer(read, bus, "the bus")

    @staticmethod
    def _copy_service(source, target):
        """Without SystemdService=: this bus starts its services itself."""
        with open(source, encoding="utf-8") as file:
            lines = [line for line in file if not line.startswith("SystemdService")]
        with open(target, "w", encoding="utf-8") as file:
            file.writelines(lines)

    def _start_accessibility(self):
        """Setting the switch starts the service that keeps it, and that one the bus of its own."""
        return self._begin("dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
                           "org.freedesktop.DBus.Properties.Set", "string:org.a11y.Status", "string:IsEnabled",
                           "variant:boolean:true")

    def _start_window_manager(self, display):
        if self.options.wm == "none":
            return
        if self.options.wm == "openbox":
            argv = ["openbox", "--sm-disable", "--config-file", os.path.join(HERE, "openbox.xml")]
        else:
            self._write_xfce_settings()
            argv = ["xfwm4", "--compositor=off"]
        self._spawn("wm", argv)
        self._await(display, display.window_manager, f"the window manager {self.options.wm}")

    def _write_xfce_settings(self):
        folder = os.path.join(self.environment["XDG_CONFIG_HOME"], "xfce4", "xfconf", "xfce-perchannel-xml")
        os.makedirs(folder)
        with open(os.path.join(folder, "xfwm4.xml"), "w", encoding="utf-8") as file:
            file.write(XFWM_SETTINGS)
        with open(os.path.join(folder, "xfce4-keyboard-shortcuts.xml"), "w", encoding="utf-8") as file:
            file.write(NO_SHORTCUTS.format(group="xfwm4"))

    def _start_compositor(self, display):
        if self.options.compositor:
            display.watch_selection(COMPOSITOR_SELECTION)
            # The older rendering code of version 9 asks for GLX, whatever the back end.
            newer = ["--experimental-backends"] if self._run("picom", "--version").startswith("v9") else []
            self._spawn("compositor", ["picom", "--backend", "xrender", "--config", os.devnull, *newer])
            self._await(display, lambda: display.selection_owner(COMPOSITOR_SELECTION), "the compositor")

    def _start_tray(self, display):
        edge = self.options.tray
        if edge == "none":
            return
        display.watch_selection(TRAY_SELECTION)
        self._spawn("tray", [
            "trayer", "--edge", edge, "--align", "right" if edge in ("top", "bottom") else "left",
            "--widthtype", "request", "--heighttype", "pixel", "--height", str(TRAY_HEIGHT * self.options.scale),
            "--SetDockType", "true", "--SetPartialStrut", "true", "--expand", "true", "--monitor", "primary"])
        self._await(display, lambda: display.selection_owner(TRAY_SELECTION), "the tray")

    def _await(self, display, condition, what):
        def alive_and_ready():
            self._check_alive()
            return condition()
        others = [ended for _name, ended in self._parts.values()]
        if not display.wait_until(alive_and_ready, self._left(), [*others, self._stop]):
            raise NotReady(f"{what} does not answer")


def keep_evidence(session, folder):
    """What the desktop looked like, into `folder`; the logs are elsewhere. As much as can be had."""
    environment = session.environment
    if "DISPLAY" not in environment:
        return

    def output_of(*argv):
        try:
            done = subprocess.run(argv, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                  stderr=subprocess.STDOUT, timeout=10, text=True, errors="replace")
            return done.stdout
        except (OSError, subprocess.SubprocessError) as error:
            return f"{argv[0]}: {error}\n"

    complaint = output_of("import", "-window", "root", os.path.join(folder, "screenshot.png"))
    sections = [("Windows, top to bottom", output_of("xwininfo", "-root", "-tree")),
                ("Root", output_of("xprop", "-root")),
                ("Processes", "".join(f"{each} {_command_line(each)}\n" for each in descendants()))]
    if complaint:
        sections.append(("Screenshot", complaint))
    with open(os.path.join(folder, "windows.txt"), "w", encoding="utf-8") as file:
        for title, text in sections:
            file.write(f"== {title}\n{text}\n")


def _command_line(process):
    try:
        with open(f"/proc/{process}/cmdline", "rb") as file:
            return file.read().replace(b"\0", b" ").decode("utf-8", "replace")
    except OSError:
        return "(has ended)"


def copy_logs(source, folder):
    for name in sorted(os.listdir(source)):
        shutil.copyfile(os.path.join(source, name), os.path.join(folder, name))
