"""The built program as a process in a temporary program directory, for tests in Python."""

import functools
import os
import pathlib
import random
import shutil
import socket
import subprocess
import sys
import tempfile
import time
import unittest

PATIENCE = 30  # seconds for anything that is waited for
PAGE = b"<p>home</p>"
# The code page of the system that the program sees.
ENCODING = os.environ.get("TARNWERK_TEST_ENCODING", "utf-8")
WINE = str(pathlib.Path(__file__).parents[2] / "cmake" / "wine.sh")


@functools.cache
def chinese_locales():
    """A folder with the Chinese locales, which this machine may lack."""
    folder = tempfile.TemporaryDirectory(prefix="tarnwerk-locales-")
    for charset in ("GBK", "GB18030", "UTF-8"):
        subprocess.run(["localedef", "-i", "zh_CN", "-f", charset, f"{folder.name}/zh_CN.{charset}"],
                       check=True, timeout=PATIENCE * 2)
    return folder


_taken_ports = []  # what keeps them taken, until this process ends


def _take(port):
    """Whether this process has the port now, and has it until its end."""
    # A name that is the whole machine's, as a port is, and ends with the process.
    name = socket.socket(socket.AF_UNIX)
    try:
        name.bind(f"\0tarnwerk-test-port-{port}")
        with socket.socket() as probe:
            probe.bind(("", port))
    except OSError:
        name.close()
        return False
    _taken_ports.append(name)
    return True


def free_port(count=1):
    """The first of `count` neighbours that are free and that no other test gets, whether or not anything
    listens on them. They fit 16 bits with a sign, as the settings need it, and are below those that
    the system gives to clients.
    """
    while True:
        first = random.randrange(20000, 32000)
        if all(_take(first + number) for number in range(count)):
            return first


def accepts(port):
    with socket.socket() as probe:
        return probe.connect_ex(("127.0.0.1", port)) == 0


def wait_until(condition, what):
    end = time.monotonic() + PATIENCE
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain for {what}")
        time.sleep(0.005)


def everything(connection):
    """What comes until the other end closes."""
    return b"".join(iter(lambda: connection.recv(65536), b""))


def fetch(port, request):
    """Everything that comes back until the server ends the connection."""
    with socket.create_connection(("127.0.0.1", port), PATIENCE) as client:
        client.sendall(request)
        return everything(client)


class Home:
    """A program directory, and the user's directories inside it.

    `program`: the words that start the program. Nothing outside the directory is touched.
    """

    locale_variable, charset = "LC_ALL", "GBK"

    def __init__(self, program, display=""):
        self.program = list(program)
        self.path = pathlib.Path(tempfile.mkdtemp(prefix="tarnwerk-home-"))
        self.runtime = self.path / "runtime"
        self.runtime.mkdir(mode=0o700)
        self.ports = {name: free_port() for name in ("web", "ftp", "smtp", "pop3")}
        self.environment = dict(
            os.environ, TARNWERK_HOME=self.native(self.path),
            TARNWERK_HOSTS=self.native(self.path / "hosts"),
            XDG_RUNTIME_DIR=str(self.runtime), XDG_CONFIG_HOME=str(self.path / "config"),
            DISPLAY=display, WAYLAND_DISPLAY="")
        self.processes = []
        if ENCODING == "gbk":
            self.use_gbk()

    def use_gbk(self):
        """Makes GBK the code page of the system that the program sees."""
        self.use_locale(f"zh_CN.{self.charset}")

    def use_locale(self, name):
        self.environment.update({self.locale_variable: name,
                                 "LOCPATH": chinese_locales().name})

    def native(self, path):
        """A path as the program's system writes it."""
        return str(path)

    def file_name(self, name):
        """A name in the program's code page as this system's files have it."""
        return os.fsdecode(name)

    def write(self, name, content):
        file = self.path / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(content if isinstance(content, bytes) else content.encode())

    def file(self, name):
        """The whole path of a file of the program's, as text."""
        return str(self.path / name)

    def read_bytes(self, name):
        return (self.path / name).read_bytes()

    def read(self, name):
        """Empty if there is none."""
        return self.read_bytes(name).decode() if (self.path / name).exists() else ""

    def write_settings(self, domain="localhost", encoding="utf-8", **more):
        """Server.ini with every service on a port of its own; `more` goes to section System."""
        system = "".join(f"{key}={value}\r\n" for key, value in more.items())
        self.write("Server.ini", (
            f"[System]\r\n{system}"
            f"[WebServer Options]\r\nWebRootDir={self.native(self.path / 'wwwroot')}\r\n"
            f"TCPPort={self.ports['web']}\r\nDNS={domain}\r\nStartDefaultPage=1\r\nRead=1\r\n"
            f"optAppDone=True\r\n"
            f"[FtpServer Options]\r\nFtpServer Root={self.native(self.path / 'ftproot')}\r\n"
            f"FtpServer UploadDir={self.native(self.path / 'ftproot' / 'up')}\r\n"
            f"FtpPort={self.ports['ftp']}\r\nDNS={domain}\r\n"
            f"[MailServer Options]\r\nMailServer Root={self.native(self.path / 'mailroot')}\r\n"
            f"SMTP Port={self.ports['smtp']}\r\nPOP3 Port={self.ports['pop3']}\r\n"
            f"DNS={domain}\r\n").encode(encoding))

    def start(self, *words, output=subprocess.DEVNULL):
        process = subprocess.Popen([*self.program, *words], env=self.environment, stdout=output,
                                   stdin=subprocess.DEVNULL)
        self.processes.append(process)
        return process

    def start_services(self):
        process = self.start("START", "SHOW")
        self.wait_for_services()
        return process

    def run(self, *words):
        """Runs the program to its end; its exit code and what it wrote."""
        done = subprocess.run([*self.program, *words], env=self.environment, timeout=PATIENCE * 2,
                              stdin=subprocess.DEVNULL, capture_output=True)
        return done.returncode, done.stdout.decode(), done.stderr.decode()

    def wait_for_services(self):
        for name, port in self.ports.items():
            try:
                wait_until(lambda port=port: accepts(port), f"the port of {name}")
            except AssertionError as failure:
                log = self.path / "RunErr.Log"
                errors = log.read_bytes() if log.exists() else b""
                ended = [process.poll() for process in self.processes]
                raise AssertionError(f"{failure}; ended: {ended}, errors: {errors}") from None

    def get(self, resource):
        return fetch(self.ports["web"], f"GET {resource} HTTP/1.0\r\n\r\n".encode())

    def kill(self):
        for process in self.processes:
            process.kill()
            process.wait()
        self.processes.clear()

    def close(self):
        self.kill()
        shutil.rmtree(self.path)


