"""Writes the document of many logs by export json and by view: the same bytes, or the same failure.

The logs: the golden ones and the examples, the kept inputs of the fuzz targets, and random ones.
Usage: export_like_view_test.py VIEWER LOG_MAKER FLATC SOURCE
"""

import sys
from pathlib import Path

from support.frame_chunks import framed, write_log
from support.programs import run, temp_folder

VIEWER, LOG_MAKER, FLATC, SOURCE = sys.argv[1:]
ROOT = Path(SOURCE)


def made_logs(folder):
    options = [["--async", "--graphs", "3"], ["--nodes", "1"], ["--chunk-size", "2KB"], []]
    for seed, more in enumerate(options * 3):
        log = folder / f"made_{seed}.log"
        run(LOG_MAKER, "-o", log, "--seed", str(seed), "--executions", "3", *more)
        yield log


def logs_of_json(folder):
    chunks = [*ROOT.glob("tests/golden/*/log.*.json"), *ROOT.glob("examples/*.json")]
    for number, chunk in enumerate(chunks):
        yield write_log(folder / f"json_{number}.log", FLATC, ROOT / "schema/profile_log.fbs",
                        [chunk])


def kept_inputs(folder):
    for target in ("summary_reader_fuzzer", "both_readers_fuzzer", "json_document_fuzzer"):
        for path in (ROOT / "fuzz/corpus" / target).iterdir():
            data = path.read_bytes()
            log = folder / f"{target}_{path.name}.log"
            is_chunk = target != "summary_reader_fuzzer"
            log.write_bytes(framed(data) if is_chunk else data)
            yield log


# What export can do about a damaged log and view cannot.
REMEDY = "go on without what is damaged with --keep-going, or "


def written(verb, log):
    """Exit status, errors without the remedy, and document of the viewer."""
    result = run(VIEWER, *verb, log.name, "-o", "out.json", folder=log.parent, status=None,
                 text=True)
    document = log.parent / "out.json"
    text = document.read_bytes() if document.exists() else None
    document.unlink(missing_ok=True)
    return result.returncode, result.stderr.replace(REMEDY, ""), text


def main():
    counts = {0: 0, 1: 0}
    with temp_folder() as folder:
        for logs in (made_logs, logs_of_json, kept_inputs):
            for log in logs(folder):
                expected = written(["view"], log)
                actual = written(["export", "json"], log)
                assert actual == expected, (log.name, actual[:2], expected[:2])
                assert (actual[2] is not None) == (actual[0] == 0), log.name
                counts[actual[0]] += 1
                log.unlink()
        assert not list(folder.iterdir()), list(folder.iterdir())
    assert counts[0] > 100 and counts[1] > 5, counts
    print(f"{counts[0]} documents, {counts[1]} refusals")


main()
