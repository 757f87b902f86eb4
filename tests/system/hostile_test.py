"""What hostile clients send to the four ports: nobody else waits for an answer, nothing fills, and no
file is run, sent, changed or removed that must not be. The same rows on both systems.

hostile_test.py PROGRAM CGI_PROGRAM
"""

import contextlib
import os
import pathlib
import re
import signal
import socket
import sys
import threading
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from conversation import Conversation, FtpConversation  # noqa: E402
from program import Home, accepts, fetch, free_port, wait_until  # noqa: E402
from windows_program import WindowsHome  # noqa: E402

program = cgi_program = ""
on_windows = False

PATIENCE = 10  # seconds for everybody else's answer
MOMENT = 0.5  # seconds that a hostile client waits for an answer of its own
END_PATIENCE = 2  # seconds from being asked to end; this is promised
MOST_MEBIBYTES = 100
UP = "/.." * 30  # the root, from wherever the test runs
PAGE, OWN_PAGE, SECRET = b"<p>home</p>", b"a page of the site", b"for nobody"
LISTED = "000" + "a" * 200
NEVER_SENT = (OWN_PAGE, SECRET, LISTED.encode())
GET_PAGE = b"GET /index.htm HTTP/1.0\r\n\r\n"
CONTROL = re.compile(rb"[\x00-\x09\x0b\x0c\x0e-\x1f\x7f]|\xc2[\x80-\x9f]|\r[^\n]|[^\r]\n")
SCRIPTS = {  # of Linux; $2 is the page
    "early.cgi": 'echo early > "$2"; sleep 4',
    "late.cgi": '[ -e "$2" ] || (sleep 1; echo late > "$2") > /dev/null 2>&1 &',
}


class Ground:
    """The program with a site, an upload folder, a mailbox, and files that must stay as they are."""

    def __init__(self):
        self.home = home = WindowsHome(program) if on_windows else Home([program])
        self.guests = contextlib.ExitStack()
        home.write_settings()
        home.write("victim.htm", SECRET)
        # A copy: were it run, it would be sent and removed as well.
        home.write("shell", pathlib.Path("/bin/sh").read_bytes())
        (home.path / "shell").chmod(0o755)
        home.write("wwwroot/index.htm", PAGE)
        home.write("wwwroot/cgi-bin/broken.exe", "no program")
        for name in ("silent", "broken"):
            home.write(f"wwwroot/{name}.htm", OWN_PAGE)
        self.write_programs()
        home.write("ftproot/victim.txt", SECRET)
        home.write("ftproot/up/kept.txt", "kept")
        home.write(f"ftproot/up/full/{LISTED}", "")
        (home.path / "ftproot/up/folder").mkdir()
        home.write("mailroot/User/box/UserInfo.ini", "[用户信息]\r\nPassword=x\r\n")
        home.write("mailroot/User/box/Message_1.eml", "kept")
        self.files_at_first = self.files()

    def write_programs(self):
        content = pathlib.Path(cgi_program).read_bytes()
        programs = {name: content for name in ("form.exe", "slow.exe", "silent.exe")}
        if not on_windows:
            programs |= {name: f"#!/bin/sh\n{text}\n" for name, text in SCRIPTS.items()}
        for name, content in programs.items():
            self.home.write(f"wwwroot/cgi-bin/{name}", content)
            (self.home.path / "wwwroot/cgi-bin" / name).chmod(0o755)

    def start(self):
        self.process = self.home.start("START", "SHOW")
        self.home.wait_for_services()

    def files(self):
        """All but what is written in an ordinary life."""
        ours = re.compile(r"config|runtime|startflg|hosts|.*\.[Ll]og$|wwwroot/cgi-bin/TempFile")
        names = ((str(path.relative_to(self.home.path)), path) for path in self.home.path.rglob("*"))
        return {name: path.read_bytes()[:100] if path.is_file() else "" for name, path in names
                if not ours.match(name)}

    def memory(self):
        """MiB that it has held at most; 0 where the system does not tell."""
        if on_windows:
            return 0
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text()
        size, resident = (int(re.search(rf"{key}:\s*(\d+)", status)[1]) for key in ("VmSize", "VmHWM"))
        sanitized = size > 1 << 30  # its shadow memory
        return resident // 1024 // (10 if sanitized else 1)

    def connect(self, service, patience=PATIENCE):
        """A conversation that lasts until all others were served beside it."""
        kind = FtpConversation if service == "ftp" else Conversation
        guest = kind(self.home.ports[service], b"" if service == "web" else b"\r\n")
        guest.socket.settimeout(patience)
        self.guests.callback(guest.close)
        return guest

    def post(self, resource):
        return fetch(self.home.ports["web"], f"POST /{resource}? HTTP/1.0\r\n\r\n".encode())

    def check_others(self):
        """Everybody else is served."""
        assert fetch(self.home.ports["web"], GET_PAGE) == PAGE
        for service, reply in (("ftp", b"200 \r\n"), ("smtp", b"250 OK\r\n"), ("pop3", b"+OK\r\n")):
            for _ in range(20):  # FTP takes nobody on the slot of one who is still there
                guest = Conversation(self.home.ports[service])
                answer = guest.ask("NOOP")
                guest.close()
                if answer == reply:
                    break
            assert answer == reply, (service, answer)

    def check_traces(self):
        """Nothing is held or was touched."""
        self.check_files()
        assert self.memory() < MOST_MEBIBYTES, f"{self.memory()} MiB"
        for log in self.home.path.glob("*.[Ll]og"):
            assert not (found := CONTROL.search(log.read_bytes())), (log.name, found)

    def check_files(self):
        files = self.files()
        assert files == self.files_at_first, set(files.items()) ^ set(self.files_at_first.items())

    def close(self):
        self.guests.close()
        self.home.close()


