"""The Windows program under Wine: what it does to the system that it runs on.

windows_program_test.py TARNWERK.EXE FIND_WINDOW.EXE
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

REPOSITORY = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(REPOSITORY / "tests/support"))
from conversation import Conversation, FtpConversation, send_mail  # noqa: E402
from program import PATIENCE, accepts, fetch, wait_until  # noqa: E402
from windows_program import WindowsHome  # noqa: E402

program = ""
window_finder = ""

PROXY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Internet Settings"
PROGRAM_KEY = r"HKLM\Software\VEQ\通用系统"
PREFIX = pathlib.Path(os.environ.get("TARNWERK_WINEPREFIX") or REPOSITORY / "build/wine-prefix")
WINDOW = ("ThunderRT6FormDC", "Tarnwerk")
USER_INFO = "[用户信息]\r\nUser=amy\r\nPassword=秘密\r\n"


class WindowsProgramTest(unittest.TestCase):
    def make_home(self, executable=None, **options):
        home = WindowsHome(executable or program, **options)
        self.addCleanup(home.close)
        return home

    def stop(self, home, process):
        self.assertEqual(home.run("STOP"), (0, "", ""))
        self.assertFalse(accepts(home.ports["web"]))
        self.assertEqual(process.wait(PATIENCE), 0)

    def find_windows(self, home):
        return home.wine(window_finder, *WINDOW).decode().split()[1:]

    def set_proxy(self, home, value):
        home.wine("reg", "add", PROXY, "/v", "ProxyEnable", "/t", "REG_DWORD", "/d", value, "/f")

    def test_its_file_tells_what_it_is(self):
        content = pathlib.Path(program).read_bytes()
        for text in ("Tarnwerk 个人网络服务器管理".encode("utf-16-le"), b'level="asInvoker"',
                     b"PerMonitorV2", b">true</longPathAware>", b"Microsoft.Windows.Common-Controls"):
            self.assertTrue(text in content, text)

    def test_it_lives_with_its_system_from_start_to_stop(self):
        home = self.make_home()
        home.write_settings()
        home.write("wwwroot/index.htm", "<p>home</p>")
        hosts = "# theirs\n10.0.0.1 localhost\n"
        home.write("hosts", hosts)
        self.set_proxy(home, "1")
        first = home.start("START")
        home.wait_for_services()
        self.assertEqual(fetch(home.ports["web"], b"GET / HTTP/1.0\r\n\r\n"), b"<p>home</p>")
        self.assertEqual(home.read("hosts"), hosts + "\r\n127.0.0.1    localhost\r\n")
        self.assertEqual(home.registry_value(PROGRAM_KEY, "TARNPath"), home.native(home.path))
        self.assertEqual(home.registry_value(PROXY, "ProxyEnable"), "0x0")
        self.assertNotEqual(self.find_windows(home), [])
        # A second one ends at once and disturbs nothing. Like the first it has told the firewall of
        # itself, which Wine's only notes.
        home.environment["TARNWERK_WINEDEBUG"] = "-all,fixme+hnetcfg"
        code, _, notes = home.run("START")
        home.environment["TARNWERK_WINEDEBUG"] = "-all"
        self.assertEqual(code, 0)
        image = home.native(home.path / "Tarnwerk.exe").replace("\\", "\\\\")
        for note in (f'ProcessImageFileName [^"]*"{re.escape(image)}"', r'Name .*L"Tarnwerk\(TARN\)"',
                     "Scope .*, 0", "Enabled .*, -1", "fw_apps_Add"):
            self.assertRegex(notes, note)
        self.assertTrue(first.poll() is None and accepts(home.ports["web"]))
        # What the user switches on meanwhile is off again at the end.
        self.set_proxy(home, "1")
        self.stop(home, first)
        self.assertEqual(home.registry_value(PROXY, "ProxyEnable"), "0x0")
        self.assertEqual(self.find_windows(home), [])
        self.assertEqual(home.read("RunErr.Log"), "")

    def test_it_runs_from_a_deep_chinese_folder_without_its_hosts_file(self):
        home = self.make_home()
        folder = home.path / "我的 站点" / ("d" * 100)
        folder.mkdir(parents=True)
        executable = shutil.copy(program, folder)
        del home.environment["TARNWERK_HOME"]
        home.program[-1] = executable
        home.environment["TARNWERK_HOSTS"] = home.native(home.path / "none" / "hosts")
        home.write_settings()
        (home.path / "Server.ini").rename(folder / "Server.ini")
        # Beyond the 260 characters of the older interfaces.
        deep = "/".join(["网页" + "x" * 60] * 4)
        home.write(f"wwwroot/{deep}/a.htm", "deep")
        (home.path / "ftproot/up" / deep).mkdir(parents=True)
        process = home.start("START", "SHOW")
        home.wait_for_services()
        answer = fetch(home.ports["web"], f"GET /{deep}/a.htm HTTP/1.0\r\n\r\n".encode())
        self.assertEqual(answer, b"deep")
        ftp = FtpConversation(home.ports["ftp"])
        self.addCleanup(ftp.close)
        ftp.ask(f"CWD /up/{deep}")
        ftp.transfer("STOR new.bin", b"uploaded")
        self.assertEqual(home.read(f"ftproot/up/{deep}/new.bin"), "uploaded")
        self.assertEqual(ftp.transfer("RETR new.bin"), b"uploaded")
        self.assertIn(b"8", ftp.transfer("LIST"))
        self.assertEqual(ftp.ask("DELE new.bin"), "250 文件已删除.\r\n".encode())
        self.assertTrue((folder / "startflg.dat").exists())
        self.stop(home, process)

    def keep_system_hosts(self):
        """The hosts file of the Wine prefix, put back as it was afterwards."""
        hosts = PREFIX / "drive_c/windows/system32/drivers/etc/hosts"
        before = hosts.read_bytes()
        self.addCleanup(hosts.write_bytes, before)
        return hosts, before

    def check_code_page(self, home, code_page, encoding):
        """Replies, INI sections, logs and names, all in one character set."""
        self.assertEqual(home.wine(window_finder, *WINDOW).split()[:1], [code_page])
        domain = "站点.example"
        home.write_settings(domain=domain, encoding=encoding)
        home.write("wwwroot/首页.htm", "page")
        home.write("ftproot/文件.txt", "hello")
        home.write("mailroot/User/amy/UserInfo.ini", USER_INFO.encode(encoding))
        hosts, before = self.keep_system_hosts()
        del home.environment["TARNWERK_HOSTS"]
        process = home.start("START", "SHOW")
        home.wait_for_services()
        self.assertEqual(hosts.read_bytes(),
                         before + f"\r\n127.0.0.1    {domain}\r\n".encode(encoding))

        self.assertEqual(
            fetch(home.ports["web"], "GET /首页.htm HTTP/1.0\r\n\r\n".encode(encoding)), b"page")
        fetch(home.ports["web"], "POST /表格.txt HTTP/1.0\r\n\r\n".encode(encoding))
        ftp = FtpConversation(home.ports["ftp"])
        self.addCleanup(ftp.close)
        self.assertEqual(ftp.transcript[0][1], "220 连接FTP服务器成功 \r\n".encode(encoding))
        ftp.ask("PWD")
        self.assertIn("文件.txt\r\n".encode(encoding), ftp.transfer("LIST"))
        pop3 = Conversation(home.ports["pop3"])
        self.addCleanup(pop3.close)
        self.assertEqual(pop3.ask("USER amy"), b"+OK\r\n")
        self.assertEqual(pop3.ask("PASS 秘密\r\n".encode(encoding)), b"+OK\r\n")
        send_mail(home.ports["smtp"], "amy@localhost", "amy@localhost", b"Subject: x\r\n\r\nbody")
        self.assertEqual(home.read("mailroot/User/amy/Message_1.eml"),
                         "Subject: x\r\n\r\nbody\r\n.\r\n")
        unanswered = Conversation(home.ports["web"], greeting=b"")
        self.addCleanup(unanswered.close)
        unanswered.ask(b"POST /a.cgi HTTP/1.0\r\nContent-Length: x\r\n\r\n", end=b"")

        def logged(name, text):
            file = home.path / name
            return file.exists() and text.encode(encoding) in file.read_bytes()
        wait_until(lambda: logged("Web.log", "请求资源：表格.txt  Failed!"), "the line in Web.log")
        wait_until(lambda: logged("Mail.log", "收到邮件(SMTP)"), "the line in Mail.log")
        wait_until(lambda: logged("RunErr.Log", "捕获错误: "), "the line in RunErr.Log")
        self.stop(home, process)

    def test_a_western_system_speaks_utf8(self):
        self.check_code_page(self.make_home(locale="C.UTF-8"), b"1252", "utf-8")

    def test_a_chinese_system_speaks_its_own_code_page(self):
        locales = pathlib.Path(tempfile.mkdtemp(prefix="tarnwerk-locales-"))
        self.addCleanup(shutil.rmtree, locales)
        subprocess.run(["localedef", "-i", "zh_CN", "-f", "UTF-8", locales / "zh_CN.UTF-8"],
                       check=True, timeout=PATIENCE * 2)
        self.check_code_page(self.make_home(locale="zh_CN.UTF-8", locales=locales), b"936", "gbk")


if __name__ == "__main__":
    program, window_finder = sys.argv[1:3]
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
