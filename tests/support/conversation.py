"""Talking to the servers as one arrival after the other, and seeing every byte of the answers."""

import re
import socket

PATIENCE = 10  # seconds for an answer


class Conversation:
    """A control connection. The transcript has what was sent and what came back."""

    def __init__(self, port, greeting=b"\r\n"):
        self.socket = socket.create_connection(("127.0.0.1", port), PATIENCE)
        self.transcript = [("greeting", self.receive(greeting))]

    def close(self):
        self.socket.close()

    def receive(self, end):
        """What comes until it ends with `end`, or until patience does."""
        received = b""
        try:
            while not received.endswith(end):
                piece = self.socket.recv(65536)
                if not piece:
                    return received + b"<closed>"
                received += piece
        except TimeoutError:
            received += b"<nothing more>"
        return received

    def ask(self, request, end=b"\r\n"):
        """Sends a line, or bytes as they are; the answer, up to `end`."""
        sent = request if isinstance(request, bytes) else request.encode() + b"\r\n"
        self.socket.sendall(sent)
        answer = self.receive(end)
        self.transcript.append((request, answer))
        return answer


class FtpConversation(Conversation):
    """With data connections. Their bytes are in the transcript too."""

    def data_connection(self):
        numbers = re.findall(rb"\d+", self.ask("PASV"))[-2:]
        port = int(numbers[0]) * 256 + int(numbers[1])
        return socket.create_connection(("127.0.0.1", port), PATIENCE)

    def transfer(self, request, data=None):
        """A transfer in passive mode, up to its final reply; what came, if `data` is not sent."""
        with self.data_connection() as connection:
            self.socket.sendall(request.encode() + b"\r\n")
            return self._run(request, connection, data)

    def _run(self, request, connection, data):
        connection.settimeout(PATIENCE)
        reply = self.receive(b"\r\n")
        received = b""
        if reply.startswith(b"150"):
            if data is not None:
                connection.sendall(data)
                connection.shutdown(socket.SHUT_WR)
            while piece := connection.recv(65536):
                received += piece
            if reply.count(b"\r\n") < 2:
                reply += self.receive(b"\r\n")
        self.transcript.append((request, reply + b"|" + received))
        return received


def send_mail(port, sender, recipient, message):
    """Delivers `message` (bytes, without the end mark); the transcript."""
    smtp = Conversation(port)
    smtp.ask("EHLO client")
    smtp.ask(f"MAIL FROM:<{sender}>")
    smtp.ask(f"RCPT TO:<{recipient}>")
    smtp.ask("DATA")
    smtp.ask(message + b"\r\n.\r\n")
    smtp.ask("QUIT")
    smtp.close()
    return smtp.transcript