class WindowsHome(Home):
    """A program directory of the Windows program under Wine. It needs a display."""

    # Wine takes the code page from the language, and file names from the character set.
    locale_variable, charset = "TARNWERK_WINE_LOCALE", "UTF-8"

    def __init__(self, executable):
        super().__init__([WINE, executable], display=os.environ["DISPLAY"])

    def file_name(self, name):
        return name.decode(ENCODING)

    def code_page(self):
        """The number of the code page of the programs that are started here, which Wine also records."""
        key = r"HKLM\System\CurrentControlSet\Control\Nls\CodePage"
        told = subprocess.run([WINE, "reg", "query", key, "/v", "ACP"], env=self.environment, check=True,
                              stdin=subprocess.DEVNULL, capture_output=True, timeout=PATIENCE)
        return int(told.stdout.split()[-1])

    def native(self, path):
        return "Z:" + str(path).replace("/", "\\")


def home_of(program):
    """A program directory, for the program of either system."""
    return WindowsHome(program) if program.endswith(".exe") else Home([program])


class ProgramTest(unittest.TestCase):
    """A test of the program that the command line names, with settings and a home page."""

    def setUp(self):
        self.home = self.make_home()

    def make_home(self):
        home = home_of(sys.argv[1])
        self.addCleanup(home.close)
        home.write_settings()
        home.write("wwwroot/index.htm", PAGE)
        return home

    def converse(self, kind, service):
        """A conversation until the end of the test."""
        conversation = kind(self.home.ports[service])
        self.addCleanup(conversation.close)
        return conversation

    def run_client(self, *words, code=0):
        """Runs another program, which has to end with `code`; what it wrote."""
        done = subprocess.run(words, capture_output=True, timeout=PATIENCE)
        self.assertEqual(done.returncode, code, done.stderr)
        return done.stdout

    def check_page(self):
        """Waits for the Web server, and gets the home page."""
        wait_until(lambda: accepts(self.home.ports["web"]), "the Web server")
        self.assertEqual(self.home.get("/index.htm"), PAGE)

    def end(self, process):
        process.terminate()
        self.assertEqual(process.wait(PATIENCE), 0)

    def stop(self, process):
        self.assertEqual(self.home.run("STOP"), (0, "", ""))
        self.assertEqual(process.wait(PATIENCE), 0)
        self.assertFalse(accepts(self.home.ports["web"]))


def run_tests():
    unittest.main(argv=sys.argv[:1], verbosity=2)
