"""Whether the desktop really starts what the autostart entry names: autostart_test.py PROBE"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "support"))
from program import PATIENCE, wait_until  # noqa: E402

probe = ""


class AutostartTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="tarnwerk-autostart-")
        self.path = pathlib.Path(self.enterContext(folder))
        self.environment = dict(os.environ, XDG_CONFIG_HOME=str(self.path / "config"))
        self.environment.pop("TARNWERK_HOME", None)
        self.entry = self.path / "config/autostart/Tarnwerk.desktop"

    def execute(self, *words, **variables):
        subprocess.run(words, env=self.environment | variables, check=True, timeout=PATIENCE,
                       stdin=subprocess.DEVNULL)

    def expect_start(self, folder, home, **variables):
        """The probe in a folder of that name, started by the desktop for that program directory."""
        program = self.path / folder / "Tarnwerk"
        program.parent.mkdir()
        shutil.copy(probe, program)
        self.execute(program, "on", **variables)
        self.execute("gio", "launch", self.entry)
        started = program.parent / "started"
        wait_until(lambda: started.exists() and started.read_text(), "the start")
        self.assertEqual(started.read_text(), str(home))
        self.execute(program, "off")
        self.assertFalse(self.entry.exists())

    def test_the_entry_starts_the_program_wherever_it_is(self):
        for folder in ("plain", "with blank", "名字", 'a"b`c$HOME\\d', "100%u of it"):
            with self.subTest(folder):
                self.expect_start(folder, self.path / folder)

    def test_after_an_update_the_running_program_enters_the_new_one(self):
        program = self.path / "Tarnwerk"
        shutil.copy(probe, program)
        running = subprocess.Popen([program, "on"], env=self.environment, stdin=subprocess.PIPE)
        shutil.copy(probe, self.path / "new")
        (self.path / "new").rename(program)
        running.communicate(timeout=PATIENCE)
        self.assertIn(f"TryExec={program}\n", self.entry.read_text())

    def test_a_program_directory_of_its_own_is_kept(self):
        self.expect_start("program", "/tmp/a $1", TARNWERK_HOME="/tmp/a $1")


if __name__ == "__main__":
    probe = sys.argv.pop(1)
    unittest.main(verbosity=2)
