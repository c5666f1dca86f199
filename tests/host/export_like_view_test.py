"""Writes the document of many logs by export json and by view: the same bytes, or the same failure.

The logs: the golden ones and the examples, the kept inputs of the fuzz targets, and random ones.
Usage: export_like_view_test.py VIEWER LOG_MAKER FLATC SOURCE
"""

import os
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

VIEWER, LOG_MAKER, FLATC, SOURCE = sys.argv[1:]
ROOT = Path(SOURCE)


def made_logs(folder):
    options = [["--async", "--graphs", "3"], ["--nodes", "1"], ["--chunk-size", "2KB"], []]
    for seed, more in enumerate(options * 3):
        log = folder / f"made_{seed}.log"
        subprocess.run([LOG_MAKER, "-o", log, "--seed", str(seed), "--executions", "3", *more],
                       check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        yield log


def logs_of_json(folder):
    chunks = [*ROOT.glob("tests/golden/*/log.*.json"), *ROOT.glob("examples/*.json")]
    for number, chunk in enumerate(chunks):
        subprocess.run([FLATC, "--no-warnings", "--binary", "-o", folder,
                        ROOT / "schema/profile_log.fbs", chunk], check=True)
        [binary] = folder.glob("*.bin")
        data = binary.read_bytes()
        binary.unlink()
        log = folder / f"json_{number}.log"
        log.write_bytes(struct.pack("<I", len(data)) + data)
        yield log


def kept_inputs(folder):
    for target in ("summary_reader_fuzzer", "both_readers_fuzzer", "json_document_fuzzer"):
        for path in (ROOT / "fuzz/corpus" / target).iterdir():
            data = path.read_bytes()
            log = folder / f"{target}_{path.name}.log"
            is_chunk = target != "summary_reader_fuzzer"
            log.write_bytes((struct.pack("<I", len(data)) if is_chunk else b"") + data)
            yield log


def run(verb, log, output):
    result = subprocess.run([VIEWER, *verb, log.name, "-o", output], cwd=log.parent, text=True,
                            capture_output=True, check=False)
    document = log.parent / output
    text = document.read_bytes() if document.exists() else None
    document.unlink(missing_ok=True)
    return result.returncode, result.stderr, text


def main():
    counts = {0: 0, 1: 0}
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        for logs in (made_logs, logs_of_json, kept_inputs):
            for log in logs(folder):
                expected = run(["view"], log, "out.json")
                actual = run(["export", "json"], log, "out.json")
                assert actual == expected, (log.name, actual[:2], expected[:2])
                assert (actual[2] is not None) == (actual[0] == 0), log.name
                counts[actual[0]] += 1
                log.unlink()
        assert not os.listdir(folder), os.listdir(folder)
    assert counts[0] > 100 and counts[1] > 5, counts
    print(f"{counts[0]} documents, {counts[1]} refusals")


main()
