"""Whether the program answers alike on both systems: one script, both programs, byte by byte.

same_answers_test.py LINUX_PROGRAM TARNWERK.EXE CGI_ECHO.EXE

The CGI program of the Linux side is looked for beside the program. Ends with 77 if there is no
Linux program: it is built by another preset.
"""

import pathlib
import re
import shutil
import sys
import threading
import traceback
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from conversation import Conversation, FtpConversation, send_mail  # noqa: E402
from program import PATIENCE, Home, wait_until  # noqa: E402
from windows_program import WindowsHome  # noqa: E402

SKIPPED = 77
linux_program = windows_program = windows_cgi = ""

BINARY = bytes(range(256)) * 32  # 8192 bytes: two chunks of a transfer
NEVER = b"<until the server closes>"
MESSAGE = b"""From: amy@localhost\r
Subject: =?gb2312?B?xOO6ww==?=\r
Content-Type: multipart/mixed; boundary="b"\r
\r
--b\r
Content-Type: text/plain; charset="gb2312"\r
Content-Transfer-Encoding: quoted-printable\r
\r
=C4=E3=BA=C3 =3D world\r
--b\r
Content-Type: application/octet-stream; name="=?gb2312?B?zsS8/g==?=.bin"\r
Content-Transfer-Encoding: base64\r
Content-Disposition: attachment; filename="=?gb2312?B?zsS8/g==?=.bin"\r
\r
AAECAwQFBgcICQ==\r
--b--\r
"""


def fill(home, cgi):
    """The same content for both."""
    home.write_settings()
    home.write("hosts", "10.0.0.1 somewhere\n")
    home.write("wwwroot/index.htm", "<p>home</p>\r\n")
    home.write("wwwroot/Dir/default.htm", "in a folder")
    home.write("wwwroot/Dir/Mixed Case.TXT", "mixed")
    home.write("wwwroot/首页.htm", "中文")
    home.write("wwwroot/large.bin", BINARY * 50 + b"end")
    for name in ("form.exe", "silent.cgi"):
        home.write(f"wwwroot/cgi-bin/{name}", b"")
        shutil.copy(cgi, home.path / "wwwroot/cgi-bin" / name)
    home.write("ftproot/empty.bin", b"")
    home.write("ftproot/two.bin", BINARY)
    home.write("ftproot/tail.bin", BINARY + b"!")
    home.write("ftproot/pub/文件.txt", "hello")
    home.write("ftproot/pub/.hidden", "not listed")
    (home.path / "ftproot/none").mkdir()
    home.write("ftproot/up/old.txt", "0123456789")
    for name in ("amy", "Bob"):
        home.write(f"mailroot/User/{name}/UserInfo.ini",
                   f"[用户信息]\r\nUser={name}\r\nPassword=pass of {name}\r\n")


def talk_web(home):
    requests = [f"GET {resource} HTTP/1.0\r\nHost: x\r\n\r\n".encode() for resource in (
        "/", "/index.htm", "/INDEX.HTM", "/Dir/", "/dir/default.htm", "/Dir", "/missing.htm",
        "/missing.txt", "/首页.htm", "/large.bin", "/dir/mixed case.txt", "//index.htm",
        "/Dir/../index.htm", "/dir\\default.htm", "/index.htm/", "/index.htm?a=b", "", "/*.htm",
        "/nul", "/con", "/aux.txt", "/index.htm:x", "/" + "long" * 100)]
    requests.append(b"GET /\r\n")
    for resource, body in (("form.exe", "x=a+b%21"), ("FORM.EXE?q", "%C4%E3"), ("silent.cgi", "x"),
                           ("none.exe", "x"), ("a.txt", "x"), ("dir/", "%zz")):
        requests.append(f"POST /{resource} HTTP/1.0\r\nContent-Length: {len(body)}\r\n\r\n"
                        f"{body}".encode())
    transcript = []
    for request in requests:
        web = Conversation(home.ports["web"], greeting=b"")
        web.ask(request, end=NEVER)
        web.close()
        transcript += web.transcript[1:]
    return transcript


