"""Holds the includes of the sources against the table of rooms in docs/architecture.md."""

import os
import pathlib
import re
import unittest

ROOT = pathlib.Path(os.environ["VYN_SOURCE_DIR"]).resolve()
GENERATED = {"profile_log_generated.h": "schema",
             "base/version/profile_viewer_version.h": "src/base"}
PLACES = [ROOT, ROOT / "src", ROOT / "include"]  # where includes are looked up


def read_table():
    """What each room may include, in the order of the table."""
    page = (ROOT / "docs/architecture.md").read_text()
    table = page.split("\n## Rooms\n")[1].split("\n## ")[0]
    rows = re.findall(r"^\| `([^`]+)` \|.*\|([^|]*)\|$", table, re.MULTILINE)
    return {room: re.findall(r"`([^`]+)`", allowed) for room, allowed in rows}


def room_of(path, rooms):
    name = str(path.resolve().relative_to(ROOT))
    return max((room for room in rooms if name.startswith(room + "/")), key=len, default=None)


def included_room(source, header, rooms):
    """None for headers that are not the project's."""
    if header in GENERATED:
        return GENERATED[header]
    found = [place / header for place in [source.parent, *PLACES] if (place / header).is_file()]
    return room_of(found[0], rooms) if found else None


def read_includes(rooms):
    """(source, its room, header, the header's room) of every include of the project's own."""
    tops = {room.split("/")[0] for room in rooms}
    sources = [path for top in sorted(tops) for path in sorted((ROOT / top).rglob("*"))
               if path.suffix in (".h", ".cpp")]
    includes = []
    for source in sources:
        for header in re.findall(r'^#include ["<](.+)[">]', source.read_text(), re.MULTILINE):
            includes.append((source.relative_to(ROOT), room_of(source, rooms), header,
                             included_room(source, header, rooms)))
    return includes


class Rooms(unittest.TestCase):
    def setUp(self):
        self.rooms = read_table()
        self.includes = read_includes(self.rooms)

    def test_each_uses_only_rooms_above_it(self):
        names = list(self.rooms)
        self.assertGreater(len(names), 8)
        for position, name in enumerate(names):
            self.assertLessEqual(set(self.rooms[name]), set(names[:position]), name)

    def test_every_source_stands_in_one(self):
        self.assertEqual([str(source) for source, room, _, _ in self.includes if room is None], [])

    def test_nothing_is_included_against_the_table(self):
        self.assertEqual([f"{source} includes {header} of {other}"
                          for source, room, header, other in self.includes
                          if other not in (None, room, *self.rooms.get(room, []))], [])

    def test_the_readers_bring_in_the_standard_streams_in_one_file(self):
        readers = ("src/base", "src/log", "src/input", "src/json", "src/report", "src/core")
        self.assertEqual([str(source) for source, room, header, _ in self.includes
                          if header == "iostream" and room in readers],
                         ["src/core/process_state.cpp"])

    def test_the_table_allows_nothing_that_is_not_used(self):
        used = {(room, other) for _, room, _, other in self.includes}
        self.assertEqual([(room, other) for room, others in self.rooms.items() for other in others
                          if (room, other) not in used], [])


if __name__ == "__main__":
    unittest.main()
