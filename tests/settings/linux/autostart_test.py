"""Whether the desktop really starts what the autostart entry names.

autostart_test.py PROBE
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

probe = ""
PATIENCE = 30


class AutostartTest(unittest.TestCase):
    def setUp(self):
        self.path = pathlib.Path(tempfile.mkdtemp(prefix="tarnwerk-autostart-"))
        self.addCleanup(shutil.rmtree, self.path)
        self.environment = dict(os.environ, XDG_CONFIG_HOME=str(self.path / "config"))
        self.environment.pop("TARNWERK_HOME", None)

    def install(self, folder):
        """The probe in a folder of that name."""
        program = self.path / folder / "Tarnwerk"
        program.parent.mkdir(parents=True)
        shutil.copy(probe, program)
        return program

    def expect_login_starts(self, program, home):
        entry = self.path / "config/autostart/Tarnwerk.desktop"
        login = dict(self.environment)
        login.pop("TARNWERK_HOME", None)
        subprocess.run(["gio", "launch", str(entry)], env=login, check=True, timeout=PATIENCE)
        started = program.parent / "started"
        end = time.monotonic() + PATIENCE
        while not (started.exists() and started.read_text()):
            self.assertLess(time.monotonic(), end, "the program was not started")
            time.sleep(0.01)
        self.assertEqual(started.read_text(), str(home))
        return entry

    def switch(self, program, word):
        subprocess.run([program, word], env=self.environment, check=True, timeout=PATIENCE)

    def test_the_entry_starts_the_program_wherever_it_is_and_goes_when_turned_off(self):
        for folder in ("plain", "with blank", "名字", 'a"b`c$HOME\\d', "100%u of it"):
            with self.subTest(folder):
                program = self.install(folder)
                self.switch(program, "on")
                entry = self.expect_login_starts(program, program.parent)
                self.switch(program, "off")
                self.assertFalse(entry.exists())
                registry = (self.path / "config/Tarnwerk/registry.ini").read_text()
                self.assertIn("\nTarnwerk=\n", registry)

    def test_a_program_directory_of_its_own_is_kept(self):
        home = self.path / "home $1"
        self.environment["TARNWERK_HOME"] = str(home)
        program = self.install("program")
        self.switch(program, "on")
        self.expect_login_starts(program, home)


if __name__ == "__main__":
    probe = sys.argv[1]
    unittest.main(argv=sys.argv[:1], verbosity=2)
