#!/usr/bin/python3
"""Compares the viewer's document of an example with what flatc says of the same chunk.

Usage: compare_with_flatc.py VIEWER FLATC SCHEMA EXAMPLE

flatc makes the chunk from the example and turns it back into JSON. What the document must hold
follows from that, key by key and in order; every difference fails.
"""

import json
import sys
from pathlib import Path

from support.frame_chunks import chunk_bytes, framed
from support.programs import run, temp_folder

UNNAMED = {"LIBRARY_LOAD", "APPLY_BINARY_SECTION", "UNSPECIFIED"}  # names that are no texts
VALUE_FIELDS = {"INT64": "int64Value", "UINT64": "uint64Value", "FLOAT": "floatValue",
                "DOUBLE": "doubleValue", "STRING": "stringValue"}


def text_of(code):
    return code if isinstance(code, str) and code not in UNNAMED else ""


def event(table):
    result = {"identifier": table["identifier"]} if "identifier" in table else {}
    result["unit"] = text_of(table.get("unit"))
    result["type"] = text_of(table.get("type"))
    if table.get("valueType") in VALUE_FIELDS:
        result["value"] = table.get(VALUE_FIELDS[table["valueType"]], "")
    if "subEvents" in table:
        result["sub-events"] = [event(child) for child in table["subEvents"]]
    return result


def message(table):
    header = table["header"]
    result = {"header": {key: header[key] for key in ("timestamp", "sequenceNumber")},
              "method": text_of(table["method"])}
    metrics = {key: table["appMetrics"][key]
               for key in ("startTime", "stopTime", "startMem", "stopMem")
               if table["appMetrics"][key]}
    if metrics:
        result["appMetrics"] = metrics
    if "profilingEvents" in table:
        result["profilingEvents"] = [event(child) for child in table["profilingEvents"]]
    return result


def metadata(header, log):
    version = {key: header["version"][key] for key in ("major", "minor", "teeny")} \
        if "version" in header else {}
    return {"inputLogFileLocation": log, "timeScale": float(header["timeScale"]),
            "epochTime": header["epochTime"], "timestamp": header["timestamp"],
            "version": version, "vynProfileViewerVersion": None,
            "vynNetRunVersion": header.get("netRunVersion", ""),
            "backendVersion": header.get("backendVersion", "")}


def close(actual, expected):
    """flatc rounds floating numbers in its text; all else must be the same, type included."""
    return type(actual) is type(expected) and (
        abs(actual - expected) < 1e-6 if isinstance(actual, float) else actual == expected)


def compare(actual, expected, path="$"):
    if isinstance(expected, dict):
        if not isinstance(actual, dict) or list(actual) != list(expected):
            sys.exit(f"{path}: {actual!r} should have the keys {list(expected)}")
        for key, value in expected.items():
            compare(actual[key], value, f"{path}.{key}")
    elif isinstance(expected, list):
        if not isinstance(actual, list) or len(actual) != len(expected):
            sys.exit(f"{path}: {actual!r} should have {len(expected)} elements")
        for index, value in enumerate(expected):
            compare(actual[index], value, f"{path}[{index}]")
    elif expected is not None and not close(actual, expected):
        sys.exit(f"{path}: {actual!r} should be {expected!r}")


def main():
    viewer, flatc, schema, example = sys.argv[1:]
    with temp_folder() as folder:
        chunk, log, output = (folder / name for name in ("chunk.bin", "run.log", "document.json"))
        chunk.write_bytes(chunk_bytes(flatc, schema, Path(example), folder))
        log.write_bytes(framed(chunk.read_bytes()))
        run(flatc, "--no-warnings", "--json", "--strict-json", "--defaults-json", "--raw-binary",
            "--natural-utf8", "-o", folder, schema, "--", chunk)
        run(viewer, log, "-o", output)
        table = json.loads((folder / "chunk.json").read_text(encoding="utf-8"))
        document = json.loads(output.read_text(encoding="utf-8"))
        compare(document, {"metadata": metadata(table["header"], str(log)),
                           "messages": [message(entry) for entry in table["messages"]]})


main()
