#!/usr/bin/env python3
"""Today's mail programs against the program.

Each is used as far as one command per arrival, and a message whose end comes twice, let it.

    mail_clients_test.py PROGRAM
"""

import email.message
import os
import poplib
import smtplib
import subprocess
import sys
import unittest

from running_server import Server, wait_until

PROGRAM = sys.argv.pop(1)
BYTES = bytes(range(256)) * 300
TEXT = "Grüße\r\n"


def run(*words, expect=0):
    result = subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60,
                            check=False)
    if expect is not None and result.returncode != expect:
        raise AssertionError(f"{words} ended with {result.returncode}:\n{result.stdout!r}")
    return result.stdout


class MailPrograms(unittest.TestCase):
    def setUp(self):
        self.server = Server(PROGRAM, {"alice": "wonder", "bob": "builder"})
        self.addCleanup(self.server.close)
        self.server.serve()
        with open(self.server.file("att.bin"), "wb") as file:
            file.write(BYTES)
        self.smtp = f"smtp://127.0.0.1:{self.server.smtp_port}"
        self.pop3 = f"pop3://127.0.0.1:{self.server.pop3_port}"

    def expect_unpacked(self, number, name, content=BYTES):
        """The attachment lies beside the message and in the common folder."""
        for folder in (f"mailroot/User/bob/Message_{number}", "mailroot/Accessary"):
            path = self.server.file(f"{folder}/{name}")
            wait_until(
                lambda path=path: os.path.exists(path) and os.path.getsize(path) == len(content),
                path)
            self.assertEqual(self.server.read_bytes(f"{folder}/{name}"), content)

    def put_message(self, text=b"Subject: put\r\n\r\nbody\r\n.\r\n"):
        with open(self.server.file(self.server.message("bob", 1)), "wb") as file:
            file.write(text)

    # Sending

    def test_swaks_sends_a_message_with_an_attachment(self):
        # It waits for a blank behind "221", which does not come; hence the time limit.
        output = run("swaks", "--server", f"127.0.0.1:{self.server.smtp_port}", "--timeout", "1",
                     "--from", "alice@localhost", "--to", "bob@localhost",
                     "--attach-name", "att.bin", "--attach", "@" + self.server.file("att.bin"),
                     "--suppress-data", expect=None)
        self.assertIn(b"250 OK,message saved", output)
        self.expect_unpacked(1, "att.bin")

    def test_curl_sends_a_message_with_an_attachment(self):
        run("curl", "-sS", self.smtp, "--mail-from", "alice@localhost", "--mail-rcpt",
            "bob@localhost", "-H", "Subject: curl", "-F",
            "=" + TEXT + ";type=text/plain;encoder=quoted-printable",
            "-F", f"file=@{self.server.file('att.bin')};encoder=base64")
        self.expect_unpacked(1, "att.bin")
        self.assertIn(b"Subject: curl\r\n", self.server.read_bytes(self.server.message("bob", 1)))

    def test_smtplib_sends_a_message_with_attachments(self):
        message = email.message.EmailMessage()
        message["Subject"] = "smtplib"
        message["From"] = "alice@localhost"
        message["To"] = "bob@localhost"
        message.set_content("1=1 plain\n", cte="quoted-printable")
        message.add_alternative("<p>1=1</p>", subtype="html")
        for name in ("one.bin", "two.bin"):
            message.add_attachment(BYTES, maintype="application", subtype="octet-stream",
                                   filename=name)
        with smtplib.SMTP("127.0.0.1", self.server.smtp_port, timeout=20) as client:
            self.assertEqual(client.send_message(message), {})
        self.expect_unpacked(1, "one.bin")
        self.expect_unpacked(1, "two.bin")
        self.assertEqual(self.server.read_bytes("mailroot/User/bob/Message_1/Content.txt"),
                         b"1=1 plain\r\n")

    # Collecting

    def test_poplib_lists_retrieves_and_deletes(self):
        text = b"Subject: pop\r\n\r\n" + b"x" * 900 + b"\r\n..stuffed\r\n.\r\n"
        self.put_message(text)
        client = poplib.POP3("127.0.0.1", self.server.pop3_port, timeout=20)
        client.user("bob")
        client.pass_("builder")
        self.assertEqual(client.stat(), (1, len(text)))
        self.assertEqual(client.list()[1], [b"1 %d" % len(text)])
        self.assertEqual(client.uidl()[1], [b"1 Message_1.eml "])
        self.assertEqual(client.retr(1)[1], [b"Subject: pop", b"", b"x" * 900, b".stuffed"])
        # The second end of the message is what it takes for the next reply.
        with self.assertRaises(poplib.error_proto):
            client.noop()
        client.close()
        client = poplib.POP3("127.0.0.1", self.server.pop3_port, timeout=20)
        client.user("bob")
        client.dele(1)
        client.quit()
        self.assertFalse(os.path.exists(self.server.file(self.server.message("bob", 1))))

    def test_curl_retrieves_once_a_user_is_named(self):
        self.put_message()
        # With a user of its own it asks for capabilities, finds no login and gives up.
        run("curl", "-sS", "-u", "bob:builder", self.pop3 + "/1", expect=67)
        target = self.server.file("got.eml")
        run("curl", "-sS", "-I", "-X", "USER bob", self.pop3 + "/", "--next", "-sS",
            self.pop3 + "/1", "-o", target)
        self.assertTrue(self.server.read_bytes("got.eml").startswith(b"Subject: put\r\n\r\nbody\r\n"))

    def test_mpop_collects_a_message(self):
        self.put_message()
        self.server.write("mpoprc", "\n".join((
            "defaults", "tls off", "auth user", "keep on",
            f"uidls_file {self.server.file('uidls')}", "account x", "host 127.0.0.1",
            f"port {self.server.pop3_port}", "user bob", "password builder",
            f"delivery mbox {self.server.file('mbox')}", "")))
        os.chmod(self.server.file("mpoprc"), 0o600)
        run("mpop", "-C", self.server.file("mpoprc"), "x")
        self.assertIn(b"Subject: put\n\nbody\n", self.server.read_bytes("mbox"))


if __name__ == "__main__":
    unittest.main()
