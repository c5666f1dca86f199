"""vyn-make-log shows its progress on a terminal when the work takes long, and nowhere else."""

import os
import pty
import re
import select
import subprocess
import sys
import threading
import time
import unittest

MAKE_LOG = sys.argv.pop(1)
LONG_ENOUGH = 1.5  # seconds


def drain(descriptor):
    """All that comes until the other side closes it."""
    parts = []
    while True:
        try:
            part = os.read(descriptor, 65536)
        except OSError:  # how a terminal ends
            break
        if not part:
            break
        parts.append(part)
    return b"".join(parts)


def run(options, errors_end, errors_start, pause):
    """Makes a log for a pipe that nobody reads before the pause is over; what it says meanwhile."""
    process = subprocess.Popen([MAKE_LOG, "-o", "-", *options], stdin=subprocess.DEVNULL,
                               stdout=subprocess.PIPE, stderr=errors_end)
    os.close(errors_end)
    said = []
    listener = threading.Thread(target=lambda: said.append(drain(errors_start)))
    listener.start()
    with process.stdout as pipe:
        select.select([pipe], [], [])  # the work has begun
        time.sleep(pause)
        drain(pipe.fileno())
    status = process.wait(60)
    listener.join()
    os.close(errors_start)
    return status, said[0].decode()


def run_on_terminal(options, pause):
    start, end = pty.openpty()
    return run(options, end, start, pause)


class ProgressTest(unittest.TestCase):
    def test_long_work_is_shown_and_the_line_is_cleared(self):
        status, said = run_on_terminal(["--size", "3MB"], LONG_ENOUGH)
        self.assertEqual(status, 0)
        self.assertRegex(said, r"^vyn-make-log: \d+ MB \(\d+ %\)\r *\r")
        shown = said.split("\r")
        self.assertEqual(shown[-1], "")
        self.assertEqual(shown[-2], " " * len(shown[-3]))

    def test_without_a_size_there_is_no_share(self):
        _, said = run_on_terminal(["--executions", "2000"], LONG_ENOUGH)
        self.assertRegex(said, r"^vyn-make-log: \d+ MB\r *\r")

    def test_no_character_but_plain_ones_and_returns(self):
        _, said = run_on_terminal(["--size", "3MB"], LONG_ENOUGH)
        self.assertEqual(re.sub(r"[\r -~]", "", said), "")

    def test_short_work_says_nothing(self):
        self.assertEqual(run_on_terminal(["--executions", "1"], 0), (0, ""))

    def test_nothing_is_said_but_to_a_terminal(self):
        start, end = os.pipe()
        self.assertEqual(run(["--size", "3MB"], end, start, LONG_ENOUGH), (0, ""))


if __name__ == "__main__":
    unittest.main()
