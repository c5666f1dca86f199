#!/usr/bin/python3
"""Runs the summary on one log and compares all that comes out with the files of a case.

Usage: run_golden.py VIEWER FLATC SCHEMA CASE_FOLDER CHUNK_JSON...

flatc makes the chunks. The console text must be expected.txt, the listing expected.csv, and the
files written those of the folder payloads, if there is one; the viewer's version stands as <version>,
the elapsed time of a log line as <ms>.
"""

import csv
import re
import sys
from pathlib import Path

from support.frame_chunks import write_log
from support.programs import run, temp_folder

COLUMNS = 7
VERSION = re.compile(rb"v\d+\.\d+\.\d+\.\d{12}_\d+")
ELAPSED = re.compile(rb" *\d+\.\dms \[")


def masked(text):
    return ELAPSED.sub(b"<ms> [", VERSION.sub(b"<version>", text))


def content(path):
    return masked(path.read_bytes())


def names_in(folder):
    return sorted(path.name for path in folder.iterdir())


def compare(name, actual, expected):
    if actual != expected:
        sys.exit(f"{name} differs; it is:\n{actual.decode(errors='replace')}\n"
                 f"and should be:\n{expected.decode(errors='replace')}")


def check_columns(folder):
    """An independent reader finds every row below the preamble whole."""
    with open(folder / "out.csv", newline="", encoding="utf-8") as file:
        rows = list(csv.reader(file))[4:]
    broken = [row for row in rows if len(row) != COLUMNS]
    if broken:
        sys.exit(f"rows without {COLUMNS} columns: {broken}")


def main():
    viewer, flatc, schema, case_name, *chunk_texts = sys.argv[1:]
    case = Path(case_name)
    payloads = case / "payloads"
    with temp_folder() as folder:
        write_log(folder / "run.log", flatc, schema, map(Path, chunk_texts))
        result = run(viewer, "--reader", "summary", "--payloads", "run.log", "-o", "out.csv",
                     folder=folder, environment={"TZ": "UTC"})
        compare("the console text", masked(result.stdout), content(case / "expected.txt"))
        compare("the listing", content(folder / "out.csv"), content(case / "expected.csv"))
        check_columns(folder)
        names = names_in(payloads) if payloads.is_dir() else []
        written = [name for name in names_in(folder) if name not in ("run.log", "out.csv")]
        compare("the list of payload files", str(written).encode(), str(names).encode())
        for name in names:
            compare(name, content(folder / name), content(payloads / name))


main()
