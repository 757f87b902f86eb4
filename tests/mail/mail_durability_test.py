#!/usr/bin/env python3
"""A message is flushed to the disk before it is acknowledged, as the program's system calls show.

    mail_durability_test.py PROGRAM
"""

import re
import sys
import unittest

from running_server import Server, wait_until  # which makes the next import possible
from conversation import Conversation

PROGRAM = sys.argv.pop(1)
CALL = re.compile(r"(write|fsync|fdatasync)\(\d+<([^>]+)>|(250 OK,message saved)")


class Durability(unittest.TestCase):
    def setUp(self):
        self.server = server = Server(PROGRAM, dict.fromkeys(("alice", "bob", "full"), "x"))
        self.addCleanup(server.close)
        for number in range(1, 4):
            server.write(server.message("full", number), "makes the next number 4")
        self.calls = server.file("calls")
        # With -D the program itself is the child process, which is killed in the end.
        server.program = ["strace", "-D", "-f", "-y", "-e", "trace=write,fsync,fdatasync,sendto,sendmsg",
                          "-o", self.calls, PROGRAM]
        server.serve()
        self.smtp, self.pop3 = Conversation(server.smtp_port), Conversation(server.pop3_port)
        for conversation in (self.smtp, self.pop3):
            self.addCleanup(conversation.close)
        for name in ("alice", "bob"):
            self.smtp.ask(f"RCPT TO:<{name}@x>")

    def expect_flushed(self, *numbers):
        """Ends the message; what it wrote is flushed before the reply, new names included."""
        self.assertEqual(self.smtp.ask("last\r\n."), b"250 OK,message saved\r\n")
        before = []

        def reply_is_traced():
            with open(self.calls, errors="replace") as file:
                calls = [match.groups() for match in CALL.finditer(file.read())]
            before[:] = calls[:next((i for i, call in enumerate(calls) if call[2]), 0)]
            return before
        wait_until(reply_is_traced, "the trace of the reply")
        for path in (self.server.message(name, number)
                     for name in ("alice", "bob") for number in numbers):
            written = before.index(("write", self.server.file(path), None))
            flushed = [name for call, name, _ in before[written:] if call.endswith("sync")]
            self.assertIn(self.server.file(path), flushed)
            self.assertIn(self.server.file(path.rpartition("/")[0]), flushed)

    def test_a_message_of_one_chunk(self):
        self.expect_flushed(1)

    def test_chunks_that_went_to_other_files(self):
        self.smtp.socket.sendall(b"first")
        wait_until(lambda: self.server.read(self.server.message("bob", 1)), "the first chunk")
        self.pop3.ask("USER full")
        self.assertEqual(self.pop3.ask("STAT")[:5], b"+OK 3")
        self.expect_flushed(1, 4)


if __name__ == "__main__":
    unittest.main()
