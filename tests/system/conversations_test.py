"""Plays the conversations in tests/conversations against the program, on either system.

    conversations_test.py PROGRAM CGI_ECHO [FILE...]

The program is started once per file. A file consists of scenes; each begins with fresh folders, no
connections and no logs, but what the servers themselves remember stays. Lines before the first scene
hold for every scene.

    # a comment
    setting KEY=VALUE           changes Server.ini; before the first scene only
    define NAME: TEXT           from here on, {NAME} is TEXT
    == TITLE                    begins a scene
    given FILE: CONTENT         writes a file in the program's folder
    given folder NAME           makes a folder
    given program FILE          a CGI program whose page is what it was given
    SENT → ANSWER               sends a line in one arrival; exactly this must come back
    SENT | SENT → ANSWER        one after the other, each with the same answer
    SENT | SENT → ANSWER | ANSWER
    SENT → nothing              no answer: what comes next must be the answer to a later line
    → ANSWER                    comes by itself
    SENT ⇐ DATA → ANSWER        an FTP download or listing over a data connection, with its final reply;
                                the first one is implied. Without SENT, one that has begun
    SENT ⇒ DATA → ANSWER        an upload
    then FILE: CONTENT          waits until the file has this content
    then folder NAME            the folder exists
    then no NAME                nothing of that name exists
    table SECTION               plays the table in that section of docs/protocols.md
    [comes]                     connects and sends nothing
    [leaves]                    closes the connection
    [is closed]                 the server closes the connection, without another byte
    [is refused]                connects, and is closed without a byte
    [18 others come and go]     so that the next client gets the same slot again
    [data connects]             to the port of the last PASV, which is sent if there was none
    [data sends DATA]
    [data is sent]              the client has no more to send
    [data closes]               both ends close the data connection
    [data brings DATA]          receives this up to the end
    [data is refused]           nobody listens on that port

"NAME: " in front names the client: that of another server, or another one of this file's own server.
Without it, it is the client of the server that the file's name begins with. A client connects at its
first line and must get the greeting. At the end of a scene it sends a NOOP, whose answer must come
next. For the web server, an answer is everything up to the end of the connection, and the next request
goes over a new one.

A line that begins with four blanks continues the previous one after a CR LF. CR LF is added to what is
sent, and to answers of all servers but the web server. Texts may contain

    ␣           a blank, where it would not be seen
    ␍␊          CR LF
    ¬           at the end: no CR LF follows
    \\xFF        a byte
    {TEXT*N}    TEXT, N times; {random*N} is N bytes, the same every time
    {1..9}      in what is sent or given: one line or file for each number
    {home}      the program's folder, as replies show it
    {listener}  as the argument of PORT: where the client waits for the data connection
    {page FILE} a file beside the conversations
    {time} {date} {number} {any} {anything}
                in what is expected; {any} stays within a line and begins with no blank

A scene fails if RunErr.Log or Web.log exists and no "then" names it.
"""

import contextlib
import itertools
import pathlib
import random
import re
import shutil
import socket
import sys
import time
import unittest

TESTS = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(TESTS / "support"))
from program import Home, accepts, free_port  # noqa: E402
from windows_program import WindowsHome  # noqa: E402

CONVERSATIONS = TESTS / "conversations"
DOCUMENT = (TESTS.parent / "docs/protocols.md").read_text(encoding="utf-8")
SECTIONS = {"web": "Web", "ftp": "FTP", "smtp": "SMTP", "pop3": "POP3"}
NOOP = {"ftp": "200␣", "smtp": "250 OK", "pop3": "+OK"}
SENDING = "150 Opening ASCII mode data connection for /bin/ls."
RECEIVING = "150 数据连接已经打开，可以发送数据."
PROGRAM, CGI = sys.argv[1], pathlib.Path(sys.argv[2])
PATIENCE = 10  # seconds for anything that is waited for

SIGNS = {"␍␊": b"\r\n", "␣": b" ", "¬": b""}
VARYING = {"time": rb"\d{4}-\d\d-\d\d \d\d:\d\d:\d\d", "date": rb"[A-Z][a-z]{2} \d\d \d{4}",
           "number": rb"\d+", "any": rb"[^\r\n ][^\r\n]*", "anything": rb"(?s:.*)"}
