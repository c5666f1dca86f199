"""The commands of examples/README.md read every sample that its table names."""

import os
import re
import unittest
from pathlib import Path

from marked_blocks import blocks
from support.programs import run, temp_folder

EXAMPLES = Path(os.environ["VYN_SOURCE_DIR"], "examples")
PROGRAMS = os.environ["VYN_BUILD_DIR"] + "/bin"
FLATC = os.path.dirname(os.environ["VYN_FLATC"])


class ExamplesTest(unittest.TestCase):
    def read(self, name):
        """What the page's commands print of a sample."""
        (commands,) = blocks(EXAMPLES / "README.md", "sh")
        with temp_folder() as folder:
            commands = commands.replace("name=synchronous", f"name={name}")
            path = f"{PROGRAMS}:{FLATC}:{os.environ['PATH']}"
            return run("bash", "-e", "-c", commands.replace("/tmp", str(folder)), folder=EXAMPLES,
                       environment={"PATH": path}, text=True).stdout

    def test_every_sample_is_in_the_table(self):
        page = (EXAMPLES / "README.md").read_text(encoding="utf-8")
        self.assertEqual(sorted(re.findall(r"^\| `(\w+\.json)` \|", page, re.MULTILINE)),
                         sorted(path.name for path in EXAMPLES.glob("*.json")))

    def test_each_sample_shows_what_the_table_says(self):
        self.assertRegex(self.read("synchronous"),
                         r"(?s)8000\.0000 inf/sec.*120 us.*100 us.*141 us")
        self.assertIn("Host Round-Trip excluding queue wait", self.read("asynchronous"))
        edges = self.read("edge_cases")
        self.assertEqual(edges.count("Unknown method type."), 3)
        self.assertIn('"messages": [', edges)


if __name__ == "__main__":
    unittest.main()
