"""The program from outside: its command line, its instances, its files and its output.

program_test.py PROGRAM...
"""

import os
import pathlib
import signal
import socket
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from conversation import FtpConversation  # noqa: E402
from program import PATIENCE, Home, accepts, fetch, wait_until  # noqa: E402

program = []

ALL_RUNNING = """Web发布已经启动。 您的主页在：Http://localhost
Web服务：ON
E-Mail服务已经启动。SMTP:localhost  POP3:localhost
Mail服务：ON
Ftp服务已经启动。 您的Ftp地址是：ftp://localhost
Ftp服务：ON
"""


class ProgramTest(unittest.TestCase):
    def setUp(self):
        self.home = Home(program)
        self.addCleanup(self.home.close)
        self.home.write_settings()
        self.home.write("wwwroot/index.htm", "<p>home</p>")

    def under(self, shell):
        """From now on the program starts after these words of a shell."""
        self.home.program = ["sh", "-c", f'{shell}; exec "$@"', "sh", *program]

    def start_all(self):
        process = self.home.start("START", "SHOW")
        self.home.wait_for_services()
        return process

    def expect_end(self, process):
        self.assertEqual(process.wait(PATIENCE), 0)

    def test_start_serves_and_tells_at_once_even_into_a_file(self):
        output = self.home.path / "output"
        with output.open("wb") as file:
            self.home.start("START", "SHOW", output=file)
        self.home.wait_for_services()
        wait_until(lambda: self.home.read("output") == ALL_RUNNING, "the status texts")
        self.assertEqual(fetch(self.home.ports["web"], b"GET / HTTP/1.0\r\n\r\n"), b"<p>home</p>")
        self.assertEqual(self.home.read("startflg.dat"),
                         "[ServerStatus]\r\nWebServer=True\r\nMailServer=True\r\nFtpServer=True\r\n")
        self.assertEqual(self.home.read("hosts"), "\r\n127.0.0.1    localhost\r\n")

    def test_stop_ends_every_instance_of_the_user(self):
        other = Home(program)
        self.addCleanup(other.close)
        other.environment["XDG_RUNTIME_DIR"] = self.home.environment["XDG_RUNTIME_DIR"]
        other.write_settings()
        processes = [self.start_all(), other.start("START")]
        other.wait_for_services()
        self.assertEqual(self.home.run("/stop", "SHOW"), (0, "", ""))
        # Gone before the one that stopped them has ended.
        self.assertEqual([process.poll() for process in processes], [0, 0])
        self.assertFalse(accepts(self.home.ports["web"]) or accepts(other.ports["web"]))
        self.assertEqual(self.home.run("STOP"), (0, "", ""))

    def test_a_second_instance_ends_at_once_and_disturbs_nothing(self):
        # The place to meet is made if it is missing, and a link leads to the same directory.
        self.home.environment["XDG_RUNTIME_DIR"] = self.home.file("missing/runtime")
        link = self.home.path / "link"
        link.symlink_to(self.home.path)
        first = self.start_all()
        for directory in (self.home.path, link):
            self.home.environment["TARNWERK_HOME"] = str(directory)
            self.assertEqual(self.home.run("START"), (0, "", ""))
        self.assertIsNone(first.poll())
        self.assertTrue(accepts(self.home.ports["web"]))
        self.assertEqual(self.home.run("STOP"), (0, "", ""))
        self.assertEqual(first.poll(), 0)

    def test_it_outlives_the_reader_of_its_output(self):
        reader, writer = os.pipe()
        os.close(reader)
        process = self.home.start("START", output=writer)
        os.close(writer)
        self.home.wait_for_services()
        self.assertIsNone(process.poll())

    def test_closed_standard_streams_lead_into_no_file(self):
        self.under("exec <&- >&- 2>&-")
        process = self.start_all()
        self.assertEqual(fetch(self.home.ports["web"], b"GET / HTTP/1.0\r\n\r\n"), b"<p>home</p>")
        process.terminate()
        self.expect_end(process)
        files = [path for path in self.home.path.rglob("*") if path.is_file()]
        self.assertEqual([path for path in files if "服务：ON".encode() in path.read_bytes()], [])
        self.assertEqual(self.home.read("RunErr.Log"), "")

    def test_a_limit_of_file_sizes_costs_the_upload_alone(self):
        self.under("ulimit -f 8")
        self.home.write("ftproot/up/old.txt", "old")
        process = self.start_all()
        ftp = FtpConversation(self.home.ports["ftp"])
        self.addCleanup(ftp.close)
        ftp.ask("CWD /up")
        ftp.transfer("STOR large.bin", b"x" * 100_000)
        self.assertIn(b"\r\n550 ", ftp.transcript[-1][1])
        process.terminate()
        self.expect_end(process)

    def test_whoever_says_on_serves_however_few_descriptors_there_are(self):
        for limit in (12, 16, 20):
            self.under(f"ulimit -n {limit}")
            output = self.home.path / "output"
            with self.subTest(limit), output.open("wb") as file:
                self.home.start("START", "SHOW", output=file)
                wait_until(lambda: self.home.read("output").count("服务：") == 3, "the status texts")
                said = self.home.read("output")
                for word, port in (("Web", "web"), ("Mail", "smtp"), ("Mail", "pop3"), ("Ftp", "ftp")):
                    if f"{word}服务：OFF" in said:
                        self.assertNotEqual(self.home.read("RunErr.Log"), "")
                        continue
                    with socket.create_connection(("127.0.0.1", self.home.ports[port]), 10) as client:
                        client.sendall(b"GET / HTTP/1.0\r\n\r\n")
                        self.assertNotEqual(client.recv(1), b"", port)
            self.home.kill()

    def test_settings_decide_without_words_and_not_with_them(self):
        self.home.write_settings(AutoStartService="1", StartInTaskBar="1")
        process = self.home.start()
        self.home.wait_for_services()
        process.terminate()
        self.expect_end(process)
        process = self.home.start("SHOW")
        # It lives, and serves nothing.
        self.assertRaises(subprocess.TimeoutExpired, process.wait, 0.5)
        self.assertFalse(accepts(self.home.ports["web"]))

    def test_it_records_its_directory_and_keeps_the_proxy_off(self):
        internet = ("[HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion"
                    "\\Internet Settings]\nProxyEnable=%d\n")
        registry = "config/Tarnwerk/registry.ini"
        self.home.write(registry, internet % 1)
        process = self.start_all()
        program_key = f"[HKEY_LOCAL_MACHINE\\Software\\VEQ\\通用系统]\nTARNPath={self.home.path}\n"
        self.assertEqual(self.home.read(registry), internet % 0 + program_key)
        # Switched on meanwhile, it is off again at the end.
        self.home.write(registry, internet % 1)
        process.terminate()
        self.expect_end(process)
        self.assertEqual(self.home.read(registry), internet % 0)
        # What was off stays as the user has it.
        process = self.start_all()
        self.home.write(registry, internet % 1)
        self.assertEqual(self.home.run("STOP"), (0, "", ""))
        self.expect_end(process)
        self.assertEqual(self.home.read(registry), internet % 1)

    def test_signals_close_it_with_clients_in_the_middle(self):
        self.home.write("wwwroot/large.bin", b"x" * 2_000_001)
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            process = self.start_all()
            download = subprocess.Popen(
                ["curl", "-s", "--http0.9", f"http://127.0.0.1:{self.home.ports['web']}/large.bin"],
                stdout=subprocess.PIPE)
            download.stdout.read(10240)
            process.send_signal(number)
            self.expect_end(process)
            download.communicate()

    def test_what_a_killed_instance_left_blocks_neither_start_nor_stop(self):
        self.start_all().kill()
        wait_until(lambda: not accepts(self.home.ports["web"]), "the killed program")
        self.assertEqual(self.home.run("STOP"), (0, "", ""))
        process = self.start_all()
        self.assertEqual(self.home.run("STOP"), (0, "", ""))
        self.expect_end(process)

    def test_unusable_user_directories_stop_nothing(self):
        self.home.environment["XDG_RUNTIME_DIR"] = "/proc/none"
        self.home.environment["XDG_CONFIG_HOME"] = "/proc/none"
        process = self.start_all()
        process.terminate()
        self.expect_end(process)

    def test_a_deep_runtime_directory_is_no_obstacle(self):
        deep = self.home.path / ("d" * 100) / ("e" * 100)
        deep.mkdir(parents=True, mode=0o700)
        self.home.environment["XDG_RUNTIME_DIR"] = str(deep)
        process = self.start_all()
        self.assertEqual(self.home.run("STOP"), (0, "", ""))
        self.expect_end(process)

    def test_a_taken_port_fails_that_service_alone(self):
        with socket.socket() as taken:
            taken.bind(("", self.home.ports["pop3"]))
            taken.listen()
            process = self.home.start("START", "SHOW", output=subprocess.PIPE)
            wait_until(lambda: accepts(self.home.ports["ftp"]), "FTP")
            process.terminate()
            output = process.communicate()[0].decode()
        self.assertIn("E-Mail服务启动失败。请检查您的E-Mail与网络设置。\nMail服务：OFF\n", output)
        self.assertIn("WebServer=False", self.home.read("startflg.dat"))
        self.assertNotIn("MailServer", self.home.read("startflg.dat"))
        self.assertIn("捕获错误: ", self.home.read("RunErr.Log"))

    def test_web_opens_the_address_with_its_port_whether_or_not_it_runs(self):
        opener = self.home.path / "bin" / "xdg-open"
        self.home.write("bin/xdg-open", f"#!/bin/sh\necho \"$1\" > {self.home.path}/opened\n")
        opener.chmod(0o755)
        self.home.environment["PATH"] = f"{opener.parent}:{os.environ['PATH']}"
        self.home.start("x", "SHOW", "WEB")
        expected = f"http://localhost:{self.home.ports['web']}\n"
        wait_until(lambda: self.home.read("opened") == expected, "the browser")

    def test_a_program_directory_in_chinese_with_blanks(self):
        self.home.environment["TARNWERK_HOME"] = str(self.home.path / "我的 站点")
        self.home.write("我的 站点/wwwroot/首页.htm", "中文")
        (self.home.path / "Server.ini").rename(self.home.path / "我的 站点" / "Server.ini")
        root = self.home.path / "我的 站点" / "wwwroot"
        settings = (self.home.path / "我的 站点" / "Server.ini")
        settings.write_text(settings.read_text().replace(str(self.home.path / "wwwroot"), str(root)))
        self.start_all()
        answer = fetch(self.home.ports["web"], "GET /首页.htm HTTP/1.0\r\n\r\n".encode())
        self.assertEqual(answer.decode(), "中文")


if __name__ == "__main__":
    program = sys.argv[1:]
    unittest.main(argv=sys.argv[:1], verbosity=2)
