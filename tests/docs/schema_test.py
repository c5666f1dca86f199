"""docs/profile.schema.json takes what the JSON reader writes and refuses what it never writes."""

import copy
import glob
import json
import os
import unittest

from jsonschema import Draft202012Validator

from support.frame_chunks import write_log
from support.programs import run, temp_folder

SOURCE = os.environ["VYN_SOURCE_DIR"]
MAKE_LOG = os.environ["VYN_BUILD_DIR"] + "/bin/vyn-make-log"

# Everything that may be absent, empty or without a text.
EDGE_CASES = {
    "messages": [
        {"header": {}, "appMetrics": {}},
        {"header": {}, "appMetrics": {"stopMem": 18446744073709551615}, "method": 11,
         "profilingEvents": []},
        {"header": {}, "appMetrics": {}, "method": -1, "profilingEvents": [
            {},
            {"type": 401, "unit": 7, "valueType": "INT64", "int64Value": -5, "subEvents": []},
            {"identifier": "", "type": "NODE", "unit": "OBJECT", "valueType": "RAW_DATA",
             "rawData": [1, 2], "secondaryName": "node.bin"},
            {"valueType": "UINT64", "uint64Value": 18446744073709551615, "unit": "BACKEND"},
            {"valueType": "STRING", "type": "BACKEND"},
            {"valueType": "FLOAT", "floatValue": 0.5, "unit": "NONE", "subEvents": [
                {"valueType": "DOUBLE", "doubleValue": 1e300}]}]}]}
EMPTY_HEADER = {"header": {}}


def log_of(folder, name, *chunks):
    """Writes the chunks as a log, by way of flatc."""
    texts = [folder / f"{name}-{number}.json" for number in range(len(chunks))]
    for text, chunk in zip(texts, chunks):
        text.write_text(json.dumps(chunk), encoding="utf-8")
    return write_log(folder / f"{name}.log", os.environ["VYN_FLATC"],
                     f"{SOURCE}/schema/profile_log.fbs", texts)


def outputs(folder, *logs):
    """The first output, with one log read, and the last one, with all of them."""
    run(os.environ["VYN_JSON_OUTPUTS"], os.environ["VYN_READER"], folder, *logs)
    return [json.loads((folder / f"{name}.json").read_text(encoding="utf-8"))
            for name in ("object", "array")]


class SchemaTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with open(f"{SOURCE}/docs/profile.schema.json", encoding="utf-8") as file:
            cls.schema = json.load(file)
        cls.validator = Draft202012Validator(cls.schema)
        with temp_folder() as folder:
            made = folder / "made.log"
            run(MAKE_LOG, "-o", made, "--executions", "3", "--graphs", "2", "--nodes", "5",
                "--async")
            cls.profile, cls.profiles = outputs(
                folder, made, log_of(folder, "edges", EDGE_CASES, EMPTY_HEADER),
                log_of(folder, "empty"))

    def refuses(self, change):
        broken = copy.deepcopy(self.profile)
        change(broken)
        self.assertFalse(self.validator.is_valid(broken))

    def test_schema_is_a_schema(self):
        Draft202012Validator.check_schema(self.schema)

    def test_takes_the_output_of_a_made_log(self):
        self.assertIn("metadata", self.profile)
        self.assertGreater(len(self.profile["messages"]), 3)
        self.validator.validate(self.profile)

    def test_takes_the_array_of_all_logs(self):
        self.assertEqual(len(self.profiles), 3)
        self.assertEqual(self.profiles[0], self.profile)
        self.validator.validate(self.profiles)

    def test_takes_edge_cases_one_by_one(self):
        _, edges, empty = self.profiles
        self.assertEqual(len(edges["messages"]), 3)
        self.assertEqual(edges["metadata"]["version"], {})
        self.validator.validate(edges)
        self.assertEqual(empty, {"messages": []})
        self.validator.validate(empty)

    def test_refuses_unknown_keys(self):
        message = self.profile["messages"][0]
        self.assertIn("appMetrics", message)
        self.refuses(lambda profile: profile.update(extra=1))
        self.refuses(lambda profile: profile["metadata"].update(extra=1))
        self.refuses(lambda profile: profile["metadata"]["version"].update(extra=1))
        self.refuses(lambda profile: profile["messages"][0].update(extra=1))
        self.refuses(lambda profile: profile["messages"][0]["header"].update(extra=1))
        self.refuses(lambda profile: profile["messages"][0]["appMetrics"].update(extra=1))

    def test_refuses_missing_keys(self):
        self.refuses(lambda profile: profile.pop("messages"))
        self.refuses(lambda profile: profile["metadata"].pop("timeScale"))
        self.refuses(lambda profile: profile["messages"][0].pop("method"))
        self.refuses(lambda profile: profile["messages"][0]["header"].pop("timestamp"))

    def test_refuses_texts_that_no_enumeration_has(self):
        self.refuses(lambda profile: profile["messages"][0].update(method="LIBRARY_LOAD"))
        self.refuses_event({"unit": "UNSPECIFIED", "type": "NONE"})
        self.refuses_event({"unit": "", "type": "node"})

    def test_refuses_events_of_another_form(self):
        self.refuses_event({"unit": "", "type": "NONE", "count": 1})
        self.refuses_event({"unit": ""})
        self.refuses_event({"unit": "", "type": "NONE", "value": None})
        self.refuses_event({"unit": "", "type": "NONE", "value": True})
        self.refuses_event({"unit": "", "type": "NONE", "identifier": None})
        self.refuses_event({"unit": "", "type": "NONE", "sub-events": [{}]})

    def test_refuses_numbers_out_of_range(self):
        def first_header(profile):
            return profile["messages"][0]["header"]
        self.refuses(lambda profile: first_header(profile).update(timestamp=-1))
        self.refuses(lambda profile: first_header(profile).update(timestamp=2**64))
        self.refuses(lambda profile: first_header(profile).update(timestamp=0.5))
        for number in (-1, 2**32, 0.5):
            self.refuses(lambda profile, n=number: profile["metadata"]["version"].update(major=n))
        self.refuses(lambda profile: profile["messages"][0].update(appMetrics={}))
        for number in (0, 2**64, 1.5):
            self.refuses(lambda profile, n=number:
                         profile["messages"][0].update(appMetrics={"startTime": n}))

    def test_refuses_an_array_of_other_things(self):
        self.assertFalse(self.validator.is_valid([self.profile, [self.profile]]))

    def refuses_event(self, event):
        plain = {"unit": "", "type": "NONE"}
        def with_events(*events):
            return {"messages": [{"header": {"timestamp": 0, "sequenceNumber": 0}, "method": "",
                                  "profilingEvents": list(events)}]}
        self.validator.validate(with_events(plain))
        self.assertFalse(self.validator.is_valid(with_events(plain, event)), event)


if __name__ == "__main__":
    unittest.main()
