"""Runs the program against current FTP clients: Python's ftplib, curl and lftp.

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


class ClientTest(unittest.TestCase):
    def setUp(self):
        home = Home([program])
        self.addCleanup(home.close)
        self.port, self.path, root = home.ports["ftp"], home.path, home.path / "ftproot"
        self.upload = root / "up"
        self.upload.mkdir(parents=True)
        self.big = random.Random(1).randbytes(3000001)
        (root / "big.bin").write_bytes(self.big)
        home.write("ftproot/pub/文件.txt", "hello")
        home.write_settings()
        home.start("START", "SHOW")
        home.wait_for_services()

    def run_client(self, *words):
        return subprocess.run(words, capture_output=True, timeout=PATIENCE, check=False)

    def assert_works(self, done):
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout


class FtplibTest(ClientTest):
    def setUp(self):
        super().setUp()
        self.ftp = ftplib.FTP(timeout=PATIENCE)
        self.ftp.connect("127.0.0.1", self.port)
        self.addCleanup(self.ftp.close)
        self.ftp.login("anybody", "anything")

    def test_walks_and_downloads(self):
        self.assertEqual(self.ftp.pwd(), "/")
        lines = []
        self.ftp.dir(lines.append)
        self.assertEqual([line.split()[-1] for line in lines], ["big.bin", "pub", "up"])
        received = io.BytesIO()
        self.ftp.retrbinary("RETR big.bin", received.write)
        self.assertEqual(received.getvalue(), self.big)
        self.ftp.cwd("pub")
        self.assertEqual(self.ftp.pwd(), "/pub/")
        self.ftp.dir(lines.append)
        self.assertIn("文件.txt", lines[-1])
        text = []
        self.ftp.retrlines("RETR 文件.txt", text.append)
        self.assertEqual(text, ["hello"])
        self.ftp.cwd("..")  # sends CWD once CDUP is refused
        self.assertEqual(self.ftp.pwd(), "/pub/../")

    def test_changes_files_in_the_upload_directory_only(self):
        with self.assertRaises(ftplib.error_perm):
            self.ftp.storbinary("STOR refused.bin", io.BytesIO(b"x"))
        self.ftp.cwd("/up")
        self.ftp.storbinary("STOR new.bin", io.BytesIO(self.big))
        self.assertEqual((self.upload / "new.bin").read_bytes(), self.big)
        self.ftp.rename("new.bin", "renamed.bin")
        self.ftp.mkd("folder")
        self.assertTrue((self.upload / "folder").is_dir())
        self.ftp.rmd("folder")
        self.ftp.delete("renamed.bin")
        self.assertEqual(list(self.upload.iterdir()), [])


class CurlTest(ClientTest):
    def curl(self, path, *options):
        url = f"ftp://127.0.0.1:{self.port}/{path}"
        return self.run_client("curl", "-sS", "--max-time", str(PATIENCE), *options, url)

    def test_lists_and_downloads(self):
        self.assertIn("文件.txt\n".encode(), self.assert_works(self.curl("pub/")))
        self.assertEqual(self.assert_works(self.curl("big.bin")), self.big)
        self.assertNotEqual(self.curl("missing.bin").returncode, 0)
        # Active mode. A range: it binds one port for EPRT, which is refused, and needs another.
        port = random.randrange(20000, 32000)
        fetched = self.curl("big.bin", "--ftp-port", f"127.0.0.1:{port}-{port + 50}")
        self.assertEqual(self.assert_works(fetched), self.big)

    def test_uploads_makes_folders_and_deletes(self):
        local = self.path / "local.bin"
        local.write_bytes(self.big)
        self.assert_works(self.curl("up/new.bin", "-T", str(local)))
        self.assertEqual((self.upload / "new.bin").read_bytes(), self.big)
        self.assertNotEqual(self.curl("new.bin", "-T", str(local)).returncode, 0)
        self.curl("up/", "-Q", "CWD /up", "-Q", "DELE new.bin", "-Q", "MKD made")
        self.assertEqual([entry.name for entry in self.upload.iterdir()], ["made"])


class LftpTest(ClientTest):
    def lftp(self, commands):
        # Without list-empty-ok it sends NLST after an empty listing, and gives up when that fails.
        opening = ("set cmd:fail-exit true; set net:max-retries 4; set net:timeout 10;"
                   " set net:reconnect-interval-base 1; set dns:order inet; set xfer:log false;"
                   " set ftp:ssl-allow false; set ftp:list-empty-ok true;"
                   f" open -u anybody,anything 127.0.0.1:{self.port}; ")
        return self.run_client("lftp", "--norc", "-c", opening + commands)

    def test_lists_and_downloads(self):
        done = self.lftp(f"cls -1; get big.bin -o {self.path}/got.bin; cd pub; cls -1")
        self.assertEqual(self.assert_works(done).decode().split(),
                         ["big.bin", "pub/", "up/", "文件.txt"])
        self.assertEqual((self.path / "got.bin").read_bytes(), self.big)

    def test_mirrors_a_tree_into_the_upload_directory(self):
        tree = self.path / "tree"
        (tree / "deep").mkdir(parents=True)
        (tree / "deep" / "a.bin").write_bytes(self.big)
        done = self.lftp(f"cd up; mirror -R {tree} copy")
        self.assertEqual((self.upload / "copy/deep/a.bin").read_bytes(), self.big, done.stderr)
        done = self.lftp("cd up; rm -r copy")
        self.assertEqual(list(self.upload.iterdir()), [], done.stderr)


if __name__ == "__main__":
    program = os.path.abspath(sys.argv.pop(1))
    unittest.main(verbosity=2)
