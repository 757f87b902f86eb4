"""What the machine does to the program: a full disk, files without rights, a clock that is set, and
settings that are nonsense.

faults_test.py PROGRAM
"""

import os
import pathlib
import shutil
import signal
import subprocess
import sys
import threading
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from conversation import Conversation, FtpConversation  # noqa: E402
from program import PATIENCE, Home, accepts, fetch, wait_until  # noqa: E402

program = ""

GET_PAGE = b"GET /index.htm HTTP/1.0\r\n\r\n"
PAGE = b"<p>home</p>"
THIS_YEAR = time.localtime().tm_year
SAVED = b"250 OK,message saved\r\n"
CLOCK = pathlib.Path("/usr/lib/x86_64-linux-gnu/faketime/libfaketime.so.1")

# The program's folder becomes a disk of a megabyte that only the program sees.
ON_A_SMALL_DISK = ["unshare", "--user", "--map-root-user", "--mount", "sh", "-c", """
set -e
cp -a "$0" "$0.copy"
mount -t tmpfs -o size=1m disk "$0"
cp -a "$0.copy/." "$0"
rm -r "$0.copy"
exec "$@"
"""]
AS_NOBODY = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]


def works(words):
    return subprocess.run(words, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL).returncode == 0


class FaultsTest(unittest.TestCase):
    def make_home(self):
        home = Home([program])
        self.addCleanup(home.close)
        home.write_settings()
        home.write("wwwroot/index.htm", PAGE)
        home.write("ftproot/up/here.txt", "here")
        home.write("mailroot/User/box/UserInfo.ini", "[用户信息]\r\nPassword=x\r\n")
        return home

    def start(self, home):
        process = home.start("START", "SHOW")
        home.wait_for_services()
        return process

    def end(self, process):
        process.send_signal(signal.SIGTERM)
        self.assertEqual(process.wait(PATIENCE), 0)

    def converse(self, kind, port):
        conversation = kind(port)
        self.addCleanup(conversation.close)
        return conversation

    def deliver(self, smtp, text):
        self.assertTrue(smtp.ask("DATA").startswith(b"354 "))
        return smtp.ask(text + b"\r\n.\r\n")

    def test_a_full_disk_costs_what_does_not_fit_and_nothing_else(self):
        home = self.make_home()
        home.program = [*ON_A_SMALL_DISK, str(home.path), program]
        if not works([*home.program[:-1], "true"]):
            self.skipTest("no disk can be made here")
        process = self.start(home)
        disk = pathlib.Path(f"/proc/{process.pid}/root{home.path}")
        ftp = self.converse(FtpConversation, home.ports["ftp"])
        ftp.ask("CWD /up")
        smtp = self.converse(Conversation, home.ports["smtp"])
        smtp.ask("MAIL FROM:<box@x>")
        smtp.ask("RCPT TO:<box@x>")
        self.assertEqual(self.deliver(smtp, b"before"), SAVED)

        ftp.transfer("STOR large.bin", b"x" * 3_000_000)
        self.assertIn(b"\r\n550 ", ftp.transcript[-1][1])
        self.assertEqual(shutil.disk_usage(disk).free, 0)
        # A message that could not be kept is acknowledged all the same, and the error log, which
        # has no room either, stops nothing.
        self.assertEqual(self.deliver(smtp, b"y" * 100_000), SAVED)
        self.assertEqual(fetch(home.ports["web"], GET_PAGE), PAGE)
        self.assertEqual((disk / "mailroot/User/box/Message_1.eml").read_bytes(),
                         b"before\r\n.\r\n")

        self.assertEqual(ftp.ask("DELE large.bin")[:4], b"250 ")
        self.assertEqual(self.deliver(smtp, b"after"), SAVED)
        ftp.transfer("STOR small.bin", b"small")
        self.assertEqual((disk / "ftproot/up/small.bin").read_bytes(), b"small")
        self.assertTrue(any(message.read_bytes().endswith(b"after\r\n.\r\n")
                            for message in (disk / "mailroot/User/box").glob("*.eml")))
        self.end(process)

    def test_files_without_rights_are_as_if_they_were_not_there(self):
        home = self.make_home()
        if os.geteuid() == 0:
            home.program = [*AS_NOBODY, program]
            if not works([*AS_NOBODY, "test", "-x", program]):
                self.skipTest("another user cannot run the program where it is")
        home.write("startflg.dat", "[ServerStatus]\r\nWebServer=False, and much more\r\n")
        for name in ("wwwroot/locked.htm", "wwwroot/locked.txt", "ftproot/up/locked.txt",
                     "mailroot/User/box/Message_1.eml"):
            home.write(name, "locked")
            (home.path / name).chmod(0)
        home.write("ftproot/up/closed/inside.txt", "inside")
        (home.path / "ftproot/up/closed").chmod(0)
        self.addCleanup((home.path / "ftproot/up/closed").chmod, 0o700)
        if os.geteuid() == 0:
            subprocess.run(["chown", "-R", "65534:65534", str(home.path)], check=True)

        # No other file can be put beside its own ones.
        home.path.chmod(0o555)
        self.addCleanup(home.path.chmod, 0o700)
        process = self.start(home)
        wait_until(lambda: home.read("startflg.dat").count("=True\r\n") == 3, "all outcomes")
        page = fetch(home.ports["web"], b"GET /locked.htm HTTP/1.0\r\n\r\n")
        self.assertEqual(page, fetch(home.ports["web"], b"GET /missing.htm HTTP/1.0\r\n\r\n"))
        self.assertEqual(fetch(home.ports["web"], b"GET /locked.txt HTTP/1.0\r\n\r\n"), b"")
        ftp = self.converse(FtpConversation, home.ports["ftp"])
        ftp.ask("CWD /up")
        for request in ("RETR locked.txt", "STOR closed/new.txt", "STOR locked.txt"):
            ftp.transfer(request, b"new" if request.startswith("STOR") else None)
            self.assertNotIn(b"226 ", ftp.transcript[-1][1], request)
        pop3 = self.converse(Conversation, home.ports["pop3"])
        pop3.ask("USER box")
        self.assertEqual(pop3.ask("RETR 1")[-100:].count(b"locked"), 0)
        self.assertEqual(fetch(home.ports["web"], GET_PAGE), PAGE)
        self.end(process)
        self.assertEqual((home.path / "ftproot/up/locked.txt").stat().st_size, len("locked"))

    def test_a_clock_that_is_set_stops_no_transfer(self):
        if not CLOCK.exists():
            self.skipTest("nothing here can set the program's clock alone")
        home = self.make_home()
        clock = home.path / "clock"
        clock.write_text("+0")
        home.write("Server.ini", home.read_bytes("Server.ini").replace(b"optAppDone=True",
                                                                       b"optAppDone=False"))
        home.environment.update(
            FAKETIME_TIMESTAMP_FILE=str(clock), FAKETIME_NO_CACHE="1",
            FAKETIME_DONT_FAKE_MONOTONIC="1", ASAN_OPTIONS="verify_asan_link_order=0",
            LD_PRELOAD=" ".join([*SANITIZER, str(CLOCK)]))
        home.write("wwwroot/paced.txt", "p" * 10240 * 12 + "end")
        process = self.start(home)
        answers = []
        fetching = threading.Thread(target=lambda: answers.append(
            fetch(home.ports["web"], b"GET /paced.txt HTTP/1.0\r\n\r\n")))
        fetching.start()
        for setting in ("-3000d", "+3000d", "-1h"):
            clock.write_text(setting)
            # The connection that waits and one that comes new are both served.
            self.assertEqual(fetch(home.ports["web"], GET_PAGE), PAGE)
        clock.write_text(f"+{8 * 365 + 2}d")
        fetching.join(PATIENCE)
        self.assertEqual([len(answer) for answer in answers], [10240 * 12 + 3])
        # Programs may not run here, which the access log is told of.
        fetch(home.ports["web"], b"POST /missing.exe? HTTP/1.0\r\n\r\n")
        wait_until(lambda: home.read("Web.log"), "a line in the access log")
        # The log has the clock's time, as it is set.
        self.assertIn(f"时间：{THIS_YEAR + 8}", home.read("Web.log"))
        self.end(process)

    def test_no_service_starts_on_settings_that_are_there_and_cannot_be_read(self):
        def folder(home):
            (home.path / "Server.ini").unlink()
            home.write("Server.ini/inside", "")

        def locked(home):
            (home.path / "Server.ini").chmod(0)

        def torn(home):
            home.write("Server.ini", home.read("Server.ini").split("UploadDir")[0])

        def endless(home):
            (home.path / "Server.ini").unlink()
            (home.path / "Server.ini").symlink_to("/dev/zero")

        def pipe(home):
            (home.path / "Server.ini").unlink()
            os.mkfifo(home.path / "Server.ini")

        for spoil in (folder, locked, torn, endless, pipe):
            with self.subTest(spoil.__name__):
                home = self.make_home()
                if spoil is locked and os.geteuid() == 0:
                    home.program = [*AS_NOBODY, program]
                    if not works([*AS_NOBODY, "test", "-x", program]):
                        self.skipTest("another user cannot run the program where it is")
                    subprocess.run(["chown", "-R", "65534:65534", str(home.path)], check=True)
                spoil(home)
                with open(home.path / "output", "w+", encoding="utf-8") as output:
                    process = home.start("START", "SHOW", output=output)
                    wait_until(lambda: home.read("startflg.dat").count("=False") == 2, "the starts")
                    wait_until(lambda: home.read("output").count("Server.ini") == 3, "the reasons")
                self.assertIn("Web服务：OFF\n设置文件 Server.ini ", home.read("output"))
                self.assertIn("Ftp服务启动失败。请检查您的FTP与网络设置。\n", home.read("output"))
                self.assertFalse(any(accepts(port) for port in home.ports.values()))
                for section in ("WebServer", "FtpServer", "MailServer"):
                    self.assertIn(f"Server.ini [{section} Options]: cannot be read: ",
                                  home.read("RunErr.Log"))
                self.end(process)

    def test_own_files_that_are_endless_or_none_cost_an_error_line_only(self):
        names = ("startflg.dat", "IndexFN.Log", "hosts", "config/Tarnwerk/registry.ini")
        for make in (lambda path: path.symlink_to("/dev/zero"), os.mkfifo,
                     lambda path: path.write_bytes(b"x" * 20_000_000)):
            home = self.make_home()
            for name in names:
                (home.path / name).parent.mkdir(parents=True, exist_ok=True)
                make(home.path / name)
            process = self.start(home)
            self.assertEqual(fetch(home.ports["web"], GET_PAGE), PAGE)
            wait_until(lambda: home.read("RunErr.Log").count("startflg.dat") == 3, "every start")
            for name in ("IndexFN.Log", "hosts"):
                self.assertIn(f"{name}: ", home.read("RunErr.Log"))
            self.end(process)

    def test_settings_that_are_nonsense_or_change_meanwhile_cost_nothing(self):
        home = self.make_home()
        process = self.start(home)
        good = home.read_bytes("Server.ini")
        for nonsense in (b"", b"\0" * 5000, b"[WebServer Options]\r\nTCPPort=",
                         b"[" * 100_000, os.urandom(20_000), good.replace(b"=", b"\r\n")):
            home.write("Server.ini", nonsense)
            self.assertEqual(fetch(home.ports["web"], GET_PAGE), PAGE)
        self.end(process)

        for nonsense in (b"\0" * 5000, b"[" * 100_000, os.urandom(20_000)):
            home.write("Server.ini", nonsense)
            process = home.start("SHOW")  # which starts no service, on whatever port
            wait_until(lambda: home.run("STOP") and process.poll() is not None, "its end")
            self.assertEqual(process.returncode, 0)
        home.write("Server.ini", good)
        self.end(self.start(home))


def sanitizer_of(path):
    """Where the program is built with it, it must be loaded before all others."""
    listing = subprocess.run(["ldd", path], capture_output=True, text=True).stdout
    return [line.split()[2] for line in listing.splitlines() if "libasan" in line]


if __name__ == "__main__":
    program = sys.argv.pop(1)
    SANITIZER = sanitizer_of(program)
    unittest.main()
