# desktop: without
"""The smaller tools: stages of a job, permissions given in advance, the installer of packages with an apt of paper."""

import contextlib
import io
import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

REPOSITORY = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(REPOSITORY, "tools"))

from desktoplib import home  # noqa: E402

STAGES = os.path.join(REPOSITORY, "tools", "stages.sh")


def bash(script, **options):
    return subprocess.run(["bash", "-c", f"set -euo pipefail\n. {STAGES}\n{script}"], stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=30, check=False,
                          **options)


class Stages(unittest.TestCase):
    def test_a_failure_ends_the_job_with_its_status(self):
        done = bash('stage "one" true\nstage "two" sh -c "exit 7"\necho went on')
        self.assertEqual(done.returncode, 7)
        self.assertIn("FAILED: two, status 7", done.stdout)
        self.assertNotIn("went on", done.stdout)

    def test_each_is_announced_and_timed(self):
        done = bash('stage "one" echo working')
        self.assertEqual(done.returncode, 0)
        self.assertRegex(done.stdout, r"(?s)== one \(\d+ s so far\)\nworking\n== one: done in \d+ s")

    def test_a_clock_shows_minutes_and_seconds(self):
        for seconds, shown in ((0, "0 s"), (59, "59 s"), (60, "1 min 00 s"), (3725, "62 min 05 s")):
            with self.subTest(seconds):
                self.assertEqual(bash(f"clock {seconds}").stdout, shown + "\n")


