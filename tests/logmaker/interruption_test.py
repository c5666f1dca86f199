"""A signal that ends vyn-make-log leaves nothing of what was written behind."""

import os
import signal
import subprocess
import sys
import time
import unittest

from support.programs import temp_folder

MAKE_LOG = os.path.abspath(sys.argv.pop(1))
SIGNALS = [signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGQUIT, signal.SIGUSR1,
           signal.SIGALRM, signal.SIGXCPU]


def default_signals():
    for number in SIGNALS:
        signal.signal(number, signal.SIG_DFL)


class InterruptionTest(unittest.TestCase):
    def start(self, folder, preparation=default_signals):
        """A run that would take days, once it has begun both of its files."""
        with open(f"{folder}/log", "w", encoding="utf-8") as old:
            old.write("kept")
        process = subprocess.Popen(
            [MAKE_LOG, "-o", "log", "--record", "record", "--executions", "1000000000",
             "--nodes", "1"], cwd=folder, preexec_fn=preparation)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        for _ in range(2000):
            if len(os.listdir(folder)) == 3:
                return process
            time.sleep(0.005)
        self.fail(f"no files: {os.listdir(folder)}")

    def test_no_partial_file_is_left(self):
        for number in SIGNALS:
            with self.subTest(signal=number), temp_folder() as folder:
                process = self.start(folder)
                process.send_signal(number)
                self.assertEqual(process.wait(20), -number)
                self.assertEqual(os.listdir(folder), ["log"])
                with open(f"{folder}/log", encoding="utf-8") as log:
                    self.assertEqual(log.read(), "kept")

    def test_an_ignored_signal_stays_ignored(self):
        def ignore():
            default_signals()
            signal.signal(signal.SIGHUP, signal.SIG_IGN)
        with temp_folder() as folder:
            process = self.start(folder, ignore)
            process.send_signal(signal.SIGHUP)
            process.send_signal(signal.SIGTERM)
            self.assertEqual(process.wait(20), -signal.SIGTERM)


if __name__ == "__main__":
    unittest.main()
