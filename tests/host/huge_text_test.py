#!/usr/bin/env python3
"""Reads a log whose only text has 715,827,883 bytes, the length from which on a writer that reserves
six bytes for each, counted in 32 bits, would write past its buffer.

Usage: huge_text_test.py VIEWER FLATC SCHEMA
"""

import sys

from support.frame_chunks import LENGTH_SIZE, chunk_bytes, framed, length_bytes
from support.programs import run, temp_folder

LENGTH = 715_827_883  # bytes
BLOCK = b"x" * (1 << 20)
MARK = "mark"
CHUNK = '{messages:[{profilingEvents:[{identifier:"' + MARK + '"}],header:{},appMetrics:{}}]}'
BEFORE = b'"identifier": "'
AFTER = b'",\n                    "unit": "",'


def fill(file, count):
    for _ in range(count // len(BLOCK)):
        file.write(BLOCK)
    file.write(BLOCK[: count % len(BLOCK)])


def write_log(folder, flatc, schema):
    """A quotation mark, many x and a line feed as the identifier. flatc puts what it meets first at
    the buffer's end, where it can grow without moving anything else."""
    text = folder / "chunk.json"
    text.write_text(CHUNK, encoding="ascii")
    chunk = chunk_bytes(flatc, schema, text, folder)
    mark = framed(MARK.encode())
    start = chunk.index(mark + b"\0")
    assert chunk[start + len(mark) :].strip(b"\0") == b"", "the text is not the buffer's end"
    padding = -(LENGTH + 1) % 4
    size = start + LENGTH_SIZE + LENGTH + 1 + padding
    with open(folder / "run.log", "wb") as log:
        log.write(length_bytes(size) + chunk[:start] + length_bytes(LENGTH) + b'"')
        fill(log, LENGTH - 2)
        log.write(b"\n\0" + bytes(padding))


def check_document(path):
    with open(path, "rb") as document:
        head = document.read(4096)
        document.seek(head.index(BEFORE) + len(BEFORE))
        assert document.read(2) == b'\\"'
        left = LENGTH - 2
        while left > 0:
            block = BLOCK[: min(left, len(BLOCK))]
            assert document.read(len(block)) == block, f"differs {left} bytes before the text's end"
            left -= len(block)
        assert document.read(2) == b"\\n"
        after = document.read(len(AFTER))
        assert after == AFTER, after
        assert document.read().endswith(b"]\n}\n")


def main():
    viewer, flatc, schema = sys.argv[1:]
    with temp_folder() as folder:
        write_log(folder, flatc, schema)
        run(viewer, "run.log", "-o", "run.json", folder=folder)
        check_document(folder / "run.json")


if __name__ == "__main__":
    main()
