#!/usr/bin/python3
"""Each kind of difference between a document and a record is found and named."""

import json
import unittest

from check_record import Difference, check

METADATA = {"timeScale": 1.0, "epochTime": 5, "vynNetRunVersion": "2"}
MESSAGES = [
    {"header": {"timestamp": 7, "sequenceNumber": 0}, "method": ""},
    {
        "header": {"timestamp": 9, "sequenceNumber": 1},
        "method": "BACKEND_EXECUTE",
        "profilingEvents": [
            {"identifier": "}", "unit": "NONE", "type": "NODE", "value": 1},
            {"identifier": "b", "unit": "", "type": "NODE", "value": 2.5, "sub-events": []},
        ],
    },
]


def lines(text):
    return iter(text.splitlines(keepends=True))


def document(messages, metadata=None):
    metadata = METADATA if metadata is None else metadata
    whole = {"inputLogFileLocation": "a", **metadata, "vynProfileViewerVersion": "v1"}
    return json.dumps({"metadata": whole, "messages": messages}, indent=4) + "\n"


def record(messages):
    return "".join(json.dumps(part) + "\n" for part in [METADATA] + messages)


def changed(edit):
    copy = json.loads(json.dumps(MESSAGES))
    edit(copy)
    return copy


class CheckRecordTest(unittest.TestCase):
    def assert_difference(self, document_text, pattern):
        with self.assertRaisesRegex(Difference, pattern):
            check(lines(document_text), lines(record(MESSAGES)))

    def assert_difference_after(self, edit, pattern):
        self.assert_difference(document(changed(edit)), pattern)

    def test_equal_files_pass(self):
        self.assertEqual(check(lines(document(MESSAGES)), lines(record(MESSAGES))), 2)

    def test_number(self):
        def edit(messages):
            messages[1]["profilingEvents"][0]["value"] = 3

        self.assert_difference_after(
            edit, r"messages\[1\]\.profilingEvents\[0\]\.value is 3, not 1"
        )

    def test_integer_written_as_floating_number(self):
        def edit(messages):
            messages[1]["profilingEvents"][0]["value"] = 1.0

        self.assert_difference_after(edit, "value is 1.0, not 1")

    def test_integer_written_as_boolean(self):
        def edit(messages):
            messages[1]["header"]["sequenceNumber"] = True

        self.assert_difference_after(edit, "sequenceNumber is True")

    def test_last_digit_of_floating_number(self):
        def edit(messages):
            messages[1]["profilingEvents"][1]["value"] = 2.5000000000000004

        self.assert_difference_after(edit, "2.5000000000000004")

    def test_text(self):
        def edit(messages):
            messages[0]["method"] = "NONE"

        self.assert_difference_after(edit, r"messages\[0\]\.method is 'NONE', not ''")

    def test_order_of_members(self):
        def edit(messages):
            messages[0] = dict(reversed(messages[0].items()))

        self.assert_difference_after(edit, "has the members")

    def test_missing_member(self):
        def edit(messages):
            del messages[1]["profilingEvents"][1]["sub-events"]

        self.assert_difference_after(edit, "has the members")

    def test_missing_event(self):
        def edit(messages):
            messages[1]["profilingEvents"].pop()

        self.assert_difference_after(edit, "has 1 elements, not 2")

    def test_missing_message(self):
        self.assert_difference_after(lambda messages: messages.pop(), "document has only 1 mess")

    def test_additional_message(self):
        self.assert_difference_after(lambda messages: messages.append({"a": 1}), "record has only")

    def test_metadata(self):
        self.assert_difference(
            document(MESSAGES, {**METADATA, "epochTime": 6}), "metadata.epochTime is 6, not 5"
        )

    def test_cut_document(self):
        self.assert_difference(document(MESSAGES)[:-20], "ends early")

    def test_document_without_closing_line(self):
        self.assert_difference(document(MESSAGES)[:-2], "expected the line '}'")

    def test_text_after_the_end(self):
        self.assert_difference(document(MESSAGES) + "\n", "goes on")


if __name__ == "__main__":
    unittest.main()
