"""Talking to the servers as one arrival after the other, and seeing every byte of the answers."""

import contextlib
import re
import socket

from program import everything, free_port

PATIENCE = 10  # seconds for an answer


class Conversation:
    """A control connection."""

    def __init__(self, port, greeting=b"\r\n"):
        self.sockets = contextlib.ExitStack()
        self.close = self.sockets.close
        self.socket = self.keep(socket.create_connection(("127.0.0.1", port)))
        # Otherwise the system delays a line behind an unanswered one and sends both at once.
        self.socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        self.greeting = self.receive(greeting)

    def keep(self, new_socket):
        """It is closed with this."""
        new_socket.settimeout(PATIENCE)
        return self.sockets.enter_context(new_socket)

    def receive(self, end):
        """What comes until it ends with `end`, or until the connection or patience does."""
        received = b""
        with contextlib.suppress(TimeoutError):
            while not received.endswith(end) and (piece := self.socket.recv(65536)):
                received += piece
        return received

    def ask(self, request, end=b"\r\n"):
        """Sends a line, or bytes as they are; the answer, up to `end`."""
        self.socket.sendall(request if isinstance(request, bytes) else request.encode() + b"\r\n")
        return self.receive(end)


class FtpConversation(Conversation):
    """With one data connection at a time."""

    data = data_port = listener = None

    def note_port(self, reply):
        """Takes the port from the reply to PASV, if it is one."""
        if passive := re.match(rb"227 \(127,0,0,1,4,(\d+)\)", reply):
            self.data_port = 1024 + int(passive[1])

    def listen(self):
        """Waits for a data connection; the argument for PORT."""
        port = free_port()
        self.listener = self.keep(socket.create_server(("127.0.0.1", port)))
        return f"127,0,0,1,{port // 256},{port % 256}"

    def open_data(self):
        """Accepts the data connection if it listens, else makes it."""
        self.data = self.keep(self.listener.accept()[0] if self.listener else
                              socket.create_connection(("127.0.0.1", self.data_port)))
        self.data_port = self.listener = None

    def end_data(self, content=b""):
        with contextlib.suppress(ConnectionError):  # a refused upload
            self.data.sendall(content)
            self.data.shutdown(socket.SHUT_WR)

    def fetch_data(self):
        """Everything up to the end of the data connection."""
        with self.data:
            content = everything(self.data)
        self.data = None
        return content

    def transfer(self, request, data=None):
        """Both replies to a transfer in passive mode, and what came, unless `data` is sent."""
        self.note_port(self.ask("PASV"))
        self.open_data()
        reply, content = self.ask(request), b""
        if reply.startswith(b"150"):
            if data is not None:
                self.end_data(data)
            content = self.fetch_data()
            if reply.count(b"\r\n") < 2:
                reply += self.receive(b"\r\n")
        return reply, content
