"""What hostile clients send to the four ports: nobody else waits for an answer, nothing fills, and
no file is run, sent, changed or removed that must not be. The same rows on both systems.

    hostile_test.py PROGRAM CGI_PROGRAM
"""

import contextlib
import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from conversation import Conversation, FtpConversation  # noqa: E402
from program import PAGE, ProgramTest, accepts, fetch, run_tests, wait_until  # noqa: E402

ON_WINDOWS = sys.argv[1].endswith(".exe")
PATIENCE = 10  # seconds for everybody else's answer
MOMENT = 0.5  # seconds that a hostile client waits for an answer of its own
END_PATIENCE = 10 if ON_WINDOWS else 2  # seconds from being asked to end; two are promised
MOST_MEBIBYTES = 100
UP = "/.." * 30  # the root, from wherever the test runs
SECRET, LISTED = b"for nobody", "000" + "a" * 200
NEVER_SENT = (SECRET, LISTED.encode())
CONTROL = re.compile(rb"[\x00-\x09\x0b\x0c\x0e-\x1f\x7f]|\xc2[\x80-\x9f]|\r[^\n]|[^\r]\n")
WRITTEN_IN_ORDINARY_LIFE = r"config|runtime|startflg|hosts|.*\.[Ll]og$|wwwroot/cgi-bin/TempFile"
FILES = {"victim.htm": SECRET, "ftproot/victim.txt": SECRET, "ftproot/up/kept.txt": "kept",
         f"ftproot/up/full/{LISTED}": "", "mailroot/User/box/Message_1.eml": "kept",
         "mailroot/User/box/UserInfo.ini": "[用户信息]\r\nPassword=x\r\n",
         "wwwroot/large.bin": "x" * 4_000_000, "wwwroot/list/a.txt": ""}
NAMES_ON_LINUX = ("\x01\x1b[2J", "new\nline", '"><script>', "'onload=x", "\u202exe.exe", "\r\nX: y")
SLOTS = 19
# A copy of the shell: were it run, it would be sent and removed as well.
PROGRAMS = {"shell": "/bin/sh", "wwwroot/cgi-bin/slow.exe": sys.argv[2]}


# What rows do, each to the test that it is given.

def web(request):
    def act(test):
        whole = f"{request} HTTP/1.0\r\n\r\n".replace("HOME", str(test.home.path))
        answer = fetch(test.home.ports["web"], whole.encode())
        test.assertNotIn(b"home</p>", answer)
        test.check_said(answer)
    return act


def ftp(*commands):
    """A listing or transfer gets its data connection. To be closed on is no fault."""
    def act(test):
        guest = test.connect("ftp", MOMENT)
        for command in commands:
            # A long command can arrive in pieces, each with a reply, and the one to PASV is missed.
            with contextlib.suppress(OSError):
                if command[:4] in ("LIST", "RETR", "STOR"):
                    data = b"new" * 100_000 if command[:4] == "STOR" else None
                    test.check_said(b"".join(guest.transfer(command, data)))
                else:
                    test.check_said(guest.ask(command))
    return act


def mail(service, command, refusal):
    return lambda test: test.assertEqual(test.connect(service).ask(command), refusal)


def ftp_folder(folder):
    return ftp("CWD /up" + folder, "LIST", "PWD", "MKD x", "RMD x", "STOR x", "RETR x", "SIZE x",
               "DELE x", "DELE x*", "RNFR x", "RNTO y", "CWD /up",
               *(f"{word} x{folder}" for word in "MKD RMD STOR RETR DELE RNFR RNTO".split()),
               f"DELE x{folder}*")


def replies_unread(test):
    witness = test.connect("pop3")
    guests = [test.connect("ftp", MOMENT) for _ in range(4)]
    for guest in guests:
        guest.ask("CWD /" + "a" * 60_000)
    with contextlib.suppress(OSError):
        for _ in range(1000):
            for guest in guests:
                guest.socket.sendall(b"PWD\r\n")
            witness.ask("NOOP")  # so that each is an arrival of its own
    with contextlib.suppress(OSError):
        for _ in range(1000):
            guests[0].socket.sendall(b"PWD\r\n" * 10_000)


def commands_that_wait(test):
    for _ in range(4):
        guest = test.connect("ftp", MOMENT)
        with contextlib.suppress(OSError):
            for command in ("RETR ", "STOR ", "LIST ") * 21:
                guest.socket.sendall(command.encode() + b"x" * 500_000 + b"\r\n")


def active_port_again(test):
    guest = test.connect("ftp")
    guest.ask("CWD /up")
    argument = guest.listen()
    # The client's ends stay open: the system refuses the server's old port.
    for _ in range(3):
        guest.ask(f"PORT {argument}")
        data = guest.keep(guest.listener.accept()[0])
        guest.ask("LIST", b"complete.\r\n")
        test.assertIn(b"kept.txt", data.recv(65536))


# The same of a server that answers by HTTP.

