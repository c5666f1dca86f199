"""vyn-make-log writes no log to a terminal; the record is text and may go there."""

import subprocess
import sys
import unittest

from support.terminal import listening

MAKE_LOG = sys.argv.pop(1)


def run(*options):
    """Runs the program with a terminal as its standard output: status, what that shows, errors."""
    with listening("terminal") as screen:
        result = subprocess.run([MAKE_LOG, "--executions", "0", "--nodes", "0", *options],
                                stdin=subprocess.DEVNULL, stdout=screen.end,
                                stderr=subprocess.PIPE, text=True, timeout=60, check=False)
    return result.returncode, screen.said, result.stderr


class TerminalTest(unittest.TestCase):
    def test_a_log_is_refused(self):
        for name, called in (("-", "standard output"), ("/dev/stdout", "/dev/stdout")):
            with self.subTest(name=name):
                status, shown, errors = run("-o", name)
                self.assertEqual((status, shown), (1, ""))
                self.assertEqual(errors, f"vyn-make-log: {called}: is a terminal, which cannot "
                                         "show a log; name a file or pass it to a program\n")

    def test_a_record_is_shown(self):
        status, shown, errors = run("-o", "/dev/null", "--record", "-")
        self.assertEqual((status, errors), (0, ""))
        self.assertEqual(shown[:13], '{"timeScale":')


if __name__ == "__main__":
    unittest.main()
