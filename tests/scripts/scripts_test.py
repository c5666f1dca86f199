"""What the scripts call: stand-ins write down their arguments and do little else."""

import os
import shutil
import unittest

from support.programs import run, temp_folder

SOURCE = os.environ["VYN_SOURCE_DIR"]
BUILD = os.environ["VYN_BUILD_DIR"]

NOTES = """#!/bin/sh
echo "$(basename "$0") $*" >>"$CALLS"
"""
# Configuring and building leave what the real program would.
CMAKE = NOTES + f"""
case $1 in
  --preset) mkdir -p build/release && touch build/release/build.ninja ;;
  --build) ln -sfn "{BUILD}/bin" "build/release/bin" ;;
esac
"""


class ScriptTest(unittest.TestCase):
    def setUp(self):
        folder = self.enterContext(temp_folder())
        self.tree = f"{folder}/tree"
        self.programs = f"{folder}/programs"
        self.calls = f"{folder}/calls"
        shutil.copytree(f"{SOURCE}/scripts", f"{self.tree}/scripts")
        os.mkdir(self.programs)

    def stand_in(self, name, text=NOTES):
        with open(f"{self.programs}/{name}", "w", encoding="utf-8") as file:
            file.write(text)
        os.chmod(f"{self.programs}/{name}", 0o755)

    def run_script(self, *words, path=os.environ["PATH"]):
        """The script's result, and the calls of stand-ins that it made."""
        open(self.calls, "w", encoding="utf-8").close()
        result = run(f"{self.tree}/scripts/{words[0]}", *words[1:], text=True, status=None,
                     environment={"PATH": f"{self.programs}:{path}", "CALLS": self.calls})
        with open(self.calls, encoding="utf-8") as file:
            return result, file.read().splitlines()


class DemoTest(ScriptTest):
    BUILD_CALL = "cmake --build --preset release --target vyn-profile-viewer vyn-make-log"

    def test_builds_the_programs_alone(self):
        self.stand_in("cmake", CMAKE)
        result, calls = self.run_script("demo")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(calls, ["cmake --preset release -DVYN_BUILD_TESTS=OFF", self.BUILD_CALL])
        self.assertIn('"messages": [', result.stdout)

    def test_keeps_a_tree_that_has_the_tests(self):
        self.stand_in("cmake", CMAKE)
        os.makedirs(f"{self.tree}/build/release")
        open(f"{self.tree}/build/release/build.ninja", "w", encoding="utf-8").close()
        result, calls = self.run_script("demo")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(calls, [self.BUILD_CALL])


class SetupTest(ScriptTest):
    def installed(self, *words):
        for name in ("dpkg-query", "apt-get", "sudo"):
            self.stand_in(name)
        result, calls = self.run_script("setup", *words)
        self.assertEqual(result.returncode, 0, result.stderr)
        return next(call for call in calls if " install " in call).split()

    def test_the_demo_needs_nothing_for_tests(self):
        packages = self.installed("demo")
        self.assertIn("g++", packages)
        for package in ("libgtest-dev", "libbenchmark-dev", "clang-tidy", "python3-jsonschema"):
            self.assertNotIn(package, packages)

    def test_all_else_needs_the_tests_packages(self):
        for words in ([], ["abi"]):
            packages = self.installed(*words)
            for package in ("g++", "libgtest-dev", "clang-tidy", "python3-jsonschema"):
                self.assertIn(package, packages)

    def test_an_unknown_job_is_refused(self):
        result, calls = self.run_script("setup", "nothing")
        self.assertEqual(result.returncode, 2)
        self.assertEqual(calls, [])


class BenchTest(ScriptTest):
    def test_build_alone_runs_nothing(self):
        self.stand_in("cmake")
        result, calls = self.run_script("bench", "--build")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(calls, ["cmake --preset release -DVYN_BUILD_BENCHMARKS=ON",
                                 "cmake --build --preset release --target benchmarks"])


class CheckAbiTest(ScriptTest):
    def test_looks_for_its_tool_before_it_builds(self):
        self.stand_in("cmake")
        for name in ("bash", "dirname"):
            os.symlink(shutil.which(name), f"{self.programs}/{name}")
        for words, tool in ((["check-abi"], "abidiff"), (["check-abi", "--update"], "abidw")):
            result, calls = self.run_script(*words, path="/nowhere")
            self.assertEqual(result.returncode, 1)
            self.assertEqual(result.stderr,
                             f"check-abi: {tool} is not installed; run scripts/setup abi\n")
            self.assertEqual(calls, [])


if __name__ == "__main__":
    unittest.main()
