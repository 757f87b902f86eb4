"""The built program with its window, used from the keyboard and from the tray.

    window_test.py PROGRAM
"""

import os
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from program import PATIENCE, ProgramTest, accepts, run_tests, wait_until  # noqa: E402
from tray_host import TrayHost  # noqa: E402
from window import activate, is_minimised, manage_windows, press, visible, visible_of, xdotool  # noqa: E402

WINDOW = "Tarnwerk"


class WindowTest(ProgramTest):
    @classmethod
    def setUpClass(cls):
        manage_windows(cls)

    def setUp(self):
        self.tray = TrayHost()
        self.addCleanup(self.tray.close)
        super().setUp()
        self.home.environment["DISPLAY"] = os.environ["DISPLAY"]

    def start_with_window(self):
        self.process = self.home.start()
        activate(WINDOW)

    def wait_for_icon_alone(self):
        wait_until(self.tray.shows_icon, "the icon")
        wait_until(lambda: not visible(WINDOW), "the window to hide")

    def show_window_from_tray(self):
        self.tray.choose("显示主窗口")
        activate(WINDOW)
        wait_until(lambda: not self.tray.shows_icon(), "the icon to go")

    def test_serves_goes_to_the_tray_and_comes_back(self):
        self.start_with_window()
        press("ctrl+2", "alt+g")
        self.check_page()
        xdotool("windowminimize", visible(WINDOW)[-1])
        self.wait_for_icon_alone()
        self.check_page()
        self.assertNotIn("启动 Web 服务", self.tray.entries())
        self.tray.choose("停止 Web 服务")
        wait_until(lambda: not accepts(self.home.ports["web"]), "the end of the Web server")
        wait_until(lambda: "启动 Web 服务" in self.tray.entries(), "the menu to follow")
        self.show_window_from_tray()
        press("ctrl+h")
        self.wait_for_icon_alone()
        self.tray.choose("退出")
        self.assertEqual(self.process.wait(PATIENCE), 0)

    def test_show_starts_in_the_tray_without_a_window(self):
        process = self.home.start_services()
        self.wait_for_icon_alone()
        self.show_window_from_tray()
        press("ctrl+q")
        self.assertEqual(process.wait(PATIENCE), 0)

    def test_its_icon_works_while_a_dialog_is_open_and_brings_it_back(self):
        process = self.home.start_services()
        self.wait_for_icon_alone()

        def wait_for_windows(count):
            wait_until(lambda: len(visible_of(process)) == count, f"{count} windows")

        self.tray.choose("关于 Tarnwerk")
        wait_for_windows(1)
        self.tray.choose("停止 Web 服务")
        wait_until(lambda: not accepts(self.home.ports["web"]), "the end of the Web server")
        self.tray.choose("显示主窗口")
        wait_for_windows(2)
        xdotool("windowminimize", visible(WINDOW)[-1])
        self.wait_for_icon_alone()
        self.tray.choose("显示主窗口")
        wait_for_windows(2)

    def test_a_tray_that_ends_leaves_the_window_in_the_task_bar(self):
        self.home.start_services()
        self.wait_for_icon_alone()
        self.tray.end()
        wait_until(lambda: is_minimised(WINDOW), "the minimised window")

    def test_stop_ends_it_whatever_is_open(self):
        for name, keys in {"a dialog": ["ctrl+2", "alt+o"], "a message box": ["ctrl+4", "alt+l"],
                           "a menu": ["alt+s"]}.items():
            with self.subTest(name):
                self.start_with_window()
                window = xdotool("getactivewindow")
                press(*keys)
                wait_until(lambda name=name, window=window: name == "a menu" or
                           xdotool("getactivewindow") not in ([], window), name)
                self.stop(self.process)


if __name__ == "__main__":
    run_tests()
