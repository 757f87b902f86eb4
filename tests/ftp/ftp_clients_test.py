"""Runs the program against current FTP clients: Python's ftplib, curl and lftp.

ftp_clients_test.py PROGRAM
"""

import ftplib
import io
import pathlib
import random
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from program import PATIENCE, ProgramTest, free_port, run_tests  # noqa: E402

BIG = random.Random(1).randbytes(3000001)


class FtpClientsTest(ProgramTest):
    def setUp(self):
        super().setUp()
        home = self.home
        self.port, self.upload = home.ports["ftp"], home.path / "ftproot/up"
        self.upload.mkdir(parents=True)
        home.write("ftproot/big.bin", BIG)
        home.write("ftproot/pub/文件.txt", "hello")
        home.write("tree/deep/a.bin", BIG)
        home.start_services()

    def test_ftplib(self):
        ftp = ftplib.FTP(timeout=PATIENCE)
        ftp.connect("127.0.0.1", self.port)
        self.addCleanup(ftp.close)
        ftp.login("anybody", "anything")
        self.assertEqual(ftp.pwd(), "/")
        lines = []
        ftp.dir(lines.append)
        self.assertEqual([line.split()[-1] for line in lines], ["big.bin", "pub", "up"])
        ftp.cwd("pub")
        ftp.cwd("..")  # sends CWD once CDUP is refused
        self.assertEqual(ftp.pwd(), "/pub/../")
        with self.assertRaises(ftplib.error_perm):
            ftp.storbinary("STOR refused.bin", io.BytesIO(b"x"))
        ftp.cwd("/up")
        ftp.storbinary("STOR new.bin", io.BytesIO(BIG))
        self.assertEqual((self.upload / "new.bin").read_bytes(), BIG)
        ftp.rename("new.bin", "renamed.bin")
        ftp.mkd("folder")
        ftp.rmd("folder")
        ftp.delete("renamed.bin")
        self.assertEqual(list(self.upload.iterdir()), [])

    def test_curl(self):
        def curl(path, *options, code=0):
            return self.run_client("curl", "-sS", *options, f"ftp://127.0.0.1:{self.port}/{path}",
                                   code=code)

        self.assertIn("文件.txt\n".encode(), curl("pub/"))
        self.assertEqual(curl("big.bin"), BIG)
        # Active mode. A range: it binds one port for EPRT, which is refused, and needs another.
        port = free_port(2)
        self.assertEqual(curl("big.bin", "--ftp-port", f"127.0.0.1:{port}-{port + 1}"), BIG)
        local = self.home.file("tree/deep/a.bin")
        curl("new.bin", "-T", local, code=25)  # a refused upload
        curl("up/new.bin", "-T", local)
        self.assertEqual((self.upload / "new.bin").read_bytes(), BIG)
        curl("", "-Q", "CWD /up", "-Q", "DELE new.bin", "-Q", "MKD made")
        self.assertEqual([entry.name for entry in self.upload.iterdir()], ["made"])

    def test_lftp(self):
        def lftp(commands):
            # Without list-empty-ok it tries NLST after an empty listing, and gives up.
            opening = ("set cmd:fail-exit true; set net:max-retries 4; set net:timeout 10;"
                       " set net:reconnect-interval-base 1; set dns:order inet; set xfer:log false;"
                       " set ftp:ssl-allow false; set ftp:list-empty-ok true;"
                       f" open -u anybody,anything 127.0.0.1:{self.port}; ")
            return self.run_client("lftp", "--norc", "-c", opening + commands)

        listed = lftp(f"cls -1; get big.bin -o {self.home.path}/got.bin; cd pub; cls -1").decode()
        self.assertEqual(listed.split(), ["big.bin", "pub/", "up/", "文件.txt"])
        self.assertEqual(self.home.read_bytes("got.bin"), BIG)
        lftp(f"cd up; mirror -R {self.home.path}/tree copy")
        self.assertEqual((self.upload / "copy/deep/a.bin").read_bytes(), BIG)
        lftp("cd up; rm -r copy")
        self.assertEqual(list(self.upload.iterdir()), [])


if __name__ == "__main__":
    run_tests()
