"""Code blocks of a Markdown document.

As a program: marked_blocks.py DOCUMENT LANGUAGE FILE writes the only block of a language to a file.
"""

import re
import sys


def blocks(document, language):
    """The texts of all blocks that are fenced as `language` ("" for plain ones)."""
    with open(document, encoding="utf-8") as file:
        return [text for name, text in
                re.findall(r"^```(\w*)\n(.*?)^```$", file.read(), re.DOTALL | re.MULTILINE)
                if name == language]


if __name__ == "__main__":
    source, wanted, target = sys.argv[1:]
    (code,) = blocks(source, wanted)
    with open(target, "w", encoding="utf-8") as out:
        out.write(code)
