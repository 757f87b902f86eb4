"""Plays the conversations in tests/conversations against the program of either system.

    conversations_test.py PROGRAM CGI_ECHO [FILE...]

The program is started once per file. With TARNWERK_TEST_ENCODING=gbk the conversations are in GBK, and
it runs on a system whose code page that is. README.md beside the conversations describes their language.
"""

import contextlib
import pathlib
import re
import shutil
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from conversation import FtpConversation  # noqa: E402
from conversation_text import (CONVERSATIONS, DIRECTION, EXCHANGE, FILES, Awaited,  # noqa: E402
                               alternatives, as_line, parts, rows, scenes)
from program import ENCODING, accepts, everything, home_of, run_tests, wait_until  # noqa: E402

PROGRAM, CGI = sys.argv[1], pathlib.Path(sys.argv[2])
SECTIONS = {"web": "Web", "ftp": "FTP", "smtp": "SMTP", "pop3": "POP3"}
NOOP = {"ftp": "200␣", "smtp": "250 OK", "pop3": "+OK"}
WITNESS = "pop3 witness"
SENDING = "150 Opening ASCII mode data connection for /bin/ls."
RECEIVING = "150 数据连接已经打开，可以发送数据."


def is_taken(connection):
    """Whether the program has accepted and read it, as Linux shows even of a program under Wine."""
    ends = [f":{port:04X}" for _, port in (connection.getpeername(), connection.getsockname())]
    for line in pathlib.Path("/proc/net/tcp").read_text(encoding="ascii").splitlines():
        words = line.split()
        if [word[-5:] for word in words[1:3]] == ends:
            return words[4].endswith(":00000000") and words[9] != "0"
    return True


class Client(FtpConversation):
    """A client that knows what it expects. `received`: what has come beyond that."""

    def __init__(self, service, port):
        super().__init__(port, greeting=b"")
        self.service = service
        self.received = b""

    def expect(self, awaited):
        while (size := awaited.size_in(self.received)) is None:
            piece = b""
            with contextlib.suppress(TimeoutError):
                piece = self.socket.recv(65536)
            self.received += piece
            if not piece:
                awaited.check_all(self.received)
        self.note_port(self.received)
        self.received = self.received[size:]

    def expect_to_the_end(self, awaited):
        awaited.check_all(self.received + everything(self.socket))


