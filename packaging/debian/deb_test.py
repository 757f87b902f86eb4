"""Tests the .deb in a fresh Debian: installs it, runs it as a user, updates and removes it.

    deb_test.py PACKAGE.deb SAMPLE_FOLDER      as root

debootstrap creates the Debian, which is kept as an archive in the user's cache directory, as are
the packages that apt downloads. Each run unpacks it again. It runs in its own mount, process and
network namespaces, so that the usual ports are free and nothing outlives the test.
"""

import hashlib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

PACKAGE, SAMPLE = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME", pathlib.Path.home() / ".cache")) / "tarnwerk"
MIRROR = os.environ.get("TARNWERK_DEBIAN_MIRROR", "http://deb.debian.org/debian")
SUITE = "bookworm"
PATIENCE = 60  # seconds, for every wait
USER = "ann"
PORTS = {"web": 80, "ftp": 21, "smtp": 25, "pop3": 110}


def enter_own_namespaces():
    """Restarts this script in namespaces whose mounts and processes end with it."""
    if os.environ.pop("TARNWERK_OWN_MOUNTS", None):
        return
    os.environ["TARNWERK_OWN_MOUNTS"] = "1"
    os.execvp("unshare", ["unshare", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc",
                          sys.executable, "-B", *sys.argv])


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


def wait_until(condition, what):
    end = time.monotonic() + PATIENCE
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"timed out waiting for {what}")
        time.sleep(0.1)