def talk_ftp(home):
    ftp = FtpConversation(home.ports["ftp"])
    for request in ("USER x", "PASS y", "SYST", "FEAT", "OPTS UTF8 ON", "SITE HELP", "SITE x", "PWD",
                    "TYPE I", "TYPE a", "TYPE X", "NOOP", "REST 100", "REST", "SIZE two.bin", "NLST",
                    "CDUP", "ABOR", "pwd", "CWD", "PORT 127,0,0,1,200,10", "PORT x"):
        ftp.ask(request)
    ftp.ask(b"\r\nNOOP \r\n")
    for request in ("LIST", "RETR two.bin", "RETR tail.bin", "RETR empty.bin", "RETR missing.bin",
                    "RETR /pub/文件.txt", "RETR /PUB/文件.TXT", "STOR refused.bin"):
        ftp.transfer(request, b"refused" if request.startswith("STOR") else None)
    ftp.transfer_active("LIST")
    ftp.transfer_active("RETR /two.bin")
    for folder in ("pub", "/none", "/missing", "/PUB", "..", "/pub/../none", "/up/"):
        ftp.ask(f"CWD {folder}")
        ftp.ask("PWD")
        ftp.transfer("LIST")
    ftp.transfer("STOR new.bin", BINARY + b"!")
    ftp.transfer("STOR old.txt", b"new")
    ftp.transfer("STOR OLD.TXT", b"X")
    ftp.transfer("STOR 上传.bin", b"")
    ftp.transfer("RETR old.txt")
    for request in ("MKD made", "MKD made", "MKD MADE", "MKD a/b", "MKD 目录", "RNFR new.bin",
                    "RNTO made/moved.bin", "RNFR old.txt", "RNTO 目录", "RNFR none", "RNTO some", "RNFR /pub", "RNTO other", "RMD made",
                    "RMD none", "RMD 目录", "RMD old.txt", "DELE made/moved.bin", "DELE made",
                    "DELE none.txt", "DELE /two.bin", "DELE *.nothing", "RMD made", "RMD /up"):
        ftp.ask(request)
    ftp.transfer("LIST")
    ftp.ask("QUIT")
    ftp.close()
    return ftp.transcript


def talk_smtp(home):
    port = home.ports["smtp"]
    smtp = Conversation(port)
    for request in ("ehlo x", "HELO x", "NOOP", "RSET", "VRFY amy", "HELP", "EXPN x", "TURN",
                    "MAIL FROM:<nobody@localhost>", "MAIL FROM:<AMY@localhost>",
                    "RCPT TO:<amy>", "RCPT TO:<..@localhost>", "RCPT TO:<BOB@elsewhere>", "QUIT"):
        smtp.ask(request)
    smtp.close()
    transcript = smtp.transcript
    for name in ("Bob", "amy"):
        transcript += send_mail(port, "amy@localhost", f"{name}@localhost", MESSAGE)
        attachment = f"mailroot/User/{name}/Message_1/文件.bin"
        wait_until(lambda name=attachment: len(home.read(name)) == 10, attachment)
    return transcript


def talk_pop3(home):
    pop3 = Conversation(home.ports["pop3"])
    for request in ("CAPA", "AUTH", "USER nobody", "USER ../amy", "USER bob", "PASS wrong",
                    "PASS pass of Bob", "STAT", "LIST", "UIDL", "RETR 1", "RETR 9", "RETR 99",
                    "RETR x", "LIST 1", "TOP 1 0", "RSET", "NOOP", "APOP x y", "DELE", "DELE 1",
                    "DELE 7", "STAT", "LIST", "TOP", "REST", "QUIT", "what"):
        word = request.split()[0]
        ends = {"CAPA": b"\r\n.\r\n", "LIST": b"\r\n.\r\n", "UIDL": b"\r\n.\r\n"}
        end = ends.get(word, b"\r\n")
        if request in ("RETR 1", "RETR 9"):
            end = b".\r\n.\r\n"
        pop3.ask(request, end)
    pop3.close()
    return pop3.transcript


