"""What an installed program does at its first start: its directory becomes the user's own, filled
with the sample site.

    first_start_test.py PROGRAM
"""

import pathlib
import shutil
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from program import ProgramTest, run_tests, wait_until  # noqa: E402


class FirstStartTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.own = self.home.path / "data" / "tarnwerk"
        sample = self.home.path / "installed" / "sample"
        (sample / "ftproot" / "upload").mkdir(parents=True)
        shutil.move(self.home.path / "wwwroot", sample)
        # Settings, so that the usual ports are left alone.
        settings = self.home.read("Server.ini").replace(str(self.home.path), str(self.own))
        (sample / "Server.ini").write_text(settings)
        self.home.program = [shutil.copy(sys.argv[1], sample.parent)]
        del self.home.environment["TARNWERK_HOME"]
        self.home.environment["XDG_DATA_HOME"] = str(self.own.parent)

    def test_the_sample_is_copied_once_and_what_becomes_of_it_stays(self):
        self.stop(self.home.start_services())
        self.assertEqual(self.own.stat().st_mode & 0o777, 0o700)
        (self.own / "wwwroot" / "index.htm").write_text("<p>mine</p>")
        (self.own / "ftproot" / "upload").rmdir()

        self.home.start_services()
        self.assertEqual(self.home.get("/"), b"<p>mine</p>")
        self.assertFalse((self.own / "ftproot" / "upload").exists())
        self.assertEqual([entry.name for entry in self.own.parent.iterdir()], ["tarnwerk"])

    def test_a_copy_that_was_broken_off_begins_anew(self):
        unfinished = self.own.with_name("tarnwerk.new")
        unfinished.mkdir(parents=True)
        (unfinished / "half").write_text("")
        self.home.start_services()
        self.check_page()
        self.assertFalse(unfinished.exists() or (self.own / "half").exists())

    def test_a_stop_makes_no_directory(self):
        self.assertEqual(self.home.run("STOP"), (0, "", ""))
        self.assertFalse(self.own.exists())

    def test_without_a_sample_the_directory_is_the_executables(self):
        shutil.rmtree(self.home.path / "installed" / "sample")
        process = self.home.start("SHOW")
        wait_until(lambda: list(self.home.path.glob("runtime/Tarnwerk/*.socket")), "the program")
        self.stop(process)
        self.assertFalse(self.own.exists())


if __name__ == "__main__":
    run_tests()
