"""The program with mailboxes, as a process in a temporary folder."""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from program import Home, wait_until  # noqa: E402,F401


class Server(Home):
    """`users`: a dictionary of names and passwords."""

    def __init__(self, program, users):
        super().__init__([program])
        self.smtp_port = self.ports["smtp"]
        self.pop3_port = self.ports["pop3"]
        self.write_settings()
        for name, password in users.items():
            self.write(f"mailroot/User/{name}/UserInfo.ini",
                       f"[用户信息]\r\nUser={name}\r\nPassword={password}\r\n")

    @staticmethod
    def message(user, number):
        return f"mailroot/User/{user}/Message_{number}.eml"

    def serve(self):
        self.start("START")
        self.wait_for_services()
