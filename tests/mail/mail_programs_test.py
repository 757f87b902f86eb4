"""Mail programs of today against the program, and what it flushes before it acknowledges a message.

Each mail program is used as far as it gets along with one command per arrival and with a message
whose end comes twice.

    mail_programs_test.py PROGRAM
"""

import email.message
import pathlib
import re
import smtplib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from conversation import Conversation  # noqa: E402
from program import ProgramTest, run_tests, wait_until  # noqa: E402

BYTES = bytes(range(256)) * 300
# With -D the program itself is the child process, which is killed in the end.
TRACER = "strace -D -f -y -e trace=write,fsync,fdatasync,sendto,sendmsg -o".split()
CALL = re.compile(r"(write|fsync|fdatasync)\(\d+<([^>]+)>|(250 OK,message saved)")


def message(user, number):
    return f"mailroot/User/{user}/Message_{number}.eml"


class MailProgramsTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.home.write("mailroot/User/alice/UserInfo.ini", "")
        self.home.write("mailroot/User/bob/UserInfo.ini", "[用户信息]\r\nPassword=x\r\n")
        self.home.write("att.bin", BYTES)
        self.home.start_services()
        self.smtp, self.pop3 = (f"127.0.0.1:{self.home.ports[name]}" for name in ("smtp", "pop3"))

    def expect_unpacked(self):
        for folder in ("mailroot/User/bob/Message_1", "mailroot/Accessary"):
            wait_until((self.home.path / folder / "att.bin").exists, "the attachment")
            self.assertEqual(self.home.read_bytes(f"{folder}/att.bin"), BYTES)

    def test_curl_sends_an_attachment(self):
        self.run_client("curl", "-sS", "smtp://" + self.smtp, "--mail-from", "alice@localhost",
                        "--mail-rcpt", "bob@localhost", "-F", "=Grüße;encoder=quoted-printable",
                        "-F", f"file=@{self.home.file('att.bin')};encoder=base64")
        self.expect_unpacked()

    def test_swaks_sends_an_attachment(self):
        # It expects a blank after "221", so its QUIT times out.
        self.run_client("swaks", "--server", self.smtp, "--from", "alice@localhost",
                        "--to", "bob@localhost", "--attach", "@" + self.home.file("att.bin"),
                        "--timeout", "2")
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


class DurabilityTest(ProgramTest):
    def test_each_chunk_is_on_the_disk_before_its_message_is_acknowledged(self):
        home = self.home
        for number in range(1, 4):
            home.write(message("full", number), "makes the next number 4")
        for user in ("alice", "bob"):
            home.write(f"mailroot/User/{user}/UserInfo.ini", "")
        home.program[:0] = [*TRACER, home.file("calls")]
        home.start_services()
        smtp, pop3 = (self.converse(Conversation, name) for name in ("smtp", "pop3"))
        for user in ("alice", "bob"):
            smtp.ask(f"RCPT TO:<{user}@x>")
        smtp.socket.sendall(b"first")
        wait_until(lambda: home.read(message("bob", 1)), "the first chunk")
        pop3.ask("USER full")
        pop3.ask("STAT")
        smtp.ask("last\r\n.")
        wait_until(lambda: "250 OK,message saved" in home.read("calls"), "the reply's trace")
        calls = [match.groups() for match in CALL.finditer(home.read("calls"))]
        before = calls[:[reply for _, _, reply in calls].index("250 OK,message saved")]
        for path in (message(user, number) for user in ("alice", "bob") for number in (1, 4)):
            written = before.index(("write", home.file(path), None))
            flushed = [name for call, name, _ in before[written:] if call.endswith("sync")]
            self.assertIn(home.file(path), flushed)
            self.assertIn(home.file(path.rpartition("/")[0]), flushed)  # its name


if __name__ == "__main__":
    run_tests()
