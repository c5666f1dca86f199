"""docs/summary-output.md names the blocks in their order, and docs/glossary.md is sorted."""

import os
import re
import unittest
from pathlib import Path

SOURCE = os.environ["VYN_SOURCE_DIR"]
DOCUMENT = Path(f"{SOURCE}/docs/summary-output.md")


class SummaryOutputTest(unittest.TestCase):
    def test_blocks_stand_in_the_order_of_the_summary(self):
        text = DOCUMENT.read_text(encoding="utf-8")
        summary = re.search(r"^```text\n(.*?)^```$", text, re.DOTALL | re.MULTILINE)[1]
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
