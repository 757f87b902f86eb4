"""The program with the FTP clients of today: Python's ftplib, curl and lftp.

ftp_clients_test.py PROGRAM
"""

import ftplib
import io
import os
import pathlib
import random
import shutil
import socket
import subprocess
import sys
import tempfile
import time
import unittest

PATIENCE = 20  # seconds for anything that a client does

program = ""


def free_port():
    """A port that fits 16 bits with a sign."""
    while True:
        port = random.randrange(20000, 32768)
        with socket.socket() as probe:
            try:
                probe.bind(("", port))
                return port
            except OSError:
                pass


class Server:
    """The program with its FTP root in a temporary folder."""

    def __init__(self):
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="tarnwerk-ftp-"))
        self.root = self.home / "ftproot"
        self.upload = self.root / "up"
        self.upload.mkdir(parents=True)
        self.port = free_port()
        self._write_settings()
        environment = dict(os.environ, TARNWERK_HOME=str(self.home),
                           TARNWERK_HOSTS=str(self.home / "hosts"),
                           XDG_RUNTIME_DIR=str(self.home), XDG_CONFIG_HOME=str(self.home),
                           XDG_STATE_HOME=str(self.home), DISPLAY="", WAYLAND_DISPLAY="")
        self.process = subprocess.Popen([program, "START", "SHOW"], env=environment,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self._wait()

    def _write_settings(self):
        lines = ["[WebServer Options]", f"TCPPort={free_port()}", "DNS=localhost",
                 "[FtpServer Options]", f"FtpPort={self.port}", "DNS=localhost",
                 f"FtpServer Root={self.root}", f"FtpServer UploadDir={self.upload}",
                 "[MailServer Options]", f"SMTP Port={free_port()}", f"POP3 Port={free_port()}",
                 "DNS=localhost"]
        (self.home / "Server.ini").write_text("\r\n".join(lines) + "\r\n", newline="")

    def _wait(self):
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            try:
                socket.create_connection(("127.0.0.1", self.port), 1).close()
                return
            except OSError:
                time.sleep(0.05)
        raise RuntimeError("the program does not listen")

    def stop(self):
        self.process.terminate()
        self.process.wait(PATIENCE)
        shutil.rmtree(self.home)


class ClientTest(unittest.TestCase):
    def setUp(self):
        self.server = Server()
        self.addCleanup(self.server.stop)
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

    def test_what_the_server_does_not_know(self):
        with self.assertRaises(ftplib.error_perm):
            self.ftp.nlst()
        self.assertIsNone(self.ftp.size("big.bin"))
        with self.assertRaises(ftplib.error_temp):
            self.ftp.retrbinary("RETR missing", lambda _: None)
        self.ftp.set_pasv(False)  # its ports are beyond 16 bits with a sign
        with self.assertRaises(ftplib.error_perm):
            self.listing()
        self.assertEqual(self.ftp.quit(), "221 再见")


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
        local = self.server.home / "local.bin"
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
                   f" set net:reconnect-interval-base 1; set dns:order inet; set ftp:ssl-allow false; set xfer:log false;"
                   # An empty listing makes it ask for NLST, which is not known.
                   f" set ftp:list-empty-ok true;"
                   f" open -u anybody,anything 127.0.0.1:{self.server.port}; ")
        return self.run_client("lftp", "--norc", "-c", opening + commands)

    def test_lists_and_downloads(self):
        done = self.lftp(f"cls -1; get big.bin -o {self.server.home}/got.bin; cd pub; cls -1")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(done.stdout.decode().split(), ["big.bin", "pub/", "up/", "文件.txt"])
        self.assertEqual((self.server.home / "got.bin").read_bytes(), self.big)

    def test_mirrors_a_tree_into_the_upload_directory(self):
        tree = self.server.home / "tree"
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
