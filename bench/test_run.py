#!/usr/bin/python3
"""Runs every measurement quickly and looks at the table: every row that was announced is there, with its figures.

    test_run.py BUILD-FOLDER

Says nothing about times: a test meets a machine in any state."""

import os
import re
import subprocess
import sys
import unittest

RUN = os.path.join(os.path.dirname(os.path.abspath(__file__)), "run")
FIGURE = re.compile(r"^-?[0-9.]+ \S")


def run(*arguments):
    return subprocess.run([RUN, *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False,
                          timeout=300)


class Run(unittest.TestCase):
    maxDiff = None
    build = None

    def test_every_row_that_is_announced_has_figures_and_a_verdict(self):
        names = run("--list").stdout.splitlines()
        self.assertGreater(len(names), 5)
        done = run("--quick", "--build", self.build)
        self.assertEqual(done.returncode, 0, done.stderr + done.stdout)
        rows = [line.strip("| ").split(" | ") for line in done.stdout.splitlines() if line.startswith("| ")][2:]
        self.assertEqual([row[0] for row in rows], names)
        for row in rows:
            self.assertRegex(row[1], FIGURE, row)
            self.assertEqual(row[4] == "–", row[5] == "–", row)
            self.assertIn(row[5], ("met", "missed", "no ratio", "–"), row)

    def test_a_measurement_that_fails_is_a_failure(self):
        # Without its programs no figure can be made.
        done = run("--quick", "--only", "script", "--build", os.path.dirname(self.build))
        self.assertNotEqual(done.returncode, 0)

    def test_a_word_that_no_measurement_has_is_a_usage_error(self):
        done = run("--quick", "--only", "no such thing", "--build", self.build)
        self.assertEqual(done.returncode, 2, done.stderr)


if __name__ == "__main__":
    Run.build = os.path.abspath(sys.argv.pop(1))
    unittest.main(verbosity=2)
