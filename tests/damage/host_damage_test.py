#!/usr/bin/env python3
"""Runs the viewer on damaged logs: either it leaves a document, or one line and no document.

Usage: host_damage_test.py VIEWER LOG
"""

import json
import sys
from pathlib import Path

from support.programs import run, temp_folder

CASES = 80


def damaged_logs(log):
    """The log cut short and with a bit flipped, at places spread over it."""
    for number in range(CASES // 2):
        place = len(log) * number // (CASES // 2)
        yield f"cut to {place} bytes", log[:place]
        flipped = bytearray(log)
        flipped[place] ^= 1 << (number % 8)
        yield f"byte {place} changed", bytes(flipped)


def check(viewer, folder, what, log):
    """Returns whether the log was taken; exits when viewer and output do not fit together."""
    (folder / "run.log").write_bytes(log)
    result = run(viewer, "run.log", "-o", "out.json", folder=folder, status=None, timeout=60)
    output = folder / "out.json"
    if result.returncode == 0:
        json.loads(output.read_bytes().decode("utf-8", "replace"))
        output.unlink()
        return True
    if result.returncode != 1 or not result.stderr.endswith(b"\n"):
        sys.exit(f"{what}: status {result.returncode}, {result.stderr!r}")
    left = [path.name for path in folder.iterdir()]
    if left != ["run.log"]:
        sys.exit(f"{what}: left {left}")
    return False


def main():
    viewer, log_path = sys.argv[1:]
    log = Path(log_path).read_bytes()
    with temp_folder() as folder:
        taken = [check(viewer, folder, what, damaged) for what, damaged in damaged_logs(log)]
    print(f"{len(taken)} damaged logs: {sum(taken)} taken, {len(taken) - sum(taken)} refused")
    if all(taken) or not any(taken):
        sys.exit("the damage is no test")


main()