TOKEN = re.compile(r"\\x([0-9A-F]{2})|\{([^{}]+)\}|␍␊|.", re.DOTALL)
CLIENT = r"(?:([a-z0-9]+): )?"
DIRECTION = re.compile(CLIENT + r"\[(.*)\]")
EXCHANGE = re.compile(CLIENT + r"(.*?)(?:(?:^| )([⇐⇒]) ?(.*?))?(?:^| |(?<=[ ␊]))→ ?(.*)")


def rows(section):
    """(sent, answer) of every line of the first table in that section of the document."""
    text = DOCUMENT.split(f"\n## {section}\n")[1].split("\n## ")[0]
    table = re.search(r"(?:^\|.*\n)+", text, re.MULTILINE)[0]
    for line in table.splitlines()[2:]:
        sent, answer = (cell.strip() for cell in re.fullmatch(r"\|(.*)\|(.*)\|", line).groups())
        if not answer.startswith("`"):
            answer = "nothing" if answer == "*nothing*" else f"{{{answer}}}"
        yield sent.strip("`"), answer.strip("`") or "␍␊¬"


def statements(path):
    """(line number, text) of every statement."""
    whole = []
    for number, line in enumerate(path.read_text(encoding="utf-8").split("\n"), 1):
        if line.startswith("    "):
            whole[-1] = (whole[-1][0], f"{whole[-1][1]}␍␊{line[4:]}")
        elif line and not line.startswith("#"):
            whole.append((number, line))
    return whole


def alternatives(text):
    parts = re.split(r"\{(\d+)\.\.(\d+)\}", text, maxsplit=1)
    if len(parts) == 1:
        return text.split(" | ")
    return [f"{parts[0]}{n}{parts[3]}" for n in range(int(parts[1]), int(parts[2]) + 1)]


def wait_until(condition, what):
    end = time.monotonic() + PATIENCE
    while not condition():
        assert time.monotonic() < end, f"waited in vain for {what}"
        time.sleep(0.002)


class OtherEnd:
    """The server's end of a connection, as Linux shows it, for a program under Wine too."""

    ESTABLISHED, CLOSE_WAIT = 1, 8

    def __init__(self, connection):
        ends = connection.getpeername(), connection.getsockname()
        self.ports = [f":{port:04X}" for _, port in ends]

    def look(self):
        """(state, unread bytes, whether it was accepted); None if it is gone."""
        for line in pathlib.Path("/proc/net/tcp").read_text(encoding="ascii").splitlines():
            words = line.split()
            if [word[-5:] for word in words[1:3]] == self.ports:
                return int(words[3], 16), int(words[4].split(":")[1], 16), words[9] != "0"
        return None

    def has_taken_all(self):
        seen = self.look()
        return not seen or seen[1] == 0 and seen[2]

    def is_closed(self):
        seen = self.look()
        return not seen or seen[0] not in (self.ESTABLISHED, self.CLOSE_WAIT)


class Awaited:
    """Expected bytes. `parts`: pairs of literal bytes and, for what varies, a pattern instead."""

    def __init__(self, text, parts):
        self.text = text
        self.literal = all(varying is None for _, varying in parts)
        literals = itertools.takewhile(lambda part: part[1] is None, parts)
        self.head = b"".join(content for content, _ in literals)
        self.pattern = None if self.literal else re.compile(
            b"".join(varying or re.escape(content) for content, varying in parts))

    def size_at_begin_of(self, received):
        """None until all of it has come."""
        if self.literal:
            return len(self.head) if received.startswith(self.head) else None
        match = self.pattern.match(received)
        return match and match.end()

    def may_come_of(self, received):
        size = min(len(received), len(self.head))
        return received[:size] == self.head[:size]

    def is_all(self, content):
        return content == self.head if self.literal else self.pattern.fullmatch(content)

    def check_all(self, content):
        assert self.is_all(content), self.difference(content)

    def difference(self, content):
        came = content.decode(errors="backslashreplace").replace("\r\n", "␍␊")
        return f"\n  awaited {self.text[:2000]}\n  came    {came[:2000]}"


