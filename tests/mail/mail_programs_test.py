#!/usr/bin/env python3
"""Mail programs of today against the program, and what it flushes before it acknowledges a message.

Each mail program is used as far as it gets along with one command per arrival and with a message
whose end comes twice.

    mail_programs_test.py PROGRAM
"""

import email.message
import pathlib
import re
import smtplib
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from conversation import Conversation  # noqa: E402
from program import Home, wait_until  # noqa: E402

PROGRAM = sys.argv.pop(1)
BYTES = bytes(range(256)) * 300
# With -D the program itself is the child process, which is killed in the end.
TRACER = "strace -D -f -y -e trace=write,fsync,fdatasync,sendto,sendmsg -o".split()
CALL = re.compile(r"(write|fsync|fdatasync)\(\d+<([^>]+)>|(250 OK,message saved)")


def message(user, number):
    return f"mailroot/User/{user}/Message_{number}.eml"


class ProgramTest(unittest.TestCase):
    def setUp(self):
        self.home = home = Home([PROGRAM])
        self.addCleanup(home.close)
        home.program[:0] = [*TRACER, home.file("calls")] * isinstance(self, Durability)
        home.write_settings()
        for user in ("alice", "bob"):
            home.write(f"mailroot/User/{user}/UserInfo.ini", "[用户信息]\r\nPassword=x\r\n")
        home.write("att.bin", BYTES)
        home.start("START")
        home.wait_for_services()
        self.smtp, self.pop3 = (f"127.0.0.1:{home.ports[name]}" for name in ("smtp", "pop3"))


class MailPrograms(ProgramTest):
    def run_client(self, *words, code=0):
        done = subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60)
        self.assertEqual(done.returncode, code, done.stdout)
        return done.stdout

    def expect_unpacked(self):
        for folder in ("mailroot/User/bob/Message_1", "mailroot/Accessary"):
            wait_until((self.home.path / folder / "att.bin").exists, "the attachment")
            self.assertEqual(self.home.read_bytes(f"{folder}/att.bin"), BYTES)

    def test_curl_sends_an_attachment(self):
        self.run_client("curl", "-sS", "smtp://" + self.smtp, "--mail-from", "alice@localhost",
                        "--mail-rcpt", "bob@localhost", "-F", "=Grüße;encoder=quoted-printable",
                        "-F", f"file=@{self.home.file('att.bin')};encoder=base64")
        self.expect_unpacked()

    def test_smtplib_sends_an_attachment(self):
        mail = email.message.EmailMessage()
        mail.set_content("1=1 plain\n", cte="quoted-printable")
        mail.add_attachment(BYTES, maintype="x", subtype="y", filename="att.bin")
        with smtplib.SMTP("127.0.0.1", self.home.ports["smtp"], timeout=20) as client:
            client.send_message(mail, "alice@localhost", "bob@localhost")
        self.expect_unpacked()

    def test_curl_and_mpop_collect_a_message(self):
        self.home.write(message("bob", 1), "Subject: put\r\n\r\nbody\r\n.\r\n")
        # With a user of its own curl asks for capabilities, finds no login and gives up.
        url = f"pop3://{self.pop3}/"
        self.run_client("curl", "-sS", "-u", "bob:x", url + "1", code=67)
        self.assertIn(b"Subject: put\r\n\r\nbody\r\n", self.run_client(
            "curl", "-sS", "-I", "-X", "USER bob", url, "--next", "-sS", url + "1"))
        self.run_client("mpop", "-C", "/dev/null", "--host=127.0.0.1", "--port=" + self.pop3[10:],
                        "--user=bob", "--auth=user", "--tls=off", "--passwordeval=echo x", "--keep=on",
                        f"--uidls-file={self.home.file('uidls')}",
                        f"--delivery=mbox,{self.home.file('mbox')}")
        self.assertIn("Subject: put\n\nbody\n", self.home.read("mbox"))


class Durability(ProgramTest):
    def test_each_chunk_is_on_the_disk_before_its_message_is_acknowledged(self):
        for number in range(1, 4):
            self.home.write(message("full", number), "makes the next number 4")
        smtp, pop3 = (Conversation(self.home.ports[name]) for name in ("smtp", "pop3"))
        self.addCleanup(smtp.close)
        self.addCleanup(pop3.close)
        for user in ("alice", "bob"):
            smtp.ask(f"RCPT TO:<{user}@x>")
        smtp.socket.sendall(b"first")
        wait_until(lambda: self.home.read(message("bob", 1)), "the first chunk")
        pop3.ask("USER full")
        pop3.ask("STAT")
        smtp.ask("last\r\n.")
        wait_until(lambda: "250 OK,message saved" in self.home.read("calls"), "the reply's trace")
        calls = [match.groups() for match in CALL.finditer(self.home.read("calls"))]
        before = calls[:[reply for _, _, reply in calls].index("250 OK,message saved")]
        for path in (message(user, number) for user in ("alice", "bob") for number in (1, 4)):
            written = before.index(("write", self.home.file(path), None))
            flushed = [name for call, name, _ in before[written:] if call.endswith("sync")]
            self.assertIn(self.home.file(path), flushed)
            self.assertIn(self.home.file(path.rpartition("/")[0]), flushed)  # its name


if __name__ == "__main__":
    unittest.main()
