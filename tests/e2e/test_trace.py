# desktop: without
"""The reader of the trace, on which all other tests lean."""

import os
import subprocess
import sys
import tempfile
import unittest

REPOSITORY = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(REPOSITORY, "tools"))

from desktoplib.trace import NotSeen, Trace, published  # noqa: E402


class Reader(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.trace = Trace(os.path.join(folder.name, "trace"))

    def run_program(self, script):
        program = subprocess.Popen(["sh", "-c", f"exec >{self.trace.path}; {script}"], stdin=subprocess.PIPE, text=True)
        self.addCleanup(program.wait)
        self.addCleanup(program.kill)
        self.addCleanup(program.stdin.close)
        self.trace.written_by(program)
        return program

    def test_finds_each_event_once_and_in_order(self):
        self.run_program("""for i in 1 2 1; do echo '{"published": "x", "value": '$i'}'; done; read -r never""")
        for value in (1, 2, 1):
            self.assertEqual(self.trace.wait_for(published("x", value), 10, "x")["value"], value)
        with self.assertRaisesRegex(NotSeen, "not within"):
            self.trace.wait_for(published("x", 1), 0.05, "a third one")

    def test_what_was_written_just_before_the_end_is_still_found(self):
        self.run_program("""seq -f '{"n": %g}' 5000""")
        self.assertEqual(self.trace.wait_for(lambda event: event.get("n") == 5000, 10, "the last")["n"], 5000)

    def test_the_end_of_the_program_ends_the_wait(self):
        self.run_program("""echo '{"n": 1}'""")
        with self.assertRaisesRegex(NotSeen, 'MORLA has ended(.|\n)*{"n": 1}'):
            self.trace.wait_for(lambda event: event.get("n") == 2, 60, "a second one")

    def test_a_line_that_was_cut_off_does_no_harm(self):
        self.run_program("""printf '{"n": '""").wait()
        self.trace.read_all()
        self.run_program("""echo '{"n": 2}'; read -r never""")
        self.assertTrue(self.trace.wait_for(lambda event: event.get("n") == 2, 10, "n"))

    def test_an_event_that_must_not_come_is_told_at_once(self):
        self.run_program("""echo '{"n": 1}'; read -r never""")
        with self.assertRaisesRegex(NotSeen, "unwanted"):
            self.trace.expect_none(lambda event: event.get("n") == 1, 60, "unwanted")

    def test_everything_that_was_written_can_be_waited_for(self):
        self.run_program("""seq -f '{"n": %g}' 5000; read -r never""")
        self.trace.wait_for(lambda event: event.get("n") == 1, 10, "the first")
        self.trace.wait_for(lambda event: event.get("n") == 5000, 10, "the last")
        with open(self.trace.path, "w", encoding="utf-8") as pipe:
            pipe.write('{"n": 5001}\n')
        self.trace.read_all()
        self.assertEqual(self.trace.events()[-1], {"n": 5001})

    def test_what_came_before_is_forgotten_on_request(self):
        self.run_program("""echo '{"n": 1}'; echo '{"n": 2}'; read -r never""")
        self.trace.wait_for(lambda event: event.get("n") == 2, 10, "n")
        self.trace.skip()
        self.trace.expect_none(lambda event: "n" in event, 0.05, "n")


if __name__ == "__main__":
    unittest.main(verbosity=2)
