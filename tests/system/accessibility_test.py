"""The built program's window as a screen reader and the keyboard see it: every control has a role
and a name, every button a mnemonic of its own, and Tab comes to each in the order in which they
are read.

accessibility_test.py PROGRAM...

Needs a display and a session bus, and Debian's openbox, xdotool, imagemagick, zbar-tools,
python3-gi and at-spi2-core.
"""

import contextlib
import os
import pathlib
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
os.environ.pop("NO_AT_BRIDGE", None)  # other tests do without
from program import PATIENCE, Home, wait_until  # noqa: E402
from screen_reader import ScreenReader  # noqa: E402
from window_manager import manage_windows  # noqa: E402

program = []

WINDOW = "Tarnwerk"
SERVICES = {"Web 服务": "ctrl+2", "FTP 服务": "ctrl+3", "E-Mail 服务": "ctrl+4"}
PAGES = {"概览": "ctrl+1", **SERVICES}

# What a user works with. Whatever else takes the focus has to be one of these.
WORKED_WITH = {"push button", "toggle button", "radio button", "check box", "text", "password text",
               "combo box", "list", "list box", "table", "tree", "page tab", "page tab list", "menu",
               "statusbar", "image"}


def run(*words):
    return subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          timeout=PATIENCE, text=True).stdout


def is_read_before(first, second):
    """Below, or beside it to the right; the cards of the overview stand side by side."""
    if abs(first.top - second.top) < min(first.height, second.height) / 2:
        return first.left < second.left
    return first.top < second.top or first.left + first.width <= second.left


class AccessibilityTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        manage_windows(cls)
        cls.home = Home(program, os.environ["DISPLAY"])
        cls.addClassCleanup(cls.home.close)
        cls.home.environment["GTK_THEME"] = "Adwaita:dark"
        cls.home.write_settings()
        cls.home.write("wwwroot/index.htm", "<p>home</p>")
        cls.home.write("mailroot/User/li/UserInfo.ini", "Password=x")
        cls.home.start("START")
        cls.home.wait_for_services()
        wait_until(cls.find_window, "the window")
        run("xdotool", "windowactivate", "--sync", cls.find_window()[-1])
        cls.reader = ScreenReader("Tarnwerk")
        wait_until(lambda: WINDOW in cls.reader.windows(), "the window on the accessibility bus")

    @staticmethod
    def find_window():
        return run("xdotool", "search", "--onlyvisible", "--name", f"^{WINDOW}$").split()

    def press(self, *keys):
        for key in keys:
            run("xdotool", "key", "--delay", "50", key)

    def open_page(self, page):
        self.press(PAGES[page])
        wait_until(lambda: self.is_open(page), page)

    def is_open(self, page):
        return any(each.name == page and each.role == "push button"
                   and each.description() == "当前页面"
                   for each in self.reader.controls(WINDOW))

    @contextlib.contextmanager
    def open_dialog(self, title, *keys):
        """Until Escape closes it."""
        self.press(*keys)
        wait_until(lambda: title in self.reader.windows(), title)
        try:
            yield
        finally:
            self.press("Escape")
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
        visited = []
        while True:
            focused = self.reader.focused(title)
            self.assertIsNotNone(focused, f"after {visited[-1:]} nothing has the focus")
            if visited and focused.address == visited[0].address:
                return visited
            self.assertNotIn(focused.address, [each.address for each in visited], visited)
            visited.append(focused)
            self.press("Tab")
            wait_until(lambda last=focused.address:
                       getattr(self.reader.focused(title), "address", last) != last,
                       f"the focus to leave {focused}")

    def check_tab_order(self, title):
        visited = self.walk(title)
        reachable = {each.address for each in visited}
        missed = [each for each in self.reader.controls(title)
                  if each.takes_focus and each.address not in reachable]
        self.assertEqual(missed, [])
        start = min(range(len(visited)), key=lambda i: (visited[i].left, visited[i].top))
        visited = visited[start:] + visited[:start]
        for first, second in zip(visited, visited[1:]):
            self.assertTrue(is_read_before(first, second), f"{first}, then {second}")

    def test_everything_on_a_page_has_a_role_and_a_name(self):
        for page in PAGES:
            with self.subTest(page):
                self.open_page(page)
                self.check_names(WINDOW)
        for page in SERVICES:
            with self.subTest(page, tab="live"):
                self.open_page(page)
                self.press("ctrl+Next")
                wait_until(lambda: any(each.name == "正在进行的连接"
                                       for each in self.reader.controls(WINDOW)), "the other tab")
                self.check_names(WINDOW)
                self.press("ctrl+Prior")

    def test_names_tell_the_buttons_of_a_page_apart(self):
        for page in PAGES:
            with self.subTest(page):
                self.open_page(page)
                names = [each.name for each in self.reader.controls(WINDOW)
                         if each.role == "push button"]
                self.assertEqual(len(names), len(set(names)), sorted(names))

    def test_every_button_of_a_service_has_a_mnemonic_of_its_own(self):
        for page in SERVICES:
            with self.subTest(page):
                self.open_page(page)
                controls = self.reader.controls(WINDOW)
                # The selectors and the address have none: Ctrl+1 to 4 lead to the ones.
                buttons = [each for each in controls if each.role == "push button"
                           and each.name not in PAGES and ":" not in each.name]
                self.assertGreater(len(buttons), 4)
                menus = [each for each in controls if each.role == "menu"]
                keys = [each.mnemonic() for each in buttons + menus]
                self.assertNotIn("", keys, buttons)
                self.assertEqual(len(keys), len(set(keys)), sorted(keys))

    def test_tab_comes_to_everything_in_the_order_of_reading(self):
        for page in PAGES:
            with self.subTest(page):
                self.open_page(page)
                self.check_tab_order(WINDOW)

    def test_everything_in_the_dialogs_has_a_role_and_a_name(self):
        for page, title in {"Web 服务": "Web服务器选项", "FTP 服务": "Ftp服务器选项",
                            "E-Mail 服务": "E-Mail服务器选项"}.items():
            with self.subTest(title):
                self.open_page(page)
                with self.open_dialog(title, "alt+o"):
                    self.check_names(title)
        with self.subTest("系统选项"), self.open_dialog("系统选项", "ctrl+p"):
            self.check_names("系统选项")

    def test_a_qr_code_can_be_read_from_the_screen_in_a_dark_theme(self):
        self.open_page("Web 服务")
        addresses = [each.name.split()[0] for each in self.reader.controls(WINDOW)
                     if each.role == "label" and each.name.startswith("http://")]
        if not addresses:
            self.skipTest("this machine is in no network")
        with self.open_dialog("二维码", "alt+q"):
            self.assertIn(f"二维码：{addresses[0]}",
                          [each.name for each in self.reader.controls("二维码")])
            self.check_names("二维码")
            picture = self.home.file("screen.png")
            run("import", "-window", "root", picture)
            self.assertEqual(run("zbarimg", "--quiet", "--raw", "--nodbus", picture).strip(),
                             addresses[0])


if __name__ == "__main__":
    program = sys.argv[1:]
    unittest.main(argv=sys.argv[:1], verbosity=2)
