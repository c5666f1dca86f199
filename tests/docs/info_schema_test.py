"""docs/info.schema.json takes what info tells of any log and refuses what it never writes; the
document of a log that is written here has the figures that it must have."""

import copy
import json
import os
import unittest

from jsonschema import Draft202012Validator

from support.frame_chunks import write_log
from support.programs import run, temp_folder

SOURCE = os.environ["VYN_SOURCE_DIR"]
PROGRAMS = os.environ["VYN_BUILD_DIR"] + "/bin"

NAMED = {"header": {"timestamp": 1000, "sequenceNumber": 1}, "method": "BACKEND_EXECUTE",
         "appMetrics": {"startTime": 1000, "stopTime": 1250}, "graphName": "net",
         "profilingEvents": [{"identifier": "run", "type": "EXECUTE", "unit": "MICROSEC",
                              "valueType": "UINT64", "uint64Value": 250}]}
# Each byte of the first chunk is explained in docs/log-format.md.
CHUNKS = [
    {"messages": [NAMED]},
    {"header": {"timeScale": 0.5, "epochTime": 1733891934000000, "timestamp": 12,
                "version": {"major": 1, "minor": 2, "teeny": 3, "versionFlag": 4},
                "netRunVersion": "v" * 300},
     "messages": [
         {"header": {"timestamp": 900, "sequenceNumber": 5}, "method": 10, "visibilityLevel": -2,
          "appMetrics": {}, "profilingEvents": [
              {"unit": "OBJECT", "valueType": "RAW_DATA", "rawData": [1, 2, 3], "subEvents": [
                  {"type": 401}]}]},
         {"header": {"timestamp": 950, "sequenceNumber": 5}, "appMetrics": {}},
         {"header": {"timestamp": 960, "sequenceNumber": 4}, "appMetrics": {}}]},
    {"header": {"timeScale": "nan"}}]

FIRST = {
    "log": "first.log",
    "size_bytes": 204,
    "chunks": {"count": 1, "smallest_bytes": 200, "median_bytes": 200,
               "median_precision_bytes": 1, "largest_bytes": 200},
    "header": None,
    "headers": {"count": 0, "differing_fields": []},
    "messages": {
        "count": 1, "without_graph": 0,
        "by_method": {"numbers": [{"number": 1, "text": "BACKEND_EXECUTE", "count": 1}],
                      "others": 0},
        "by_visibility_level": {"numbers": [{"number": 0, "text": "", "count": 1}], "others": 0},
        "graphs": [{"name": {"text": "net", "whole_bytes": 3}, "messages": 1, "executions": 1}],
        "more_graphs": {"messages": 0, "executions": 0}},
    "events": {
        "count": 1, "greatest_depth": 1, "identifiers": 1, "has_more_identifiers": False,
        "by_type": {"numbers": [{"number": 400, "text": "EXECUTE", "count": 1}], "others": 0},
        "by_unit": {"numbers": [{"number": 1, "text": "MICROSEC", "count": 1}], "others": 0},
        "by_value_type": {"numbers": [{"number": 2, "text": "UINT64", "count": 1}], "others": 0}},
    "payloads": {"count": 0, "bytes": 0},
    "time_stamps": {"first": 1000, "last": 1000, "smallest": 1000, "largest": 1000,
                    "steps_back": 0},
    "sequence_numbers": {"smallest": 1, "largest": 1, "gaps": 0, "missing": 0, "repeats": 0,
                         "steps_back": 0},
    "bytes": {"event_tables": 48, "other_tables": 120, "texts": 16, "lists": 16, "raw_data": 0,
              "padding_and_unused": 0, "chunk_lengths": 4, "from_the_damage_on": 0},
    "damage": None}


def many_graphs_and_types():
    return {"messages": [{"header": {}, "appMetrics": {}, "method": "BACKEND_EXECUTE",
                          "graphName": f"g{number}", "profilingEvents": [{"type": number}]}
                         for number in range(1002)]}


class InfoSchemaTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with open(f"{SOURCE}/docs/info.schema.json", encoding="utf-8") as file:
            cls.schema = json.load(file)
        cls.validator = Draft202012Validator(cls.schema)
        with temp_folder() as folder:
            cls.folder = folder
            cls.write("first.log", CHUNKS[0])
            cls.write("all.log", *CHUNKS)
            cls.write("odd_scale.log", CHUNKS[2])
            cls.write("many.log", many_graphs_and_types())
            log = (folder / "first.log").read_bytes()
            (folder / "empty.log").write_bytes(b"")
            (folder / "cut.log").write_bytes(log + log[:50])
            long = (len(log) + 96).to_bytes(4, "little") + log[4:] + bytes(100)
            (folder / "counted.log").write_bytes(long[:250])
            (folder / "corrupt.log").write_bytes(log + b"\xff" * 10)
            (folder / "odd\udcff.log").write_bytes(b"")
            run(f"{PROGRAMS}/vyn-make-log", "-o", "made.log", "--graphs", "2", folder=folder)
            cls.documents = {path.name: cls.told(path.name)
                             for path in sorted(folder.glob("*.log"))}
            names = ["all.log", "first.log", "cut.log"]
            cls.several = cls.told(*names, status=3)

    @classmethod
    def write(cls, name, *chunks):
        texts = [cls.folder / f"{number}.json" for number in range(len(chunks))]
        for text, chunk in zip(texts, chunks):
            text.write_text(json.dumps(chunk).replace('"nan"', "nan"), encoding="utf-8")
        write_log(cls.folder / name, os.environ["VYN_FLATC"],
                  f"{SOURCE}/schema/profile_log.fbs", texts)

    @classmethod
    def told(cls, *names, status=None):
        result = run(f"{PROGRAMS}/vyn-profile-viewer", "info", "--format", "json", *names,
                     folder=cls.folder, status=status)
        return json.loads(result.stdout)

    def log(self, name):
        (log,) = self.documents[name]["logs"]
        return log

    def refuses(self, change):
        broken = copy.deepcopy(self.documents["first.log"])
        change(broken["logs"][0])
        self.assertFalse(self.validator.is_valid(broken))

    def test_schema_is_a_schema(self):
        Draft202012Validator.check_schema(self.schema)

    def test_takes_what_is_told_of_any_log(self):
        self.assertEqual(len(self.documents), 10)
        for document in (*self.documents.values(), self.several):
            self.validator.validate(document)

    def test_bytes_add_up(self):
        for document in self.documents.values():
            for log in document["logs"]:
                self.assertEqual(sum(log["bytes"].values()), log["size_bytes"])

    def test_logs_stand_in_the_order_of_the_command_line(self):
        self.assertEqual(self.several["schema_version"], 1)
        self.assertEqual(self.several["logs"],
                         [self.log("all.log"), self.log("first.log"), self.log("cut.log")])

    def test_a_log_has_these_facts(self):
        self.assertEqual(self.documents["first.log"], {"schema_version": 1, "logs": [FIRST]})

    def test_headers_are_compared(self):
        log = self.log("all.log")
        self.assertEqual(log["header"], {
            "created": "2024-12-11T04:38:54Z", "epoch_time_us": 1733891934000000,
            "time_stamp": 12, "time_scale": 0.5,
            "version": {"major": 1, "minor": 2, "teeny": 3, "flag": 4},
            "net_run_version": {"text": "v" * 200, "whole_bytes": 300}, "backend_version": None})
        self.assertEqual(log["headers"], {"count": 2, "differing_fields": [
            "timeScale", "epochTime", "timestamp", "version", "netRunVersion"]})

    def test_a_time_scale_that_json_has_no_number_for_is_null(self):
        self.assertIsNone(self.log("odd_scale.log")["header"]["time_scale"])

    def test_messages_and_events_are_counted(self):
        log = self.log("all.log")
        self.assertEqual(log["messages"]["without_graph"], 3)
        self.assertEqual(log["messages"]["by_method"]["numbers"],
                         [{"number": 0, "text": "NONE", "count": 2},
                          {"number": 1, "text": "BACKEND_EXECUTE", "count": 1},
                          {"number": 10, "text": "LIBRARY_LOAD", "count": 1}])
        self.assertEqual(log["messages"]["by_visibility_level"]["numbers"],
                         [{"number": 0, "text": "", "count": 3},
                          {"number": -2, "text": "", "count": 1}])
        self.assertEqual(log["events"]["greatest_depth"], 2)
        self.assertIn({"number": 401, "text": "", "count": 1},
                      log["events"]["by_type"]["numbers"])
        self.assertIn({"number": 5, "text": "OBJECT", "count": 1},
                      log["events"]["by_unit"]["numbers"])
        self.assertEqual(log["payloads"], {"count": 1, "bytes": 3})
        self.assertEqual(log["bytes"]["raw_data"], 7)
        self.assertEqual(log["time_stamps"], {"first": 1000, "last": 960, "smallest": 900,
                                              "largest": 1000, "steps_back": 1})
        self.assertEqual(log["sequence_numbers"], {"smallest": 1, "largest": 5, "gaps": 1,
                                                   "missing": 3, "repeats": 1, "steps_back": 1})

    def test_what_is_beyond_a_bound_is_added_up(self):
        log = self.log("many.log")
        self.assertEqual(len(log["messages"]["graphs"]), 1000)
        self.assertEqual(log["messages"]["more_graphs"], {"messages": 2, "executions": 2})
        self.assertEqual(len(log["events"]["by_type"]["numbers"]), 1000)
        self.assertEqual(log["events"]["by_type"]["others"], 2)

    def test_damage_is_told(self):
        self.assertEqual(self.log("cut.log")["damage"], {
            "reason": "the log ends inside the chunk: 46 of 200 bytes are there",
            "chunk_number": 2, "offset_bytes": 204, "may_still_be_written": True,
            "is_counted": False, "whole_chunks": 1, "whole_bytes": 204})
        self.assertEqual(self.log("cut.log")["bytes"]["from_the_damage_on"], 50)
        counted = self.log("counted.log")
        self.assertTrue(counted["damage"]["is_counted"])
        self.assertEqual(counted["damage"]["whole_chunks"], 0)
        self.assertEqual(counted["chunks"]["largest_bytes"], 246)
        self.assertEqual(counted["messages"]["count"], 1)
        corrupt = self.log("corrupt.log")
        self.assertFalse(corrupt["damage"]["may_still_be_written"])
        self.assertFalse(corrupt["damage"]["is_counted"])

    def test_names_are_utf8(self):
        self.assertEqual(self.log("odd\udcff.log")["log"], "odd\ufffd.log")

    def test_refuses_other_keys_at_every_place(self):
        def objects(value):
            if isinstance(value, dict):
                yield value
            for inner in value.values() if isinstance(value, dict) else value:
                if isinstance(inner, (dict, list)):
                    yield from objects(inner)
        for name in ("all.log", "cut.log"):
            document = copy.deepcopy(self.documents[name])
            for place in list(objects(document)):
                place["extra"] = 1
                self.assertFalse(self.validator.is_valid(document), place)
                del place["extra"]
                for key in list(place):
                    kept = place.pop(key)
                    self.assertFalse(self.validator.is_valid(document), key)
                    place[key] = kept

    def test_refuses_numbers_out_of_range(self):
        self.refuses(lambda log: log.update(size_bytes=-1))
        self.refuses(lambda log: log.update(size_bytes=2**64))
        self.refuses(lambda log: log["events"].update(greatest_depth=65))
        self.refuses(lambda log: log["headers"].update(differing_fields=["extra"]))


if __name__ == "__main__":
    unittest.main()
