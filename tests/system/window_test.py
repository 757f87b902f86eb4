"""The built program with its window, used from the keyboard and from the tray.

    window_test.py PROGRAM
"""

import os
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from program import PATIENCE, ProgramTest, accepts, run_tests, wait_until  # noqa: E402
from tray_host import TrayHost  # noqa: E402
from window import (activate, manage_windows, press, visible, wait_for_front,  # noqa: E402
                    xdotool)

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

    def start_web_from_the_keyboard(self):
        press("ctrl+2", "alt+g")
        self.check_page()

    def wait_for_icon_alone(self):
        wait_until(self.tray.shows_icon, "the icon")
        wait_until(lambda: not visible(WINDOW), "the window to hide")

    def show_window_from_tray(self):
        self.tray.choose("显示主窗口")
        activate(WINDOW)
        wait_until(lambda: not self.tray.shows_icon(), "the icon to go")

    def log_in(self, *passwords):
        """Tries one after the other in the one dialog that is there."""
        wait_for_front("管理员登录")
        for password in passwords:
            xdotool("type", "--delay", "20", password)
            press("Return")

    def test_serves_goes_to_the_tray_and_comes_back(self):
        self.start_with_window()
        self.start_web_from_the_keyboard()
        press("ctrl+h")
        self.wait_for_icon_alone()
        self.check_page()
        self.assertNotIn("启动 Web 服务", self.tray.entries())
        self.tray.choose("停止 Web 服务")
        wait_until(lambda: not accepts(self.home.ports["web"]), "the end of the Web server")
        wait_until(lambda: "启动 Web 服务" in self.tray.entries(), "the menu to follow")
        self.show_window_from_tray()
        press("ctrl+q")
        self.assertEqual(self.process.wait(PATIENCE), 0)

    def test_minimising_goes_to_the_tray(self):
        self.start_with_window()
        xdotool("windowminimize", visible(WINDOW)[-1])
        self.wait_for_icon_alone()
        self.show_window_from_tray()
        xdotool("windowminimize", visible(WINDOW)[-1])
        self.wait_for_icon_alone()
        self.tray.choose("退出")
        self.assertEqual(self.process.wait(PATIENCE), 0)

    def test_window_and_options_open_with_the_manager_password_alone(self):
        name = pathlib.Path(sys.argv[1]).stem
        self.home.write("config/Tarnwerk/settings.ini", f"[{name}\\ManagerPwd]\nPWD=sesame\n")
        self.home.write("ETUser.dzt", "Admin".ljust(20) + "sesame".ljust(30))
        process = self.home.start("START")
        self.log_in("wrong", "sesame")
        activate(WINDOW)
        self.home.wait_for_services()
        press("ctrl+h")
        self.wait_for_icon_alone()
        self.tray.choose("选项")
        self.log_in("sesame")
        wait_for_front("系统选项")
        self.stop(process)

    def test_show_starts_in_the_tray_without_a_window(self):
        process = self.home.start_services()
        self.wait_for_icon_alone()
        self.stop(process)

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
