"""Tests the .deb in a fresh Debian: installs it, runs it as a user, updates and removes it.

    [SUITE=trixie] deb_test.py PACKAGE.deb OLDER.deb SAMPLE_FOLDER      as root

It runs in its own mount, process and network namespaces, so that the usual ports are free and nothing
outlives the test.
"""

import contextlib
import hashlib
import os
import pathlib
import subprocess
import sys
import unittest

from fresh_debian import PATIENCE, Debian, wait_until
from own_files import OWN_PORTS, OWNER, OwnFiles

PACKAGE, OLDER, SAMPLE = (pathlib.Path(word).resolve() for word in sys.argv[1:4])
USER = "ann"  # begins with the sample site
PORTS = {"web": 80, "ftp": 21, "smtp": 25, "pop3": 110}


def enter_own_namespaces():
    """Restarts this script in namespaces whose mounts and processes end with it."""
    if os.environ.pop("TARNWERK_OWN_MOUNTS", None):
        return
    os.environ["TARNWERK_OWN_MOUNTS"] = "1"
    os.execvp("unshare", ["unshare", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc",
                          sys.executable, "-B", *sys.argv])


class DebTest(unittest.TestCase):
    """The life of one installation: each test is a step, in the order of the names."""

    @classmethod
    def setUpClass(cls):
        cls.debian = Debian([USER, OWNER])
        cls.addClassCleanup(cls.debian.close)
        cls.home = cls.debian.root / "home" / USER / ".local/share/tarnwerk"
        cls.program = cls.debian.root / "usr/lib/tarnwerk/Tarnwerk"
        cls.debian.run("apt-get", "-q", "update")
        cls.own = OwnFiles(cls.debian)

    def setUp(self):
        self.addCleanup(lambda: self.assertEqual(self.own.spoiled(), []))

    def start(self, words="START SHOW", user=USER, ports=PORTS):
        process = self.debian.start_as_user(f"exec tarnwerk {words}", user)
        self.wait_for(ports)
        return process

    def wait_for(self, ports):
        for name, port in ports.items():
            wait_until(lambda port=port: self.debian.accepts(port), f"the port of {name}")

    def start_of_owner(self):
        return self.start(user=OWNER, ports=OWN_PORTS)

    def packages(self, *words):
        """Changes packages, which leaves everything alone that is no package's."""
        before = self.own.everything()
        self.debian.run("apt-get", "-q", "-y", *words)
        self.assertEqual(self.own.everything(), before)

    def install(self, package, *words):
        """That version, whichever is installed."""
        self.debian.install(package, "--allow-downgrades", "--no-install-recommends", *words)
        version = self.debian.run("dpkg-query", "-W", "-f", "${Version}", "tarnwerk")
        self.assertEqual(version, package.name.split("_")[1])

    def stop(self, process):
        self.debian.as_user("tarnwerk STOP")
        self.assertEqual(process.wait(PATIENCE), 0)
        self.assertFalse(any(self.debian.accepts(port) for port in PORTS.values()))

    def status(self, field):
        """A field of /proc/PID/status of the program."""
        for entry in pathlib.Path("/proc").glob("[0-9]*"):
            with contextlib.suppress(OSError):  # those that have ended meanwhile, and the kernel's
                if not os.readlink(entry / "exe").endswith("/lib/tarnwerk/Tarnwerk"):
                    continue
                lines = (entry / "status").read_text().splitlines()
                return dict(line.split(":\t", 1) for line in lines)[field].split()
        raise AssertionError("the program is not running")

    def content(self):
        """The hashes of the user's files, except those that change with each start."""
        return {str(file.relative_to(self.home)): hashlib.sha256(file.read_bytes()).hexdigest()
                for file in self.home.rglob("*") if file.is_file()
                if file.suffix not in (".dat", ".Log", ".log")}

    def test_1_services_alone_run_for_an_ordinary_user_on_the_usual_ports(self):
        before = self.own.everything()
        self.install(OLDER)
        self.assertEqual(self.own.everything(), before)
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
        self.install(PACKAGE)
        self.assertNotEqual(self.program.stat().st_ino, inode)
        self.assertEqual(self.debian.fetch("/"), b"<p>mine</p>")
        self.stop(process)
        process = self.start()
        self.assertEqual(self.debian.fetch("/"), b"<p>mine</p>")
        self.stop(process)
        self.assertEqual(self.content(), before)

    def test_2a_a_user_with_files_everywhere_keeps_them_through_start_use_and_update(self):
        self.install(OLDER)
        process = self.start_of_owner()
        page = (self.debian.root / "srv/bob/wwwroot/index.htm").read_bytes()
        self.assertEqual(self.debian.fetch("/index.htm", port=OWN_PORTS["web"]), page)
        self.debian.inside_network(["curl", "-s", "-T", "-", "ftp://a:b@localhost:2121/new.txt"],
                                   input=b"new")
        mail = ["MAIL FROM:<a@localhost>", "RCPT TO:<bob@localhost>", "DATA", "Subject: new\r\n\r\nnew\r\n.",
                "QUIT"]
        self.debian.talk(OWN_PORTS["smtp"], ["HELO a", *mail])
        self.assertEqual((self.debian.root / "srv/bob/ftproot/new.txt").read_bytes(), b"new")
        before = self.own.everything()
        self.install(PACKAGE)
        self.install(PACKAGE, "--reinstall")
        self.assertEqual(self.own.everything(), before)
        self.assertEqual(self.debian.fetch("/index.htm", port=OWN_PORTS["web"]), page)
        self.debian.as_user("tarnwerk STOP", user=OWNER)
        self.assertEqual(process.wait(PATIENCE), 0)

    def test_2b_without_home_nothing_is_written_beside_the_program(self):
        before = sorted(self.program.parent.rglob("*"))
        for user in (USER, "root"):
            process = self.debian.start_as_user("cd /usr/lib/tarnwerk; exec env -u HOME tarnwerk START SHOW",
                                                user)
            self.wait_for(PORTS)
            self.debian.as_user("exec env -u HOME tarnwerk STOP", user)
            self.assertEqual(process.wait(PATIENCE), 0)
        self.assertEqual(sorted(self.program.parent.rglob("*")), before)

    def test_2c_the_desktop_starts_the_services_of_the_running_program(self):
        process = self.debian.start_as_user("exec tarnwerk SHOW")
        wait_until(lambda: list(self.debian.root.glob("tmp/Tarnwerk-*/*.start")), "the program")
        entry = (self.debian.root / "usr/share/applications/tarnwerk.desktop").read_text()
        command = entry.split("[Desktop Action start]")[1].split("Exec=")[1].split("\n")[0]
        self.debian.as_user("tarnwerk START")  # ends and changes nothing
        self.assertFalse(self.debian.accepts(PORTS["ftp"]))
        self.debian.as_user(command)
        self.wait_for(PORTS)
        self.stop(process)

    def test_2d_without_any_service_the_program_fails(self):
        process = self.start()
        self.debian.as_user("TARNWERK_HOME=/tmp/other tarnwerk START", code=1)
        self.stop(process)

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

    def test_4_desktop_entry_icons_manuals_completions_and_symbols_are_found(self):
        share = self.debian.root / "usr/share"
        self.debian.run("desktop-file-validate", "/usr/share/applications/tarnwerk.desktop")
        sizes = {folder.parent.parent.name for folder in
                 share.glob("icons/hicolor/*/apps/tarnwerk.*")}
        self.assertTrue({"16x16", "48x48", "256x256", "512x512", "scalable"} <= sizes, sizes)
        version = self.debian.as_user("tarnwerk --version").split()[1]
        self.assertEqual(version, PACKAGE.name.split("_")[1])
        self.assertIn("\n  START ", self.debian.as_user("tarnwerk --help"))
        for language in ("", "zh_CN/"):
            self.assertTrue((share / f"man/{language}man1/tarnwerk.1.gz").exists())
            self.assertIn(version, self.debian.run("zcat", f"/usr/share/man/{language}man1/tarnwerk.1.gz"))
        script = ("source /usr/share/bash-completion/completions/tarnwerk; "
                  "COMP_WORDS=(tarnwerk st) COMP_CWORD=1; _tarnwerk; echo ${COMPREPLY[*]}")
        self.assertEqual(self.debian.run("bash", "-c", script), "START STOP\n")
        symbols = PACKAGE.with_name(PACKAGE.name.replace("tarnwerk_", "tarnwerk-dbgsym_"))
        self.debian.install(symbols)
        notes = subprocess.run(["readelf", "-n", self.program], capture_output=True, check=True, text=True)
        build = notes.stdout.split("Build ID: ")[1].split()[0]
        self.assertTrue((self.debian.root / f"usr/lib/debug/.build-id/{build[:2]}/{build[2:]}.debug").exists())
        self.assertEqual(self.debian.run("dpkg", "--verify", "tarnwerk"), "")

    def test_5_removal_ends_every_users_program_and_leaves_their_files(self):
        self.install(OLDER)
        processes = [self.start(), self.start_of_owner()]
        # An update has replaced the file that both run.
        self.install(PACKAGE)
        self.assertEqual([process.poll() for process in processes], [None, None])
        before = self.content()
        self.debian.run("apt-get", "-q", "-y", "remove", "tarnwerk")
        self.assertFalse(any(self.debian.accepts(port) for port in [*PORTS.values(), *OWN_PORTS.values()]))
        self.assertEqual([process.wait(PATIENCE) for process in processes], [0, 0])
        self.assertEqual(self.content(), before)

    def test_6_reinstalled_purged_and_gone_it_leaves_the_users_files_and_nothing_else(self):
        before = self.content()
        self.packages("install", "--no-install-recommends", f"/root/{OLDER.name}")
        self.packages("remove", "tarnwerk")
        self.packages("install", "--no-install-recommends", f"/root/{PACKAGE.name}")
        process = self.start_of_owner()
        self.debian.as_user("tarnwerk STOP", user=OWNER)
        self.assertEqual(process.wait(PATIENCE), 0)
        self.packages("purge", "tarnwerk")
        left = [path for path in self.debian.root.glob("usr/**/*")
                if "tarnwerk" in path.name.lower() and "local" not in path.parts]
        self.assertEqual(left, [])
        self.assertEqual(self.content(), before)
        self.assertIn("mailroot/User/ann/Message_1.eml", before)


if __name__ == "__main__":
    enter_own_namespaces()
    unittest.main(argv=sys.argv[:1], verbosity=2, failfast=True)
