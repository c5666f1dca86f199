"""The annotated chunk in docs/log-format.md is what flatc makes of the text beside it."""

import os
import re
import unittest

from marked_blocks import blocks
from support.frame_chunks import write_log
from support.programs import temp_folder

SOURCE = os.environ["VYN_SOURCE_DIR"]
DOCUMENT = f"{SOURCE}/docs/log-format.md"
DUMP_LINE = re.compile(r"^(?:\+0x([0-9A-F]{2})|     )  ((?:[0-9A-F]{2} )+) ", re.MULTILINE)


def chunk_from_flatc(text):
    with temp_folder() as folder:
        chunk = folder / "chunk.json"
        chunk.write_text(text, encoding="utf-8")
        return write_log(folder / "run.log", os.environ["VYN_FLATC"],
                         f"{SOURCE}/schema/profile_log.fbs", [chunk]).read_bytes()


class LogFormatTest(unittest.TestCase):
    def setUp(self):
        (self.dump,) = [text for text in blocks(DOCUMENT, "") if "+0x00" in text]

    def test_dump_is_the_chunk_that_flatc_makes(self):
        (text,) = blocks(DOCUMENT, "json")
        shown = bytes.fromhex("".join(match[2] for match in DUMP_LINE.finditer(self.dump)))
        self.assertEqual(shown, chunk_from_flatc(text))

    def test_offsets_count_the_bytes_before_them(self):
        position = -4  # the length stands before the buffer
        for match in DUMP_LINE.finditer(self.dump):
            if match[1] is not None:
                self.assertEqual(int(match[1], 16), position, match[0])
            position += len(bytes.fromhex(match[2]))


if __name__ == "__main__":
    unittest.main()
