"""docs/summary-output.md shows what the programs print, and docs/glossary.md is in order."""

import importlib.util
import os
import re
import unittest
from importlib.machinery import SourceFileLoader
from pathlib import Path

SOURCE = os.environ["VYN_SOURCE_DIR"]
PROGRAMS = os.environ["VYN_BUILD_DIR"] + "/bin"
DOCUMENT = Path(f"{SOURCE}/docs/summary-output.md")
VERSION = re.compile(r"v\d+\.\d+\.\d+\.\d{12}_\d+")  # differs from build to build


def script(name):
    loader = SourceFileLoader(name.replace("-", "_"), f"{SOURCE}/scripts/{name}")
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(loader.name, loader))
    loader.exec_module(module)
    return module


class SummaryOutputTest(unittest.TestCase):
    maxDiff = None

    def test_outputs_are_what_the_programs_give(self):
        refresh = script("refresh-readme")
        blocks = refresh.BLOCK.findall(DOCUMENT.read_text(encoding="utf-8"))
        self.assertEqual(len(blocks), 2)
        for _, command, shown, _ in blocks:
            actual = refresh.output_of(command, PROGRAMS)
            self.assertEqual(VERSION.sub("VERSION", shown), VERSION.sub("VERSION", actual), command)

    def test_blocks_stand_in_the_order_of_the_summary(self):
        text = DOCUMENT.read_text(encoding="utf-8")
        summary = script("refresh-readme").BLOCK.search(text)[3]
        table = text[text.index("## Blocks"):text.index("## Lines")]
        names = re.findall(r"^\| ([A-Z][\w -]*?)( \(\w+\))? \|", table, re.MULTILINE)
        self.assertEqual(len(names), 9)
        positions = [summary.find(f"\n{name} Stats{which}:\n") for name, which in names]
        self.assertNotIn(-1, positions)
        self.assertEqual(positions, sorted(positions))

    def test_glossary_is_sorted(self):
        text = Path(f"{SOURCE}/docs/glossary.md").read_text(encoding="utf-8")
        words = re.findall(r"^- \*\*(.*)\*\*:", text, re.MULTILINE)
        self.assertGreater(len(words), 15)
        self.assertEqual(words, sorted(words))


if __name__ == "__main__":
    unittest.main()
