"""The Makefile's page of help names every target, and "make check" is what the checks' run does."""

import os
import re
import unittest
from pathlib import Path

from support.programs import run

SOURCE = Path(os.environ["VYN_SOURCE_DIR"])


def make(*words):
    return run("make", "--no-print-directory", "-C", SOURCE, *words, text=True).stdout


class MakefileTest(unittest.TestCase):
    def test_every_target_is_in_the_help_once(self):
        text = (SOURCE / "Makefile").read_text(encoding="utf-8")
        targets = [name for line in re.findall(r"^\.PHONY:(.*)$", text, re.MULTILINE)
                   for name in line.split()]
        shown = re.findall(r"^make ([\w-]+) +\S", make("help"), re.MULTILINE)
        self.assertGreater(len(targets), 10)
        self.assertEqual(sorted(shown), sorted(targets))

    def test_make_alone_shows_the_help(self):
        self.assertEqual(make(), make("help"))

    def test_check_is_the_run_before_a_change_goes_in(self):
        self.assertEqual(make("--dry-run", "check"), ".ci/run\n")

    def test_that_run_begins_with_the_tests(self):
        lines = (SOURCE / ".ci/run").read_text(encoding="utf-8").splitlines()
        commands = [line for line in lines if re.match(r"(make|scripts/|ctest)", line)]
        self.assertEqual(commands[0], "make test")


if __name__ == "__main__":
    unittest.main()
