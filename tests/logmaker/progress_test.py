"""vyn-make-log shows its progress on a terminal when the work takes long, and nowhere else."""

import re
import select
import subprocess
import sys
import time
import unittest

from support.terminal import drain, environment, listening

MAKE_LOG = sys.argv.pop(1)
LONG_ENOUGH = 1.5  # seconds


def run(options, pause, kind="terminal", **variables):
    """Makes a log for a pipe that nobody reads before the pause is over; what it says meanwhile."""
    with listening(kind) as errors:
        process = subprocess.Popen([MAKE_LOG, "-o", "-", *options], stdin=subprocess.DEVNULL,
                                   stdout=subprocess.PIPE, stderr=errors.end,
                                   env=environment(**variables))
        with process.stdout as pipe:
            select.select([pipe], [], [])  # the work has begun
            time.sleep(pause)
            drain(pipe.fileno())
        status = process.wait(60)
    return status, errors.said


class ProgressTest(unittest.TestCase):
    def test_long_work_is_shown_and_the_line_is_cleared(self):
        status, said = run(["--size", "3MB"], LONG_ENOUGH)
        self.assertEqual(status, 0)
        self.assertRegex(said, r"^vyn-make-log: \d+ MB \(\d+ %\)\r *\r")
        shown = said.split("\r")
        self.assertEqual(shown[-1], "")
        self.assertEqual(shown[-2], " " * len(shown[-3]))

    def test_without_a_size_there_is_no_share(self):
        _, said = run(["--executions", "2000"], LONG_ENOUGH)
        self.assertRegex(said, r"^vyn-make-log: \d+ MB\r *\r")

    def test_no_character_but_plain_ones_and_returns(self):
        _, said = run(["--size", "3MB"], LONG_ENOUGH)
        self.assertEqual(re.sub(r"[\r -~]", "", said), "")

    def test_short_work_says_nothing(self):
        self.assertEqual(run(["--executions", "1"], 0), (0, ""))

    def test_nothing_is_said_but_to_a_terminal(self):
        self.assertEqual(run(["--size", "3MB"], LONG_ENOUGH, "pipe"), (0, ""))

    def test_nothing_is_said_in_a_ci_job(self):
        self.assertEqual(run(["--size", "3MB"], LONG_ENOUGH, CI="true"), (0, ""))


if __name__ == "__main__":
    unittest.main()
