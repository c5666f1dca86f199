"""Makes a log, converts it and checks every message of the document against the maker's record.

Usage: check_converted_log.py MAKER VIEWER [MAKER OPTION...]
"""

import sys

from check_record import check
from support.programs import run, temp_folder


def main():
    maker, viewer, *options = sys.argv[1:]
    with temp_folder() as folder:
        log, record, document = (folder / name for name in ("run.log", "record.jsonl", "run.json"))
        run(maker, "-o", log, "--record", record, *options)
        run(viewer, "view", log, "-o", document)
        with open(document, encoding="utf-8") as found, open(record, encoding="utf-8") as expected:
            print(f"{check(found, expected)} messages as recorded")


main()
