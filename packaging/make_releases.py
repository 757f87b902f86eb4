#!/usr/bin/python3
"""Prints the change log as the release notes of AppStream data.

make_releases.py CHANGELOG.md VERSION DATE

VERSION and DATE are those of the topmost section as long as it is not released. Later ones begin with
"## 1.2.0 (2026-11-26)".
"""

import pathlib
import re
import sys
from xml.sax.saxutils import escape


def notes(section):
    """The entries of a section as one-line texts without Markdown."""
    entries = re.split(r"^- ", section, flags=re.MULTILINE)[1:]
    return [re.sub(r"[`*]", "", " ".join(entry.split())) for entry in entries]


def release(version, date, section):
    entries = "".join(f"          <li>{escape(note)}</li>\n" for note in notes(section))
    return (f'    <release version="{escape(version)}" date="{date}">\n      <description>\n'
            f"        <ul>\n{entries}        </ul>\n      </description>\n    </release>")


def main(changelog, version, date):
    _, *parts = re.split(r"^## (\S+) \((.+)\)$", changelog, flags=re.MULTILINE)
    for name, day, section in zip(parts[::3], parts[1::3], parts[2::3]):
        released = re.fullmatch(r"\d{4}-\d\d-\d\d", day)
        print(release(*(name, day) if released else (version, date), section))


main(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8"), *sys.argv[2:4])
