"""Tests the Windows installer and the portable zip under Wine, from installing to uninstalling.

    windows_test.py FOLDER OLDER_FOLDER SAMPLE_FOLDER      as root, with a display

Each of the first two has an installer and a zip, of two versions. The traces of earlier runs are removed first.
"""

import hashlib
import pathlib
import smtplib
import subprocess
import sys
import unittest
import zipfile

from own_files import CHOSEN, OWN_PORTS, OwnFiles
from wine_machine import PATIENCE, PORTS, WineMachine, accepts, enter_own_network, fetch, wait_until

NEW, OLDER, SAMPLE = (pathlib.Path(word).resolve() for word in sys.argv[1:4])
SETUP, ZIP = (next(NEW.glob(f"tarnwerk-*-{end}")) for end in ("setup.exe", "portable.zip"))
OLDER_SETUP, OLDER_ZIP = (next(OLDER.glob(f"tarnwerk-*-{end}")) for end in ("setup.exe", "portable.zip"))
# From the licences of what the program contains.
LICENCES = ("Copyright (c) 2026 The Tarnwerk developers", "GNU LIBRARY GENERAL PUBLIC LICENSE",
            "wxWindows Library Licence, applying", "nanosvg", "Apache License", "CC0",
            "Boost Software License", "Project Nayuki", "PNG Reference Library", "Jean-loup Gailly",
            "Fedor Indutny", "winpthreads", "GCC RUNTIME LIBRARY EXCEPTION", "GNU GENERAL PUBLIC LICENSE")


def hashes(folder):
    """Those of everything in the folder, except of what every start changes."""
    return {str(file.relative_to(folder)): hashlib.sha256(file.read_bytes()).hexdigest()
            for file in folder.rglob("*") if file.is_file()
            if file.suffix not in (".dat", ".Log", ".log")}


def version_of(package):
    return package.name.split("-")[1]