def http(text, *statuses):
    """The request must get these answers, and the connection ends."""
    def act(test):
        guest = test.connect("web")
        with contextlib.suppress(ConnectionError):
            guest.socket.sendall(text.encode())
        answer = guest.receive(b"no end")
        test.check_said(answer)
        came = [int(status) for status in re.findall(rb"HTTP/1\.1 (\d+) ", answer)]
        test.assertEqual(came, list(statuses), answer[:200])
        test.assertNotRegex(answer, rb"(?i)\nX: y|<script|\xe2\x80\xae")
    return act


def held(*pieces):
    """As many clients as the server has room for send this, and neither end nor read."""
    def act(test):
        guests = [test.connect("web", MOMENT) for _ in range(SLOTS)]
        for piece in pieces:
            for guest in guests:
                with contextlib.suppress(OSError):
                    guest.socket.sendall(piece.encode())
            test.check_page()
    return act


ASKED = " HTTP/1.1\r\nHost: x\r\n"
LAST = ASKED + "Connection: close\r\n"
CHUNKED = f"POST /slow.exe{ASKED}Transfer-Encoding: chunked\r\n\r\n"
TO_PARENT = ("..", "%2e%2e", ".%2E", "..%2f", "..%5C", "..\\", "x/..%2f..", "%2e%2e%5c..")
TO_NOTHING = ("..;", "%c0%ae%c0%ae", "%252e%252e", "out", "out/x/..")
HTTP_ROWS = [
    ("headers that come byte by byte", held("GET /index.htm HT", "T", "P", "/1.1\r\nX", ":")),
    ("bodies that never come", held(f"POST /slow.exe{ASKED}Content-Length: 999\r\n\r\n", "x")),
    ("chunks that never end", held(CHUNKED + "9;", "x" * 9000, "x" * 9000)),
    ("answers that are never read", held(f"GET /large.bin{ASKED}\r\n" * 20, "GET")),
    ("a thousand requests at once",
     http(f"GET /index.htm{ASKED}\r\n" * 999 + f"GET /%00{LAST}\r\n", *[200] * 999, 400)),
    ("20,000 ranges", http(f"GET /large.bin{LAST}Range: bytes={'0-0,' * 20_000}\r\n\r\n", 431)),
    ("1,900 ranges", http(f"GET /index.htm{LAST}Range: bytes={'0-0,' * 1900}\r\n\r\n", 200)),
    ("a huge extension of a chunk", http(CHUNKED + "1;" + "x" * 9_000_000, 413)),
    ("a huge trailer", http(CHUNKED + "0\r\n" + "X: y\r\n" * 100_000, 431)),
    ("an endless body", http(CHUNKED + f"3E8\r\n{'x' * 1000}\r\n" * 2000, 413)),
    ("hostile names in a list", http(f"GET /list/{LAST}\r\n", 200)),
    ("a split redirection", http(f"GET /list?%0d%0aX:%20y{LAST}\r\n", 301)),
    ("a split name", http(f"GET /list%0d%0aX:%20y{LAST}\r\n", 400)),
    ("a request within another", http(f"GET /{LAST}X: y\r\n\rGET /cgi-bin/{LAST}\r\n", 400)),
    *((f"a way up by {up}", http(f"GET /{up}/victim.htm{LAST}\r\n", status))
      for ups, status in ((TO_PARENT, 400), (TO_NOTHING, 404)) for up in ups),
]

WEB_ROWS = [
    ("a NUL in GET", web("GET /../victim.htm\0.htm")),
    ("a NUL behind a shell", web(f"POST {UP}HOME/shell\0.cgi? HTTP/1.0\r\n"
                                 "Content-Length: 999\r\n\r\ntouch HOME/marker ; exit #")),
    ("a NUL behind a file", web(f"POST {UP}HOME/victim.htm\0.exe?")),
    ("a long resource", web(f"POST /{'x' * 60000}.cgi?")),
    ("a deep resource", web(f"POST {'/x' * 100000}.cgi?")),
    *[("a deep page again and again", web(f"GET {'/a' * 2000}"))] * 40,
    ("control characters in a GET", web("GET /x\r\n\n\r\x1b[2J\x7f\u009b.txt")),
    ("control characters in a POST", web("POST /x\r\n\n\r\x1b[2J\x7f\u009b.txt?")),
]

OTHER_ROWS = [
    *((f"a NUL in {commands[-1][:4]}", ftp("CWD /up", *commands)) for commands in (
        ["MKD new\0x"], ["RMD folder\0x"], ["DELE kept.txt\0x"], ["DELE kept*\0x"], ["STOR new\0x"],
        ["STOR kept.txt\0x"], ["RETR /victim.txt\0x"], ["RNFR kept.txt\0x", "RNTO moved"],
        ["RNFR kept.txt", "RNTO moved\0x"], ["CWD /up/full\0x", "LIST"], ["SIZE kept.txt\0x"])),
    ("a folder of 128 KiB", ftp_folder("/a" * 65536)),
    ("a name of 512 KiB", ftp_folder("a" * 524288)),
    ("separators alone", ftp_folder("/" * 262144)),
    ("wildcards", ftp("CWD /up/full", f"DELE {'*?' * 100_000}x", f"DELE {'*a' * 100_000}x")),
    ("replies that are never read", replies_unread),
    ("commands that wait for their data connections", commands_that_wait),
    ("the same client port again", active_port_again),
    ("a NUL in a recipient", mail("smtp", "RCPT TO:<box\0x@x>", b"550 Account not exist\r\n")),
    ("a NUL in a user", mail("pop3", "USER box\0x", b"-ERR Account not exist\r\n")),
    ("a long sender", mail("smtp", f"MAIL FROM:<{'a' * 30_000}@x>", b"550 Account not exist\r\n")),
]


