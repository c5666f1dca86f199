#!/usr/bin/python3
"""Runs both readers several times on one log, each time with memory in other places and with other
bytes in it, and compares everything that comes out, byte by byte.

Usage: same_outputs_test.py VIEWER LOG
       same_outputs_test.py VIEWER SCHEMA CHUNK_JSON...

With a schema, flatc makes the chunks of the log.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile

FRAME = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "support", "frame_chunks.py")
ELAPSED = re.compile(rb" *\d+\.\dms \[")
COMMANDS = [["run.log", "-o", "out.json"],
            ["run.log", "--reader", "summary", "--payloads", "-o", "out.csv"]]

# Words before the program and variables that move its stack and heap or fill memory anew. The first
# run comes twice, for addresses are drawn anew by themselves.
SURROUNDINGS = [
    ([], {}),
    ([], {}),
    (["setarch", "--addr-no-randomize"], {}),
    ([], {"PADDING": "p" * 100001}),
    ([], {"MALLOC_PERTURB_": "85"}),
    ([], {"MALLOC_PERTURB_": "170", "MALLOC_TOP_PAD_": "5000000"}),
    ([], {"MALLOC_MMAP_THRESHOLD_": "4096", "MALLOC_PERTURB_": "1"}),
]


def make_log(folder, schema, chunk_texts):
    chunks = []
    for text in chunk_texts:
        subprocess.run(["flatc", "--no-warnings", "--binary", "-o", folder, schema, text], check=True)
        chunks.append(os.path.join(folder, os.path.basename(text).replace(".json", ".bin")))
    log = os.path.join(folder, "made.log")
    subprocess.run(["/usr/bin/python3", FRAME, log, *chunks], check=True)
    return log


def outputs(viewer, log, command, words, variables):
    """What a run prints and writes, by name."""
    with tempfile.TemporaryDirectory() as folder:
        shutil.copyfile(log, os.path.join(folder, "run.log"))
        run = subprocess.run([*words, viewer, *command], cwd=folder, capture_output=True, check=False,
                             env={**os.environ, "TZ": "UTC", **variables})
        result = {"exit status": str(run.returncode).encode(),
                  "standard output": ELAPSED.sub(b"<ms> [", run.stdout),
                  "standard error": run.stderr}
        for name in os.listdir(folder):
            with open(os.path.join(folder, name), "rb") as file:
                result[name] = file.read()
        return result


def compare(log, viewer):
    for command in COMMANDS:
        expected = None
        for words, variables in SURROUNDINGS:
            actual = outputs(viewer, log, command, words, variables)
            if expected is None:
                expected = actual
                if actual["exit status"] != b"0":
                    sys.exit(f"{command}: {actual}")
            for name in {**expected, **actual}:
                if expected.get(name) != actual.get(name):
                    sys.exit(f"{name} of {command} differs with {words} {list(variables)}; it was:\n"
                             f"{expected.get(name, b'').decode(errors='replace')}\nand is:\n"
                             f"{actual.get(name, b'').decode(errors='replace')}")


def main():
    viewer, source, *chunk_texts = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        compare(make_log(folder, source, chunk_texts) if chunk_texts else source, viewer)


main()
