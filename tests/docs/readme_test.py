"""The README tells the truth: its host works, its outputs are real, its links lead somewhere."""

import os
import pathlib
import re
import unittest

from support.programs import run, temp_folder

SOURCE = os.environ["VYN_SOURCE_DIR"]
BUILD = os.environ["VYN_BUILD_DIR"]


class ReadmeTest(unittest.TestCase):
    def test_host_writes_what_the_viewer_writes(self):
        with temp_folder() as folder:
            run(f"{BUILD}/bin/vyn-make-log", "-o", "run.log", "--executions", "2", folder=folder)
            run(os.environ["VYN_README_HOST"], os.environ["VYN_READER"], "run.log", "host.json",
                folder=folder)
            run(f"{BUILD}/bin/vyn-profile-viewer", "run.log", "-o", "viewer.json", folder=folder)
            self.assertEqual((folder / "host.json").read_bytes(),
                             (folder / "viewer.json").read_bytes())

    def test_host_fails_without_a_log(self):
        with temp_folder() as folder:
            run(os.environ["VYN_README_HOST"], os.environ["VYN_READER"], "none.log", "none.json",
                folder=folder, status=1)

    def test_outputs_are_what_the_programs_give(self):
        run(f"{SOURCE}/scripts/refresh-outputs", "--check", "--build", BUILD)

    def test_every_option_is_in_its_table(self):
        with open(f"{SOURCE}/README.md", encoding="utf-8") as file:
            sections = re.split(r"^## ", file.read(), flags=re.MULTILINE)
        for program in ("vyn-profile-viewer", "vyn-make-log"):
            table = next(text for text in sections if text.startswith(f"{program}\n"))
            page = run(f"{BUILD}/bin/{program}", "--help", text=True).stdout
            options = re.findall(r"^  (?:-\w,)?(--[\w-]+)", page, flags=re.MULTILINE)
            self.assertGreater(len(options), 5)
            for option in options:
                self.assertRegex(table, rf"`(-\w, )?{option}[ `]", program)

    def test_links_lead_to_files(self):
        documents = [str(path.relative_to(SOURCE)) for pattern in
                     ("*.md", "docs/**/*.md", "examples/*.md", "fuzz/*.md")
                     for path in pathlib.Path(SOURCE).glob(pattern)]
        self.assertGreater(len(documents), 20)
        for document in documents:
            with open(f"{SOURCE}/{document}", encoding="utf-8") as file:
                for link in re.findall(r"\]\(([^)#]+)", file.read()):
                    folder = os.path.dirname(f"{SOURCE}/{document}")
                    self.assertTrue(os.path.exists(f"{folder}/{link}"), f"{document}: {link}")


if __name__ == "__main__":
    unittest.main()
