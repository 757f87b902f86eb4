"""The Windows program under Wine: what it does to the system that it runs on, and its window, used
from outside.

    windows_program_test.py TARNWERK.EXE WINDOW_HAND.EXE

Needs a display. Nothing of the test runs inside the program.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys

REPOSITORY = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(REPOSITORY / "tests/support"))
from conversation import Conversation, FtpConversation  # noqa: E402
from program import (PATIENCE, WINE, ProgramTest, accepts, fetch, run_tests,  # noqa: E402
                     wait_until)
from window import manage_windows, xdotool  # noqa: E402

PROGRAM, WINDOW_HAND = sys.argv[1:3]
PREFIX = pathlib.Path(os.environ.get("TARNWERK_WINEPREFIX") or REPOSITORY / "build/wine-prefix")

MAIN = ("ThunderRT6FormDC", "Tarnwerk")
WEB_OPTIONS = ("#32770", "Web服务器选项")
MESSAGE = ("#32770", "Tarnwerk")
MENU = ("#32768", "")
CLOSE, CHARACTER, SYSTEM_COMMAND, TRAY = "0x10", "0x102", "0x112", "1280"
MINIMISE = "0xf020"
ICON_CODES_THAT_RESTORE = ("0x209", "0x20")
ICON_CODE_OF_THE_MENU = "0x204"


class WindowsProgramTest(ProgramTest):
    @classmethod
    def setUpClass(cls):
        # Without one Wine waits two seconds for it whenever a window comes or goes.
        manage_windows(cls)

    def start_hand(self):
        self.hand = subprocess.Popen([WINE, WINDOW_HAND], env=self.home.environment,
                                     stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                     stderr=subprocess.DEVNULL)
        self.addCleanup(self.hand.communicate, timeout=PATIENCE)

    def ask(self, verb, window, *words):
        self.hand.stdin.write(("\t".join([verb, *window, *words]) + "\n").encode())
        self.hand.stdin.flush()
        return self.hand.stdout.readline().decode().rstrip("\r\n").split("\t")

    def do(self, verb, window, *words):
        """Asks until it can be done."""
        wait_until(lambda: self.ask(verb, window, *words) == ["done"], f"{verb} {window} {words}")

    def wait_for(self, window, text=""):
        wait_until(lambda: (seen := self.ask("look", window)) != [""] and (text or window[1]) in seen,
                   f"{window} {text}")

    def wait_for_end_of(self, window):
        wait_until(lambda: self.ask("look", window) == [""], f"the end of {window}")

    def start_with_window(self):
        self.start_hand()
        self.process = self.home.start()

        def open_web_page():
            xdotool("mousemove", *self.ask("place", MAIN, "Web 服务"), "click", "1")
            return "启动(G)" in self.ask("look", MAIN)
        # Again while the window manager still moves the window from under the mouse.
        wait_until(open_web_page, "the Web page")
        self.do("press", MAIN, "启动(G)")
        self.check_page()

    def minimise(self):
        self.do("post", MAIN, SYSTEM_COMMAND, MINIMISE, "0")
        self.do("icon", MAIN)
        self.wait_for_end_of(MAIN)

    def choose_in_tray(self, mnemonic):
        self.do("post", MAIN, TRAY, "0", ICON_CODE_OF_THE_MENU)
        self.wait_for(MENU)
        self.check_page()
        self.do("post", MAIN, CHARACTER, hex(ord(mnemonic)), "0")

    def test_its_file_tells_what_it_is(self):
        content = pathlib.Path(PROGRAM).read_bytes()
        for text in ("Tarnwerk 个人网络服务器管理".encode("utf-16-le"), b'level="asInvoker"',
                     b"PerMonitorV2", b">true</longPathAware>", b"Microsoft.Windows.Common-Controls"):
            self.assertTrue(text in content, text)

    def test_it_lives_with_its_system_from_start_to_stop(self):
        home = self.home
        self.start_hand()
        first = home.start("START")
        home.wait_for_services()
        self.check_page()
        self.wait_for(MAIN)
        # A second one ends at once and disturbs nothing. Like the first it has told the firewall of
        # itself, which Wine only notes.
        home.environment["TARNWERK_WINEDEBUG"] = "-all,fixme+hnetcfg"
        code, _, notes = home.run("START")
        home.environment["TARNWERK_WINEDEBUG"] = "-all"
        self.assertEqual(code, 0)
        image = home.native(home.path / "Tarnwerk.exe").replace("\\", "\\\\")
        for note in (f'ProcessImageFileName [^"]*"{re.escape(image)}"', r'Name .*L"Tarnwerk\(TARN\)"',
                     "Scope .*, 0", "Enabled .*, -1", "fw_apps_Add"):
            self.assertRegex(notes, note)
        self.check_page()
        self.stop(first)
        self.wait_for_end_of(MAIN)
        self.assertEqual(home.read("RunErr.Log"), "")

    def test_on_a_chinese_system_it_runs_from_a_deep_folder_and_speaks_its_code_page(self):
        home = self.home
        home.use_gbk()
        del home.environment["TARNWERK_HOME"], home.environment["TARNWERK_HOSTS"]
        # The hosts file of the Wine prefix, put back as it was afterwards.
        hosts = PREFIX / "drive_c/windows/system32/drivers/etc/hosts"
        before = hosts.read_bytes()
        self.addCleanup(hosts.write_bytes, before)
        # Beyond the 260 characters of the older interfaces.
        deep = "/".join(["网页" + "x" * 60] * 4)
        folder = home.path / "我的 站点" / ("d" * 100)
        folder.mkdir(parents=True)
        home.program[-1] = shutil.copy(PROGRAM, folder)
        home.write_settings(domain="站点.example", encoding="gbk")
        (home.path / "Server.ini").rename(folder / "Server.ini")
        user = "[用户信息]\r\nUser=amy\r\nPassword=秘密\r\n".encode("gbk")
        for name, content in {f"wwwroot/{deep}/a.htm": "deep", f"ftproot/up/{deep}/b.txt": "",
                              "ftproot/文件.txt": "", "mailroot/User/amy/UserInfo.ini": user,
                              # As a program that uses UTF-8 has written it.
                              "mailroot/User/bob/UserInfo.ini": user.decode("gbk")}.items():
            home.write(name, content)
        process = home.start_services()
        self.assertEqual(hosts.read_bytes(),
                         before + "\r\n127.0.0.1    站点.example\r\n".encode("gbk"))
        page, _ = (fetch(home.ports["web"], f"{request} HTTP/1.0\r\n\r\n".encode("gbk"))
                   for request in (f"GET /{deep}/a.htm", "POST /表格.txt"))
        self.assertEqual(page, b"deep")
        ftp = self.converse(FtpConversation, "ftp")
        self.assertEqual(ftp.greeting, "220 连接FTP服务器成功 \r\n".encode("gbk"))
        ftp.ask("PWD")
        self.assertIn("文件.txt\r\n".encode("gbk"), ftp.transfer("LIST")[1])
        ftp.ask(f"CWD /up/{deep}\r\n".encode("gbk"))
        ftp.transfer("STOR new.bin", b"uploaded")
        self.assertEqual(home.read(f"ftproot/up/{deep}/new.bin"), "uploaded")
        self.assertEqual(ftp.transfer("RETR new.bin")[1], b"uploaded")
        pop3 = self.converse(Conversation, "pop3")
        for command, reply in (("USER bob", "+OK"), ("PASS ", "-ERR"), ("PASS 秘密", "+OK"),
                               ("USER amy", "+OK"), ("PASS 秘密", "+OK"), ("RETR x", "-ERR"),
                               ("QUIT", "+OK")):
            self.assertEqual(pop3.ask(f"{command}\r\n".encode("gbk")), f"{reply}\r\n".encode())
        for name, text in {"Web.log": "请求资源：表格.txt  Failed!", "Mail.log": "发送邮件(POP)",
                           "RunErr.Log": "捕获错误: "}.items():
            self.assertIn(text.encode("gbk"), (folder / name).read_bytes())
        self.stop(process)

    def test_its_window_goes_to_the_tray_and_comes_back(self):
        self.start_with_window()
        self.wait_for(MAIN, "停止(P)")
        for code in ICON_CODES_THAT_RESTORE:
            self.minimise()
            self.check_page()
            self.do("post", MAIN, TRAY, "0", code)
            self.wait_for(MAIN)
            self.assertEqual(self.ask("icon", MAIN), [""])
        self.minimise()
        self.choose_in_tray("r")
        self.wait_for(MAIN, "停止(P)")
        self.minimise()
        self.choose_in_tray("w")
        wait_until(lambda: not accepts(self.home.ports["web"]), "the end of the Web server")
        self.do("post", MAIN, TRAY, "0", ICON_CODES_THAT_RESTORE[0])
        self.wait_for(MAIN, "启动(G)")
        self.do("post", MAIN, CLOSE, "0", "0")
        self.assertEqual(self.process.wait(PATIENCE), 0)

    def test_its_options_write_the_right_entries_and_refuse_a_wrong_one(self):
        self.start_with_window()
        # By its letter, while the side bar has the focus.
        xdotool("mousemove", *self.ask("place", MAIN, "Web 服务"), "click", "1")
        main = xdotool("getactivewindow")
        xdotool("key", "alt+o")
        wait_until(lambda: xdotool("getactivewindow") not in (main, []), "the options")
        # By the letter of its label, while another field has the focus.
        xdotool("key", "alt+p", "type", "8123")
        self.do("fill", WEB_OPTIONS, "本地域名(D)：", "站点.example")
        self.do("press", WEB_OPTIONS, "确定")
        self.wait_for_end_of(WEB_OPTIONS)
        settings = self.home.read("Server.ini")
        self.assertIn("\r\nTCPPort=8123\r\n", settings)
        self.assertIn("\r\nDNS=站点.example\r\n", settings)
        self.do("press", MAIN, "选项(O)...")
        self.do("fill", WEB_OPTIONS, "TCP端口(P)：", " ")
        self.do("press", WEB_OPTIONS, "确定")
        self.wait_for(MESSAGE, "请指定TCP端口！")
        self.check_page()
        # It ends although the dialog and its message box are open.
        self.stop(self.process)
        self.assertEqual(self.home.read("Server.ini"), settings)


if __name__ == "__main__":
    run_tests()
