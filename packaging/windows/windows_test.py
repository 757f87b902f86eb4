"""Tests the Windows installer and the portable zip under Wine, from installing to uninstalling.

    windows_test.py SETUP.exe PORTABLE.zip SAMPLE_FOLDER      as root, with a display

Wine and the clients run in a network namespace, in which the usual ports are free. The Wine prefix
is in the build tree; the traces of earlier runs are removed first.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import time
import unittest

SETUP, ZIP, SAMPLE = (pathlib.Path(word).resolve() for word in sys.argv[1:4])
ROOT = pathlib.Path(__file__).resolve().parents[2]
PREFIX = ROOT / "build" / "packages-wine-prefix"
PATIENCE = 90  # seconds, for every wait
PORTS = {"web": 80, "ftp": 21, "smtp": 25, "pop3": 110}
UNINSTALL = r"Software\Microsoft\Windows\CurrentVersion\Uninstall\Tarnwerk"

sys.path.insert(0, str(ROOT / "tests" / "support"))
from program import accepts, fetch  # noqa: E402


def enter_own_network():
    """Restarts this script in a network namespace and with a display, unless it has them."""
    if os.environ.get("TARNWERK_OWN_NETWORK"):
        subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
        return
    os.environ["TARNWERK_OWN_NETWORK"] = "1"
    os.execvp("unshare", ["unshare", "--net", "xvfb-run", "-a", "-s", "-screen 0 1280x1024x24",
                          sys.executable, "-B", *sys.argv])


def wait_until(condition, what):
    end = time.monotonic() + PATIENCE
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"timed out waiting for {what}")
        time.sleep(0.1)


def wine(*words, check=True):
    """Runs a Windows program to its end and returns its output."""
    done = subprocess.run([ROOT / "cmake/wine.sh", *words], stdin=subprocess.DEVNULL,
                          capture_output=True, timeout=PATIENCE * 2)
    if check and done.returncode:
        raise AssertionError(f"{words} ended with {done.returncode}: {done.stdout + done.stderr}")
    return done.stdout.decode(errors="replace")


def registry_value(root, name):
    """A value of the uninstaller's registry key; empty if missing."""
    for line in wine("reg", "query", f"{root}\\{UNINSTALL}", "/v", name, check=False).splitlines():
        if "REG_" in line:
            return line.split("REG_SZ")[-1].strip()
    return ""


class WindowsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        os.environ["TARNWERK_WINEPREFIX"] = str(PREFIX)
        cls.end_wine()
        wine("cmd", "/c", "exit")
        # The Wine server's sockets stay in the network namespace in which it started.
        cls.addClassCleanup(cls.end_wine)
        cls.drive = PREFIX / "drive_c"
        cls.user = next(folder for folder in (cls.drive / "users").iterdir()
                        if folder.name not in ("Public", "Default"))
        cls.data = cls.user / "AppData/Local/Tarnwerk"
        cls.own_programs = cls.user / "AppData/Local/Programs/Tarnwerk"
        cls.common_programs = cls.drive / "Program Files/Tarnwerk"
        os.environ["TARNWERK_HOSTS"] = str(PREFIX / "hosts")

    @staticmethod
    def end_wine():
        subprocess.run(["wineserver", "--kill"], env=dict(os.environ, WINEPREFIX=str(PREFIX)),
                       check=False, stderr=subprocess.DEVNULL)

    def setUp(self):
        for folder in (self.data, self.own_programs, self.common_programs):
            shutil.rmtree(folder, ignore_errors=True)
        for root in ("HKCU", "HKLM"):
            wine("reg", "delete", f"{root}\\{UNINSTALL}", "/f", check=False)
        for common in (False, True):
            for folder in ("", "StartUp"):
                self.start_menu(common, folder).unlink(missing_ok=True)

    def start_menu(self, common=False, folder=""):
        base = self.drive / "ProgramData" if common else self.user / "AppData/Roaming"
        return base / "Microsoft/Windows/Start Menu/Programs" / folder / "Tarnwerk.lnk"

    def expect_service(self, program):
        """Starts the program, checks that every port serves the sample, and stops it."""
        process = subprocess.Popen([ROOT / "cmake/wine.sh", program, "START", "SHOW"],
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
        for name, port in PORTS.items():
            wait_until(lambda port=port: accepts(port), f"the port of {name}")
        page = fetch(PORTS["web"], b"GET / HTTP/1.0\r\n\r\n")
        form = b"name=Li&message=hello"
        answer = subprocess.run(["curl", "-s", "--http0.9", "--max-time", "40", "-d", form,
                                 "http://localhost/guestbook.cgi"], stdout=subprocess.PIPE,
                                check=False).stdout.decode()
        wine(program, "STOP")
        process.wait(PATIENCE)
        self.assertFalse(any(accepts(port) for port in PORTS.values()))
        self.assertIn("<strong>Li</strong>：hello", answer)
        return page

    def uninstall(self, program_folder, *words):
        uninstaller = program_folder / "uninstall.exe"
        # The uninstaller continues as a copy of itself, which can delete the original.
        wine(uninstaller, "/S", *words)
        wait_until(lambda: not program_folder.exists(), "the end of the uninstaller")

    def test_user_installs_serves_updates_and_uninstalls(self):
        wine(SETUP, "/S", "/CurrentUser")
        self.assertTrue(self.start_menu().exists())
        self.assertFalse(self.start_menu(folder="StartUp").exists())
        self.assertEqual(registry_value("HKCU", "DisplayName"), "Tarnwerk")
        program = self.own_programs / "Tarnwerk.exe"
        sample = (SAMPLE / "wwwroot/index.htm").read_bytes()
        self.assertEqual(self.expect_service(program), sample)
        self.assertTrue((self.data / "startflg.dat").exists())

        # An update, while the program runs.
        (self.data / "wwwroot/index.htm").write_text("<p>mine</p>")
        (self.data / "mailroot/User/ann").mkdir(parents=True)
        message = self.data / "mailroot/User/ann/Message_1.eml"
        message.write_text("Subject: kept")
        process = subprocess.Popen([ROOT / "cmake/wine.sh", program, "START", "SHOW"],
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
        wait_until(lambda: accepts(PORTS["web"]), "the Web service")
        wine(SETUP, "/S", "/Autostart")
        process.wait(PATIENCE)
        self.assertTrue(self.start_menu(folder="StartUp").exists())
        self.assertEqual(self.expect_service(program), b"<p>mine</p>")

        self.uninstall(self.own_programs, "/CurrentUser")
        self.assertFalse(self.start_menu().exists() or self.start_menu(folder="StartUp").exists())
        self.assertEqual(registry_value("HKCU", "DisplayName"), "")
        self.assertEqual((self.data / "wwwroot/index.htm").read_text(), "<p>mine</p>")
        self.assertEqual(message.read_text(), "Subject: kept")

    def test_users_have_separate_pages_after_an_installation_for_all(self):
        wine(SETUP, "/S", "/AllUsers")
        self.assertTrue(self.start_menu(common=True).exists())
        self.assertEqual(registry_value("HKLM", "InstallLocation"), r"C:\Program Files\Tarnwerk")
        before = sorted(self.common_programs.rglob("*"))
        self.expect_service(self.common_programs / "Tarnwerk.exe")
        self.assertTrue((self.data / "wwwroot/cgi-bin/guestbook.txt").exists())
        self.assertEqual(sorted(self.common_programs.rglob("*")), before)

        # Other files in the program's folder are kept.
        (self.common_programs / "mine.txt").write_text("mine")
        wine(self.common_programs / "uninstall.exe", "/S", "/AllUsers", "/RemoveData")
        wait_until(lambda: not (self.common_programs / "uninstall.exe").exists(),
                   "the end of the uninstaller")
        wait_until(lambda: not self.data.exists(), "the end of the data folder")
        self.assertEqual([file.name for file in self.common_programs.iterdir()], ["mine.txt"])
        self.assertFalse(self.start_menu(common=True).exists())

    def test_portable_program_keeps_everything_beside_itself(self):
        folder = self.drive / "stick 便携"
        shutil.rmtree(folder, ignore_errors=True)
        subprocess.run(["unzip", "-q", ZIP, "-d", folder], check=True)
        self.addCleanup(shutil.rmtree, folder)
        self.expect_service(folder / "Tarnwerk/Tarnwerk.exe")
        self.assertTrue((folder / "Tarnwerk/startflg.dat").exists())
        self.assertFalse(self.data.exists())


if __name__ == "__main__":
    enter_own_network()
    unittest.main(argv=sys.argv[:1], verbosity=2)