class Debian:
    """A separate machine, made of a root directory and a network namespace."""

    def __init__(self):
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
        self.run("useradd", "--create-home", USER)

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

    def user_words(self, command):
        return ["nsenter", f"--net=/proc/{self.network.pid}/ns/net", "chroot", self.root,
                "runuser", "-u", USER, "--", "env", "-i", f"HOME=/home/{USER}",
                "PATH=/usr/bin:/bin", "LC_ALL=C.UTF-8", "sh", "-c", command]

    def start_as_user(self, command):
        return subprocess.Popen(self.user_words(command), stdin=subprocess.DEVNULL,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def as_user(self, command):
        done = subprocess.run(self.user_words(command), timeout=PATIENCE,
                              stdin=subprocess.DEVNULL, capture_output=True)
        if done.returncode:
            raise AssertionError(f"{command} failed: {done.stdout.decode()}{done.stderr.decode()}")
        return done.stdout.decode()

    def install(self, *more):
        shutil.copy(PACKAGE, self.root / "root" / PACKAGE.name)
        return self.run("apt-get", "-q", "-y", "install", *more, f"/root/{PACKAGE.name}")

    def accepts(self, port):
        script = f"import socket; print(socket.socket().connect_ex(('127.0.0.1', {port})))"
        return self.inside_network([sys.executable, "-c", script]).strip() == b"0"

    def fetch(self, path, *words):
        return self.inside_network(["curl", "-s", "--http0.9", "--max-time", "20", *words,
                                    f"http://localhost{path}"])

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


class DebTest(unittest.TestCase):
    """The life of one installation: each test is a step, in the order of the names."""

    @classmethod
    def setUpClass(cls):
        cls.debian = Debian()
        cls.addClassCleanup(cls.debian.close)
        cls.home = cls.debian.root / "home" / USER / ".local/share/tarnwerk"
        cls.program = cls.debian.root / "usr/lib/tarnwerk/Tarnwerk"
        cls.debian.run("apt-get", "-q", "update")

    def start(self, words="START SHOW", before=""):
        process = self.debian.start_as_user(f"{before} exec tarnwerk {words}")
        for name, port in PORTS.items():
            wait_until(lambda port=port: self.debian.accepts(port), f"the port of {name}")
        return process

    def stop(self, process):
        self.debian.as_user("tarnwerk STOP")
        self.assertEqual(process.wait(PATIENCE), 0)
        self.assertFalse(any(self.debian.accepts(port) for port in PORTS.values()))

    def status(self, field):
        """A field of /proc/PID/status of the program."""
        for entry in pathlib.Path("/proc").iterdir():
            if entry.name.isdigit() and os.path.realpath(entry / "exe").endswith("/lib/tarnwerk/Tarnwerk"):
                lines = (entry / "status").read_text().splitlines()
                return dict(line.split(":\t", 1) for line in lines)[field].split()
        raise AssertionError("the program is not running")

    def content(self):
        """The hashes of the user's files, except those that change with each start."""
        return {str(file.relative_to(self.home)): hashlib.sha256(file.read_bytes()).hexdigest()
                for file in self.home.rglob("*") if file.is_file()
                if file.suffix not in (".dat", ".Log", ".log")}

    def test_1_services_alone_run_for_an_ordinary_user_on_the_usual_ports(self):
        self.debian.install("--no-install-recommends")
        self.assertFalse(list(self.debian.root.glob("usr/lib/*/libgtk-3.so.0")))
        process = self.start()
        self.assertNotIn("0", self.status("Uid"))
        self.assertEqual(self.status("CapEff"), [f"{1 << 10:016x}"])
        self.assertEqual(self.debian.fetch("/"), (SAMPLE / "wwwroot/index.htm").read_bytes())
        self.assertEqual(self.debian.fetch("/picture.png"),
                         (SAMPLE / "wwwroot/picture.png").read_bytes())
        page = self.debian.fetch("/guestbook.cgi", "-d", "name=Li&message=hello")
        self.assertIn("<strong>Li</strong>：hello", page.decode())
        self.assertEqual([self.debian.greeting(PORTS[name]) for name in ("ftp", "smtp", "pop3")],
                         ["220", "220", "+OK"])
        self.assertEqual(self.home.stat().st_mode & 0o777, 0o700)
        self.stop(process)

    def test_2_update_keeps_pages_messages_and_the_right_to_open_ports(self):
        (self.home / "wwwroot/index.htm").write_text("<p>mine</p>")
        (self.home / "wwwroot/about.htm").unlink()
        (self.home / "mailroot/User/ann").mkdir(parents=True)
        (self.home / "mailroot/User/ann/Message_1.eml").write_text("Subject: kept\r\n\r\nkept\r\n.\r\n")
        before = self.content()
        inode = self.program.stat().st_ino
        process = self.start()
        # An update while the program runs: it goes on, and the next start runs the new file.
        self.debian.install("--reinstall", "--no-install-recommends")
        self.assertNotEqual(self.program.stat().st_ino, inode)
        self.assertEqual(self.debian.fetch("/"), b"<p>mine</p>")
        self.stop(process)
        process = self.start()
        self.assertEqual(self.debian.fetch("/"), b"<p>mine</p>")
        self.stop(process)
        self.assertEqual(self.content(), before)

    def test_3_window_opens_with_the_recommended_packages(self):
        recommended = self.debian.run("dpkg-query", "-W", "-f", "${Recommends}", "tarnwerk")
        self.debian.run("apt-get", "-q", "-y", "install", "--no-install-recommends",
                        *(name.split()[0] for name in recommended.split(",")), "xvfb",
                        "x11-utils", "desktop-file-utils")
        desktop = self.debian.start_as_user("exec Xvfb :7 -nolisten tcp -screen 0 1280x1024x24")
        self.addCleanup(desktop.wait)
        self.addCleanup(desktop.terminate)
        wait_until((self.debian.root / "tmp/.X11-unix/X7").exists, "the display")
        process = self.debian.start_as_user("DISPLAY=:7 NO_AT_BRIDGE=1 exec tarnwerk")
        wait_until(lambda: '"Tarnwerk"' in self.debian.as_user(
            "DISPLAY=:7 xwininfo -root -tree"), "the window")
        # Even though the system restricts programs with capabilities.
        self.assertEqual(self.status("CapPrm"), [f"{1 << 10:016x}"])
        self.stop(process)

    def test_4_desktop_entry_icons_and_man_pages_are_found(self):
        share = self.debian.root / "usr/share"
        self.debian.run("desktop-file-validate", "/usr/share/applications/tarnwerk.desktop")
        sizes = {folder.parent.parent.name for folder in
                 share.glob("icons/hicolor/*/apps/tarnwerk.*")}
        self.assertTrue({"16x16", "48x48", "256x256", "512x512", "scalable"} <= sizes, sizes)
        for language in ("", "zh_CN/"):
            self.assertTrue((share / f"man/{language}man1/tarnwerk.1.gz").exists())
        self.assertEqual(self.debian.run("dpkg", "--verify", "tarnwerk"), "")

    def test_5_removal_leaves_the_users_files_and_nothing_else(self):
        before = self.content()
        self.debian.run("apt-get", "-q", "-y", "purge", "tarnwerk")
        left = [path for path in self.debian.root.glob("usr/**/*") if "tarnwerk" in path.name.lower()]
        self.assertEqual(left, [])
        self.assertEqual(self.content(), before)
        self.assertIn("mailroot/User/ann/Message_1.eml", before)


if __name__ == "__main__":
    enter_own_namespaces()
    unittest.main(argv=sys.argv[:1], verbosity=2, failfast=True)
