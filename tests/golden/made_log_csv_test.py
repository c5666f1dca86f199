#!/usr/bin/env python3
"""Reads the CSV of a made log with an independent CSV reader and holds its execution rows against
the log maker's own record. Usage: made_log_csv_test.py MAKER VIEWER"""

import csv
import json
import sys
import unittest

from support.programs import run, temp_folder

OPTIONS = ["--graphs", "3", "--async", "--components", "--object-payloads", "2",
           "--binary-sections", "2", "--executions", "5"]
TITLES = ["Msg Timestamp", " Message", " Time", " Unit of Measurement", " Timing Source",
          " Event Level", " Event Identifier"]
UNITS = ("BYTES", "CYCLES", "COUNT", "NONE")  # any other reads as microseconds
EXECUTIONS = ("BACKEND_EXECUTE", "BACKEND_EXECUTE_ASYNC")


def value_text(value):
    return f"{value:.6f}" if isinstance(value, float) else str(value)


def event_row(start, event, depth):
    unit = event.get("unit", "")
    return [*start, value_text(event.get("value", "")), unit if unit in UNITS else "US", "BACKEND",
            depth, event.get("identifier", "null")]


def execution_rows(message):
    """The rows of one recorded execution, without the graph in its first one."""
    start = [str(message["header"]["timestamp"]), "EXECUTE"]
    metrics = message["appMetrics"]
    duration = metrics["stopTime"] - metrics["startTime"]
    yield [*start, str(duration), "US", "NETRUN", "ROOT"]
    for event in message["profilingEvents"]:
        if event["type"] == "INIT":
            continue
        for depth, listed in [("ROOT", event),
                              *(("SUB-EVENT", child) for child in event.get("sub-events", []))]:
            if listed["unit"] != "OBJECT":
                yield event_row(start, listed, depth)


class MadeLogCsv(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with temp_folder() as folder:
            log, record, listing = (folder / name for name in ("log", "record", "csv"))
            run(maker, "-o", log, "--record", record, *OPTIONS)
            run(viewer, log, "--reader", "summary", "-o", listing)
            with open(listing, newline="", encoding="utf-8") as file:
                cls.rows = list(csv.reader(file))
            messages = [json.loads(line) for line in record.read_text().splitlines()[1:]]
        cls.executions = [m for m in messages if m["method"] in EXECUTIONS]
        cls.components = [m for m in messages if m["method"] == "BACKEND_GRAPH_COMPONENT"]

    def test_rows_have_the_columns_of_the_titles(self):
        self.assertEqual(self.rows[4], TITLES)
        for row in self.rows[5:]:
            self.assertEqual(len(row), len(TITLES), row)

    def test_executions_have_the_rows_of_the_record(self):
        self.assertEqual(len(self.executions), 15)
        for message in self.executions:
            start = [str(message["header"]["timestamp"]), "EXECUTE"]
            rows = [row for row in self.rows[5:] if row[:2] == start]
            self.assertRegex(rows[0][6], r"^Graph [0-2]: \w+$")
            self.assertEqual([rows[0][:6], *rows[1:]], list(execution_rows(message)))

    def test_components_are_executions_without_times(self):
        self.assertGreater(len(self.components), 0)
        rows = [row for row in self.rows[5:]
                if row[:6] == ["0", "EXECUTE", "0", "US", "NETRUN", "ROOT"]]
        self.assertEqual(len(rows), len(self.components))


if __name__ == "__main__":
    viewer = sys.argv.pop()
    maker = sys.argv.pop()
    unittest.main(verbosity=2)
