"""Checks a JSON document against the log maker's record of what it wrote.

Compares every member, number and text, order included, and stops at the first difference.
Both files are read a message at a time, so that a document of any size can be checked.
"""

import itertools
import json

# Members that the reader adds to what the log says.
READER_METADATA = ("inputLogFileLocation", "vynProfileViewerVersion")


class Difference(Exception):
    pass


def parse(text):
    """Objects become tuples of pairs, so that order and repeated members count."""
    try:
        return json.loads(text, object_pairs_hook=tuple)
    except ValueError as error:
        raise Difference(f"not JSON ({error}): {text[:200]}") from error


def differs(found, expected):
    """Unlike ==, tells 1, 1.0 and true apart."""
    return repr(found) != repr(expected)


def expect_line(lines, expected):
    line = next(lines, "")
    if line != expected + "\n":
        raise Difference(f"expected the line {expected!r}, found {line!r}")


def block(lines, last_lines):
    """The text from here to the first line that is one of last_lines."""
    taken = []
    for line in lines:
        taken.append(line)
        if line in last_lines:
            return "".join(taken)
    raise Difference("the document ends early")


def read_metadata(lines):
    expect_line(lines, "{")
    text = block(lines, ("    },\n",)).rstrip().rstrip(",")
    root = parse("{" + text + "}")
    if len(root) != 1 or root[0][0] != "metadata":
        raise Difference("the document does not begin with its metadata")
    return root[0][1]


def read_messages(lines):
    """Messages are indented by eight blanks; nothing inside one stands as far left."""
    expect_line(lines, '    "messages": [')
    more = True
    while more:
        text = block(lines, ("        }\n", "        },\n")).rstrip()
        more = text.endswith(",")
        yield parse(text.rstrip(","))
    expect_line(lines, "    ]")
    expect_line(lines, "}")
    if next(lines, "") != "":
        raise Difference("the document goes on after its end")


def is_object(value):
    return isinstance(value, tuple) and all(isinstance(pair, tuple) for pair in value)


def first_difference(path, found, expected):
    """Where two unequal values differ, and how."""
    if is_object(found) and is_object(expected):
        found_keys = [key for key, _ in found]
        expected_keys = [key for key, _ in expected]
        if found_keys != expected_keys:
            return f"{path} has the members {found_keys}, not {expected_keys}"
        children = [(f"{path}.{key}", a, b) for (key, a), (_, b) in zip(found, expected)]
    elif isinstance(found, list) and isinstance(expected, list):
        if len(found) != len(expected):
            return f"{path} has {len(found)} elements, not {len(expected)}"
        children = [(f"{path}[{i}]", a, b) for i, (a, b) in enumerate(zip(found, expected))]
    else:
        return f"{path} is {found!r}, not {expected!r}"
    return next(first_difference(*child) for child in children if differs(child[1], child[2]))


def compare(path, found, expected):
    if differs(found, expected):
        raise Difference(first_difference(path, found, expected))


def check(document, record):
    """Returns the number of messages checked."""
    metadata = read_metadata(document)
    for name in READER_METADATA:
        if not dict(metadata).get(name):
            raise Difference(f"metadata has no {name}")
    written = tuple(pair for pair in metadata if pair[0] not in READER_METADATA)
    compare("metadata", written, parse(next(record, "")))

    count = 0
    missing = object()
    for found, line in itertools.zip_longest(read_messages(document), record, fillvalue=missing):
        if found is missing or line is missing:
            side = "document" if found is missing else "record"
            raise Difference(f"the {side} has only {count} messages")
        compare(f"messages[{count}]", found, parse(line))
        count += 1
    return count
