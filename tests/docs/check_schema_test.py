"""docs/check.schema.json takes what check writes and refuses what it never writes."""

import copy
import json
import os
import unittest

from jsonschema import Draft202012Validator

from support.frame_chunks import write_log
from support.programs import run, temp_folder

SOURCE = os.environ["VYN_SOURCE_DIR"]
BUILD = os.environ["VYN_BUILD_DIR"]

SCENARIOS = [[], ["--async", "--components"], ["--components", "--graphs", "3"],
             ["--async", "--graphs", "2", "--object-payloads", "3", "--binary-sections", "2"],
             ["--size", "2MB", "--nodes", "3", "--seed", "7"]]

DOUBTFUL = {"messages": [{"header": {}, "appMetrics": {}, "profilingEvents":
                          [{"identifier": "b\u00e4r \u001b", "type": 401}] * 25}]}


def check(folder, *logs, status):
    """The text that check prints."""
    return run(f"{BUILD}/bin/vyn-profile-viewer", "check", "--format", "json", *logs,
               folder=folder, status=status, text=True).stdout


class CheckSchemaTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with open(f"{SOURCE}/docs/check.schema.json", encoding="utf-8") as file:
            cls.schema = json.load(file)
        cls.validator = Draft202012Validator(cls.schema)
        with temp_folder() as folder:
            made = folder / "made.log"
            run(f"{BUILD}/bin/vyn-make-log", "-o", made)
            (folder / "cut.log").write_bytes(made.read_bytes()[:1000])
            (folder / "gone\udcff.log").write_bytes(made.read_bytes())
            text = folder / "doubtful.json"
            text.write_text(json.dumps(DOUBTFUL), encoding="utf-8")
            write_log(folder / "doubtful.log", os.environ["VYN_FLATC"],
                      f"{SOURCE}/schema/profile_log.fbs", [text])
            cls.text = check(folder, "made.log", "cut.log", "doubtful.log", "gone\udcff.log",
                             status=3)
            cls.none = json.loads(check(folder, "none.log", status=1))
        cls.document = json.loads(cls.text)

    def refuses(self, change):
        broken = copy.deepcopy(self.document)
        change(broken)
        self.assertFalse(self.validator.is_valid(broken))

    def test_schema_is_a_schema(self):
        Draft202012Validator.check_schema(self.schema)

    def test_takes_the_output(self):
        self.validator.validate(self.document)
        self.assertEqual([log["log"] for log in self.document["logs"]],
                         ["made.log", "cut.log", "doubtful.log", "gone\ufffd.log"])
        self.assertTrue(self.text.startswith('{\n  "schema_version": 1,\n  "logs": [\n    {\n'))
        self.assertTrue(self.text.endswith("]\n}\n"))

    def test_takes_the_output_without_any_log(self):
        self.assertEqual(self.none, {"schema_version": 1, "logs": []})
        self.validator.validate(self.none)

    def test_figures_are_those_of_the_logs(self):
        made, cut, doubtful, _ = self.document["logs"]
        self.assertEqual((made["errors"], made["warnings"], made["findings"], made["codes"]),
                         (0, 0, [], []))
        self.assertEqual(made["chunks"], 2)
        self.assertEqual((cut["errors"], cut["sound_bytes"]), (1, 0))
        self.assertEqual(doubtful["warnings"], 26)
        self.assertEqual(doubtful["codes"],
                         [{"code": "VYN201", "severity": "warning", "count": 1, "shown": 1},
                          {"code": "VYN212", "severity": "warning", "count": 25, "shown": 20}])

    def test_findings_have_their_place(self):
        _, cut, doubtful, _ = self.document["logs"]
        (finding,) = cut["findings"]
        self.assertEqual((finding["code"], finding["severity"], finding["chunk_number"],
                          finding["offset_bytes"]), ("VYN103", "error", 1, 0))
        self.assertNotIn("message_number", finding)
        self.assertEqual(finding["meaning"], "the log ends inside a chunk")
        self.assertEqual(finding["expected"], "the whole chunk, or no length of one")
        unknown = doubtful["findings"][0]
        self.assertEqual((unknown["code"], unknown["message_number"]), ("VYN212", 1))
        self.assertIn("b\u00e4r \u001b", unknown["found"])
        no_header = doubtful["findings"][-1]
        self.assertEqual(no_header["code"], "VYN201")
        self.assertFalse({"chunk_number", "offset_bytes", "message_number"} & set(no_header))

    def test_refuses_other_forms(self):
        def log(document):
            return document["logs"][1]
        def finding(document):
            return log(document)["findings"][0]
        self.refuses(lambda document: document.update(schema_version=2))
        self.refuses(lambda document: document.update(extra=1))
        self.refuses(lambda document: log(document).update(extra=1))
        self.refuses(lambda document: log(document).pop("codes"))
        self.refuses(lambda document: log(document).update(errors=-1))
        self.refuses(lambda document: finding(document).update(code="VYN301"))
        self.refuses(lambda document: finding(document).update(severity="note"))
        self.refuses(lambda document: finding(document).update(chunk=0))
        self.refuses(lambda document: finding(document).pop("offset_bytes"))
        self.refuses(lambda document: finding(document).pop("remedy"))
        self.refuses(lambda document: log(document)["codes"][0].update(shown=21))

    def test_made_logs_are_sound(self):
        for options in SCENARIOS:
            with self.subTest(options=options), temp_folder() as folder:
                run(f"{BUILD}/bin/vyn-make-log", "-o", "made.log", *options, folder=folder)
                shown = run(f"{BUILD}/bin/vyn-profile-viewer", "check", "--strict", "made.log",
                            folder=folder, text=True).stdout
                self.assertRegex(shown, r"^made\.log: sound: [\d,]+ chunks?, [\d,]+ messages\n$")


if __name__ == "__main__":
    unittest.main()
