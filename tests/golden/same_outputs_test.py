#!/usr/bin/python3
"""Runs both readers several times on one log, each time with memory in other places and with other
bytes in it, and compares everything that comes out, byte by byte.

Usage: same_outputs_test.py VIEWER LOG
       same_outputs_test.py VIEWER FLATC SCHEMA CHUNK_JSON...

With a schema, flatc makes the chunks of the log.
"""

import re
import shutil
import sys
from pathlib import Path

from support.frame_chunks import write_log
from support.programs import run, temp_folder

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


def outputs(viewer, log, command, words, variables):
    """What a run prints and writes, by name."""
    with temp_folder() as folder:
        shutil.copyfile(log, folder / "run.log")
        result = run(*words, viewer, *command, folder=folder, status=None,
                     environment={"TZ": "UTC", **variables})
        return {"exit status": str(result.returncode).encode(),
                "standard output": ELAPSED.sub(b"<ms> [", result.stdout),
                "standard error": result.stderr,
                **{path.name: path.read_bytes() for path in folder.iterdir()}}


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
    viewer, source, *rest = sys.argv[1:]
    if not rest:
        compare(source, viewer)
        return
    schema, *chunk_texts = rest
    with temp_folder() as folder:
        compare(write_log(folder / "made.log", source, schema, map(Path, chunk_texts)), viewer)


main()
