"""vyn-make-log writes no log to a terminal; the record is text and may go there."""

import os
import pty
import subprocess
import sys
import unittest

MAKE_LOG = sys.argv.pop(1)


def run(*options):
    """Runs the program with a terminal as its standard output: status, what that shows, errors."""
    start, end = pty.openpty()
    process = subprocess.Popen([MAKE_LOG, "--executions", "0", "--nodes", "0", *options],
                               stdin=subprocess.DEVNULL, stdout=end, stderr=subprocess.PIPE,
                               text=True)
    os.close(end)
    shown = b""
    try:
        while part := os.read(start, 65536):
            shown += part
    except OSError:  # how a terminal ends
        pass
    os.close(start)
    _, errors = process.communicate(timeout=60)
    return process.returncode, shown, errors


class TerminalTest(unittest.TestCase):
    def test_a_log_is_refused(self):
        for name, called in (("-", "standard output"), ("/dev/stdout", "/dev/stdout")):
            with self.subTest(name=name):
                status, shown, errors = run("-o", name)
                self.assertEqual((status, shown), (1, b""))
                self.assertEqual(errors, f"vyn-make-log: {called}: is a terminal, which cannot "
                                         "show a log; name a file or pass it to a program\n")

    def test_a_record_is_shown(self):
        status, shown, errors = run("-o", "/dev/null", "--record", "-")
        self.assertEqual((status, errors), (0, ""))
        self.assertEqual(shown[:13], b'{"timeScale":')


if __name__ == "__main__":
    unittest.main()
