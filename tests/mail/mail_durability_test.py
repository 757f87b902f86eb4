#!/usr/bin/env python3
"""Messages that were acknowledged are there after the program was killed, and unpacked after it ended.

    mail_durability_test.py PROGRAM [MESSAGES]

Senders deliver numbered messages one after another while the program is killed and started again
and again, each time at another moment. Every message that got its "250 OK,message saved" must be in
the mailbox afterwards, byte for byte. 300 messages unless said otherwise.

Then the program is asked to end in the middle of unpacking a large message, and started again.
"""

import os
import random
import sys
import threading
import time

from running_server import Server, wait_until  # which finds the others, too
from conversation import PATIENCE, Conversation

MOST_IN_A_BOX = 40


def text_of(number):
    # Of different lengths, so that a kill falls into every part of a transfer.
    return f"Subject: {number}\r\n\r\n{'x' * (number * 977 % 20000)}\r\n.\r\n".encode()


class Sender:
    """Knows what was acknowledged."""

    def __init__(self, server):
        self.server = server
        self.smtp = None

    def deliver(self, number):
        """True once acknowledged; raises if the server died meanwhile."""
        if self.smtp is None:
            self.smtp = Conversation(self.server.smtp_port)
            # Whatever half a message the last life has left is not counted as a new one.
            self.smtp.ask("MAIL FROM:<box@x>")
            self.smtp.ask("RCPT TO:<box@x>")
        self.smtp.ask("DATA")
        answer = self.smtp.ask(text_of(number))
        if not answer.endswith(b"\r\n"):
            raise ConnectionError("the server is gone")
        return answer == b"250 OK,message saved\r\n"

    def drop(self):
        if self.smtp:
            self.smtp.close()
        self.smtp = None


class Killer(threading.Thread):
    """Kills the program at random moments and starts it again."""

    def __init__(self, server):
        super().__init__(daemon=True)
        self.server = server
        self.kills = 0
        self.stopped = threading.Event()

    def run(self):
        while not self.stopped.wait(random.uniform(0.02, 0.4)):
            self.server.kill()
            self.kills += 1
            self.server.serve()


def stored(server):
    """The content of the mailbox, and an empty mailbox."""
    content = b""
    box = server.file("mailroot/User/box")
    for name in os.listdir(box):
        if name.endswith(".eml"):
            content += server.read_bytes(f"mailroot/User/box/{name}")
            os.remove(os.path.join(box, name))
    return content


def what_is_wrong_after_an_end(program):
    """Asks the program to end while it unpacks; what is not as without that, or None."""
    server = Server(program, {"box": "x"})
    large = b"A: boundary=b\r\n\r\n--b\r\nA: filename=a\r\n\r\n" + b"x" * (48 << 20) + b"\r\n--b--\r\n"
    small = b"A: b\r\n\r\nYQ==\r\n"
    marker = b"\r\n@@@@@@@@@@ CPRCreate @@@@@@@@@@\r\n"
    unfinished = server.path / "mailroot/User/box/Message_1/unpack.tmp"
    trace = server.path / "mailroot/User/email.msg"
    try:
        server.write(server.message("box", 1), large)
        server.serve()
        smtp = Conversation(server.smtp_port)
        smtp.ask("RCPT TO:<box@x>")
        smtp.ask("QUIT")  # the number is one more than the messages counted last: 1
        smtp.ask("RCPT TO:<box@x>")
        smtp.ask("DATA")
        smtp.ask(small + b".\r\n")
        smtp.ask("QUIT")
        wait_until(unfinished.exists, "the attachment to be begun")
        process = server.processes[-1]
        process.terminate()
        if process.wait(PATIENCE) != 0:
            return "the program did not end well"
        left = [name for name in ("unpack.tmp", "a") if unfinished.with_name(name).exists()]
        if left or (trace.exists() and trace.read_bytes()):
            return f"half a message was left: {left}"
        if server.read("unpack.lst").count("\tbox\t") != 2:
            return "what was left to do was not kept"
        server.serve()
        expected = (large + marker) * 2 + (small + b".\r\n" + marker) * 2
        wait_until(lambda: trace.exists() and trace.stat().st_size >= len(expected), "the trace")
        if trace.read_bytes() != expected:
            return "the trace is not as without an end"
        if server.read_bytes("mailroot/Accessary/a") != b"x" * (48 << 20):
            return "the attachment is not whole"
        return "the list is still there" if (server.path / "unpack.lst").exists() else None
    finally:
        server.close()


def main():
    program = sys.argv[1]
    wanted = int(sys.argv[2]) if len(sys.argv) > 2 else 300
    server = Server(program, {"box": "x"})
    killer = Killer(server)
    sender = Sender(server)
    acknowledged, missing, in_box = 0, [], []
    try:
        server.serve()
        killer.start()
        number = 0
        while acknowledged < wanted:
            number += 1
            try:
                if sender.deliver(number):
                    in_box.append(number)
                    acknowledged += 1
            except OSError:
                sender.drop()
                time.sleep(0.01)
            # A mailbox takes 49; what a kill has left half done counts as well.
            names = os.listdir(server.file("mailroot/User/box"))
            if len(names) > MOST_IN_A_BOX or acknowledged == wanted:
                content = stored(server)
                missing += [one for one in in_box if text_of(one) not in content]
                in_box = []
    finally:
        killer.stopped.set()
        killer.join(20)
        kills = killer.kills
        server.close()
    print(f"{acknowledged} acknowledged messages, {kills} kills, {len(missing)} missing")
    fault = what_is_wrong_after_an_end(program)
    if fault:
        print(fault)
    return 1 if missing or kills == 0 or fault else 0


if __name__ == "__main__":
    sys.exit(main())
