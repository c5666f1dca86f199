"""The reader of docs/writing-a-reader.md builds against the package and prints what is shown."""

import os
import unittest

from marked_blocks import blocks
from support.programs import run, temp_folder

DOCUMENT = os.environ["VYN_SOURCE_DIR"] + "/docs/writing-a-reader.md"
BUILD = os.environ["VYN_BUILD_DIR"]


class WritingAReaderTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = cls.enterClassContext(temp_folder())
        prefix = cls.folder / "installed"
        run("cmake", "--install", BUILD, "--prefix", prefix)
        cls.environment = {"PREFIX": str(prefix), "PATH": f"{prefix}/bin:{os.environ['PATH']}"}
        for language, name in (("cpp", "execution_counter.cpp"), ("cmake", "CMakeLists.txt")):
            (code,) = blocks(DOCUMENT, language)
            (cls.folder / name).write_text(code, encoding="utf-8")
        (commands,) = blocks(DOCUMENT, "sh")
        *steps, cls.last_step = commands.splitlines()
        cls.run_steps("\n".join(steps))

    @classmethod
    def run_steps(cls, commands):
        """What the commands write, to standard error too."""
        return run("bash", "-e", "-c", "exec 2>&1\n" + commands, folder=cls.folder,
                   environment=cls.environment, text=True).stdout

    def test_prints_what_the_page_shows(self):
        (shown,) = blocks(DOCUMENT, "text")
        self.assertEqual(self.run_steps(self.last_step), shown)

    def test_writes_the_same_into_a_file(self):
        (shown,) = blocks(DOCUMENT, "text")
        self.run_steps(self.last_step + " --output counts.txt")
        self.assertEqual((self.folder / "counts.txt").read_text(encoding="utf-8"), shown)

    def test_takes_messages_below_its_visibility_level_alone(self):
        self.assertEqual(self.run_steps(self.last_step + " --level 0"), "")

    def test_refuses_a_damaged_log(self):
        log = (self.folder / "run.log").read_bytes()
        (self.folder / "cut.log").write_bytes(log[:-1])
        status = self.run_steps(self.last_step.replace("run.log", "cut.log") +
                                " 2>/dev/null || echo $?")
        self.assertEqual(status, "1\n")

    def test_exports_two_functions_alone(self):
        symbols = self.run_steps("nm -D --defined-only build/libexecution_counter.so")
        functions = {line.split()[2] for line in symbols.splitlines() if line.split()[1] == "T"}
        self.assertEqual(functions, {"createReader", "deleteReader"})


if __name__ == "__main__":
    unittest.main()
