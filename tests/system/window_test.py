"""The built program with its window, used from the keyboard and from the tray.

window_test.py PROGRAM...

Needs a display, and Debian's openbox, xdotool and python3-gi.
"""

import os
import pathlib
import subprocess
import sys
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from program import PATIENCE, Home, accepts, fetch, wait_until  # noqa: E402
from tray_host import TrayHost  # noqa: E402
from window_manager import manage_windows  # noqa: E402

program = []


def xdotool(*words):
    return subprocess.run(["xdotool", *words], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          timeout=PATIENCE, text=True).stdout.split()


def visible(title):
    """The windows of that title that can be seen."""
    return xdotool("search", "--onlyvisible", "--name", f"^{title}$")


class WindowTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        manage_windows(cls)

    def setUp(self):
        self.tray = TrayHost()
        self.addCleanup(self.tray.close)
        self.window = None
        self.home = Home(program, os.environ["DISPLAY"])
        self.addCleanup(self.home.close)
        self.home.write_settings()
        self.home.write("wwwroot/index.htm", "<p>home</p>")

    def start(self, *words):
        self.process = self.home.start(*words)

    def start_with_window(self):
        self.start()
        wait_until(lambda: visible("Tarnwerk"), "the window")
        self.window = visible("Tarnwerk")[-1]
        xdotool("windowactivate", "--sync", self.window)

    def wait_for_another_window(self):
        wait_until(lambda: xdotool("getactivewindow") not in ([], [self.window]), "a dialog")

    def press(self, *keys):
        for key in keys:
            xdotool("key", "--delay", "50", key)

    def serves_the_page(self):
        port = self.home.ports["web"]
        wait_until(lambda: accepts(port), "the Web server")
        self.assertEqual(fetch(port, b"GET / HTTP/1.0\r\n\r\n"), b"<p>home</p>")

    def start_web_from_the_keyboard(self):
        self.press("ctrl+2", "alt+g")
        self.serves_the_page()

    def stop_from_outside(self):
        self.assertEqual(self.home.run("STOP"), (0, "", ""))
        self.assertEqual(self.process.wait(PATIENCE), 0)

    def test_serves_goes_to_the_tray_and_comes_back(self):
        self.start_with_window()
        self.start_web_from_the_keyboard()
        self.press("ctrl+h")
        wait_until(self.tray.shows_icon, "the icon")
        wait_until(lambda: not visible("Tarnwerk"), "the window to hide")
        self.serves_the_page()
        self.assertIn("停止 Web 服务", self.tray.labels())
        self.assertNotIn("启动 Web 服务", self.tray.labels())
        self.tray.choose("停止 Web 服务")
        wait_until(lambda: not accepts(self.home.ports["web"]), "the end of the Web server")
        wait_until(lambda: "启动 Web 服务" in self.tray.labels(), "the menu to follow")
        self.tray.choose("显示主窗口")
        wait_until(lambda: visible("Tarnwerk"), "the window")
        wait_until(lambda: not self.tray.shows_icon(), "the icon to go")
        xdotool("windowactivate", "--sync", visible("Tarnwerk")[-1])
        self.press("ctrl+q")
        self.assertEqual(self.process.wait(PATIENCE), 0)

    def test_minimising_goes_to_the_tray(self):
        self.start_with_window()
        xdotool("windowminimize", visible("Tarnwerk")[-1])
        wait_until(self.tray.shows_icon, "the icon")
        self.tray.choose("显示主窗口")
        wait_until(lambda: visible("Tarnwerk"), "the window")
        self.assertFalse(self.tray.shows_icon())
        xdotool("windowminimize", visible("Tarnwerk")[-1])
        wait_until(self.tray.shows_icon, "the icon")
        self.tray.choose("退出")
        self.assertEqual(self.process.wait(PATIENCE), 0)

    def a_dialog_stays(self):
        """Unlike the splash screen, which goes by itself."""
        front = xdotool("getactivewindow")
        time.sleep(1)
        return front not in ([], [self.window]) and front == xdotool("getactivewindow")

    def log_in(self, *passwords):
        """Tries one after the other in the one dialog that is there."""
        for password in passwords:
            wait_until(self.a_dialog_stays, "the question for the password")
            login = xdotool("getactivewindow")
            xdotool("type", "--delay", "20", password)
            self.press("Return")
        self.window = login[0]

    def test_the_manager_password_stands_before_window_and_options(self):
        self.home.write("config/Tarnwerk/settings.ini",
                        f"[{pathlib.Path(program[0]).stem}\\ManagerPwd]\nPWD=sesame\n")
        self.home.write("ETUser.dzt", "Admin".ljust(20) + "sesame".ljust(30))
        self.start("START")
        self.log_in("wrong", "sesame")
        wait_until(lambda: visible("Tarnwerk"), "the window")
        self.home.wait_for_services()
        xdotool("windowactivate", "--sync", visible("Tarnwerk")[-1])
        self.press("ctrl+h")
        wait_until(self.tray.shows_icon, "the icon")
        self.tray.choose("选项")
        self.log_in("sesame")
        self.wait_for_another_window()
        self.stop_from_outside()

    def test_show_starts_in_the_tray_without_a_window(self):
        self.start("START", "SHOW")
        self.home.wait_for_services()
        wait_until(self.tray.shows_icon, "the icon")
        self.assertEqual(visible("Tarnwerk"), [])
        self.stop_from_outside()

    def test_stop_ends_it_with_a_dialog_open(self):
        self.start_with_window()
        self.start_web_from_the_keyboard()
        self.press("alt+o")
        self.wait_for_another_window()
        self.serves_the_page()
        self.stop_from_outside()

    def test_stop_ends_it_with_a_message_box_open(self):
        self.start_with_window()
        self.press("ctrl+4", "alt+l")
        self.wait_for_another_window()
        self.stop_from_outside()

    def test_stop_ends_it_in_the_middle_of_a_menu(self):
        self.start_with_window()
        self.press("alt+s")
        self.stop_from_outside()


if __name__ == "__main__":
    program = sys.argv[1:]
    unittest.main(argv=sys.argv[:1], verbosity=2)
