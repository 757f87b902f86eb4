#!/usr/bin/env python3
"""Mail programs of today against the program.

Each is used as far as it gets along with one command per arrival and with a message whose end comes
twice.

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


def run(*words, expect=0):
    result = subprocess.run(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60,
                            check=False)
    if expect not in (None, result.returncode):
        raise AssertionError(f"{words} ended with {result.returncode}:\n{result.stdout!r}")
    return result.stdout


class MailPrograms(unittest.TestCase):
    def setUp(self):
        self.server = server = Server(PROGRAM, {"alice": "wonder", "bob": "builder"})
        self.addCleanup(server.close)
        server.serve()
        server.write("att.bin", BYTES)
        self.smtp, self.pop3 = (f"127.0.0.1:{port}" for port in (server.smtp_port, server.pop3_port))

    def expect_unpacked(self, *names):
        """The attachments are beside the message and in the common folder."""
        for name in names:
            for folder in ("mailroot/User/bob/Message_1", "mailroot/Accessary"):
                path = self.server.path / folder / name
                wait_until(path.exists, path)
                self.assertEqual(path.read_bytes(), BYTES)

    # Sending

    def test_swaks_sends_a_message_with_an_attachment(self):
        # It waits for a blank after "221", which does not come; hence the time limit.
        output = run("swaks", "--server", self.smtp, "--timeout", "1", "--from", "alice@localhost",
                     "--to", "bob@localhost", "--attach-name", "att.bin",
                     "--attach", "@" + self.server.file("att.bin"), "--suppress-data", expect=None)
        self.assertIn(b"250 OK,message saved", output)
        self.expect_unpacked("att.bin")

    def test_curl_sends_a_message_with_an_attachment(self):
        run("curl", "-sS", "smtp://" + self.smtp, "--mail-from", "alice@localhost", "--mail-rcpt",
            "bob@localhost", "-H", "Subject: curl",
            "-F", "=Grüße\r\n;type=text/plain;encoder=quoted-printable",
            "-F", f"file=@{self.server.file('att.bin')};encoder=base64")
        self.expect_unpacked("att.bin")
        self.assertIn(b"Subject: curl\r\n", self.server.read_bytes(self.server.message("bob", 1)))

    def test_smtplib_sends_a_message_with_attachments(self):
        message = email.message.EmailMessage()
        message.set_content("1=1 plain\n", cte="quoted-printable")
        message.add_alternative("<p>1=1</p>", subtype="html")
        for name in ("one.bin", "two.bin"):
            message.add_attachment(BYTES, maintype="application", subtype="octet-stream",
                                   filename=name)
        with smtplib.SMTP("127.0.0.1", self.server.smtp_port, timeout=20) as client:
            self.assertEqual(client.send_message(message, "alice@localhost", "bob@localhost"), {})
        self.expect_unpacked("one.bin", "two.bin")
        self.assertEqual(self.server.read("mailroot/User/bob/Message_1/Content.txt"),
                         "1=1 plain\r\n")

    # Collecting

    def test_poplib_lists_retrieves_and_deletes(self):
        text = b"Subject: pop\r\n\r\n" + b"x" * 900 + b"\r\n..stuffed\r\n.\r\n"
        self.server.write(self.server.message("bob", 1), text)
        client = poplib.POP3("127.0.0.1", self.server.pop3_port, timeout=20)
        client.user("bob")
        client.pass_("builder")
        self.assertEqual(client.stat(), (1, len(text)))
        self.assertEqual(client.list()[1], [b"1 %d" % len(text)])
        self.assertEqual(client.uidl()[1], [b"1 Message_1.eml "])
        self.assertEqual(client.retr(1)[1], [b"Subject: pop", b"", b"x" * 900, b".stuffed"])
        # It takes the second end of the message for the next reply.
        with self.assertRaises(poplib.error_proto):
            client.noop()
        client.close()
        client = poplib.POP3("127.0.0.1", self.server.pop3_port, timeout=20)
        client.user("bob")
        client.dele(1)
        client.quit()
        self.assertFalse(os.path.exists(self.server.file(self.server.message("bob", 1))))

    def test_curl_and_mpop_collect_a_message(self):
        self.server.write(self.server.message("bob", 1), "Subject: put\r\n\r\nbody\r\n.\r\n")
        # With a user of its own curl asks for capabilities, finds no login and gives up.
        url = f"pop3://{self.pop3}/"
        run("curl", "-sS", "-u", "bob:builder", url + "1", expect=67)
        output = run("curl", "-sS", "-I", "-X", "USER bob", url, "--next", "-sS", url + "1")
        self.assertIn(b"Subject: put\r\n\r\nbody\r\n", output)
        host, port = self.pop3.split(":")
        run("mpop", "-C", "/dev/null", f"--host={host}", f"--port={port}", "--user=bob",
            "--auth=user", "--tls=off", "--passwordeval=echo builder", "--keep=on",
            f"--uidls-file={self.server.file('uidls')}",
            f"--delivery=mbox,{self.server.file('mbox')}")
        self.assertIn("Subject: put\n\nbody\n", self.server.read("mbox"))


if __name__ == "__main__":
    unittest.main()