class Client:
    """A control connection, what has come on it and was not expected yet, and its data connection."""

    def __init__(self, service, port):
        self.service = service
        self.socket = socket.create_connection(("127.0.0.1", port), PATIENCE)
        # Otherwise the system delays a line behind an unanswered one and sends both at once.
        self.socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        self.received = b""
        self.data = self.data_port = self.listener = None

    def close(self):
        for each in (self.socket, self.data, self.listener):
            if each:
                each.close()

    def expect(self, awaited):
        while (size := awaited.size_at_begin_of(self.received)) is None:
            assert awaited.may_come_of(self.received), awaited.difference(self.received)
            piece = self.receive()
            assert piece, awaited.difference(self.received + b"<closed>")
            self.received += piece
        if passive := re.match(rb"227 \(127,0,0,1,4,(\d+)\)", self.received):
            self.data_port = 1024 + int(passive[1])
        self.received = self.received[size:]

    def expect_to_the_end(self, awaited):
        while piece := self.receive():
            self.received += piece
        awaited.check_all(self.received)

    def receive(self):
        try:
            return self.socket.recv(65536)
        except TimeoutError:
            raise AssertionError(f"nothing more after {self.received}") from None

    def listen(self):
        """Waits for a data connection; the argument for PORT."""
        self.close_listener()
        port = free_port()
        self.listener = socket.create_server(("127.0.0.1", port))
        self.listener.settimeout(PATIENCE)
        return f"127,0,0,1,{port // 256},{port % 256}".encode()

    def connect_data(self):
        if self.data:
            self.data.close()
        self.data = socket.create_connection(("127.0.0.1", self.data_port), PATIENCE)
        self.data_port = None

    def accept_data(self):
        self.data = self.listener.accept()[0]
        self.data.settimeout(PATIENCE)
        self.close_listener()

    def close_listener(self):
        if self.listener:
            self.listener.close()
        self.listener = None

    def send_data(self, content):
        with contextlib.suppress(ConnectionError):  # a refused upload
            self.data.sendall(content)
            self.data.shutdown(socket.SHUT_WR)

    def fetch_data(self):
        content = b""
        while piece := self.data.recv(65536):
            content += piece
        self.data.close()
        self.data = None
        return content


