"""Plays the rows of docs/http.md: how the Web server answers unusual requests by HTTP, and how nginx
does, if that is installed in the version that the document names. Linux only.

    http_peers_test.py PROGRAM CGI_PROGRAM
"""

import contextlib
import os
import pathlib
import re
import shutil
import socket
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from conversation_text import DOCS, as_line, parts  # noqa: E402
from program import (PATIENCE, ProgramTest, accepts, free_port, run_tests, wait_until)  # noqa: E402

DOCUMENT = (DOCS / "http.md").read_text(encoding="utf-8")
ROWS = re.findall(r"^\| `(.*)` \| (.*?) \| (.*?) \|.*\|$", DOCUMENT, re.MULTILINE)
DEFINITIONS = dict(re.findall(r"^- `\{(.*?)\}` is `(.*?)`$", DOCUMENT, re.MULTILINE))
VERSION = re.search(r"nginx (\d+\.\d+)", DOCUMENT)[1]
WRITTEN = 784111777  # Sun, 06 Nov 1994 08:49:37 GMT
PROBE = b"GET /next.txt HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n"
SAME = '#!/bin/sh\nprintf "Status: 304 Same\\n\\nHTTP/1.1 500 of another request" > "$2"'
NGINX = """daemon off; master_process off; pid nginx.pid; error_log error.log;
events {{ worker_connections 64; }}
http {{
  access_log off; lingering_timeout 100ms; root {root}; index index.htm; types {{ }}
  client_body_temp_path body; proxy_temp_path proxy; fastcgi_temp_path fastcgi;
  uwsgi_temp_path uwsgi; scgi_temp_path scgi;
  server {{ listen 127.0.0.1:{port}; location = /form.cgi {{ return 200 page; }}
           location = /same.cgi {{ return 304; }} }}
}}
"""


def answers(port, request):
    """The statuses of what comes back to a request with another one behind it, "…" for the latter's
    answer."""
    with contextlib.closing(socket.create_connection(("127.0.0.1", port), PATIENCE)) as client:
        with contextlib.suppress(ConnectionError):
            client.sendall(request + PROBE)
            client.shutdown(socket.SHUT_WR)
        came = b""
        with contextlib.suppress(ConnectionError):
            while piece := client.recv(65536):
                came += piece
    goes_on = came.endswith(b"next")
    statuses = [status.decode() for status in re.findall(rb"HTTP/1\.1 (\d{3}) ", came)]
    if goes_on:
        statuses[-1:] = "…"
    return " ".join(statuses) or ("bare" if came else "*nothing*")


class HttpPeersTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.home.write("Server.ini", self.home.read("Server.ini").replace(
            "[WebServer Options]\r\n", "[WebServer Options]\r\nAnswers=HTTP\r\n"))
        self.home.write("wwwroot/a.bin", "0123456789")
        self.home.write("wwwroot/next.txt", "next")
        (self.home.path / "wwwroot/folder").mkdir()
        os.utime(self.home.path / "wwwroot/a.bin", (WRITTEN, WRITTEN))
        self.home.write("wwwroot/cgi-bin/form.cgi", pathlib.Path(sys.argv[2]).read_bytes())
        self.home.write("wwwroot/cgi-bin/same.cgi", SAME)
        for program in (self.home.path / "wwwroot/cgi-bin").iterdir():
            program.chmod(0o755)

    def play(self, port, column):
        for row in ROWS:
            with self.subTest(row[0]):
                sent = b"".join(parts(as_line(row[0]), DEFINITIONS))
                self.assertEqual(answers(port, sent), row[column])

    def test_every_request_is_answered_as_the_document_says(self):
        self.home.start_services()
        self.play(self.home.ports["web"], 1)

    def test_nginx_answers_as_the_document_says(self):
        if not (nginx := shutil.which("nginx", path=os.environ["PATH"] + ":/usr/sbin")):
            self.skipTest("there is no nginx")
        if f"/{VERSION}." not in subprocess.run([nginx, "-v"], capture_output=True).stderr.decode():
            self.skipTest("this nginx is another version")
        port = free_port()
        self.home.write("nginx.conf", NGINX.format(root=self.home.path / "wwwroot", port=port))
        self.home.processes.append(subprocess.Popen(
            [nginx, "-p", str(self.home.path), "-c", "nginx.conf"], stderr=subprocess.DEVNULL))
        wait_until(lambda: accepts(port), "nginx")
        self.play(port, 2)


if __name__ == "__main__":
    run_tests()
