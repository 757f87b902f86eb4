"""The built program's window as a screen reader and the keyboard see it: every control has a role
and a name, every button a mnemonic of its own, and Tab comes to each in the order in which they
are read.

    accessibility_test.py PROGRAM

Needs a session bus, and Debian's imagemagick and zbar-tools.
"""

import contextlib
import os
import pathlib
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
os.environ.pop("NO_AT_BRIDGE", None)  # other tests do without
from program import PAGE, PATIENCE, Home, run_tests, wait_until  # noqa: E402
from screen_reader import ScreenReader  # noqa: E402
from window import activate, manage_windows, press  # noqa: E402

WINDOW = "Tarnwerk"
PAGES = {"概览": "ctrl+1", "Web 服务": "ctrl+2", "FTP 服务": "ctrl+3", "E-Mail 服务": "ctrl+4",
         "出了什么问题": "ctrl+5"}
SERVICES = {"Web 服务": "Web服务器选项", "FTP 服务": "Ftp服务器选项",
            "E-Mail 服务": "E-Mail服务器选项"}

# What a user works with. Whatever else takes the focus has to be one of these.
WORKED_WITH = {"push button", "toggle button", "radio button", "check box", "text", "password text",
               "combo box", "list", "list box", "table", "tree", "page tab", "page tab list", "menu",
               "statusbar", "image", "table column header"}


def is_read_before(first, second):
    """Below, or beside it to the right; the cards of the overview stand side by side."""
    if abs(first.top - second.top) < min(first.height, second.height) / 2:
        return first.left < second.left
    return first.top < second.top or first.left + first.width <= second.left


class AccessibilityTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        manage_windows(cls)
        cls.home = Home(sys.argv[1:2], os.environ["DISPLAY"])
        cls.addClassCleanup(cls.home.close)
        cls.home.environment["GTK_THEME"] = "Adwaita:dark"
        cls.home.write_settings()
        cls.home.write("wwwroot/index.htm", PAGE)
        cls.home.write("mailroot/User/li/UserInfo.ini", "Password=x")
        cls.home.start("START")
        cls.home.wait_for_services()
        activate(WINDOW)
        cls.reader = ScreenReader("Tarnwerk")
        wait_until(lambda: WINDOW in cls.reader.windows(), "the window on the accessibility bus")

    def open_pages(self, pages):
        """Each in turn, with a subtest of its own."""
        for page in pages:
            with self.subTest(page):
                press(PAGES[page])
                wait_until(lambda page=page: any(
                    each.name == page and each.property("Description") == "当前页面"
                    for each in self.reader.controls(WINDOW)), page)
                yield page

    @contextlib.contextmanager
    def open_dialog(self, title, keys):
        """Until Escape closes it."""
        press(keys)
        wait_until(lambda: title in self.reader.windows(), title)
        yield
        press("Escape")
        wait_until(lambda: title not in self.reader.windows(), f"the end of {title}")

    def check_names(self, title):
        seen = self.reader.controls(title)
        self.assertGreater(sum(each.takes_focus for each in seen), 1)
        for control in seen:
            if control.takes_focus:
                self.assertIn(control.role, WORKED_WITH, control)
            if control.role in WORKED_WITH:
                self.assertTrue(control.name.strip(), control)

    def walk(self, title):
        """What Tab comes to, beginning with what has the focus, until it comes to that again."""
        visited = {}
        while (focused := self.reader.focused(title)).address not in visited:
            visited[focused.address] = focused
            press("Tab")
            wait_until(lambda last=focused: (self.reader.focused(title) or last).address !=
                       last.address, f"the focus to leave {focused}")
        self.assertEqual(focused.address, next(iter(visited)))
        return visited

    def test_pages_have_roles_names_and_mnemonics(self):
        for page in self.open_pages(PAGES):
            self.check_names(WINDOW)
            controls = self.reader.controls(WINDOW)
            buttons = [each for each in controls if each.role == "push button"]
            names = [each.name for each in buttons]
            self.assertEqual(len(names), len(set(names)), sorted(names))
            if page in SERVICES:
                # The selectors and the address have none: Ctrl+1 to 5 lead to the ones.
                keys = [each.mnemonic() for each in controls if each.role == "menu" or
                        each in buttons and each.name not in PAGES and ":" not in each.name]
                self.assertGreater(len(keys), 4)
                self.assertNotIn("", keys, names)
                self.assertEqual(len(keys), len(set(keys)), sorted(keys))
                press("ctrl+Next")
                wait_until(lambda: any(each.name == "正在进行的连接"
                                       for each in self.reader.controls(WINDOW)), "the other tab")
                self.check_names(WINDOW)
                press("ctrl+Prior")

    def test_tab_comes_to_everything_in_the_order_of_reading(self):
        for _ in self.open_pages(PAGES):
            reachable = self.walk(WINDOW)
            self.assertEqual([each for each in self.reader.controls(WINDOW)
                              if each.takes_focus and each.address not in reachable], [])
            visited = list(reachable.values())
            start = min(range(len(visited)), key=lambda i: (visited[i].left, visited[i].top))
            visited = visited[start:] + visited[:start]
            for first, second in zip(visited, visited[1:]):
                self.assertTrue(is_read_before(first, second), f"{first}, then {second}")

    def test_everything_in_the_dialogs_has_a_role_and_a_name(self):
        for page in self.open_pages(SERVICES):
            with self.open_dialog(SERVICES[page], "alt+o"):
                self.check_names(SERVICES[page])
        with self.open_dialog("系统选项", "ctrl+p"):
            self.check_names("系统选项")
        press("alt+t")
        with self.open_dialog("安全", "s"):
            self.check_names("安全")

    def test_a_qr_code_can_be_read_from_the_screen_in_a_dark_theme(self):
        for _ in self.open_pages(["Web 服务"]):
            address = next((each.name.split()[0] for each in self.reader.controls(WINDOW)
                            if each.role == "label" and each.name.startswith("http://")), None)
            if not address:
                self.skipTest("this machine is in no network")
            with self.open_dialog("二维码", "alt+q"):
                self.assertIn(f"二维码：{address}",
                              [each.name for each in self.reader.controls("二维码")])
                picture = self.home.file("screen.png")
                subprocess.run(["import", "-window", "root", picture], timeout=PATIENCE, check=True)
                self.assertEqual(subprocess.run(
                    ["zbarimg", "--quiet", "--raw", "--nodbus", picture], stdout=subprocess.PIPE,
                    timeout=PATIENCE, text=True).stdout.strip(), address)


if __name__ == "__main__":
    run_tests()