# What a row does to the ground.

def web(request):
    def act(ground):
        guest = ground.connect("web")
        answer = guest.ask(request.replace("HOME", str(ground.home.path)).encode(), b"<never>")
        assert not any(text in answer for text in (PAGE, *NEVER_SENT)), answer[:200]
    return act


def ftp(*commands):
    """A listing or transfer gets its data connection. To be closed on is no fault."""
    def act(ground):
        guest = ground.connect("ftp", MOMENT)
        # A long command can arrive in pieces, each with a reply, and the one to PASV is missed.
        is_long = max(map(len, commands)) > 4096
        for command in commands:
            with contextlib.suppress(OSError, *[IndexError] * is_long):
                if command[:4] in ("LIST", "RETR", "STOR"):
                    guest.transfer(command, b"new" * 100_000 if command[:4] == "STOR" else None)
                else:
                    guest.ask(command)
        said = repr(guest.transcript).encode()
        assert not any(text in said for text in NEVER_SENT), said[:200]
    return act


def mail(service, command, refusal):
    def act(ground):
        answer = ground.connect(service).ask(command)
        assert answer == refusal, answer[:200]
    return act


def in_ftp_folder(folder):
    return ftp("CWD /up" + folder, "LIST", "PWD", "MKD x", "RMD x", "STOR x", "RETR x", "SIZE x",
               "DELE x", "DELE x*", "RNFR x", "RNTO y", "CWD /up", f"MKD x{folder}", f"RMD x{folder}",
               f"STOR x{folder}", f"RETR x{folder}", f"DELE x{folder}", f"DELE x{folder}*",
               f"RNFR x{folder}", f"RNTO x{folder}")


def long_pages(ground):
    def ask_again_and_again():
        for _ in range(40):
            fetch(ground.home.ports["web"], b"GET " + b"/a" * 2000 + b" HTTP/1.0\r\n\r\n")
    clients = [threading.Thread(target=ask_again_and_again, daemon=True) for _ in range(10)]
    for client in clients:
        client.start()
    end = time.monotonic() + PATIENCE
    for client in clients:
        client.join(max(0, end - time.monotonic()))
    assert not any(client.is_alive() for client in clients)


