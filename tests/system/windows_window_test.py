"""The Windows program's window under Wine, used with the mouse and by the system's messages.

windows_window_test.py TARNWERK.EXE WINDOW_HAND.EXE

Needs a display and Debian's openbox and xdotool. Nothing of the test runs inside the program.
"""

import pathlib
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from program import PATIENCE, accepts, fetch, wait_until  # noqa: E402
from window_manager import manage_windows  # noqa: E402
from windows_program import WINE, WindowsHome  # noqa: E402

program = ""
window_hand = ""

MAIN = ("ThunderRT6FormDC", "Tarnwerk")
WEB_OPTIONS = ("#32770", "Web服务器选项")
MESSAGE = ("#32770", "Tarnwerk")
MENU = ("#32768", "")

CLOSE, CHARACTER, SYSTEM_COMMAND, TRAY = "0x10", "0x102", "0x112", "1280"
MINIMISE = "0xf020"
ICON_CODES_THAT_RESTORE = ("0x209", "0x20")


class Hand:
    """window_hand.exe, for as long as a test needs it."""

    def __init__(self, home):
        self.process = subprocess.Popen([WINE, window_hand], env=home.environment,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL)

    def close(self):
        self.process.communicate(timeout=PATIENCE)

    def ask(self, verb, window, *words):
        self.process.stdin.write(("\t".join([verb, *window, *words]) + "\n").encode())
        self.process.stdin.flush()
        answer = self.process.stdout.readline().decode().rstrip("\r\n")
        return answer.split("\t") if answer else []

    def get(self, verb, window, *words):
        """Asks until it can be answered."""
        answer = []

        def answered():
            answer[:] = self.ask(verb, window, *words)
            return answer
        wait_until(answered, f"{verb} {window} {words}")
        return answer

    def wait_for(self, window, text=None):
        wait_until(lambda: (seen := self.ask("look", window)) and (text is None or text in seen),
                   f"{window} {text}")

    def wait_for_end_of(self, window):
        wait_until(lambda: not self.ask("look", window), f"the end of {window}")

    def click(self, window, text):
        """With the mouse."""
        x, y = self.get("place", window, text)
        subprocess.run(["xdotool", "mousemove", x, y, "click", "1"], check=True, timeout=PATIENCE)


class WindowsWindowTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        # Without one Wine waits two seconds for it whenever a window comes or goes.
        manage_windows(cls)

    def setUp(self):
        self.home = WindowsHome(program)
        self.addCleanup(self.home.close)
        self.home.write_settings()
        self.home.write("wwwroot/index.htm", "<p>home</p>")
        self.hand = Hand(self.home)
        self.addCleanup(self.hand.close)
        self.process = self.home.start()
        self.hand.wait_for(MAIN)

    def serves_the_page(self):
        port = self.home.ports["web"]
        wait_until(lambda: accepts(port), "the Web server")
        self.assertEqual(fetch(port, b"GET / HTTP/1.0\r\n\r\n"), b"<p>home</p>")

    def start_web(self):
        # Again if the window manager has moved the window from under the mouse.
        wait_until(lambda: (self.hand.click(MAIN, "Web 服务")
                            or "启动(G)" in self.hand.ask("look", MAIN)), "the Web page")
        self.hand.click(MAIN, "启动(G)")
        self.serves_the_page()

    def minimise(self):
        self.hand.get("post", MAIN, SYSTEM_COMMAND, MINIMISE, "0")
        self.hand.get("icon", MAIN)
        self.hand.wait_for_end_of(MAIN)

    def open_tray_menu(self):
        self.hand.get("post", MAIN, TRAY, "0", "0x204")
        self.hand.wait_for(MENU)

    def choose(self, mnemonic):
        self.hand.get("post", MAIN, CHARACTER, hex(ord(mnemonic)), "0")

    def ends(self):
        self.assertEqual(self.process.wait(PATIENCE), 0)
        self.assertFalse(accepts(self.home.ports["web"]))

    def test_serves_goes_to_the_tray_and_comes_back(self):
        self.start_web()
        self.hand.wait_for(MAIN, "停止(P)")
        for code in ICON_CODES_THAT_RESTORE:
            self.minimise()
            self.serves_the_page()
            self.hand.get("post", MAIN, TRAY, "0", code)
            self.hand.wait_for(MAIN)
            self.assertFalse(self.hand.ask("icon", MAIN))
        self.minimise()
        self.open_tray_menu()
        self.serves_the_page()
        self.choose("w")
        wait_until(lambda: not accepts(self.home.ports["web"]), "the end of the Web server")
        self.open_tray_menu()
        self.choose("r")
        self.hand.wait_for(MAIN, "启动(G)")
        self.hand.get("post", MAIN, CLOSE, "0", "0")
        self.ends()

    def test_options_refuse_a_wrong_entry_and_write_the_right_ones(self):
        self.start_web()
        self.hand.get("press", MAIN, "选项(O)...")
        field = "TCP端口(P)："
        self.assertEqual(self.hand.get("read", WEB_OPTIONS, field)[0], str(self.home.ports["web"]))
        self.hand.get("fill", WEB_OPTIONS, field, " ")
        self.hand.get("fill", WEB_OPTIONS, "本地域名(D)：", "站点.example")
        self.hand.get("press", WEB_OPTIONS, "确定")
        self.hand.wait_for(MESSAGE, "请指定TCP端口！")
        self.serves_the_page()
        self.hand.get("press", MESSAGE, "确定")
        self.hand.get("fill", WEB_OPTIONS, field, "8123")
        self.hand.get("press", WEB_OPTIONS, "确定")
        self.hand.wait_for_end_of(WEB_OPTIONS)
        settings = self.home.read("Server.ini")
        self.assertIn("\r\nTCPPort=8123\r\n", settings)
        self.assertIn("\r\nDNS=站点.example\r\n", settings)
        # Ends in the middle of the same dialog and its message box.
        self.hand.get("press", MAIN, "选项(O)...")
        self.hand.get("fill", WEB_OPTIONS, field, "")
        self.hand.get("press", WEB_OPTIONS, "确定")
        self.hand.wait_for(MESSAGE)
        self.assertEqual(self.home.run("STOP"), (0, "", ""))
        self.ends()
        self.assertEqual(self.home.read("Server.ini"), settings)


if __name__ == "__main__":
    program, window_hand = sys.argv[1:3]
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