class Stage:
    """A program and the clients of the current scene."""

    def __init__(self, path):
        self.service = re.match("[a-z0-9]*", path.stem)[0]
        self.home = WindowsHome(PROGRAM) if PROGRAM.endswith(".exe") else Home([PROGRAM])
        self.definitions = {}
        self.clients = {}
        self.witness = None
        self.seen = set()  # the names of the files that the scene has looked at

    def start(self, prologue):
        self.home.write_settings()
        words = ("setting", "define", "given")
        self.play_all([each for each in prologue if each[1].split()[0] in words])
        self.home.start("START", "SHOW")
        self.home.wait_for_services()

    def play_scene(self, prologue, scene):
        try:
            self.begin_scene()
            self.play_all([each for each in prologue if not each[1].startswith("setting ")])
            self.play_all(scene)
            self.end_scene()
        finally:
            for client in self.clients.values():
                client.close()
            self.clients.clear()

    def begin_scene(self):
        for path in (self.home.path / name for name in ("wwwroot", "ftproot", "mailroot", "outside")):
            wait_until(lambda path=path: self.is_removed(path), f"{path} to be free")
            path.mkdir()
        # Makes the mail server forget recipients and user. There are no messages left to unpack.
        with contextlib.closing(self.connect("smtp")) as client:
            self.exchange(client, "QUIT", "221")
        if self.witness:
            self.witness.close()
        self.witness = self.connect("pop3")
        self.exchange(self.witness, "REST", "+OK")
        for log in ("RunErr.Log", "Web.log", "Mail.log"):
            (self.home.path / log).unlink(missing_ok=True)
        self.seen.clear()

    @staticmethod
    def is_removed(path):
        """Fails while the program still unpacks a message there."""
        shutil.rmtree(path, ignore_errors=True)
        return not path.exists()

    def end_scene(self):
        for client in self.clients.values():
            if client.service == "web":  # which has not been answered
                client.socket.sendall(b"GET /.none HTTP/1.0\r\n")
                client.expect_to_the_end(self.awaited(""))
            else:
                self.exchange(client, "NOOP", NOOP[client.service])
        for log in {"RunErr.Log", "Web.log"} - self.seen:
            assert not (self.home.path / log).exists(), f"{log} has\n{self.home.read(log)}"

    def close(self):
        if self.witness:
            self.witness.close()
        self.home.close()

    # Texts

    def parts(self, text, client=None):
        for token in TOKEN.finditer(text):
            if token[1]:
                yield bytes([int(token[1], 16)]), None
            elif token[2] in VARYING:
                yield b"", VARYING[token[2]]
            elif token[2]:
                yield from self.named(token[2], client)
            else:
                yield SIGNS.get(token[0], token[0].encode()), None

    def named(self, name, client):
        text, times = re.fullmatch(r"(.*?)(?:\*(\d+))?", name).groups()
        if name == "home":
            yield self.home.native(self.home.path).replace("/", "\\").encode(), None
        elif name == "listener":
            yield client.listen(), None
        elif name.startswith("page "):
            yield (CONVERSATIONS / name[5:]).read_bytes(), None
        elif text == "random":
            yield random.Random(1).randbytes(int(times)), None
        elif times:
            yield self.bytes_of(text) * int(times), None
        else:
            yield from self.parts(self.definitions[name])

    def bytes_of(self, text, client=None):
        return b"".join(content for content, _ in self.parts(text, client))

    def awaited(self, text):
        return Awaited(text, list(self.parts(text)))

    # Statements

    def play_all(self, numbered):
        for number, text in numbered:
            try:
                self.play(text)
            except (AssertionError, OSError) as error:
                raise AssertionError(f"line {number}: {text[:200]}: {error}") from None

    def play(self, text):
        word, _, rest = text.partition(" ")
        if word in ("setting", "define", "given", "then", "table"):
            return getattr(self, f"play_{word}")(rest)
        if direction := DIRECTION.fullmatch(text):
            return self.play_direction(direction[1] or self.service, direction[2])
        name, sent, arrow, data, answer = EXCHANGE.fullmatch(text).groups()
        sent = alternatives(sent)
        answers = answer.split(" | ")
        for one, reply in zip(sent, answers if len(answers) > 1 else answers * len(sent), strict=True):
            client = self.client(name or self.service)
            if arrow:
                self.transfer(client, one, arrow, data, reply)
            else:
                self.exchange(client, one, reply)
        return None

    def play_setting(self, text):
        key, value = text.split("=", 1)
        settings = self.home.read("Server.ini")
        settings, count = re.subn(rf"(?m)^{key}=[^\r]*", f"{key}={value}", settings)
        assert count, f"no setting {key}"
        self.home.write("Server.ini", settings)

    def play_define(self, text):
        name, self.definitions[name] = re.fullmatch("(.*?): (.*)", text).groups()

    def play_given(self, text):
        kind, names, content = self.split(text, "folder", "program")
        for path in (self.path_of(name) for name in alternatives(names)):
            if kind == "folder":
                path.mkdir(parents=True, exist_ok=True)
                continue
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(CGI.read_bytes() if kind else self.bytes_of(content))
            path.chmod(0o755 if kind else 0o644)

    def play_then(self, text):
        kind, names, content = self.split(text, "folder", "no")
        for path in (self.path_of(name) for name in alternatives(names)):
            if kind == "folder":
                assert path.is_dir(), path
            elif kind == "no":
                assert not path.exists(), path
            else:
                self.seen.add(path.name)
                self.await_content(path, self.awaited(content))

    @staticmethod
    def split(text, *kinds):
        names, _, content = text.partition(":")
        kind, _, rest = names.partition(" ")
        return (kind, rest, "") if kind in kinds else ("", names, content.removeprefix(" "))

    def path_of(self, name):
        return self.home.path / self.bytes_of(name).decode()

    @staticmethod
    def await_content(path, awaited):
        content = b""

        def fits():
            nonlocal content
            content = path.read_bytes() if path.is_file() else b"<no file>"
            return awaited.is_all(content)
        try:
            wait_until(fits, path)
        except AssertionError:
            raise AssertionError(awaited.difference(content)) from None

    def play_table(self, section):
        for sent, answer in rows(section):
            if sent:  # the other row is the greeting
                self.play(f"{self.service}: {sent} → {answer}")

    # Clients

    def connect(self, service):
        client = Client(service, self.home.ports[service])
        if service != "web":
            greeting = next(answer for sent, answer in rows(SECTIONS[service]) if not sent)
            self.exchange(client, "", greeting)
        return client

    def client(self, name):
        if name not in self.clients:
            self.clients[name] = self.connect(name if name in NOOP or name == "web" else self.service)
        return self.clients[name]

    def forget(self, client):
        client.close()
        self.clients = {name: each for name, each in self.clients.items() if each is not client}

    def settle(self, connection):
        """Waits until the program has accepted `connection`, has read it and has acted on that.

        It has a single event loop: an answer to another client shows that it has gone on.
        """
        wait_until(OtherEnd(connection).has_taken_all, "the program to read")
        self.exchange(self.witness, "NOOP", "+OK")

    def exchange(self, client, sent, answer):
        if sent:
            client.socket.sendall(self.bytes_of(self.line(sent), client))
        if answer == "nothing":
            self.settle(client.socket)
        elif client.service == "web":
            client.expect_to_the_end(self.awaited(answer))
            self.forget(client)
        else:
            client.expect(self.awaited(self.line(answer)))

    @staticmethod
    def line(text):
        return text if text.endswith("¬") else f"{text}␍␊"

    def transfer(self, client, sent, arrow, data, answer):
        if client.listener:
            client.accept_data()
        elif not client.data:
            self.connect_data(client)
        is_upload = arrow == "⇒"
        is_refused = is_upload and answer.startswith("550")
        if sent and is_refused:
            client.socket.sendall(self.bytes_of(self.line(sent)))
        elif sent:
            self.exchange(client, sent, RECEIVING if is_upload else SENDING)
        if is_upload:
            client.send_data(self.bytes_of(data))
        else:
            self.awaited(data).check_all(client.fetch_data())
        self.exchange(client, "", answer)
        if is_upload:
            assert client.fetch_data() == b""

    def connect_data(self, client):
        if not client.data_port:
            self.exchange(client, "PASV", "227 (127,0,0,1,4,{number}).")
        client.connect_data()

    def play_direction(self, name, text):
        if text == "is refused":
            with contextlib.closing(Client(self.service, self.home.ports[self.service])) as refused:
                assert refused.receive() == b""
        elif text == "18 others come and go":
            for _ in range(18):
                self.connect(self.service).close()
        elif text in ("leaves", "is closed"):
            client = self.client(name)
            assert text == "leaves" or client.receive() == client.received == b""
            self.forget(client)
        elif text.startswith("data "):
            self.play_data(self.client(name), *text[5:].split(" ", 1))
        else:
            assert text == "comes" and self.client(name), text

    def play_data(self, client, what, text=""):
        if what == "connects":
            self.connect_data(client)
            self.settle(client.data)
        elif what == "sends":
            client.data.sendall(self.bytes_of(text))
        elif what == "brings":
            self.awaited(text).check_all(client.fetch_data())
        elif what == "closes":
            other = OtherEnd(client.data)
            client.data.shutdown(socket.SHUT_WR)
            wait_until(other.is_closed, "the other end to close")
            client.fetch_data()
        elif text == "sent":
            client.data.shutdown(socket.SHUT_WR)
        else:
            assert text == "refused", (what, text)
            # Another client may have got the same port by chance.
            taken = [each.data_port for each in self.clients.values() if each is not client]
            assert client.data_port in taken or not accepts(client.data_port)


class ConversationsTest(unittest.TestCase):
    def play(self, path):
        numbered = statements(path)
        begins = [i for i, (_, text) in enumerate(numbered) if text.startswith("== ")]
        prologue = numbered[:begins[0]]
        stage = Stage(path)
        self.addCleanup(stage.close)
        stage.start(prologue)
        for begin, end in zip(begins, [*begins[1:], len(numbered)]):
            with self.subTest(numbered[begin][1][3:]):
                stage.play_scene(prologue, numbered[begin + 1:end])


def add_test(path):
    setattr(ConversationsTest, f"test_{path.stem}", lambda self: self.play(path))


if __name__ == "__main__":
    names = sys.argv[3:]
    for each in sorted(CONVERSATIONS.glob("*.txt")):
        if not names or each.name in names:
            add_test(each)
    unittest.main(argv=sys.argv[:1], verbosity=2)
