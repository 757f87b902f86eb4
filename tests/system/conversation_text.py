"""Parses conversations: those in tests/conversations, whose README.md describes their language, and
the tables in docs/protocols.md."""

import pathlib
import random
import re
import urllib.parse

from program import ENCODING

TESTS = pathlib.Path(__file__).resolve().parents[1]
CONVERSATIONS = TESTS / "conversations"
DOCS = TESTS.parent / "docs"
DOCUMENT = (DOCS / "protocols.md").read_text(encoding="utf-8")

SIGNS = {"␍␊": b"\r\n", "␣": b" ", "¬": b""}
VARYING = {"time": rb"\d{4}-\d\d-\d\d \d\d:\d\d:\d\d", "date": rb"[A-Z][a-z]{2} \d\d \d{4}",
           "number": rb"\d+", "any": rb"[^\r\n ][^\r\n]*", "anything": rb"(?s:.*)"}
TOKEN = re.compile(r"\\x([0-9A-F]{2})|\{([^{}]+)\}|␍␊|.", re.DOTALL)
CLIENT = r"(?:([a-z0-9]+): )?"
DIRECTION = re.compile(CLIENT + r"\[(.*)\]")
EXCHANGE = re.compile(CLIENT + r"(.*?)(?:(?:^| )([⇐⇒]) ?(.*?))?(?:^| |(?<=[ ␊]))→ ?(.*)")
FILES = re.compile("(?:(folder|program|no) )?([^:]*)(?:: ?(.*))?")


def rows(section):
    """(sent, answer) of every line of the first table in that section of the document."""
    text = DOCUMENT.split(f"\n## {section}\n")[1]
    for line in re.search(r"(?:^\|.*\n)+", text, re.MULTILINE)[0].splitlines()[2:]:
        sent, answer = (cell.strip() for cell in re.fullmatch(r"\|(.*)\|(.*)\|", line).groups())
        if not answer.startswith("`"):
            answer = "nothing" if answer == "*nothing*" else f"{{{answer}}}"
        yield sent.strip("`"), answer.strip("`") or "␍␊¬"


def scenes(path):
    """The statements for every scene, and for each scene its title and its own statements."""
    text = path.read_text(encoding="utf-8").replace("\n    ", "␍␊")
    return [[line for line in part.split("\n") if line and not line.startswith("#")]
            for part in text.split("\n== ")]


def alternatives(text):
    """What " | " divides, or a text for each number of a {1..9}."""
    if not (numbers := re.search(r"\{(\d+)\.\.(\d+)\}", text)):
        return text.split(" | ")
    return [text.replace(numbers[0], str(n)) for n in range(int(numbers[1]), int(numbers[2]) + 1)]


def as_line(text):
    return text if text.endswith("¬") else f"{text}␍␊"


def parts(text, definitions):
    """Bytes, and the names of what varies."""
    for byte, name, sign in ((*token.groups(), token[0]) for token in TOKEN.finditer(text)):
        if byte:
            yield bytes.fromhex(byte)
        elif name in VARYING:
            yield name
        elif name in definitions:
            yield from parts(definitions[name], definitions)
        elif name and name.startswith("page "):
            yield (CONVERSATIONS / name[5:]).read_bytes().decode().encode(ENCODING)
        elif name and name.startswith("size of "):
            yield str(len(name[8:].encode(ENCODING))).encode()
        elif name and name.startswith("url of "):
            yield urllib.parse.quote(name[7:].encode(ENCODING)).encode()
        elif name:
            piece, times = name.split("*")
            yield (random.Random(1).randbytes(int(times)) if piece == "random" else
                   b"".join(parts(piece, definitions)) * int(times))
        else:
            yield SIGNS[sign] if sign in SIGNS else sign.encode(ENCODING)


class Awaited:
    """Expected bytes, some of which may vary."""

    def __init__(self, text, definitions):
        self.text = text
        pieces = list(parts(text, definitions))
        varying = next((i for i, piece in enumerate(pieces) if piece in VARYING), len(pieces))
        self.head = b"".join(pieces[:varying])  # megabytes, which would make too slow a pattern
        self.tail = re.compile(b"".join(VARYING.get(each) or re.escape(each)
                                        for each in pieces[varying:]))

    def size_in(self, received):
        """How many bytes at the beginning are these; None until all of them have come."""
        match = received.startswith(self.head) and self.tail.match(received, len(self.head))
        return match.end() if match else None

    def is_all(self, content):
        return self.size_in(content) == len(content)

    def check_all(self, content):
        if not self.is_all(content):
            came = content[:2000].decode(errors="backslashreplace").replace("\r\n", "␍␊")
            raise AssertionError(f"\n  awaited {self.text[:2000]}\n  came    {came}")
