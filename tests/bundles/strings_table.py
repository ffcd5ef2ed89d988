"""Reads strings tables as strictly as macOS does at its strictest.

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
    """The table is not one that every reader understands."""


def parse(data):
    """The table in these bytes. What macOS would take with a shrug, a key given twice among it, is
    a fault here, because it is one of ours."""
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