class WindowsTest(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.machine = WineMachine()
        cls.addClassCleanup(cls.machine.close)

    def setUp(self):
        self.new = self.machine.drive / "new folder"
        self.stick = self.machine.drive / "stick 便携"
        self.chosen = self.machine.drive / CHOSEN
        self.machine.forget_earlier_runs(
            self.new, self.stick, self.chosen, *self.machine.drive.glob("own *"),
            self.machine.user / "AppData/Roaming/Tarnwerk")

    def expect_service(self, program):
        """Starts the program, checks that every port serves the sample, and stops it."""
        with self.machine.started(program):
            page = fetch(PORTS["web"], b"GET / HTTP/1.0\r\n\r\n")
            answer = subprocess.run(["curl", "-s", "--http0.9", "--max-time", "40", "-d",
                                     "name=Li&message=hello", "http://localhost/guestbook.cgi"],
                                    stdout=subprocess.PIPE, check=False).stdout.decode()
        self.assertIn("<strong>Li</strong>：hello", answer)
        return page

    def expect_licences(self, folder):
        text = (folder / "licences.txt").read_text(encoding="utf-8-sig")
        self.assertEqual([words for words in LICENCES if words not in text], [])

    def install(self, *words, folder=None, setup=SETUP):
        # One word, so in quotation marks if it contains blanks.
        named = [f"/D={self.machine.path(folder)}"] if folder else []
        self.machine.run(setup, "/S", *words, *named)

    def expect_version(self, package, folder, root="HKCU"):
        version = version_of(package)
        self.assertEqual(self.machine.registered("DisplayVersion", root), version)
        self.assertIn(version, (folder / "readme.txt").read_text(encoding="utf-8-sig"))

    def uninstall(self, folder, *words):
        # The uninstaller continues as a copy of itself, which can delete the original.
        self.machine.run(folder / "uninstall.exe", "/S", *words)
        wait_until(lambda: not (folder / "uninstall.exe").exists(), "the end of the uninstaller")
        wait_until(lambda: not folder.exists() or list(folder.iterdir()), "the end of the folder")

    def test_user_installs_serves_updates_and_uninstalls(self):
        machine, programs, data = self.machine, self.machine.own_programs, self.machine.data
        self.install("/CurrentUser", setup=OLDER_SETUP)
        self.expect_version(OLDER_SETUP, programs)
        self.assertTrue(machine.start_menu().exists())
        self.assertFalse(machine.start_menu(folder="StartUp").exists())
        self.assertEqual(machine.registered("DisplayName"), "Tarnwerk")
        self.expect_licences(programs)
        program = programs / "Tarnwerk.exe"
        self.assertEqual(self.expect_service(program), (SAMPLE / "wwwroot/index.htm").read_bytes())
        self.assertTrue((data / "startflg.dat").exists())

        # An update while the program runs. It starts again, as it would at login.
        (data / "wwwroot/index.htm").write_text("<p>mine</p>")
        with machine.started(program) as process:
            self.install("/Autostart", "/Start")
            self.assertEqual(process.wait(PATIENCE), 0)
            machine.wait_for(PORTS)
            machine.run(program, "STOP")
        self.expect_version(SETUP, programs)
        self.assertTrue(machine.start_menu(folder="StartUp").exists())
        self.assertEqual(self.expect_service(program), b"<p>mine</p>")

        self.uninstall(programs, "/CurrentUser")
        self.assertFalse(programs.exists())
        self.assertFalse(machine.start_menu().exists() or machine.start_menu(folder="StartUp").exists())
        self.assertEqual(machine.registered("DisplayName"), "")
        self.assertEqual((data / "wwwroot/index.htm").read_text(), "<p>mine</p>")

    def test_users_have_separate_pages_after_an_installation_for_all(self):
        machine, programs = self.machine, self.machine.common_programs
        self.install("/AllUsers", setup=OLDER_SETUP)
        self.assertTrue(machine.start_menu(common=True).exists())
        self.assertEqual(machine.registered("InstallLocation", "HKLM"), r"C:\Program Files\Tarnwerk")
        before = hashes(programs)
        self.expect_service(programs / "Tarnwerk.exe")
        self.assertTrue((machine.data / "wwwroot/cgi-bin/guestbook.txt").exists())
        self.assertEqual(hashes(programs), before)

        # Other files in the program's folders are kept, by the update too.
        (programs / "mine.txt").write_text("mine")
        (programs / "sample/wwwroot/mine.htm").write_text("mine")
        self.install("/AllUsers")
        self.expect_version(SETUP, programs, "HKLM")
        self.uninstall(programs, "/AllUsers", "/RemoveData")
        wait_until(lambda: not machine.data.exists(), "the end of the data folder")
        self.assertEqual(sorted(hashes(programs)), ["mine.txt", "sample/wwwroot/mine.htm"])
        self.assertFalse(machine.start_menu(common=True).exists())

    def test_named_folder_gets_the_program_and_another_one_moves_it(self):
        machine = self.machine
        self.install(folder=self.new)
        self.assertEqual(machine.registered("InstallLocation"), machine.path(self.new))
        installed = hashes(self.new)
        self.assertTrue({"Tarnwerk.exe", "uninstall.exe", "sample/Server.ini"} <= set(installed))
        self.install()  # an update stays there
        self.assertEqual((hashes(self.new), machine.own_programs.exists()), (installed, False))
        # In the other folder are things of the user's.
        self.chosen.mkdir()
        (self.chosen / "readme.txt").write_text("mine")
        with machine.started(self.new / "Tarnwerk.exe"):
            self.install(folder=self.chosen)
        self.assertFalse(self.new.exists())
        self.assertEqual(set(hashes(self.chosen / "Tarnwerk")), set(installed))
        self.uninstall(self.chosen / "Tarnwerk")
        self.assertEqual([file.name for file in self.chosen.iterdir()], ["readme.txt"])
        self.assertEqual(machine.registered("InstallLocation"), "")

    def test_nothing_is_installed_where_the_user_has_a_folder_of_that_name(self):
        (self.chosen / "Tarnwerk").mkdir(parents=True)
        (self.chosen / "Tarnwerk/mine.txt").write_text("mine")
        named = f"/D={self.machine.path(self.chosen)}".split(" ")  # without quotation marks
        self.assertEqual(self.machine.run(SETUP, "/S", *named, check=False), 2)
        self.assertEqual(list(hashes(self.chosen)), ["Tarnwerk/mine.txt"])
        self.assertEqual(self.machine.registered("InstallLocation"), "")

    def test_program_that_cannot_be_asked_to_end_goes_on_and_nothing_changes(self):
        machine, programs = self.machine, self.machine.own_programs
        self.install()
        before = hashes(programs)
        with machine.started_on_another_desktop(programs / "Tarnwerk.exe"):
            self.assertEqual(machine.run(SETUP, "/S", check=False), 3)
            # In its own place and not as a copy, so that its exit code can be seen.
            self.assertEqual(machine.run(programs / "uninstall.exe", "/S", f"_?={machine.path(programs)}",
                                         check=False), 3)
            self.assertTrue(accepts(PORTS["web"]))
            self.assertEqual(hashes(programs), before)
            self.assertTrue(machine.registered("InstallLocation") and machine.start_menu().exists())
        self.uninstall(programs)

    def test_a_user_with_files_everywhere_keeps_them(self):
        machine = self.machine
        own = OwnFiles(machine)
        self.addCleanup(lambda: self.assertEqual(own.spoiled(), []))

        def untouched(change, *words):
            before = own.everything()
            change(*words)
            self.assertEqual(own.everything(), before)

        programs = self.chosen / "Tarnwerk"
        program = programs / "Tarnwerk.exe"

        def install(setup=SETUP):
            self.install(folder=self.chosen, setup=setup)
            self.expect_version(setup, programs)

        untouched(install, OLDER_SETUP)
        # An update, and the same version again.
        for _ in range(2):
            with machine.started(program, OWN_PORTS):
                self.use_services()
            self.assertEqual(own.spoiled(), [])
            untouched(self.install)
        untouched(self.uninstall, programs)
        untouched(install, OLDER_SETUP)
        # An update under way changes what a stop changes, and nothing else.
        with machine.started(program, OWN_PORTS) as process:
            install()
            self.assertEqual(process.wait(PATIENCE), 0)
        self.assertEqual(own.spoiled(), [])
        untouched(self.uninstall, programs)
        self.assertFalse(programs.exists())
        untouched(install)
        with machine.started(program, OWN_PORTS):
            self.use_services()
        untouched(self.uninstall, programs)

    def use_services(self):
        page = (self.machine.drive / "own 站点/wwwroot/index.htm").read_bytes()
        self.assertEqual(fetch(OWN_PORTS["web"], b"GET /index.htm HTTP/1.0\r\n\r\n"), page)
        subprocess.run(["curl", "-s", "-T", "-", f"ftp://a:b@127.0.0.1:{OWN_PORTS['ftp']}/new.txt"],
                       input=b"new", check=True, timeout=PATIENCE)
        self.assertEqual((self.machine.drive / "own 站点/ftproot/new.txt").read_bytes(), b"new")
        with smtplib.SMTP("127.0.0.1", OWN_PORTS["smtp"], timeout=PATIENCE) as client:
            client.sendmail("bob@localhost", "bob@localhost", "Subject: new\r\n\r\nnew")
        mailbox = self.machine.drive / "own 站点/mailroot/User/bob"
        self.assertGreater(len(list(mailbox.glob("*.eml"))), 1, list(mailbox.iterdir()))

    def unpack(self, package):
        subprocess.run(["unzip", "-q", "-o", package, "-d", self.stick], check=True)
        readme = (self.stick / "Tarnwerk/readme.txt").read_text(encoding="utf-8-sig")
        self.assertIn(version_of(package), readme)

    def test_portable_program_keeps_everything_beside_itself_when_a_newer_one_is_unpacked(self):
        folder = self.stick / "Tarnwerk"
        self.unpack(OLDER_ZIP)
        self.expect_licences(folder)
        of_zip = {name.removeprefix("Tarnwerk/") for name in zipfile.ZipFile(ZIP).namelist()}
        self.expect_service(folder / "Tarnwerk.exe")
        self.assertTrue((folder / "startflg.dat").exists())
        self.assertFalse(self.machine.data.exists())
        # The user changes everything, deletes a page and has more.
        users = set(hashes(folder)) - of_zip
        self.assertTrue({"Server.ini", "wwwroot/index.htm", "ftproot/readme.txt"} <= users, users)
        for name in users - {"Server.ini", "wwwroot/cgi-bin/guestbook.cgi"}:
            (folder / name).write_text(f"mine: {name}")
        with (folder / "Server.ini").open("a") as settings:
            settings.write("[Own]\r\nMine=1\r\n")
        (folder / "wwwroot/about.htm").unlink()
        (folder / "mailroot/User/ann").mkdir(parents=True)
        (folder / "mailroot/User/ann/Message_1.eml").write_text("Subject: mine")
        before = hashes(folder)
        self.unpack(ZIP)
        before["readme.txt"] = hashes(folder)["readme.txt"]
        self.assertEqual(hashes(folder), before)
        self.assertEqual(self.expect_service(folder / "Tarnwerk.exe"), b"mine: wwwroot/index.htm")
        after = hashes(folder)
        for written_by_the_guestbook in ("guestbook.txt", "TempFileIn"):
            for state in (before, after):
                del state[f"wwwroot/cgi-bin/{written_by_the_guestbook}"]
        self.assertEqual(after, before)


if __name__ == "__main__":
    enter_own_network()
    unittest.main(argv=sys.argv[:1], verbosity=2)