def replies_unread(ground):
    guests = [ground.connect("ftp", MOMENT) for _ in range(4)]
    for guest in guests:
        guest.ask("CWD /" + "a" * 60_000)
    with contextlib.suppress(OSError):
        for _ in range(1000):
            for guest in guests:
                guest.socket.sendall(b"PWD\r\n")
            time.sleep(0.004)  # so that each is an arrival of its own
    with contextlib.suppress(OSError):
        for _ in range(1000):
            guests[0].socket.sendall(b"PWD\r\n" * 10_000)


def commands_that_wait(ground):
    for _ in range(4):
        guest = ground.connect("ftp", MOMENT)
        with contextlib.suppress(OSError):
            for number in range(63):
                command = ("RETR ", "STOR ", "LIST ")[number % 3]
                guest.socket.sendall(command.encode() + b"x" * 500_000 + b"\r\n")


def posts_of_nobody(ground):
    def come():
        for _ in range(30 if on_windows else 100):  # Wine takes long to accept each
            with contextlib.suppress(OSError), socket.create_connection(
                    ("127.0.0.1", ground.home.ports["web"]), PATIENCE) as client:
                client.sendall(b"POST /slow.exe? HTTP/1.0\r\n\r\n" + b"x" * 1_000_000)
    clients = [threading.Thread(target=come) for _ in range(8)]
    for client in clients:
        client.start()
    for client in clients:
        client.join()
    assert ground.post("form.exe").startswith(b"3|")


def forged_lines(ground):
    for method in ("GET", "POST"):
        fetch(ground.home.ports["web"],
              f"{method} /x\r\n时间：2026\x1b[2J\x7f\u009b.txt? HTTP/1.0\r\n\r\n".encode())
    lines = ground.home.read("Web.log").splitlines()
    assert len(lines) >= 1 and all(line.startswith("时间：") for line in lines), lines


def forged_entries(ground):
    guest = ground.connect("ftp")
    guest.ask("CWD /up")
    guest.ask("MKD one\r\ntwo\x1b[2J")
    entries = list((ground.home.path / "ftproot/up").iterdir())
    listing = guest.transfer("LIST").decode()
    for entry in entries:
        if "\r" in entry.name:
            entry.rmdir()
    assert len(listing.splitlines()) == len(entries), listing


def page_written_late(ground):
    page = ground.home.path / "wwwroot/late.htm"
    assert b"404" in ground.post("late.cgi")
    wait_until(page.exists, "the page of the child")
    answer = ground.post("late.cgi")
    page.unlink(missing_ok=True)
    assert b"404" in answer, answer


def active_port_again(ground):
    guest = ground.connect("ftp")
    guest.ask("CWD /up")
    port = free_port()
    with socket.create_server(("127.0.0.1", port)) as listener:
        listener.settimeout(PATIENCE)
        # The client's ends stay open: the system refuses the server's old port.
        for _ in range(3):
            guest.ask(f"PORT 127,0,0,1,{port // 256},{port % 256}")
            data = listener.accept()[0]
            ground.guests.enter_context(data)
            guest.ask("LIST", b"complete.\r\n")
            assert b"kept.txt" in data.recv(65536)


def store_in_fifo(ground):
    fifo = ground.home.path / "ftproot/up/fifo"
    os.mkfifo(fifo)
    try:
        ftp("CWD /up", "STOR fifo", "RETR fifo", "LIST")(ground)
        ground.check_others()
    finally:
        fifo.unlink()


