"""What an installed program does at its first start: its directory becomes the user's own, filled
with the sample site.

first_start_test.py PROGRAM
"""

import pathlib
import shutil
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from program import PATIENCE, Home, fetch, wait_until  # noqa: E402

PROGRAM = pathlib.Path(sys.argv[1])


class FirstStartTest(unittest.TestCase):
    def setUp(self):
        self.home = Home([])
        self.addCleanup(self.home.close)
        installed = self.home.path / "installed"
        installed.mkdir()
        self.home.program = [shutil.copy(PROGRAM, installed)]
        del self.home.environment["TARNWERK_HOME"]
        self.home.environment["XDG_DATA_HOME"] = str(self.home.path / "data")
        self.own = self.home.path / "data" / "tarnwerk"
        self.sample = installed / "sample"

    def make_sample(self):
        (self.sample / "ftproot" / "upload").mkdir(parents=True)
        (self.sample / "wwwroot").mkdir()
        (self.sample / "wwwroot" / "index.htm").write_text("<p>sample</p>")
        # Settings, so that the usual ports are left alone.
        self.home.write_settings()
        settings = self.home.read("Server.ini").replace(str(self.home.path), str(self.own))
        (self.sample / "Server.ini").write_text(settings)

    def start(self):
        process = self.home.start("START", "SHOW")
        self.home.wait_for_services()
        return process

    def stop(self, process):
        self.assertEqual(self.home.run("STOP"), (0, "", ""))
        process.wait(PATIENCE)

    def index(self):
        return fetch(self.home.ports["web"], b"GET / HTTP/1.0\r\n\r\n")

    def test_the_sample_is_copied_once_and_what_becomes_of_it_stays(self):
        self.make_sample()
        self.stop(process=self.start())
        self.assertEqual(self.own.stat().st_mode & 0o777, 0o700)
        (self.own / "wwwroot" / "index.htm").write_text("<p>mine</p>")
        (self.own / "ftproot" / "upload").rmdir()

        self.start()
        self.assertEqual(self.index(), b"<p>mine</p>")
        self.assertFalse((self.own / "ftproot" / "upload").exists())
        self.assertEqual([entry.name for entry in self.own.parent.iterdir()], ["tarnwerk"])

    def test_a_copy_that_was_broken_off_begins_anew(self):
        self.make_sample()
        unfinished = self.own.with_name("tarnwerk.new")
        unfinished.mkdir(parents=True)
        (unfinished / "half").write_text("")
        self.start()
        self.assertEqual(self.index(), b"<p>sample</p>")
        self.assertFalse(unfinished.exists() or (self.own / "half").exists())

    def test_a_stop_makes_no_directory(self):
        self.make_sample()
        self.assertEqual(self.home.run("STOP"), (0, "", ""))
        self.assertFalse(self.own.exists())

    def test_without_a_sample_the_directory_is_the_executables(self):
        process = self.home.start("SHOW")
        runtime = self.home.runtime / "Tarnwerk"
        wait_until(lambda: list(runtime.glob("*.socket")), "the program")
        self.stop(process)
        self.assertFalse(self.own.exists())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
