#!/usr/bin/env python3
"""The memory that check takes does not grow with the log, even when all that it says is wrong.

Usage: check_memory_test.py VIEWER MAKE_LOG FLATC SCHEMA
"""

import json
import sys

from support.frame_chunks import write_log
from support.programs import run, temp_folder

ADDRESS_SPACE = 24_000  # KiB, with the program itself and its libraries
DOUBTFUL_CHUNKS = 20_000


def doubtful_chunk():
    event = {"identifier": "\u00e4" * 100, "type": 401, "unit": 7, "valueType": "STRING"}
    return {"messages": [{"header": {}, "appMetrics": {"startTime": 2, "stopTime": 1},
                          "method": 12, "profilingEvents": [event] * 10}]}


def main():
    viewer, make_log, flatc, schema = sys.argv[1:]
    with temp_folder() as folder:
        run(make_log, "-o", "made.log", "--size", "60MB", folder=folder)
        text = folder / "doubtful.json"
        text.write_text(json.dumps(doubtful_chunk()), encoding="utf-8")
        chunk = write_log(folder / "doubtful.log", flatc, schema, [text]).read_bytes()
        (folder / "doubtful.log").write_bytes(chunk * DOUBTFUL_CHUNKS)
        for log in ("made.log", "doubtful.log"):
            limited = f'ulimit -v {ADDRESS_SPACE}; exec "$0" "$@"'
            run("/bin/sh", "-c", limited, viewer, "check", log, folder=folder)


main()