class Permissions(unittest.TestCase):
    """Those that are given before MORLA starts."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.data_home = folder.name
        os.mkdir(os.path.join(folder.name, "privacy"))
        self.path = os.path.join(folder.name, "privacy", "permissions.json")

    def after_allowing(self, text=None):
        if text is not None:
            with open(self.path, "w", encoding="utf-8") as file:
                file.write(text)
        with contextlib.redirect_stderr(io.StringIO()) as self.said:
            home.allow(self.data_home)
        with open(self.path, encoding="utf-8") as file:
            return file.read()

    def test_are_all_given_when_there_are_none(self):
        self.assertEqual(json.loads(self.after_allowing()), {
            "automation": {home.MORLA: {home.CAPTURE_ONE: "allow"}},
            "screenRecording": {home.MORLA: "allow"}, "accessibility": {home.MORLA: "allow"}})

    def test_leave_what_was_decided(self):
        store = json.loads(self.after_allowing(json.dumps({
            "automation": {home.MORLA: {home.CAPTURE_ONE: "undecided"}, "another": {"x": "deny"}},
            "accessibility": {home.MORLA: "deny"}})))
        self.assertEqual(store["automation"], {home.MORLA: {home.CAPTURE_ONE: "undecided"}, "another": {"x": "deny"}})
        self.assertEqual(store["accessibility"], {home.MORLA: "deny"})
        self.assertEqual(store["screenRecording"], {home.MORLA: "allow"})

    def test_behind_a_link_are_given_where_they_are_and_to_nobody_else(self):
        elsewhere, precious = (os.path.join(self.data_home, name) for name in ("elsewhere.json", "precious"))
        for path, text in ((elsewhere, "{}"), (precious, "mine")):
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)
        os.symlink(elsewhere, self.path)
        os.symlink(precious, elsewhere + ".new")
        self.assertIn("allow", self.after_allowing())
        self.assertTrue(os.path.islink(self.path))
        self.assertEqual(os.stat(elsewhere).st_mode & 0o777, 0o600)
        with open(precious, encoding="utf-8") as file:
            self.assertEqual(file.read(), "mine")

    def test_leave_a_damaged_store_alone_and_say_so(self):
        for damaged in ('{"automation":', "[]", '{"automation": ["x"]}', ""):
            with self.subTest(damaged):
                self.assertEqual(self.after_allowing(damaged), damaged)
                self.assertIn("is damaged", self.said.getvalue())


class Packages(unittest.TestCase):
    """The installer beside a list of its own, with dpkg-query, apt-cache, apt-get and sudo that only tell."""

    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)
        shutil.copy(os.path.join(REPOSITORY, "tools", "install-packages"), self.folder)
        with open(os.path.join(self.folder, "packages"), "w", encoding="utf-8") as file:
            file.write("# a comment\n[build]\ncompiler  # another\nnew-name | old-name\n\n[run]\nicons\n")
        self.installed = os.path.join(self.folder, "installed")
        self.calls = os.path.join(self.folder, "calls")
        self.set_installed()
        self.put("dpkg-query", f"sed 's/^/installed /' {self.installed}")
        self.put("apt-cache", 'shift; for each; do candidate=1; [ $each = new-name ] && candidate="(none)"; '
                              'echo "$each:"; echo "  Candidate: $candidate"; done')
        self.put("apt-get", f'echo "$@" >>{self.calls}; case "$*" in *" install "*) for each; do echo "$each"; done '
                            f">>{self.installed} ;; esac")
        self.put("sudo", "exit 1")

    def put(self, name, script):
        path = os.path.join(self.folder, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write("#!/bin/sh\n" + script + "\n")
        os.chmod(path, 0o755)

    def set_installed(self, *names):
        with open(self.installed, "w", encoding="utf-8") as file:
            file.write("".join(name + "\n" for name in names))

    def run_installer(self, *groups):
        path = self.folder + ":" + os.environ["PATH"]
        return subprocess.run([os.path.join(self.folder, "install-packages"), *groups], stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=30, check=False,
                              env={**os.environ, "PATH": path})

    def called(self):
        if not os.path.exists(self.calls):
            return ""
        with open(self.calls, encoding="utf-8") as file:
            return file.read()

    def test_says_and_does_nothing_when_nothing_is_missing(self):
        self.set_installed("compiler", "old-name")
        done = self.run_installer("build")
        self.assertEqual((done.returncode, done.stdout, self.called()), (0, "", ""))

    @unittest.skipUnless(os.geteuid() == 0, "needs root, which apt-get is called with")
    def test_installs_what_is_missing_by_the_name_that_the_distribution_knows(self):
        self.set_installed("icons")
        done = self.run_installer("build", "run")
        self.assertEqual(done.returncode, 0, done.stdout)
        self.assertIn("missing packages: compiler new-name", done.stdout)
        self.assertRegex(self.called(), r"install --no-install-recommends compiler old-name\n")

    @unittest.skipUnless(os.geteuid() == 0, "needs root, which apt-get is called with")
    def test_lists_what_could_not_be_installed_and_fails(self):
        self.put("apt-get", "exit 100")
        done = self.run_installer("build")
        self.assertEqual(done.returncode, 1)
        self.assertIn("apt-get update && apt-get install --no-install-recommends compiler new-name", done.stdout)

    @unittest.skipUnless(os.geteuid() == 0, "drops root to be an ordinary user")
    def test_a_user_who_may_not_is_told_what_to_install(self):
        os.chmod(self.folder, 0o755)
        done = subprocess.run(["setpriv", "--reuid", "65534", "--clear-groups",
                               os.path.join(self.folder, "install-packages"), "run"], stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=30, check=False,
                              env={**os.environ, "PATH": self.folder + ":" + os.environ["PATH"]})
        self.assertEqual(done.returncode, 1, done.stdout)
        self.assertIn("  icons\n", done.stdout)
        self.assertEqual(self.called(), "")

    def test_an_unknown_group_is_misuse(self):
        for groups in ((), ("fun",), ("build", "fun")):
            with self.subTest(groups):
                self.assertEqual(self.run_installer(*groups).returncode, 2)

    def test_every_group_of_the_real_list_can_be_read(self):
        with open(os.path.join(REPOSITORY, "tools", "packages"), encoding="utf-8") as file:
            lines = [line.partition("#")[0].strip() for line in file]
        groups = [line.strip("[]") for line in lines if line.startswith("[")]
        self.assertEqual(groups, ["build", "run", "test", "macos", "check", "bench", "tidy"])
        names = [name.strip() for line in lines if line and not line.startswith("[") for name in line.split("|")]
        for name in names:
            self.assertRegex(name, r"^[a-z0-9][a-z0-9+.-]+$")
        self.assertEqual(len(names), len(set(names)), "a package is listed twice")


if __name__ == "__main__":
    unittest.main(verbosity=2)
