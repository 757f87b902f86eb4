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
BOXES = ("alice", "bob")


class Durability(unittest.TestCase):
    def setUp(self):
        self.server = server = Server(PROGRAM, dict.fromkeys((*BOXES, "full"), "x"))
        self.addCleanup(server.close)
        server.write(server.message("full", 1), "makes the next number 2")
        self.calls = server.file("calls")
        # With -D the program stays the process that is killed in the end.
        server.program = ["strace", "-D", "-f", "-y", "-e", "trace=write,fsync,fdatasync,sendto,sendmsg",
                          "-o", self.calls, PROGRAM]
        server.serve()

    def read_calls(self):
        with open(self.calls, errors="replace") as file:
            return [match.groups() for match in CALL.finditer(file.read())]

    def test_files_and_names_are_flushed_before_the_reply(self):
        smtp, pop3 = Conversation(self.server.smtp_port), Conversation(self.server.pop3_port)
        for name in BOXES:
            smtp.ask(f"RCPT TO:<{name}@x>")
        smtp.ask("DATA")
        smtp.socket.sendall(b"first chunk")
        paths = [self.server.message(name, number) for number in (1, 2) for name in BOXES]
        wait_until(lambda: self.server.read(paths[1]), "the first chunk")
        # The last chunk goes to other files, and both are flushed.
        pop3.ask("USER full")
        self.assertEqual(pop3.ask("STAT")[:5], b"+OK 1")
        self.assertEqual(smtp.ask("last chunk\r\n."), b"250 OK,message saved\r\n")
        wait_until(lambda: any(reply for *_, reply in self.read_calls()), "the trace of the reply")
        calls = self.read_calls()
        before = calls[:next(i for i, call in enumerate(calls) if call[2])]
        for path in paths:
            written = [i for i, call in enumerate(before)
                       if call[:2] == ("write", self.server.file(path))]
            self.assertEqual(len(written), 1, path)
            flushed = [path for call, path, _ in before[written[0]:] if call.endswith("sync")]
            self.assertIn(self.server.file(path), flushed)
            if path in paths[2:]:
                self.assertIn(self.server.file(path.rpartition("/")[0]), flushed)


if __name__ == "__main__":
    unittest.main()
