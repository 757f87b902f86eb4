"""The floors of the house: which folder may include what.

    floors_test.py SOURCE_DIRECTORY
"""

import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(sys.argv[1])

# A folder, and those below it that it may include besides itself.
FLOORS = {
    "platform": "",
    "text": "platform",
    "files": "platform text",
    "settings": "platform text files",
    "net": "platform text",
    "core": "platform text files settings net",
}
for service in ("web", "ftp", "mail", "ui/controls"):
    FLOORS[service] = FLOORS["core"] + " core"
for shown in ("ui/dialogs", "ui/pages"):
    FLOORS[shown] = FLOORS["web"] + " web ftp mail ui/controls"
FLOORS["ui/window"] = FLOORS["ui/pages"] + " ui/dialogs ui/pages"
FLOORS["app"] = FLOORS["web"] + " web ftp mail ui/window"

# Folders that belong to the one above.
PARTS = ("", "/bare", "/http", "/linux", "/windows")

# Headers of others: pattern, and the folders that may include them.
FOREIGN = {
    r"asio[/.]": "platform net",
    r"wx/": "ui/controls ui/dialogs ui/pages ui/window app",
    r"(windows|winsock2|ws2tcpip|unistd|fcntl|dirent|poll|spawn|dlfcn)\.h|(sys|netinet|arpa)/":
        "platform",
}
SYSTEM_CONDITION = r"(?m)^\s*#\s*(el)?if.*(_WIN32|__linux__|__WX)"


def sources():
    for floor in FLOORS:
        for path in (ROOT / floor).rglob("*"):
            if path.suffix in (".h", ".cpp"):
                yield floor, path, path.read_text()


class FloorsTest(unittest.TestCase):
    def test_folders_include_only_what_is_below_them(self):
        for floor, path, text in sources():
            for header in re.findall(r'(?m)^#include "([^"]+)/[^/"]+"', text):
                with self.subTest(file=str(path), includes=header):
                    folders = [header.removesuffix(end) for end in PARTS]
                    self.assertTrue({floor, *FLOORS[floor].split()} & set(folders))

    def test_headers_of_others_are_where_they_belong(self):
        for floor, path, text in sources():
            for header in re.findall(r"(?m)^#include <([^>]+)>", text):
                for pattern, allowed in FOREIGN.items():
                    if re.match(pattern, header):
                        with self.subTest(file=str(path), includes=header):
                            self.assertIn(floor, allowed.split())

    def test_only_the_platform_tells_systems_apart(self):
        for floor, path, text in sources():
            with self.subTest(file=str(path)):
                self.assertFalse(floor != "platform" and re.search(SYSTEM_CONDITION, text))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
