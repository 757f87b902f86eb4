#!/usr/bin/env python3
"""Messages that were acknowledged are there after the program was killed.

    mail_durability_test.py PROGRAM [MESSAGES]

Senders deliver numbered messages one after another while the program is killed and started again
and again, each time at another moment. Every message that got its "250 OK,message saved" must be in
the mailbox afterwards, byte for byte. 300 messages unless said otherwise.
"""

import os
import random
import sys
import threading
import time

from running_server import Server  # which finds the others, too
from conversation import Conversation

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
    return 1 if missing or kills == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