class Run(threading.Thread):
    """One program from its start to its STOP, with everything that it said and wrote."""

    def __init__(self, home, cgi):
        super().__init__()
        self.home = home
        self.cgi = cgi
        self.parts = {}
        self.failure = None

    def run(self):
        try:
            fill(self.home, self.cgi)
            process = self.home.start("START", "SHOW")
            self.home.wait_for_services()
            for talk in (talk_web, talk_ftp, talk_smtp, talk_pop3):
                self.parts[talk.__name__] = [(request, self.masked(answer))
                                             for request, answer in talk(self.home)]
            self.parts["stop"] = [("STOP", self.home.run("STOP"))]
            process.wait(PATIENCE)
            self.parts["files"] = list(self.files())
        except Exception:  # pylint: disable=broad-except
            self.failure = traceback.format_exc()

    def masked(self, answer):
        """Without what differs by nature: times, ports, where the program directory is."""
        for home in (self.home.native(self.home.path), str(self.home.path).replace("/", "\\")):
            # With what follows: the separators are the system's own where a path is saved.
            path = re.escape(home.encode()) + rb"([\w\\/.]*)"
            answer = re.sub(path, lambda found: b"<home>" + found[1].replace(b"\\", b"/"), answer)
        answer = re.sub(rb"\d{4}-\d\d-\d\d \d\d:\d\d:\d\d", b"<time>", answer)
        answer = re.sub(rb"[A-Z][a-z]{2} \d\d \d{4} ", b"<date> ", answer)
        answer = re.sub(rb"(227 .*,)\d+,\d+\)", rb"\1<port>)", answer)
        # What is asked of a file that is named like a folder; the message is the system's.
        answer = re.sub(rb": (Invalid name\.|Not a directory)\r", b": <no such>\r", answer)
        for name, port in self.home.ports.items():
            answer = answer.replace(b"=%d\r" % port, b"=<%s>\r" % name.encode())
        return answer

    def files(self):
        for path in sorted(self.home.path.rglob("*")):
            name = str(path.relative_to(self.home.path))
            if name.startswith(("config", "runtime", "wwwroot/cgi-bin/form", "wwwroot/cgi-bin/silent")):
                continue
            yield name, self.masked(path.read_bytes()) if path.is_file() else "folder"


class SameAnswersTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        linux_cgi = pathlib.Path(linux_program).parent / "cgi_echo"
        cls.homes = [Home([linux_program]), WindowsHome(windows_program)]
        cls.runs = [Run(cls.homes[0], linux_cgi), Run(cls.homes[1], windows_cgi)]
        for run in cls.runs:
            run.start()
        for run in cls.runs:
            run.join()

    @classmethod
    def tearDownClass(cls):
        for home in cls.homes:
            home.close()

    def compare(self, part):
        for run in self.runs:
            if part not in run.parts:
                self.fail(run.failure)
        linux, windows = (run.parts[part] for run in self.runs)
        self.assertEqual([request for request, _ in linux], [request for request, _ in windows])
        for (request, expected), (_, answer) in zip(linux, windows):
            with self.subTest(request):
                self.assertEqual(answer, expected)

    def test_web(self):
        self.compare("talk_web")

    def test_ftp(self):
        self.compare("talk_ftp")

    def test_smtp(self):
        self.compare("talk_smtp")

    def test_pop3(self):
        self.compare("talk_pop3")

    def test_stop_and_the_files_that_were_written(self):
        self.compare("stop")
        self.compare("files")


if __name__ == "__main__":
    linux_program, windows_program, windows_cgi = sys.argv[1:4]
    if not pathlib.Path(linux_program).exists():
        print(f"There is no {linux_program}: build the preset linux first.")
        sys.exit(SKIPPED)
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]], verbosity=2)
