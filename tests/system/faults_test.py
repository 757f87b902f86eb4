"""What the machine does to the program: a full disk, files without rights, a clock that is set.

    faults_test.py PROGRAM
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import threading

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from conversation import Conversation, FtpConversation  # noqa: E402
from program import PATIENCE, ProgramTest, run_tests, wait_until  # noqa: E402

PROGRAM = sys.argv[1]
SAVED = b"250 OK,message saved\r\n"
CLOCK = "/usr/lib/x86_64-linux-gnu/faketime/libfaketime.so.1"

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


class FaultsTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.home.write("ftproot/up/here.txt", "here")
        self.home.write("mailroot/User/box/UserInfo.ini", "[用户信息]\r\nPassword=x\r\n")

    def start_under(self, *words):
        """Skips the test where a program cannot be started that way."""
        if subprocess.run([*words, "test", "-x", PROGRAM], capture_output=True).returncode:
            self.skipTest(f"{words[0]} is not possible here")
        self.home.program = [*words, PROGRAM]

    def start_as_nobody(self):
        """No file is without rights for root."""
        if os.geteuid() == 0:
            self.start_under(*AS_NOBODY)
            subprocess.run(["chown", "-R", "65534:65534", str(self.home.path)], check=True)

    def deliver(self, smtp, text):
        self.assertTrue(smtp.ask("DATA").startswith(b"354 "))
        self.assertEqual(smtp.ask(text + b"\r\n.\r\n"), SAVED)

    def test_a_full_disk_costs_what_does_not_fit_and_nothing_else(self):
        self.start_under(*ON_A_SMALL_DISK, str(self.home.path))
        process = self.home.start_services()
        disk = pathlib.Path(f"/proc/{process.pid}/root{self.home.path}")
        ftp = self.converse(FtpConversation, "ftp")
        ftp.ask("CWD /up")
        smtp = self.converse(Conversation, "smtp")
        smtp.ask("MAIL FROM:<box@x>")
        smtp.ask("RCPT TO:<box@x>")
        self.deliver(smtp, b"before")

        self.assertIn(b"\r\n550 ", ftp.transfer("STOR large.bin", b"x" * 3_000_000)[0])
        self.assertEqual(shutil.disk_usage(disk).free, 0)
        # A message that could not be kept is acknowledged all the same, and the error log, which
        # has no room either, stops nothing.
        self.deliver(smtp, b"y" * 100_000)
        self.check_page()
        mailbox = disk / "mailroot/User/box"
        self.assertEqual((mailbox / "Message_1.eml").read_bytes(), b"before\r\n.\r\n")

        self.assertEqual(ftp.ask("DELE large.bin")[:4], b"250 ")
        self.deliver(smtp, b"after")
        ftp.transfer("STOR small.bin", b"small")
        self.assertEqual((disk / "ftproot/up/small.bin").read_bytes(), b"small")
        self.assertTrue(any(message.read_bytes().endswith(b"after\r\n.\r\n")
                            for message in mailbox.glob("*.eml")))
        self.end(process)

    def test_files_without_rights_are_as_if_they_were_not_there(self):
        home = self.home
        home.write("startflg.dat", "[ServerStatus]\r\nWebServer=False, and much more\r\n")
        home.write("ftproot/up/closed/inside.txt", "inside")
        self.addCleanup((home.path / "ftproot/up/closed").chmod, 0o700)
        for name in ("wwwroot/locked.htm", "wwwroot/locked.txt", "ftproot/up/locked.txt",
                     "mailroot/User/box/Message_1.eml", "ftproot/up/closed"):
            if not (home.path / name).exists():
                home.write(name, "locked")
            (home.path / name).chmod(0)
        self.start_as_nobody()
        # No other file can be put beside its own ones.
        home.path.chmod(0o555)
        self.addCleanup(home.path.chmod, 0o700)
        process = home.start_services()
        wait_until(lambda: home.read("startflg.dat").count("=True\r\n") == 3, "all outcomes")
        self.assertEqual(home.get("/locked.htm"), home.get("/missing.htm"))
        self.assertEqual(home.get("/locked.txt"), b"")
        ftp = self.converse(FtpConversation, "ftp")
        ftp.ask("CWD /up")
        for request in ("RETR locked.txt", "STOR closed/new.txt", "STOR locked.txt"):
            replies, _ = ftp.transfer(request, b"new" if request.startswith("STOR") else None)
            self.assertNotIn(b"226 ", replies, request)
        pop3 = self.converse(Conversation, "pop3")
        pop3.ask("USER box")
        self.assertNotIn(b"locked", pop3.ask("RETR 1"))
        self.check_page()
        self.end(process)
        self.assertEqual((home.path / "ftproot/up/locked.txt").stat().st_size, len("locked"))

    def test_a_clock_that_is_set_stops_no_transfer(self):
        if not pathlib.Path(CLOCK).exists():
            self.skipTest("nothing here can set the program's clock alone")
        self.home.write("clock", "+0")
        # A sanitizer must be loaded before all others.
        libraries = subprocess.run(["ldd", PROGRAM], capture_output=True, text=True).stdout
        self.home.environment.update(
            FAKETIME_TIMESTAMP_FILE=self.home.file("clock"), FAKETIME_NO_CACHE="1",
            FAKETIME_DONT_FAKE_MONOTONIC="1", ASAN_OPTIONS="verify_asan_link_order=0",
            LD_PRELOAD=" ".join([*re.findall(r"\S*/libasan\S*", libraries), CLOCK]))
        self.home.write("wwwroot/paced.txt", "p" * 10240 * 12 + "end")
        process = self.home.start_services()
        sizes = []
        fetching = threading.Thread(target=lambda: sizes.append(len(self.home.get("/paced.txt"))))
        fetching.start()
        for setting in ("-3000d", "+3000d", "-1h"):
            self.home.write("clock", setting)
            # The connection that waits and one that comes new are both served.
            self.check_page()
        fetching.join(PATIENCE)
        self.assertEqual(sizes, [10240 * 12 + 3])
        self.end(process)


if __name__ == "__main__":
    run_tests()
