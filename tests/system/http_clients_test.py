"""Programs that fetch files by HTTP: what was broken off goes on where it ended.

    http_clients_test.py PROGRAM
"""

import pathlib
import random
import sys
from urllib.parse import quote

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from program import ProgramTest, run_tests  # noqa: E402

CONTENT = random.Random(1).randbytes(3_000_000)
FETCHED = 1_000_000  # bytes, before the first attempt ends


class HttpClientsTest(ProgramTest):
    def setUp(self):
        super().setUp()
        section = "[WebServer Options]"
        self.home.write("Server.ini", self.home.read("Server.ini").replace(
            section, f"{section}\r\nAnswers=HTTP\r\nSpeed=0"))
        self.home.write("wwwroot/下载/大 文件.bin", CONTENT)
        self.home.start_services()
        self.url = f"http://127.0.0.1:{self.home.ports['web']}/{quote('下载/大 文件.bin')}"
        self.copy = self.home.file("copy.bin")

    def break_off(self, *client):
        """The client ends as soon as it cannot write any more."""
        self.run_client("sh", "-c", f'"$@" | head -c {FETCHED} > {self.copy}', "sh",
                        *client, self.url)
        self.assertEqual(self.home.read_bytes("copy.bin"), CONTENT[:FETCHED])

    def test_curl_fetches_the_rest_of_a_file(self):
        self.break_off("curl", "-s")
        said = self.run_client("curl", "-sS", "-C", "-", "-o", self.copy,
                               "-w", "%{http_code} %{size_download}", self.url)
        self.assertEqual(said, b"206 %d" % (len(CONTENT) - FETCHED))
        self.assertEqual(self.home.read_bytes("copy.bin"), CONTENT)

    def test_wget_fetches_the_rest_of_a_file_and_nothing_of_a_whole_one(self):
        self.break_off("wget", "-qO-")
        for status in (b"206 Partial Content", b"416 Range Not Satisfiable"):
            said = self.run_client("sh", "-c", '"$@" 2>&1', "sh", "wget", "-c", "-S", "-nv",
                                   "-O", self.copy, self.url)
            self.assertIn(status, said)
            self.assertEqual(self.home.read_bytes("copy.bin"), CONTENT)


if __name__ == "__main__":
    run_tests()
