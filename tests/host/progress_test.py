"""The verbs that read a whole log show how far they are, on a terminal, when that takes long."""

import re
import subprocess
import sys
import time
import unittest

from support.programs import run, temp_folder
from support.terminal import environment, listening

VIEWER, LOG_MAKER = sys.argv[1:3]
del sys.argv[1:3]
LONG_ENOUGH = 1.5  # seconds
VERBS = (["info"], ["check"], ["recover", "-o", "saved.log"])


def made_log():
    return run(LOG_MAKER, "-o", "-", "--executions", "20", "--chunk-size", "2KB").stdout


def tell(verb, *options, pause=LONG_ENOUGH, kind="terminal", **variables):
    """Gives the program a log through a pipe, with a pause in its middle; what it says meanwhile."""
    log = made_log()
    with temp_folder() as folder, listening(kind) as errors:
        process = subprocess.Popen([VIEWER, *verb, "-", *options], stdin=subprocess.PIPE,
                                   stdout=subprocess.DEVNULL, stderr=errors.end, cwd=folder,
                                   env=environment(**variables))
        with process.stdin as pipe:
            pipe.write(log[:len(log) // 2])
            pipe.flush()
            time.sleep(pause)
            pipe.write(log[len(log) // 2:])
        status = process.wait(60)
    return status, errors.said


# What a verb reports in the end, the line of its progress apart.
def shown(said):
    return re.findall(r"vyn-profile-viewer: \d+ MB(?: \(\d+ %\))?\r *\r", said)


class ProgressTest(unittest.TestCase):
    def test_long_work_is_shown_and_the_line_is_cleared(self):
        for verb in VERBS:
            status, said = tell(verb)
            self.assertEqual(status, 0)
            self.assertEqual(len(shown(said)), 1, said)
            self.assertTrue(said.startswith(shown(said)[0]), said)

    def test_short_work_is_not(self):
        for verb in VERBS:
            self.assertEqual(shown(tell(verb, pause=0)[1]), [])

    def test_quiet_verbs_say_nothing_of_it(self):
        for verb in VERBS:
            for option in ("-q", "--quiet"):
                self.assertEqual(shown(tell(verb, option)[1]), [])

    def test_nothing_is_shown_but_on_a_terminal(self):
        for verb in VERBS:
            self.assertEqual(shown(tell(verb, kind="pipe")[1]), [])

    def test_nothing_is_shown_in_a_ci_job(self):
        for verb in VERBS:
            self.assertEqual(shown(tell(verb, CI="1")[1]), [])


if __name__ == "__main__":
    unittest.main()
