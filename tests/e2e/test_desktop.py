# desktop: without
"""tools/desktop itself."""

import json
import os
import re
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import textwrap
import unittest

REPOSITORY = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(REPOSITORY, "tools"))

from desktoplib import process  # noqa: E402

TOOL = os.path.join(REPOSITORY, "tools", "desktop")
SECONDS = 30
# What a command on the desktop sees of it, told in JSON.
LOOK = textwrap.dedent(f"""
    import json, os, subprocess, sys
    sys.path.insert(0, {os.path.join(REPOSITORY, "tools")!r})
    from desktoplib.xlib import Display
    display = Display()
    run = lambda *argv: subprocess.run(argv, stdout=subprocess.PIPE, text=True, check=False).stdout
    wm = display.window_manager()
    print(json.dumps({{
        "environment": dict(os.environ),
        "wm": display.text(wm, "_NET_WM_NAME") if wm else None,
        "tray": bool(display.selection_owner("_NET_SYSTEM_TRAY_S0")),
        "compositor": bool(display.selection_owner("_NET_WM_CM_S0")),
        "screen": display.geometry(display.root),
        "monitors": run("xrandr", "--listmonitors"),
        "keyboard": run("setxkbmap", "-query"),
        "resources": run("xrdb", "-query"),
        "accessibility": run("dbus-send", "--session", "--print-reply=literal", "--dest=org.a11y.Bus",
                             "/org/a11y/bus", "org.a11y.Bus.GetAddress").strip(),
        "private": {{path: os.listdir(path) for path in ("/private/tmp", "/Applications")}},
        "runtime mode": oct(os.stat(os.environ["XDG_RUNTIME_DIR"]).st_mode & 0o777),
    }}))
    """)


def name_of(process_id):
    with open(f"/proc/{process_id}/comm", encoding="utf-8") as file:
        return file.read().strip()


class ToolTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.keep = os.path.join(self.folder, "keep")

    def run_tool(self, *arguments, environment=None, keep=False):
        """`keep`: in a folder of the test's own, so that a wanted failure leaves nothing in the build folder."""
        kept = ["--keep", self.keep] if keep else []
        return subprocess.run([TOOL, *kept, *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True, timeout=SECONDS, check=False,
                              env={**os.environ, **(environment or {})})

    def look(self, *options, environment=None):
        done = self.run_tool(*options, "--", sys.executable, "-c", LOOK, environment=environment)
        self.assertEqual(done.returncode, 0, done.stderr)
        return json.loads(done.stdout)

    def start_tool(self, *arguments):
        tool = subprocess.Popen([TOOL, "--keep", self.keep, *arguments], stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.addCleanup(tool.stdout.close)
        self.addCleanup(tool.wait, SECONDS)
        self.addCleanup(tool.kill)
        return tool

    def put_in_path(self, name, script):
        """A program of that name before all others; gives the environment."""
        path = os.path.join(self.folder, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write("#!/bin/sh\n" + script)
        os.chmod(path, 0o755)
        return {"PATH": self.folder + ":" + os.environ["PATH"]}


class ExitStatus(ToolTest):
    def test_is_the_commands_own(self):
        for status in (0, 1, 7, 125):
            with self.subTest(status):
                self.assertEqual(self.run_tool("--", "sh", "-c", f"exit {status}", keep=True).returncode, status)

    def test_is_128_and_the_number_after_a_signal(self):
        self.assertEqual(self.run_tool("--", "sh", "-c", "kill -9 $$", keep=True).returncode, 128 + signal.SIGKILL)

    def test_is_127_or_126_for_a_command_that_cannot_be_started(self):
        self.assertEqual(self.run_tool("--", "no-such-command", keep=True).returncode, 127)
        self.assertEqual(self.run_tool("--", "/etc/passwd", keep=True).returncode, 126)

    def test_is_2_for_a_wrong_command_line(self):
        for arguments in ((), ("--",), ("true",), ("--wm", "twm", "--", "true"), ("--monitor", "big", "--", "true"),
                          ("--scale", "3", "--", "true"), ("--no-such-option", "--", "true"), ("true", "--", "true")):
            with self.subTest(" ".join(arguments)):
                self.assertEqual(self.run_tool(*arguments).returncode, 2)

    def test_help_is_given(self):
        done = self.run_tool("--help")
        self.assertEqual(done.returncode, 0)
        for option in ("--monitor", "--wm", "--tray", "--compositor", "--scale", "--layout", "--keep"):
            self.assertIn(option, done.stdout)

    def test_a_signal_to_the_tool_reaches_the_command(self):
        tool = self.start_tool("--", "sh", "-c", "trap 'exit 9' TERM; sleep 1000 & echo up; wait $!")
        self.assertEqual(tool.stdout.readline(), "up\n")
        tool.terminate()
        self.assertEqual(tool.wait(SECONDS), 9)


class Surroundings(ToolTest):
    def test_everything_has_answered_before_the_command_starts(self):
        for wm, name in (("openbox", "Openbox"), ("xfwm4", "Xfwm4")):
            with self.subTest(wm):
                seen = self.look("--wm", wm)
                self.assertEqual((seen["wm"], seen["tray"], seen["compositor"]), (name, True, False))
                self.assertIn("unix:", seen["accessibility"])

    def test_parts_can_be_left_out(self):
        seen = self.look("--wm", "none", "--tray", "none")
        self.assertEqual((seen["wm"], seen["tray"]), (None, False))

    def test_a_compositor_is_there_on_request(self):
        self.assertTrue(self.look("--compositor")["compositor"])

    def test_the_tray_is_on_any_edge(self):
        for edge in ("top", "bottom", "left", "right"):
            with self.subTest(edge):
                self.assertTrue(self.look("--tray", edge)["tray"])

    def test_monitors_are_as_asked_for_and_the_first_is_the_main_one(self):
        seen = self.look("--monitor", "1920x1080+2560+0", "--monitor", "2560x1440+0+0")
        self.assertEqual(seen["screen"], [0, 0, 4480, 1440])
        self.assertRegex(seen["monitors"], r"0: [+]?\*\S+ 1920/\d+x1080/\d+\+2560\+0")
        self.assertRegex(seen["monitors"], r"1: \S+ 2560/\d+x1440/\d+\+0\+0")

    def test_one_full_hd_monitor_unless_told_otherwise(self):
        self.assertEqual(self.look()["screen"], [0, 0, 1920, 1080])

    def test_the_keyboard_is_as_asked_for(self):
        self.assertIn("fr", self.look("--layout", "fr")["keyboard"].split())

    def test_the_scale_is_told_to_every_toolkit(self):
        seen = self.look("--scale", "2")
        self.assertEqual(seen["environment"]["QT_SCALE_FACTOR"], "2")
        self.assertRegex(seen["resources"], r"Xft\.dpi:\s*192")

    def test_the_home_folder_is_its_own_and_holds_capture_one_and_the_permissions(self):
        done = self.run_tool("--", "sh", "-c", 'cd "$HOME" && cat "Applications/Capture One.app/Contents/Info.plist" '
                             '"$XDG_DATA_HOME/privacy/permissions.json" '
                             '"$XDG_DATA_HOME/dbus-1/services/com.captureone.captureone16.service" && '
                             'ls "Applications/Capture One.app/Contents/Resources/dictionary.tsv" '
                             '"$XDG_DATA_HOME/applications/com.captureone.captureone16.desktop"',
                             environment={"MORLA_BIN": "/somewhere"})
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("<string>com.captureone.captureone16</string>", done.stdout)
        self.assertIn('"com.captureone.captureone16": "allow"', done.stdout)
        self.assertIn('Exec="/somewhere/captureone-sim"', done.stdout)

    def test_the_environment_is_a_french_one_of_its_own(self):
        seen = self.look(environment={"GTK_THEME": "x", "XDG_CURRENT_DESKTOP": "x", "QT_STYLE_OVERRIDE": "x",
                                      "WAYLAND_DISPLAY": "wayland-0", "LC_ALL": "C", "MORLA_BIN": "/somewhere"})
        environment = seen["environment"]
        for name in ("GTK_THEME", "XDG_CURRENT_DESKTOP", "QT_STYLE_OVERRIDE", "WAYLAND_DISPLAY", "LC_ALL"):
            self.assertNotIn(name, environment)
        for name in ("HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"):
            self.assertNotEqual(environment[name], os.environ.get(name))
        self.assertEqual(environment["LANG"], "fr_FR.UTF-8")
        self.assertEqual(environment["PATH"].split(":")[0], "/somewhere")
        self.assertEqual(seen["runtime mode"], "0o700")

    def test_the_folders_of_the_machine_are_empty_at_first(self):
        self.assertEqual(self.look()["private"], {"/private/tmp": [], "/Applications": []})


class Failure(ToolTest):
    def assert_not_ready(self, done, *words):
        self.assertEqual(done.returncode, 125, done.stderr)
        for word in words:
            self.assertIn(word, done.stderr)
        self.assertNotIn("command ran", done.stdout)

    def test_is_told_with_the_log_when_the_x_server_ends(self):
        environment = self.put_in_path("Xvfb", "echo the reason >&2; exit 1\n")
        self.assert_not_ready(self.run_tool("--", "echo", "command ran", environment=environment, keep=True), "Xvfb",
                              "x.log: the reason")

    def test_is_told_when_the_window_manager_ends(self):
        environment = self.put_in_path("openbox", "echo the reason >&2; exit 3\n")
        self.assert_not_ready(self.run_tool("--", "echo", "command ran", environment=environment, keep=True), "openbox",
                              "wm.log: the reason")

    def test_is_told_when_the_bus_ends(self):
        environment = self.put_in_path("dbus-daemon", "echo the reason >&2; exit 3\n")
        self.assert_not_ready(self.run_tool("--", "echo", "command ran", environment=environment, keep=True),
                              "bus.log: the reason")

    def test_is_told_when_the_tray_is_silent(self):
        environment = self.put_in_path("trayer", "exec sleep 1000\n")
        self.assert_not_ready(self.run_tool("--", "echo", "command ran", environment=environment, keep=True),
                              "the tray")

    def test_leaves_logs_a_screenshot_and_the_windows(self):
        done = self.run_tool("--", "sh", "-c", "echo told; exit 3")
        folder = re.search(r"are in (.*)$", done.stderr.strip()).group(1)
        self.addCleanup(shutil.rmtree, folder)
        self.assert_evidence_in(folder)

    def test_with_keep_they_are_left_without_a_failure(self):
        self.assertEqual(self.run_tool("--", "true", keep=True).returncode, 0)
        self.assert_evidence_in(self.keep)

    def assert_evidence_in(self, folder):
        for name in ("x.log", "wm.log", "bus.log", "screenshot.png", "windows.txt"):
            self.assertTrue(os.path.exists(os.path.join(folder, name)), name)
        with open(os.path.join(folder, "screenshot.png"), "rb") as file:
            self.assertEqual(file.read(8), b"\x89PNG\r\n\x1a\n")
        with open(os.path.join(folder, "windows.txt"), encoding="utf-8") as file:
            self.assertIn("_NET_SUPPORTING_WM_CHECK", file.read())


class End(ToolTest):
    # A daemon: no child of anybody on the desktop, in a session of its own, deaf to polite signals.
    # Its parent goes on when it has told its number.
    DAEMON = ("import os, signal\n"
              "told, tells = os.pipe()\n"
              "if os.fork() == 0:\n"
              "    os.setsid()\n"
              "    if os.fork() == 0:\n"
              "        for each in (signal.SIGTERM, signal.SIGHUP): signal.signal(each, signal.SIG_IGN)\n"
              "        print(os.getpid(), flush=True)\n"
              "        os.close(tells)\n"
              "        signal.pause()\n"
              "    os._exit(0)\n"
              "os.close(tells)\n"
              "os.read(told, 1)\n"
              "os.wait()\n")

    def test_takes_along_what_the_command_left_behind(self):
        done = self.run_tool("--", "sh", "-c", f"{sys.executable} -c '{self.DAEMON}' > pid; cat pid; rm pid",
                             environment={"PWD": self.folder})
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertFalse(os.path.exists(f"/proc/{int(done.stdout)}"))

    def test_a_killed_tool_takes_everything_along(self):
        self.assert_all_end_with(lambda tool: tool.kill())

    def test_a_killed_guardian_takes_everything_along(self):
        def kill_guardian(tool):
            os.kill(process.descendants(tool.pid)[0], signal.SIGKILL)

        self.assert_all_end_with(kill_guardian)

    def assert_all_end_with(self, kill):
        tool = self.start_tool("--", "sh", "-c",
                               f"{sys.executable} -c '{self.DAEMON}'; sleep 1000 & echo \"$HOME\"; wait")
        daemon = int(tool.stdout.readline())
        base = os.path.dirname(tool.stdout.readline().strip())
        everything = process.descendants(tool.pid)
        self.assertIn(daemon, everything)
        names = {each: name_of(each) for each in everything}
        for needed in ("Xvfb", "openbox", "trayer", "dbus-daemon", "at-spi-bus-laun", "sh"):
            self.assertIn(needed, names.values())
        ends = {os.pidfd_open(each): each for each in everything}
        kill(tool)
        while ends:
            ready, _, _ = select.select(list(ends), [], [], SECONDS)
            self.assertTrue(ready, f"still running: {[names[each] for each in ends.values()]}")
            for descriptor in ready:
                os.close(descriptor)
                del ends[descriptor]
        tool.wait(SECONDS)
        self.assertFalse(os.path.exists(base))

    def test_two_at_once_share_nothing(self):
        tools = []
        for number in (1, 2):
            script = (f"touch /private/tmp/{number} /Applications/{number}; "
                      f"echo $DISPLAY; echo $DBUS_SESSION_BUS_ADDRESS; echo $HOME; echo $XDG_RUNTIME_DIR; "
                      f"read -r go <{self.folder}/go{number}; ls /private/tmp /Applications | tr '\\n' ' '")
            os.mkfifo(os.path.join(self.folder, f"go{number}"))
            self.keep = os.path.join(self.folder, f"keep{number}")
            tools.append(self.start_tool("--", "sh", "-c", script))
        first, second = ([tool.stdout.readline() for _ in range(4)] for tool in tools)
        for mine, theirs in zip(first, second):
            self.assertNotEqual(mine, theirs)
        for number, tool in enumerate(tools, 1):
            with open(os.path.join(self.folder, f"go{number}"), "w", encoding="utf-8") as file:
                file.write("\n")
            self.assertEqual(tool.stdout.read().split(), ["/Applications:", str(number), "/private/tmp:", str(number)])
            self.assertEqual(tool.wait(SECONDS), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