class Stage:
    """A program and the clients of the current scene, by their names."""

    def __init__(self, service, statements):
        self.service = service
        self.home = home_of(PROGRAM)
        self.definitions = {"home": self.home.native(self.home.path).replace("/", "\\")}
        self.clients = {}
        self.seen = set()  # the names of the files that the scene has looked at
        self.home.write_settings()
        self.play_all(each for each in statements
                      if each.startswith(("setting ", "define ", "given ")))
        self.home.start_services()

    def play_scene(self, statements):
        try:
            self.begin_scene()
            self.play_all(each for each in statements if not each.startswith("setting "))
            self.end_scene()
        finally:
            while self.clients:
                self.clients.popitem()[1].close()

    def begin_scene(self):
        for path in (self.home.path / name for name in ("wwwroot", "ftproot", "mailroot", "outside")):
            # Not while the program still unpacks a message there.
            wait_until(lambda path=path: shutil.rmtree(path, ignore_errors=True) or
                       not path.exists(), f"{path} to be free")
            path.mkdir()
        # Makes the mail server forget recipients and user. There are no messages left to unpack.
        self.exchange("smtp", "QUIT", "221")
        self.clients.pop("smtp").close()
        self.exchange(WITNESS, "REST", "+OK")
        for log in ("RunErr.Log", "Web.log", "Mail.log"):
            (self.home.path / log).unlink(missing_ok=True)
        self.seen.clear()

    def end_scene(self):
        for name, client in self.clients.items():
            if client.service == "web":  # which has not been answered
                client.socket.sendall(b"GET /.none HTTP/1.0\r\n")
                client.expect_to_the_end(self.awaited(""))
            else:
                self.exchange(name, "NOOP", NOOP[client.service])
        for log in {"RunErr.Log", "Web.log"} - self.seen:
            assert not (self.home.path / log).exists(), f"{log} has\n{self.home.read(log)}"

    # Statements

    def play_all(self, statements):
        for text in statements:
            try:
                self.play(text)
            except (AssertionError, OSError) as error:
                raise AssertionError(f"{text[:200]}: {error}") from None

    def play(self, text):
        word, _, rest = text.partition(" ")
        if word in ("setting", "define", "given", "then", "table"):
            getattr(self, f"play_{word}")(rest)
        elif direction := DIRECTION.fullmatch(text):
            self.play_direction(direction[1] or self.service, direction[2])
        else:
            name, sent, arrow, data, answer = EXCHANGE.fullmatch(text).groups()
            sent, answers = alternatives(sent), answer.split(" | ")
            for one, reply in zip(sent, answers * (len(sent) // len(answers)), strict=True):
                if arrow:
                    self.transfer(name or self.service, one, arrow, data, reply)
                else:
                    self.exchange(name or self.service, one, reply)

    def play_setting(self, text):
        section, text = re.fullmatch(r"(?:\[(.*)\] )?(.*)", text).groups("Protection")
        key, header = text.split("=")[0], f"[{section}]\r\n"
        settings, found = re.subn(f"(?m)^{key}=[^\r]*", text, self.home.read("Server.ini"))
        if header not in settings:
            settings += header
        self.home.write("Server.ini", settings if found else
                        settings.replace(header, f"{header}{text}\r\n"))

    def play_define(self, text):
        name, self.definitions[name] = text.split(": ", 1)

    def play_given(self, text):
        for kind, path, content in self.files(text):
            if kind == "folder":
                path.mkdir(parents=True, exist_ok=True)
            else:
                self.home.write(path, CGI.read_bytes() if kind else self.bytes_of(content))
                path.chmod(0o755 if kind else 0o644)

    def play_then(self, text):
        for kind, path, content in self.files(text):
            if kind == "folder":
                assert path.is_dir(), path
            elif kind:
                wait_until(lambda path=path: not path.exists(), f"the end of {path}")
            if kind:
                continue
            self.seen.add(path.name)
            awaited = self.awaited(content)
            with contextlib.suppress(AssertionError):
                wait_until(lambda path=path: path.is_file() and awaited.is_all(path.read_bytes()), path)
            awaited.check_all(path.read_bytes() if path.is_file() else b"<no file>")

    def files(self, text):
        kind, names, content = FILES.fullmatch(text).groups()
        for name in alternatives(names):
            yield kind, self.home.path / self.home.file_name(self.bytes_of(name)), content

    def play_table(self, section):
        for sent, answer in rows(section):
            if sent:  # the other row is the greeting
                self.exchange(self.service, sent, answer)

    def play_direction(self, name, text):
        if text == "is refused":
            with contextlib.closing(Client(self.service, self.home.ports[self.service])) as refused:
                refused.expect_to_the_end(self.awaited(""))
        elif text == "18 others come and go":
            for _ in range(18):
                self.client("other")
                self.clients.pop("other").close()
        elif text.startswith("data "):
            self.play_data(name, *text[5:].split(" ", 1))
        else:
            assert text in ("comes", "leaves", "is closed"), text
            client = self.client(name)
            if text == "is closed":
                client.expect_to_the_end(self.awaited(""))
            if text != "comes":
                self.clients.pop(name).close()

    def play_data(self, name, what, text=""):
        client = self.client(name)
        if what == "connects":
            self.connect_data(name)
            self.settle(client.data)
        elif what == "sends":
            client.data.sendall(self.bytes_of(text))
        elif what == "brings":
            self.awaited(text).check_all(client.fetch_data())
        elif what == "closes":
            client.end_data()
            self.awaited("").check_all(client.fetch_data())
        elif text == "sent":
            client.end_data()
        else:
            assert text == "refused", (what, text)
            # Another client may have got the same port by chance.
            taken = [each.data_port for each in self.clients.values() if each is not client]
            assert client.data_port in taken or not accepts(client.data_port)

    # Texts and clients

    def bytes_of(self, text):
        return b"".join(parts(text, self.definitions))

    def awaited(self, text):
        return Awaited(text, self.definitions)

    def client(self, name):
        if name not in self.clients:
            service = name.split()[0] if name.split()[0] in SECTIONS else self.service
            self.clients[name] = Client(service, self.home.ports[service])
            if service != "web":
                greeting = next(answer for sent, answer in rows(SECTIONS[service]) if not sent)
                self.exchange(name, "", greeting)
        return self.clients[name]

    def settle(self, connection):
        """Waits until the program has accepted `connection`, has read it and has acted on that.

        It has a single event loop: an answer to another client shows that it has gone on.
        """
        wait_until(lambda: is_taken(connection), "the program to read")
        self.exchange(WITNESS, "NOOP", "+OK")

    def exchange(self, name, sent, answer):
        client = self.client(name)
        if "{listener}" in sent:
            self.definitions["listener"] = client.listen()
        if sent:
            client.socket.sendall(self.bytes_of(as_line(sent)))
        if answer == "nothing":
            self.settle(client.socket)
        elif client.service == "web":
            client.expect_to_the_end(self.awaited(answer))
            self.clients.pop(name).close()
        else:
            client.expect(self.awaited(as_line(answer)))

    def connect_data(self, name):
        if not (self.client(name).data_port or self.client(name).listener):
            self.exchange(name, "PASV", "227 (127,0,0,1,4,{number}).")
        self.client(name).open_data()

    def transfer(self, name, sent, arrow, data, answer):
        client, is_upload = self.client(name), arrow == "⇒"
        if client.listener or not client.data:
            self.connect_data(name)
        if sent:
            begins = "¬" if answer.startswith("550") else RECEIVING if is_upload else SENDING
            self.exchange(name, sent, begins)
        if is_upload:
            client.end_data(self.bytes_of(data))
        else:
            self.awaited(data).check_all(client.fetch_data())
        self.exchange(name, "", answer)
        if is_upload:
            self.awaited("").check_all(client.fetch_data())


class ConversationsTest(unittest.TestCase):
    @unittest.skipUnless(PROGRAM.endswith(".exe"), "a test of what Wine makes of the locale")
    def test_the_code_page_is_the_one_that_the_run_is_for(self):
        home = home_of(PROGRAM)
        self.addCleanup(home.close)
        self.assertEqual(home.code_page(), {"gbk": 936, "utf-8": 1252}[ENCODING])

    def test_every_scene(self):
        for path in sorted(CONVERSATIONS.glob("*.txt")):
            if path.name in (sys.argv[3:] or [path.name]):
                with self.subTest(path.stem):
                    self.play(path.stem.split("_")[0], *scenes(path))

    def play(self, service, common, *scenes_of_file):
        stage = Stage(service, common)
        self.addCleanup(stage.home.close)
        for title, *statements in scenes_of_file:
            with self.subTest(title):
                stage.play_scene(common + statements)


if __name__ == "__main__":
    run_tests()
