#!/usr/bin/env python3
"""Runs the viewer on damaged logs: either it leaves a document, or one line and no document.

Usage: host_damage_test.py VIEWER LOG
"""

import json
import os
import subprocess
import sys
import tempfile

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
    with open(os.path.join(folder, "run.log"), "wb") as file:
        file.write(log)
    run = subprocess.run([viewer, "run.log", "-o", "out.json"], cwd=folder, capture_output=True,
                         check=False, timeout=60)
    output = os.path.join(folder, "out.json")
    if run.returncode == 0:
        with open(output, "rb") as file:
            json.loads(file.read().decode("utf-8", "replace"))
        os.remove(output)
        return True
    if run.returncode != 1 or not run.stderr.endswith(b"\n"):
        sys.exit(f"{what}: status {run.returncode}, {run.stderr!r}")
    if os.listdir(folder) != ["run.log"]:
        sys.exit(f"{what}: left {os.listdir(folder)}")
    return False


def main():
    viewer, log_path = sys.argv[1:]
    with open(log_path, "rb") as file:
        log = file.read()
    with tempfile.TemporaryDirectory() as folder:
        taken = [check(viewer, folder, what, damaged) for what, damaged in damaged_logs(log)]
    print(f"{len(taken)} damaged logs: {sum(taken)} taken, {len(taken) - sum(taken)} refused")
    if all(taken) or not any(taken):
        sys.exit("the damage is no test")


main()
