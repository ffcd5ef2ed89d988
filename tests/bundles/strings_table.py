"""Reads strings tables as strictly as the strictest reader of macOS.

    /* comment */
    "key" = "value";
"""

import re

TOKEN = re.compile(
    r"""(?P<blank>\s+|/\*.*?\*/|//[^\n]*)"""
    r"""|"(?P<text>(?:[^"\\]|\\["\\nt])*)\""""
    r"""|(?P<sign>[=;])""",
    re.DOTALL,
)
ESCAPES = {'"': '"', "\\": "\\", "n": "\n", "t": "\t"}


class Fault(Exception):
    """Raised for a table that some reader does not understand."""


def parse(data):
    """The table in these bytes. A duplicate key and other oddities that macOS accepts are faults,
    because the project writes its own tables."""
    if data.startswith(b"\xef\xbb\xbf"):
        raise Fault("begins with a byte-order mark")
    try:
        text = data.decode("utf-8")
    except UnicodeDecodeError as error:
        raise Fault("is not UTF-8") from error
    words = list(tokens(text))
    table = {}
    for start in range(0, len(words), 4):
        kinds = "".join(kind for kind, _ in words[start : start + 4])
        if kinds != "t=t;":
            raise Fault(f"has no entry at {words[start:start + 4]}")
        key, value = words[start][1], words[start + 2][1]
        if key in table:
            raise Fault(f"has {key} twice")
        table[key] = value
    return table


def tokens(text):
    position = 0
    while position < len(text):
        match = TOKEN.match(text, position)
        if not match:
            raise Fault(f"has something else at {text[position:position + 20]!r}")
        position = match.end()
        if match["text"] is not None:
            yield "t", re.sub(r"\\(.)", lambda escape: ESCAPES[escape[1]], match["text"])
        elif match["sign"]:
            yield match["sign"], match["sign"]