ROWS = [
    ("a NUL in GET", web("GET /../victim.htm\0.htm HTTP/1.0\r\n\r\n")),
    ("a NUL at the end of GET", web("GET /../victim.htm\0 HTTP/1.0\r\n\r\n")),
    ("a NUL behind a shell", web(f"POST {UP}HOME/shell\0.cgi? HTTP/1.0\r\nContent-Length: 999\r\n\r\n"
                                 "touch HOME/marker ; exit #")),
    ("a NUL behind a program", web(f"POST {UP}HOME/wwwroot/cgi-bin/form.exe\0.exe? HTTP/1.0\r\n\r\n")),
    ("a NUL behind a file", web(f"POST {UP}HOME/victim.htm\0.exe? HTTP/1.0\r\n\r\n")),
    ("a page of the site beside a silent program", web("POST /silent.exe? HTTP/1.0\r\n\r\n")),
    ("a page of the site beside no program", web("POST /broken.exe? HTTP/1.0\r\n\r\n")),
    ("a long resource", web(f"POST /{'x' * 60000}.cgi? HTTP/1.0\r\n\r\n")),
    ("a deep resource", web(f"POST {'/x' * 100000}.cgi? HTTP/1.0\r\n\r\n")),
    ("long pages of many", long_pages),
    ("posts of clients that have gone", posts_of_nobody),
    ("control characters in a resource", forged_lines),
    *((f"a NUL in {commands[-1][:4]}", ftp("CWD /up", *commands)) for commands in (
        ["MKD new\0x"], ["RMD folder\0x"], ["DELE kept.txt\0x"], ["DELE kept*\0x"], ["STOR new\0x"],
        ["STOR kept.txt\0x"], ["RETR /victim.txt\0x"], ["RNFR kept.txt\0x", "RNTO moved"],
        ["RNFR kept.txt", "RNTO moved\0x"], ["CWD /up/full\0x", "LIST"], ["SIZE kept.txt\0x"])),
    ("a folder of 128 KiB", in_ftp_folder("/a" * 65536)),
    ("a folder of 512 KiB", in_ftp_folder("/a" * 262144)),
    ("a name of 512 KiB", in_ftp_folder("a" * 524288)),
    ("separators alone", in_ftp_folder("/" * 262144)),
    ("wildcards", ftp("CWD /up/full", f"DELE {'*?' * 100_000}x", f"DELE {'*a' * 100_000}x")),
    ("replies that are never read", replies_unread),
    ("commands that wait for their data connections", commands_that_wait),
    ("a name of two lines", forged_entries),
    ("the same client port again", active_port_again),
    ("a NUL in a sender", mail("smtp", "MAIL FROM:<box\0x@x>", b"550 Account not exist\r\n")),
    ("a NUL in a recipient", mail("smtp", "RCPT TO:<box\0x@x>", b"550 Account not exist\r\n")),
    ("a NUL in a user", mail("pop3", "USER box\0x", b"-ERR Account not exist\r\n")),
    ("a long user", mail("pop3", "USER " + "a" * 30_000, b"-ERR Account not exist\r\n")),
    ("a long sender", mail("smtp", f"MAIL FROM:<{'a' * 30_000}@x>", b"550 Account not exist\r\n")),
]
LINUX_ROWS = [("STOR into a FIFO", store_in_fifo), ("a page written late", page_written_late)]


class HostileTest(unittest.TestCase):
    def test_no_row_stops_fills_or_takes_anything(self):
        ground = None
        for name, act in ROWS + ([] if on_windows else LINUX_ROWS):
            with self.subTest(name):
                # A row that failed is no excuse for the next one.
                if not ground:
                    ground = Ground()
                    self.addCleanup(ground.close)
                    ground.start()
                current, ground = ground, None
                act(current)
                current.check_others()
                current.check_traces()
                current.guests.close()
                ground = current

    def test_it_ends_at_once_in_the_middle_of_it(self):
        ground = Ground()
        self.addCleanup(ground.close)
        ground.start()
        for name in ("early.cgi", "slow.exe")[on_windows:]:
            ground.connect("web").socket.sendall(f"POST /{name}? HTTP/1.0\r\n\r\n".encode())
        program_input = ground.home.path / "wwwroot/cgi-bin/TempFileIn"
        wait_until(program_input.exists, "the program")
        for act in (replies_unread, commands_that_wait):
            act(ground)
        ftp("CWD /up" + "/a" * 65536, "LIST")(ground)
        if on_windows:
            self.assertEqual(ground.home.run("STOP"), (0, "", ""))
        else:
            ground.process.send_signal(signal.SIGTERM)
        self.assertEqual(ground.process.wait(PATIENCE if on_windows else END_PATIENCE), 0)
        self.assertFalse(accepts(ground.home.ports["web"]))
        # The page of the program that runs does not stay behind for everybody.
        ground.check_files()


if __name__ == "__main__":
    program, cgi_program = sys.argv[1:3]
    on_windows = program.endswith(".exe")
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
