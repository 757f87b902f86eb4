"""A Windows machine for tests of packages: a Wine prefix in the build tree, with its user.

It has a network namespace of its own, in which the usual ports are free, and needs a display.
"""

import contextlib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
PREFIX = ROOT / "build" / "packages-wine-prefix"
PORTS = {"web": 80, "ftp": 21, "smtp": 25, "pop3": 110}
UNINSTALL = r"Software\Microsoft\Windows\CurrentVersion\Uninstall\Tarnwerk"

sys.path[:0] = [str(ROOT / "packaging"), str(ROOT / "tests" / "support")]
from program import accepts, fetch  # noqa: E402
from waiting import PATIENCE, wait_until  # noqa: E402


def enter_own_network():
    """Restarts this script in a network namespace and with a display, unless it has them."""
    if os.environ.get("TARNWERK_OWN_NETWORK"):
        subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
        return
    os.environ["TARNWERK_OWN_NETWORK"] = "1"
    os.execvp("unshare", ["unshare", "--net", "xvfb-run", "-a", "-s", "-screen 0 1280x1024x24",
                          sys.executable, "-B", *sys.argv])


class WineMachine:
    def __init__(self):
        os.environ["TARNWERK_WINEPREFIX"] = str(PREFIX)
        os.environ["TARNWERK_HOSTS"] = str(PREFIX / "hosts")
        self.close()
        self.run("cmd", "/c", "exit")
        self.drive = PREFIX / "drive_c"
        self.user = next(folder for folder in (self.drive / "users").iterdir()
                         if folder.name not in ("Public", "Default"))
        self.data = self.user / "AppData/Local/Tarnwerk"
        self.own_programs = self.user / "AppData/Local/Programs/Tarnwerk"
        self.common_programs = self.drive / "Program Files/Tarnwerk"

    @staticmethod
    def close():
        """Ends all programs. Otherwise the server's sockets would stay in this network namespace."""
        subprocess.run(["wineserver", "--kill"], env=dict(os.environ, WINEPREFIX=str(PREFIX)),
                       check=False, stderr=subprocess.DEVNULL)

    @staticmethod
    def run(*words, check=True):
        """Runs a Windows program to its end: what it wrote, or without `check` its exit code.

        A program that it leaves running may keep the output open.
        """
        with tempfile.TemporaryFile() as output:
            done = subprocess.run([ROOT / "cmake/wine.sh", *words], stdin=subprocess.DEVNULL, check=False,
                                  stdout=output, stderr=subprocess.STDOUT, timeout=PATIENCE * 2)
            output.seek(0)
            text = output.read().decode(errors="replace")
        if not check:
            return done.returncode
        if done.returncode:
            raise AssertionError(f"{words} ended with {done.returncode}: {text}")
        return text

    def forget_earlier_runs(self, *folders):
        for folder in (self.data, self.own_programs, self.common_programs, *folders):
            shutil.rmtree(folder, ignore_errors=True)
        for root in ("HKCU", "HKLM"):
            self.run("reg", "delete", f"{root}\\{UNINSTALL}", "/f", check=False)
        for common in (False, True):
            for folder in ("", "StartUp"):
                self.start_menu(common, folder).unlink(missing_ok=True)

    def start_menu(self, common=False, folder=""):
        base = self.drive / "ProgramData" if common else self.user / "AppData/Roaming"
        return base / "Microsoft/Windows/Start Menu/Programs" / folder / "Tarnwerk.lnk"

    def registered(self, name, root="HKCU"):
        """A value of the uninstaller's registry key; empty if missing."""
        with contextlib.suppress(AssertionError):
            for line in self.run("reg", "query", f"{root}\\{UNINSTALL}", "/v", name).splitlines():
                if "REG_" in line:
                    return line.split("REG_SZ")[-1].strip()
        return ""

    def path(self, file):
        """A path as Windows writes it."""
        return "C:\\" + str(file.relative_to(self.drive)).replace("/", "\\")

    @contextlib.contextmanager
    def started(self, program, ports=PORTS):
        """The running program, with its services. It is stopped unless something else has done so."""
        process = subprocess.Popen([ROOT / "cmake/wine.sh", program, "START", "SHOW"],
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
        self.wait_for(ports)
        yield process
        if program.exists() and process.poll() is None:
            self.run(program, "STOP")
        process.wait(PATIENCE)
        if any(accepts(port) for port in ports.values()):
            raise AssertionError("a service goes on")

    @staticmethod
    def wait_for(ports):
        for name, port in ports.items():
            wait_until(lambda port=port: accepts(port), f"the port of {name}")

    @contextlib.contextmanager
    def started_on_another_desktop(self, program):
        """The program as another user would run it: nobody here can ask it to end."""
        elsewhere = ("explorer", "/desktop=another,800x600", self.path(program))
        process = subprocess.Popen([ROOT / "cmake/wine.sh", *elsewhere, "START", "SHOW"],
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
        self.wait_for(PORTS)
        yield
        subprocess.run([ROOT / "cmake/wine.sh", *elsewhere, "STOP"], stdin=subprocess.DEVNULL, check=False)
        wait_until(lambda: not any(accepts(port) for port in PORTS.values()), "the end of the program")
        process.wait(PATIENCE)
