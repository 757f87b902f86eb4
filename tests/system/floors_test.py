"""The floors of the house: which folder may include what.

    floors_test.py <source directory>
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
    "web": "platform text files settings net core",
    "ftp": "platform text files settings net core",
    "mail": "platform text files settings net core",
    "ui/controls": "platform text files settings net core",
    "ui/dialogs": "platform text files settings net core web ftp mail ui/controls",
    "ui/pages": "platform text files settings net core web ftp mail ui/controls",
    "ui/window":
        "platform text files settings net core web ftp mail ui/controls ui/dialogs ui/pages",
    "app": "platform text files settings net core web ftp mail ui/window",
}
# Headers of others: pattern, and the folders that may include them.
FOREIGN = {
    r"asio[/.]": "platform net",
    r"wx/": "ui/controls ui/dialogs ui/pages ui/window app",
    r"(windows|winsock2|ws2tcpip|unistd|fcntl|dirent|poll|spawn|dlfcn)\.h|(sys|netinet|arpa)/":
        "platform",
}
SYSTEM_CONDITION = r"^\s*#\s*(el)?if.*(_WIN32|__linux__|__WX)"


def folder_of(path):
    return next((floor for floor in sorted(FLOORS, reverse=True) if path.startswith(floor + "/")),
                None)


def sources():
    for floor in FLOORS:
        for path in (ROOT / floor).rglob("*"):
            if path.suffix in (".h", ".cpp"):
                yield floor, path


class FloorsTest(unittest.TestCase):
    def test_folders_include_only_what_is_below_them(self):
        for floor, path in sources():
            for header in re.findall(r'^#include "([^"]+)"', path.read_text(), re.MULTILINE):
                with self.subTest(file=str(path), includes=header):
                    target = folder_of(header)
                    self.assertIsNotNone(target)
                    self.assertIn(target, [floor, *FLOORS[floor].split()])

    def test_headers_of_others_are_where_they_belong(self):
        for floor, path in sources():
            for header in re.findall(r"^#include <([^>]+)>", path.read_text(), re.MULTILINE):
                for pattern, allowed in FOREIGN.items():
                    if re.match(pattern, header):
                        with self.subTest(file=str(path), includes=header):
                            self.assertIn(floor, allowed.split())

    def test_only_the_platform_tells_systems_apart(self):
        for floor, path in sources():
            if floor != "platform":
                with self.subTest(file=str(path)):
                    self.assertIsNone(re.search(SYSTEM_CONDITION, path.read_text(), re.MULTILINE))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
