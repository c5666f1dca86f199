#!/usr/bin/python3
"""Joins FlatBuffers buffers into a log: frame_chunks.py LOG CHUNK..."""

import sys

with open(sys.argv[1], "wb") as log:
    for name in sys.argv[2:]:
        with open(name, "rb") as chunk:
            content = chunk.read()
        log.write(len(content).to_bytes(4, "little") + content)
