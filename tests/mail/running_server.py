"""The program with its mail service on ports of its own, in a temporary folder."""

import os
import random
import shutil
import socket
import subprocess
import tempfile
import time


def free_port():
    """One that is free now and fits 16 bits with a sign, as the settings need it."""
    while True:
        port = random.randrange(20000, 32000)
        with socket.socket() as probe:
            try:
                probe.bind(("127.0.0.1", port))
                return port
            except OSError:
                continue


class Server:
    """`users`: a dictionary of names and passwords."""

    def __init__(self, program, users):
        self.program = program
        self.home = tempfile.mkdtemp(prefix="tarnwerk-mail-")
        self.process = None
        self.smtp_port = free_port()
        self.pop3_port = free_port()
        for name, password in users.items():
            self.write(f"mailroot/User/{name}/UserInfo.ini",
                       f"[用户信息]\r\nUser={name}\r\nPassword={password}\r\n")
        sections = {"WebServer": "TCPPort=0", "FtpServer": "FtpPort=0",
                    "MailServer": f"SMTP Port={self.smtp_port}\r\nPOP3 Port={self.pop3_port}"
                                  f"\r\nMailServer Root={self.path('mailroot')}"}
        self.write("Server.ini", "".join(f"[{name} Options]\r\nDNS=localhost\r\n{keys}\r\n"
                                         for name, keys in sections.items()))

    def path(self, name):
        return os.path.join(self.home, name)

    def write(self, name, text):
        os.makedirs(os.path.dirname(self.path(name)), exist_ok=True)
        with open(self.path(name), "w", encoding="utf-8", newline="") as file:
            file.write(text)

    def read(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def message(self, user, number):
        return f"mailroot/User/{user}/Message_{number}.eml"

    def start(self):
        environment = dict(os.environ, TARNWERK_HOME=self.home, TARNWERK_HOSTS=self.path("hosts"),
                           XDG_RUNTIME_DIR=self.home, XDG_CONFIG_HOME=self.home,
                           XDG_STATE_HOME=self.home)
        for name in ("DISPLAY", "WAYLAND_DISPLAY"):
            environment.pop(name, None)
        self.process = subprocess.Popen([self.program, "START"], env=environment,
                                        stdout=subprocess.DEVNULL)
        for port in (self.smtp_port, self.pop3_port):
            self.wait_until(lambda port=port: self.accepts(port), f"port {port}")

    @staticmethod
    def accepts(port):
        with socket.socket() as probe:
            return probe.connect_ex(("127.0.0.1", port)) == 0

    @staticmethod
    def wait_until(condition, what):
        for _ in range(1000):
            if condition():
                return
            time.sleep(0.01)
        raise AssertionError(f"waited in vain for {what}")

    def kill(self):
        self.process.kill()
        self.process.wait()

    def close(self):
        if self.process:
            self.kill()
        shutil.rmtree(self.home)
