"""A port in front of a server's that keeps what clients send through it."""

import socket
import socketserver
import threading


class Relay(socketserver.ThreadingTCPServer):
    daemon_threads = True

    def __init__(self, server):
        super().__init__(("", 0), _Passage)
        self.behind = server
        self.port = self.server_address[1]
        self.sent = bytearray()
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def close(self):
        self.shutdown()
        self.server_close()


class _Passage(socketserver.BaseRequestHandler):
    """One client's way to the server and back."""

    def handle(self):
        with socket.create_connection(self.server.behind) as server:
            back = threading.Thread(target=_pass, args=(server, self.request, len))
            back.start()
            _pass(self.request, server, self.server.sent.extend)
            back.join()


def _pass(source, target, note):
    try:
        while data := source.recv(65536):
            note(data)
            target.sendall(data)
        target.shutdown(socket.SHUT_WR)
    except OSError:
        # One who has gone takes the other along.
        for end in (source, target):
            try:
                end.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass
