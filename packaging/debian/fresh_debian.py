"""A fresh Debian as a separate machine, for tests of packages as root.

debootstrap creates it. It is kept as an archive in the user's cache directory, as are the packages that
apt downloads. Each run unpacks it again.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from waiting import PATIENCE, wait_until  # noqa: E402

CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME", pathlib.Path.home() / ".cache")) / "tarnwerk"
MIRROR = os.environ.get("TARNWERK_DEBIAN_MIRROR", "http://deb.debian.org/debian")
SUITE = os.environ.get("SUITE", "bookworm")


def base_archive():
    archive = CACHE / f"debian-root-{SUITE}.tar"
    if not archive.exists():
        CACHE.mkdir(parents=True, exist_ok=True)
        with tempfile.TemporaryDirectory(dir=CACHE) as work:
            subprocess.run(["debootstrap", "--variant=minbase", SUITE, f"{work}/root", MIRROR],
                           check=True, stdout=subprocess.DEVNULL)
            subprocess.run(["tar", "--numeric-owner", "-C", f"{work}/root", "-cf", f"{work}/tar",
                            "."], check=True)
            os.rename(f"{work}/tar", archive)
    return archive


class Debian:
    """A separate machine, made of a root directory and a network namespace."""

    def __init__(self, users):
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="tarnwerk-debian-"))
        subprocess.run(["tar", "-C", self.root, "-xpf", base_archive()], check=True)
        self.mount("-t", "proc", "proc", "proc")
        self.mount("-t", "tmpfs", "tmpfs", "tmp")
        self.mount("-t", "tmpfs", "tmpfs", "run")
        packages = CACHE / "debian-packages"
        (packages / "partial").mkdir(parents=True, exist_ok=True)
        self.mount("--bind", packages, "var/cache/apt/archives")
        shutil.copy("/etc/resolv.conf", self.root / "etc" / "resolv.conf")
        # Keeps the packages in the cache for the next run.
        (self.root / "etc/apt/apt.conf.d/99test").write_text(
            'Binary::apt::APT::Keep-Downloaded-Packages "true";\nAPT::Sandbox::User "root";\n')
        self.network = subprocess.Popen(["unshare", "--net", "sh", "-c",
                                         "ip link set lo up && exec sleep infinity"])
        wait_until(lambda: b"LOOPBACK,UP" in self.inside_network(["ip", "link"]), "a network")
        for user in users:
            self.run("useradd", "--create-home", user)

    def mount(self, *words):
        *options, target = words
        (self.root / target).mkdir(parents=True, exist_ok=True)
        subprocess.run(["mount", *options, self.root / target], check=True)

    def inside_network(self, words, **more):
        return subprocess.run(["nsenter", f"--net=/proc/{self.network.pid}/ns/net", *words],
                              stdout=subprocess.PIPE, timeout=PATIENCE, **more).stdout

    def run(self, *words, check=True):
        """Runs a command as root with the real network, and returns its output."""
        environment = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL": "C.UTF-8",
                       "DEBIAN_FRONTEND": "noninteractive", "HOME": "/root"}
        done = subprocess.run(["chroot", self.root, *words], env=environment, timeout=900,
                              stdin=subprocess.DEVNULL, capture_output=True)
        if check and done.returncode:
            raise AssertionError(f"{words} failed:\n{done.stdout.decode()}{done.stderr.decode()}")
        return done.stdout.decode()

    def user_words(self, command, user):
        return ["nsenter", f"--net=/proc/{self.network.pid}/ns/net", "chroot", self.root,
                "runuser", "-u", user, "--", "env", "-i", f"HOME=/home/{user}",
                "PATH=/usr/bin:/bin", "LC_ALL=C.UTF-8", "sh", "-c", command]

    def start_as_user(self, command, user="ann"):
        return subprocess.Popen(self.user_words(command, user), stdin=subprocess.DEVNULL,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def as_user(self, command, user="ann", code=0):
        done = subprocess.run(self.user_words(command, user), timeout=PATIENCE,
                              stdin=subprocess.DEVNULL, capture_output=True)
        if done.returncode != code:
            raise AssertionError(f"{command} failed: {done.stdout.decode()}{done.stderr.decode()}")
        return done.stdout.decode()

    def install(self, package, *more):
        shutil.copy(package, self.root / "root" / package.name)
        return self.run("apt-get", "-q", "-y", "install", *more, f"/root/{package.name}")

    def accepts(self, port):
        script = f"import socket; print(socket.socket().connect_ex(('127.0.0.1', {port})))"
        return self.inside_network([sys.executable, "-c", script]).strip() == b"0"

    def fetch(self, path, *words, port=80):
        return self.inside_network(["curl", "-s", "--http0.9", "--max-time", "20", *words,
                                    f"http://localhost:{port}{path}"])

    def talk(self, port, lines):
        """Says one line after the other, each after the answer to the one before."""
        script = ("import socket, sys; s = socket.create_connection(('127.0.0.1', %d), 20); s.recv(999)\n"
                  "for line in sys.argv[1:]:\n s.sendall(line.encode() + b'\\r\\n'); s.recv(999)" % port)
        self.inside_network([sys.executable, "-c", script, *lines])

    def greeting(self, port):
        script = ("import socket; s = socket.create_connection(('127.0.0.1', %d), 20); "
                  "print(s.recv(3).decode())" % port)
        return self.inside_network([sys.executable, "-c", script]).decode().strip()

    def close(self):
        self.network.kill()
        self.network.wait()
        # The mounts would end with the process, but the directory must be removed before.
        for target in ("var/cache/apt/archives", "run", "tmp", "proc"):
            subprocess.run(["umount", "--lazy", self.root / target], check=False)
        shutil.rmtree(self.root)
