"""The conversations of docs/protocols.md, line for line.

    protocols_test.py <program> <protocols.md>
"""

import pathlib
import re
import socket
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from program import PATIENCE, Home, fetch  # noqa: E402

PROGRAM, DOCUMENT = sys.argv[1:3]
SILENCE = 0.1  # seconds without a byte that count as no answer


def rows(section):
    """(sent, answer) of every line of the section's first table that is a conversation."""
    text = pathlib.Path(DOCUMENT).read_text().split(f"\n## {section}\n")[1].split("\n## ")[0]
    table = re.search(r"(?:^\|.*\n)+", text, re.MULTILINE)[0]
    for line in table.splitlines()[2:]:
        yield [cell.strip() for cell in re.fullmatch(r"\|(.*)\|(.*)\|", line).groups()]


def bytes_of(cell):
    return (cell.strip("`").replace("␣", " ").replace("␍␊", "\r\n") + "\r\n").encode()


class ProtocolsTest(unittest.TestCase):
    def setUp(self):
        self.home = Home([PROGRAM])
        self.addCleanup(self.home.close)
        self.home.write_settings()
        self.home.write("wwwroot/hello.htm", "hello")
        self.home.write("wwwroot/index.htm", "index")
        for name in ("ftproot/hello.txt", "ftproot/pub/a.txt", "ftproot/up/b.txt"):
            self.home.write(name, "x")
        self.home.write("mailroot/User/bob/UserInfo.ini",
                        "[用户信息]\r\nUser=bob\r\nPassword=builder\r\n")
        self.home.start("START")
        self.home.wait_for_services()

    def converse(self, service, section):
        with socket.create_connection(("127.0.0.1", self.home.ports[service]), PATIENCE) as client:
            for sent, answer in rows(section):
                with self.subTest(service=service, sent=sent):
                    if sent:
                        client.sendall(bytes_of(sent))
                    self.expect(client, answer)

    def expect(self, client, answer):
        if answer == "*nothing*":
            client.settimeout(SILENCE)
            with self.assertRaises(TimeoutError):
                client.recv(1)
            client.settimeout(PATIENCE)
            return
        wanted = bytes_of(answer)
        received = client.recv(4096)
        while len(received) < len(wanted) and wanted.startswith(received):
            received += client.recv(4096)
        self.assertEqual(received, wanted)

    def test_ftp(self):
        self.converse("ftp", "FTP")

    def test_smtp(self):
        self.converse("smtp", "SMTP")

    def test_pop3(self):
        self.home.write("mailroot/User/bob/Message_1.eml", "0123456789")
        self.converse("pop3", "POP3")

    def test_web(self):
        not_found = fetch(self.home.ports["web"], b"GET /never-there.htm HTTP/1.0\r\n\r\n")
        self.assertIn(b"404", not_found)
        answers = {"the file": b"hello", "the first default document that exists": b"index",
                   "the not-found page": not_found, "the end of the connection": b""}
        for request, answer in rows("Web"):
            with self.subTest(request=request):
                if answer in answers:
                    received = fetch(self.home.ports["web"], bytes_of(request) + b"\r\n")
                    self.assertEqual(received, answers[answer])
                    continue
                address = ("127.0.0.1", self.home.ports["web"])
                with socket.create_connection(address, PATIENCE) as client:
                    client.sendall(bytes_of(request))
                    self.expect(client, answer)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
