#!/usr/bin/python3
"""Runs the summary on one log and compares all that comes out with the files of a case.

Usage: run_golden.py VIEWER SCHEMA CASE_FOLDER CHUNK_JSON...

flatc makes the chunks. The console text must be expected.txt, the listing expected.csv, and the
files written those of the folder payloads, if there is one; the viewer's version stands as <version>,
the elapsed time of a log line as <ms>.
"""

import csv
import os
import re
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
COLUMNS = 7
VERSION = re.compile(rb"v\d+\.\d+\.\d+\.\d{12}_\d+")
ELAPSED = re.compile(rb" *\d+\.\dms \[")


def masked(text):
    return ELAPSED.sub(b"<ms> [", VERSION.sub(b"<version>", text))


def content(*path):
    with open(os.path.join(*path), "rb") as file:
        return masked(file.read())


def make_log(folder, schema, chunk_texts):
    chunks = []
    for text in chunk_texts:
        subprocess.run(["flatc", "--no-warnings", "--binary", "-o", folder, schema, text], check=True)
        chunks.append(os.path.join(folder, os.path.basename(text).replace(".json", ".bin")))
    frame = os.path.join(HERE, "..", "support", "frame_chunks.py")
    subprocess.run(["/usr/bin/python3", frame, os.path.join(folder, "run.log"), *chunks], check=True)
    for chunk in chunks:
        os.remove(chunk)


def compare(name, actual, expected):
    if actual != expected:
        sys.exit(f"{name} differs; it is:\n{actual.decode(errors='replace')}\n"
                 f"and should be:\n{expected.decode(errors='replace')}")


def check_columns(folder):
    """An independent reader finds every row below the preamble whole."""
    with open(os.path.join(folder, "out.csv"), newline="", encoding="utf-8") as file:
        rows = list(csv.reader(file))[4:]
    broken = [row for row in rows if len(row) != COLUMNS]
    if broken:
        sys.exit(f"rows without {COLUMNS} columns: {broken}")


def main():
    viewer, schema, case, *chunk_texts = sys.argv[1:]
    payloads = os.path.join(case, "payloads")
    with tempfile.TemporaryDirectory() as folder:
        make_log(folder, schema, chunk_texts)
        run = subprocess.run([viewer, "--reader", "summary", "--payloads", "run.log", "-o", "out.csv"],
                             cwd=folder, env={**os.environ, "TZ": "UTC"}, check=True,
                             stdout=subprocess.PIPE)
        compare("the console text", masked(run.stdout), content(case, "expected.txt"))
        compare("the listing", content(folder, "out.csv"), content(case, "expected.csv"))
        check_columns(folder)
        names = sorted(os.listdir(payloads)) if os.path.isdir(payloads) else []
        written = sorted(set(os.listdir(folder)) - {"run.log", "out.csv"})
        compare("the list of payload files", str(written).encode(), str(names).encode())
        for name in names:
            compare(name, content(folder, name), content(payloads, name))


main()