class HostileTest(ProgramTest):
    rows = WEB_ROWS + OTHER_ROWS
    answers = protection = ""

    def setUp(self):
        super().setUp()
        web, other = self.home.read("Server.ini").split("[FtpServer")
        self.home.write("Server.ini", f"{web}{self.answers}[FtpServer{other}{self.protection}")
        for name, content in FILES.items():
            self.home.write(name, content)
        for name, source in PROGRAMS.items():
            self.home.write(name, pathlib.Path(source).read_bytes())
            (self.home.path / name).chmod(0o755)
        (self.home.path / "ftproot/up/folder").mkdir()
        self.guests = contextlib.ExitStack()
        self.addCleanup(self.guests.close)
        self.files_at_first = self.files()
        self.process = self.home.start_services()

    def files(self):
        paths = self.home.path.rglob("*")
        return {(path, path.read_bytes()[:100] if path.is_file() else b"") for path in paths
                if not re.match(WRITTEN_IN_ORDINARY_LIFE, str(path.relative_to(self.home.path)))}

    def memory(self):
        """MiB that it has held at most; 0 where the system does not tell."""
        if ON_WINDOWS:
            return 0
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text()
        size, resident = (int(re.search(rf"{key}:\s*(\d+)", status)[1])
                          for key in ("VmSize", "VmHWM"))
        sanitized = size > 1 << 30  # its shadow memory
        return resident // 1024 // (10 if sanitized else 1)

    def connect(self, service, patience=PATIENCE):
        """A conversation that lasts until all others were served beside it."""
        kind = FtpConversation if service == "ftp" else Conversation
        guest = kind(self.home.ports[service], b"" if service == "web" else b"\r\n")
        guest.socket.settimeout(patience)
        self.guests.callback(guest.close)
        return guest

    def check_said(self, said):
        self.assertFalse(any(text in said for text in NEVER_SENT), said[:200])

    def check_others(self):
        """Everybody else is served."""
        self.check_page()
        for service, reply in (("ftp", b"200 \r\n"), ("smtp", b"250 OK\r\n"), ("pop3", b"+OK\r\n")):
            def is_served(port=self.home.ports[service], reply=reply):
                with contextlib.closing(Conversation(port)) as guest:
                    return guest.ask("NOOP") == reply
            # FTP takes nobody on the slot of one who is still there.
            self.assertTrue(any(is_served() for _ in range(20)), service)

    def check_files(self):
        self.assertEqual(self.files() ^ self.files_at_first, set())

    def test_no_row_stops_fills_or_takes_anything(self):
        for name, act in self.rows:
            with self.subTest(name):
                act(self)
                self.check_others()
                self.check_files()
                self.assertLess(self.memory(), MOST_MEBIBYTES)
                for log in self.home.path.glob("*.[Ll]og"):
                    self.assertIsNone(CONTROL.search(log.read_bytes()), log)
                self.guests.close()

    def test_it_ends_at_once_in_the_middle_of_it(self):
        self.connect("web").socket.sendall(b"POST /slow.exe? HTTP/1.0\r\n\r\n")
        wait_until((self.home.path / "wwwroot/cgi-bin/TempFileIn").exists, "the program")
        for act in (replies_unread, commands_that_wait, ftp("CWD /up" + "/a" * 65536, "LIST")):
            act(self)
        if ON_WINDOWS:
            self.assertEqual(self.home.run("STOP"), (0, "", ""))
        else:
            self.process.terminate()
        self.assertEqual(self.process.wait(END_PATIENCE), 0)
        self.assertFalse(accepts(self.home.ports["web"]))
        # The page of the program that runs does not stay behind for everybody.
        self.check_files()


class ProtectedHostileTest(HostileTest):
    """The same clients, where strangers are not trusted."""
    protection = "[Protection]\r\nReach=lan\r\nConfine=1\r\nHonest=1\r\n"


class HttpHostileTest(HostileTest):
    """Those of a Web server that answers by HTTP."""
    rows = WEB_ROWS + HTTP_ROWS
    answers = "Answers=HTTP\r\nSpeed=0\r\n"
    protection = "[Protection]\r\nConfine=1\r\n"

    def setUp(self):
        super().setUp()
        if not ON_WINDOWS:
            for name in NAMES_ON_LINUX:
                self.home.write(f"wwwroot/list/{name}", "")
            (self.home.path / "wwwroot/out").symlink_to("..")
        self.files_at_first = self.files()

    def check_page(self):
        def is_served():
            return self.home.get("/index.htm").endswith(b"\r\n\r\n" + PAGE)
        self.assertTrue(any(is_served() for _ in range(20)))


if __name__ == "__main__":
    run_tests()
