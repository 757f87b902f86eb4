"""The Windows program under Wine, for tests in Python."""

import os
import pathlib
import subprocess

from program import PATIENCE, Home

WINE = str(pathlib.Path(__file__).parents[2] / "cmake" / "wine.sh")


class WindowsHome(Home):
    """A program directory of the Windows program. It needs a display.

    `locale`: decides the ANSI code page. `locales`: the folder in which that locale is, if it is none
    of the system's.
    """

    def __init__(self, executable, locale="C.UTF-8", locales=None):
        super().__init__([WINE, executable], display=os.environ["DISPLAY"])
        self.environment["TARNWERK_WINE_LOCALE"] = locale
        if locales:
            self.environment["LOCPATH"] = str(locales)

    def native(self, path):
        return "Z:" + str(path).replace("/", "\\")

    def wine(self, *words):
        """Runs another Windows program; what it wrote. Fails if that fails."""
        done = subprocess.run([WINE, *words], env=self.environment, timeout=PATIENCE * 2, check=True,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL)
        return done.stdout

    def registry_value(self, key, name):
        """A value's text as the system's own program shows it."""
        for line in self.wine("reg", "query", key, "/v", name).decode(errors="replace").splitlines():
            words = line.split(maxsplit=2)
            if words[:1] == [name]:
                return words[2] if len(words) > 2 else ""
        raise AssertionError(f"no value {name} in {key}")
