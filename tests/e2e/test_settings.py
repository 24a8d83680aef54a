# desktop: --tray none
"""Settings that are damaged, cannot be written, or are written by two at once: MORLA starts, says it in one line, and
loses nothing that could be read."""

import fcntl
import os
import subprocess
import threading

from lib.morlatest import SECONDS, DesktopTest, main, morla, programs

# In a folder of its own: the programs, and nobody else, see what is mounted there.
IN_A_SMALL_FILE_SYSTEM = """
    mount -t tmpfs -o size=4k none "$1" && printf %s "$2" >"$1/defaults.json" && mount -o "remount,$3" "$1" || exit 77
    shift 3; exec "$@"
    """


class Settings(DesktopTest):
    def setUp(self):
        super().setUp()
        self.config = os.path.join(os.environ["XDG_CONFIG_HOME"], "morla")
        self.file = os.path.join(self.config, "defaults.json")
        os.makedirs(self.config)

    def write(self, content):
        with open(self.file, "w", encoding="utf-8") as file:
            file.write(content)

    def toggle_check_mode(self, expected):
        morla("do", "toggleCheckMode")
        self.trace.wait_for(lambda event: event.get("default") == "checkModeEnabled" and event["value"] == expected,
                            SECONDS, f"check mode becomes {expected}")


class Damaged(Settings):
    def test_it_starts_says_so_in_one_line_and_keeps_what_could_be_read(self):
        for label, content, kept in (
                ("empty", "", {}),
                ("cut off", '{"isoExpectedValue": "200", "buttonWindowX": 40, "buttonWi', {"isoExpectedValue": "200"}),
                ("cut off in a number", '{"isoExpectedValue": "200", "buttonWindowX": 40', {"isoExpectedValue": "200"}),
                ("not JSON", "isoExpectedValue=200", {}),
                ("another type", '["isoExpectedValue", "200"]', {})):
            with self.subTest(label):
                self.write(content)
                self.start_morla(watching=False)
                self.assertEqual(self.desktop.quit_morla(), 0)
                output = self.desktop.morla.output()
                self.assertRegex(output, r"\A\[UserDefaults\] \S+/defaults\.json is damaged; .*\n\Z")
                for key, value in {**kept, "windowModeEnabled": "true", "checkModeEnabled": "false"}.items():
                    self.assertEqual(self.default(key), value)
                os.remove(self.desktop.morla.log)

    def test_values_of_other_types_count_as_absent_and_are_no_damage(self):
        self.write('{"formatMonitorEnabled": "true", "buttonWindowX": "left", "buttonWindowY": {"a": 1},'
                   ' "isoExpectedValue": 200, "hotkeyChars": null, "windowModeEnabled": false}')
        self.start_capture_one()
        self.start_morla(watching=False)
        self.expect("permissionState", "ready")
        self.assertEqual(self.desktop.quit_morla(), 0)
        self.assertEqual(self.desktop.morla.output(), "")
        self.assertEqual(morla("defaults", "read").stdout.splitlines(), [
            "automationPermissionDenied boolean false", "buttonWindowX text left", "checkModeEnabled boolean false",
            "formatMonitorEnabled text true", "isoExpectedValue integer 200", "windowModeEnabled boolean false"])


class Unwritable(Settings):
    def start_in_a_small_file_system(self, content, mode):
        """MORLA, with these settings on a file system of one page."""
        if subprocess.run(["unshare", "--mount", "true"], stderr=subprocess.DEVNULL, check=False).returncode != 0:
            self.skipTest("no file system may be mounted here, not even in a namespace of one's own")
        self.trace.skip()
        argv = ["unshare", "--mount", "--propagation", "private", "sh", "-c", IN_A_SMALL_FILE_SYSTEM, "sh", self.config,
                content, mode, programs.path_of("morla"), "--trace", self.trace.path]
        self.desktop.morla = programs.Program(argv, os.path.join(self.folder, "morla.log"))
        self.trace.written_by(self.desktop.morla)
        self.trace.wait_for(lambda event: event.get("ready") is True, SECONDS, "MORLA is ready")

    def check(self, mode, complaint):
        content = '{"checkModeEnabled": true, "isoExpectedValue": "200"}'
        self.start_in_a_small_file_system(content, mode)
        self.toggle_check_mode(False)
        self.toggle_check_mode(True)
        self.toggle_check_mode(False)
        with open(f"/proc/{self.desktop.morla.pid}/root{self.file}", encoding="utf-8") as file:
            self.assertEqual(file.read(), content, "the old file is whole")
        self.assertEqual(self.desktop.quit_morla(), 0)
        self.assertRegex(self.desktop.morla.output(), rf"\A\[UserDefaults\] \S+{complaint}: .+\n\Z")

    def test_a_full_disk_costs_one_line(self):
        self.check("rw", "/defaults.json cannot be written")

    def test_a_file_system_that_cannot_be_written_costs_one_line(self):
        self.check("ro", "/defaults.json.lock cannot be opened")


class SeveralWriters(Settings):
    def hold(self):
        """The lock, as another writer has it that was stopped in the middle of its work. Gives how to let go of it."""
        lock = open(self.file + ".lock", "w", encoding="utf-8")
        self.addCleanup(lock.close)
        fcntl.flock(lock, fcntl.LOCK_EX)
        return lock.close

    def test_morla_does_not_wait_for_a_writer_that_was_stopped(self):
        self.start_morla()
        let_go = self.hold()
        self.toggle_check_mode(True)
        self.toggle_check_mode(False)
        self.toggle_check_mode(True)
        self.assertEqual(self.default("checkModeEnabled"), "false")
        let_go()
        self.assertEqual(self.desktop.quit_morla(), 0)
        self.assertEqual(self.default("checkModeEnabled"), "true")
        self.assertEqual(self.desktop.morla.output(), "")

    def test_morla_ends_although_a_writer_was_stopped_and_tells_of_the_loss(self):
        self.start_morla()
        self.hold()
        self.toggle_check_mode(True)
        self.assertEqual(self.desktop.quit_morla(), 0)
        self.assertRegex(self.desktop.morla.output(),
                         r"\A\[UserDefaults\] \S+\.lock is held by another program; what was changed last is lost\n\Z")

    def test_two_writers_at_once_lose_nothing(self):
        self.start_morla()
        writes = 30
        failures = []

        def write():
            for number in range(writes):
                if morla("defaults", "write", f"key{number}", "integer", str(number), check=False).returncode != 0:
                    failures.append(number)

        other = threading.Thread(target=write)
        other.start()
        for number in range(writes):
            self.toggle_check_mode(number % 2 == 0)
        other.join()
        self.assertEqual(failures, [])
        self.assertEqual(self.desktop.quit_morla(), 0)
        stored = morla("defaults", "read").stdout.splitlines()
        for number in range(writes):
            self.assertIn(f"key{number} integer {number}", stored)
        self.assertIn("checkModeEnabled boolean false", stored)


if __name__ == "__main__":
    main()
