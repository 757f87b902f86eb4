"""The program with the FTP clients of today: Python's ftplib, curl and lftp.

ftp_clients_test.py PROGRAM
"""

import ftplib
import io
import os
import pathlib
import random
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from program import PATIENCE, Home  # noqa: E402

program = ""


class Server(Home):
    """The program with its FTP root and an upload directory in it."""

    def __init__(self):
        super().__init__([program])
        self.port = self.ports["ftp"]
        self.root = self.path / "ftproot"
        self.upload = self.root / "up"
        self.upload.mkdir(parents=True)
        self.write_settings()
        self.start("START", "SHOW")
        self.wait_for_services()


class ClientTest(unittest.TestCase):
    def setUp(self):
        self.server = Server()
        self.addCleanup(self.server.close)
        self.big = random.Random(1).randbytes(3000001)
        (self.server.root / "big.bin").write_bytes(self.big)
        (self.server.root / "pub").mkdir()
        (self.server.root / "pub" / "文件.txt").write_text("hello")

    def run_client(self, *words):
        return subprocess.run(words, capture_output=True, timeout=PATIENCE, check=False)


class FtplibTest(ClientTest):
    def setUp(self):
        super().setUp()
        self.ftp = ftplib.FTP(timeout=PATIENCE)
        self.ftp.connect("127.0.0.1", self.server.port)
        self.addCleanup(self.ftp.close)
        self.ftp.login("anybody", "anything")

    def listing(self):
        lines = []
        self.ftp.dir(lines.append)
        return lines

    def test_walks_and_downloads(self):
        self.assertEqual(self.ftp.pwd(), "/")
        self.assertEqual([line.split()[-1] for line in self.listing()], ["big.bin", "pub", "up"])
        received = io.BytesIO()
        self.ftp.retrbinary("RETR big.bin", received.write)
        self.assertEqual(received.getvalue(), self.big)
        self.ftp.cwd("pub")
        self.assertEqual(self.ftp.pwd(), "/pub/")
        self.assertIn("文件.txt", self.listing()[0])
        text = []
        self.ftp.retrlines("RETR 文件.txt", text.append)
        self.assertEqual(text, ["hello"])
        self.ftp.cwd("..")  # CDUP is not known, so it sends CWD
        self.assertEqual(self.ftp.pwd(), "/pub/../")

    def test_changes_files_in_the_upload_directory_only(self):
        with self.assertRaises(ftplib.error_perm):
            self.ftp.storbinary("STOR refused.bin", io.BytesIO(b"x"))
        self.ftp.cwd("/up")
        self.ftp.storbinary("STOR new.bin", io.BytesIO(self.big))
        self.assertEqual((self.server.upload / "new.bin").read_bytes(), self.big)
        self.ftp.rename("new.bin", "renamed.bin")
        self.ftp.mkd("folder")
        self.assertTrue((self.server.upload / "folder").is_dir())
        self.ftp.rmd("folder")
        self.ftp.delete("renamed.bin")
        self.assertEqual(list(self.server.upload.iterdir()), [])
        self.assertFalse((self.server.root / "refused.bin").exists())


class CurlTest(ClientTest):
    def curl(self, path, *options):
        url = f"ftp://127.0.0.1:{self.server.port}/{path}"
        return self.run_client("curl", "-sS", "--max-time", str(PATIENCE), *options, url)

    def test_lists_and_downloads(self):
        listed = self.curl("pub/")
        self.assertEqual(listed.returncode, 0, listed.stderr)
        self.assertIn("文件.txt\n".encode(), listed.stdout)
        fetched = self.curl("big.bin")
        self.assertEqual(fetched.returncode, 0, fetched.stderr)
        self.assertEqual(fetched.stdout, self.big)
        self.assertNotEqual(self.curl("missing.bin").returncode, 0)

    def test_uploads_makes_folders_and_deletes(self):
        local = self.server.path / "local.bin"
        local.write_bytes(self.big)
        stored = self.curl("up/new.bin", "-T", str(local))
        self.assertEqual(stored.returncode, 0, stored.stderr)
        self.assertEqual((self.server.upload / "new.bin").read_bytes(), self.big)
        self.assertNotEqual(self.curl("new.bin", "-T", str(local)).returncode, 0)
        self.curl("up/", "-Q", "CWD /up", "-Q", "DELE new.bin", "-Q", "MKD made")
        self.assertEqual([entry.name for entry in self.server.upload.iterdir()], ["made"])

    def test_active_mode_with_a_port_that_fits(self):
        # A range: it binds one port for EPRT, which is not known, and then wants another for PORT.
        port = random.randrange(20000, 32000)
        fetched = self.curl("big.bin", "--ftp-port", f"127.0.0.1:{port}-{port + 50}")
        self.assertEqual(fetched.returncode, 0, fetched.stderr)
        self.assertEqual(fetched.stdout, self.big)


class LftpTest(ClientTest):
    def lftp(self, commands):
        opening = (f"set cmd:fail-exit true; set net:max-retries 4; set net:timeout 10;"
                   f" set net:reconnect-interval-base 1; set dns:order inet;"
                   f" set ftp:ssl-allow false; set xfer:log false;"
                   # An empty listing makes it ask for NLST, which is not known.
                   f" set ftp:list-empty-ok true;"
                   f" open -u anybody,anything 127.0.0.1:{self.server.port}; ")
        return self.run_client("lftp", "--norc", "-c", opening + commands)

    def test_lists_and_downloads(self):
        done = self.lftp(f"cls -1; get big.bin -o {self.server.path}/got.bin; cd pub; cls -1")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(done.stdout.decode().split(), ["big.bin", "pub/", "up/", "文件.txt"])
        self.assertEqual((self.server.path / "got.bin").read_bytes(), self.big)

    def test_mirrors_a_tree_into_the_upload_directory(self):
        tree = self.server.path / "tree"
        (tree / "deep").mkdir(parents=True)
        (tree / "deep" / "a.bin").write_bytes(self.big)
        done = self.lftp(f"cd up; mirror -R {tree} copy")
        self.assertEqual((self.server.upload / "copy/deep/a.bin").read_bytes(), self.big,
                         done.stderr)
        done = self.lftp("cd up; rm -r copy")
        self.assertEqual(list(self.server.upload.iterdir()), [], done.stderr)


if __name__ == "__main__":
    program = os.path.abspath(sys.argv.pop(1))
    unittest.main(verbosity=2)
