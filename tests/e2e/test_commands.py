# desktop: --tray none
"""The command line of MORLA: defaults, actions of a running one, a second copy, usage."""

import os
import subprocess
import unittest

from lib.morlatest import SECONDS, DesktopTest, main, morla, programs, ready

WITHOUT_DISPLAY = {name: value for name, value in os.environ.items()
                   if name not in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS")}


def morla_without_display(*arguments):
    return subprocess.run([programs.path_of("morla"), *arguments], env=WITHOUT_DISPLAY, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=20, check=False)


class Defaults(DesktopTest):
    def test_a_value_of_each_type_is_read_as_it_was_written(self):
        for kind, value in (("boolean", "true"), ("boolean", "false"), ("integer", "-42"), ("number", "1.5"),
                            ("text", "f/8"), ("text", ""), ("text", "« déjà » 100 %")):
            with self.subTest(f"{kind} {value!r}"):
                morla("defaults", "write", "someKey", kind, value)
                self.assertEqual(morla("defaults", "read", "someKey").stdout, value + "\n")

    def test_an_absent_key_is_a_failure(self):
        self.assertEqual(morla("defaults", "read", "noSuchKey", check=False).returncode, 1)
        self.assertEqual(morla("defaults", "delete", "noSuchKey", check=False).returncode, 1)

    def test_a_deleted_key_is_absent(self):
        morla("defaults", "write", "someKey", "text", "x")
        morla("defaults", "delete", "someKey")
        self.assertEqual(morla("defaults", "read", "someKey", check=False).returncode, 1)

    def test_all_are_listed_with_their_types_in_order(self):
        morla("defaults", "write", "zoom", "number", "2.5")
        morla("defaults", "write", "apple", "integer", "3")
        morla("defaults", "write", "mode", "boolean", "true")
        self.assertEqual(morla("defaults", "read").stdout, "apple integer 3\nmode boolean true\nzoom number 2.5\n")

    def test_values_that_are_not_of_their_type_are_refused(self):
        for kind, value in (("boolean", "yes"), ("integer", "1.5"), ("integer", "x"), ("number", "1,5"),
                            ("number", "nan"), ("number", "inf"), ("colour", "red")):
            with self.subTest(f"{kind} {value}"):
                self.assertNotEqual(morla("defaults", "write", "someKey", kind, value, check=False).returncode, 0)
                self.assertEqual(morla("defaults", "read", "someKey", check=False).returncode, 1)

    def test_they_need_no_display_and_no_bus(self):
        self.assertEqual(morla_without_display("defaults", "write", "someKey", "text", "x").returncode, 0)
        self.assertEqual(morla_without_display("defaults", "read", "someKey").stdout, "x\n")

    def test_a_running_morla_loses_nothing_that_is_written_beside_it(self):
        self.start_morla()
        morla("defaults", "write", "someKey", "text", "from outside")
        morla("do", "toggleCheckMode")
        self.trace.wait_for(lambda event: event.get("default") == "checkModeEnabled" and event.get("value") is True,
                            SECONDS, "check mode is stored")
        self.assertEqual(self.desktop.quit_morla(), 0)
        self.assertEqual(self.default("someKey"), "from outside")
        self.assertEqual(self.default("checkModeEnabled"), "true")

    def test_the_first_start_writes_the_two_modes_and_a_later_one_changes_nothing(self):
        self.start_morla()
        self.assertEqual((self.default("windowModeEnabled"), self.default("checkModeEnabled")), ("true", "false"))
        self.desktop.quit_morla()
        morla("defaults", "write", "windowModeEnabled", "boolean", "false")
        self.start_morla()
        self.assertEqual((self.default("windowModeEnabled"), self.default("checkModeEnabled")), ("false", "false"))


class Do(DesktopTest):
    def test_quit_ends_a_running_one_with_status_0(self):
        self.start_morla()
        self.assertEqual(self.desktop.quit_morla(), 0)

    def test_without_a_running_one_it_fails(self):
        done = morla("do", "quit", check=False)
        self.assertEqual(done.returncode, 1)
        self.assertTrue(done.stderr.strip(), "it says nothing")

    def test_an_unknown_action_fails_and_leaves_the_running_one_alone(self):
        self.start_morla()
        self.assertNotEqual(morla("do", "makeCoffee", check=False).returncode, 0)
        self.assertIsNone(self.desktop.morla.poll())


class Start(DesktopTest):
    def test_a_second_copy_says_so_and_ends_with_1(self):
        self.start_morla()
        second = morla(check=False)
        self.assertEqual(second.returncode, 1)
        self.assertTrue(second.stderr.strip(), "it says nothing")
        self.assertIsNone(self.desktop.morla.poll(), "the first one has ended")

    def test_another_one_may_start_once_the_first_was_killed(self):
        self.start_morla()
        self.desktop.morla.kill()
        self.desktop.morla.wait()
        self.start_morla()

    def test_a_signal_to_end_ends_it(self):
        self.start_morla()
        self.assertIn(self.desktop.morla.end(), (0, -15))

    def test_the_programs_that_it_starts_inherit_none_of_its_files(self):
        self.start_morla()
        folder = f"/proc/{self.desktop.morla.pid}/fdinfo"
        seen = 0
        inherited = []
        for descriptor in os.listdir(folder):
            try:
                with open(os.path.join(folder, descriptor), encoding="ascii") as file:
                    flags = next(int(line.split()[1], 8) for line in file if line.startswith("flags:"))
                target = os.readlink(f"/proc/{self.desktop.morla.pid}/fd/{descriptor}")
            except FileNotFoundError:
                continue  # closed since the folder was listed
            seen += 1
            if int(descriptor) > 2 and not flags & os.O_CLOEXEC:
                inherited.append(target)
        self.assertGreater(seen, 3)
        self.assertEqual(inherited, [])

    def test_it_goes_on_when_nobody_reads_its_output(self):
        folder = os.path.join(os.environ["XDG_CONFIG_HOME"], "morla")
        os.makedirs(folder)
        with open(os.path.join(folder, "defaults.json"), "w", encoding="utf-8") as file:
            file.write("broken, of which it has to tell")
        reader, writer = os.pipe()
        os.close(reader)
        running = subprocess.Popen([programs.path_of("morla"), "--trace", self.trace.path], stdin=subprocess.DEVNULL,
                                   stdout=writer)
        os.close(writer)
        self.addCleanup(running.wait)
        self.addCleanup(running.kill)
        self.trace.written_by(running)
        self.trace.wait_for(lambda event: "damaged" in event.get("log", ""), SECONDS, "the complaint")
        self.trace.wait_for(ready, SECONDS, "MORLA is ready")

    def test_without_a_display_it_fails_in_one_line(self):
        done = morla_without_display()
        self.assertEqual(done.returncode, 1)
        self.assertEqual(len(done.stderr.strip().splitlines()), 1, done.stderr)


class Usage(unittest.TestCase):
    def test_help_and_version_need_no_display(self):
        for option in ("--help", "--version"):
            with self.subTest(option):
                done = morla_without_display(option)
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                self.assertIn("morla", done.stdout.lower())

    def test_misuse_ends_with_2(self):
        for arguments in (("--no-such-option",), ("word",), ("--trace",), ("defaults",), ("defaults", "read", "a", "b"),
                          ("defaults", "write", "key", "text"), ("do",), ("do", "quit", "now")):
            with self.subTest(" ".join(arguments)):
                self.assertEqual(morla_without_display(*arguments).returncode, 2)


if __name__ == "__main__":
    main()
