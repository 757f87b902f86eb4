"""The program from outside: its command line, its instances, its output, and its first start.

    program_test.py PROGRAM
"""

import contextlib
import io
import os
import pathlib
import re
import shutil
import signal
import socket
import subprocess
import sys
from ftplib import FTP, error_perm, error_temp

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from conversation import FtpConversation  # noqa: E402
from program import (PAGE, PATIENCE, ProgramTest, accepts, fetch, run_tests,  # noqa: E402
                     wait_until)

PROGRAM = sys.argv[1]
ROOT = pathlib.Path(__file__).parents[2]


class OutsideTest(ProgramTest):
    def under(self, shell):
        """From now on the program starts after these words of a shell."""
        self.home.program = ["sh", "-c", f'{shell}; exec "$@"', "sh", PROGRAM]

    def start_into_output(self):
        """What it says at once, even into a file."""
        with open(self.home.path / "output", "wb") as output:
            self.home.start("START", "SHOW", output=output)
        wait_until(lambda: self.home.read("output").count("服务：") == 3, "the status texts")
        return self.home.read("output")

    def start_idle(self, *words):
        """Starts it with words that start no service."""
        process = self.home.start(*words)
        wait_until(lambda: list(self.home.runtime.glob("Tarnwerk/*.start")), "the program")
        return process

    def test_stop_ends_every_instance_of_the_user(self):
        other = self.make_home()
        other.environment["XDG_RUNTIME_DIR"] = self.home.environment["XDG_RUNTIME_DIR"]
        processes = [self.home.start_services(), other.start_services()]
        self.assertEqual(self.home.run("/stop", "SHOW"), (0, "", ""))
        # Gone before the one that stopped them has ended.
        self.assertEqual([process.poll() for process in processes], [0, 0])
        self.assertFalse(accepts(self.home.ports["web"]) or accepts(other.ports["web"]))
        self.assertEqual(self.home.run("STOP"), (0, "", ""))

    def test_a_second_instance_ends_at_once_and_disturbs_nothing(self):
        # The place to meet is made if it is missing, and a link leads to the same directory. Too
        # deep a place for a socket is no obstacle.
        self.home.environment["XDG_RUNTIME_DIR"] = self.home.file(f"{'d' * 100}/{'e' * 100}/runtime")
        link = self.home.path / "我的 站点"
        link.symlink_to(self.home.path)
        self.home.environment["TARNWERK_HOME"] = str(link)
        first = self.home.start_services()
        for directory in (self.home.path, link):
            self.home.environment["TARNWERK_HOME"] = str(directory)
            self.assertEqual(self.home.run("START"), (0, "", ""))
        self.assertIsNone(first.poll())
        self.check_page()
        self.stop(first)

    def test_the_desktop_menu_starts_the_services_of_the_running_program_and_nothing_else_does(self):
        first = self.start_idle("SHOW")
        self.assertEqual(self.home.run("START"), (0, "", ""))
        self.home.environment["TARNWERK_START_RUNNING"] = "1"
        taken = socket.create_server(("", self.home.ports["ftp"]))
        self.assertEqual(self.home.run("START"), (0, "", ""))
        self.check_page()
        taken.close()
        self.assertEqual(self.home.run("START"), (0, "", ""))
        self.home.wait_for_services()
        self.assertEqual(self.home.read("RunErr.Log").count("捕获错误"), 1)
        self.stop(first)

    def test_help_and_version_are_printed_as_the_only_word_and_agree_with_the_manual(self):
        code, version, _ = self.home.run("--VERSION")
        self.assertRegex(version, r"^Tarnwerk \d+\.\d+\.\d+\S*\n$")
        code, text, errors = self.home.run("--help")
        self.assertEqual((code, errors), (0, ""))
        manual = (ROOT / "packaging/debian/tarnwerk.zh_CN.1.in").read_text().replace("\\-", "-")
        words = re.findall(r"(?m)^  (\S+) +(.+)$", text)
        self.assertEqual(words, re.findall(r"(?m)^\.B (\S+)\n((?:第.个|唯一的)词：.+)$", manual))
        self.assertFalse((self.home.path / "startflg.dat").exists())
        # Beside another word it is one of those that only take up their positions.
        self.stop(self.start_idle("--help", "SHOW"))

    def test_without_a_window_and_any_service_it_fails_and_says_why(self):
        with contextlib.ExitStack() as taken:
            for port in self.home.ports.values():
                taken.enter_context(socket.create_server(("", port)))
            code, said, errors = self.home.run("START")
            self.assertEqual((code, errors), (1, "Tarnwerk: 没有一项服务能够启动，程序结束。\n"))
            self.assertIn(f"Web服务：OFF\n端口 {self.home.ports['web']} 已被“", said)
        self.stop(self.start_idle("SHOW"))

    def test_it_outlives_the_reader_of_its_output(self):
        process = self.home.start("START", output=subprocess.PIPE)
        process.stdout.close()
        self.check_page()
        self.end(process)

    def test_closed_standard_streams_lead_into_no_file(self):
        self.under("exec <&- >&- 2>&-")
        process = self.home.start_services()
        self.check_page()
        self.end(process)
        files = [path for path in self.home.path.rglob("*") if path.is_file()]
        self.assertEqual([path for path in files if "服务：ON".encode() in path.read_bytes()], [])
        self.assertEqual(self.home.read("RunErr.Log"), "")

    def test_a_limit_of_file_sizes_costs_the_upload_alone(self):
        self.under("ulimit -f 8")
        self.home.write("ftproot/up/old.txt", "old")
        process = self.home.start_services()
        ftp = self.converse(FtpConversation, "ftp")
        ftp.ask("CWD /up")
        self.assertIn(b"\r\n550 ", ftp.transfer("STOR large.bin", b"x" * 100_000)[0])
        self.end(process)

    def test_whoever_says_on_serves_however_few_descriptors_there_are(self):
        services = {"web": "Web", "smtp": "Mail", "pop3": "Mail", "ftp": "Ftp"}
        for limit in (16, 24, 32):
            self.under(f"ulimit -n {limit}")
            said = self.start_into_output()
            with self.subTest(limit):
                descriptors = f"/proc/{self.home.processes[-1].pid}/fd"
                for name in [name for name, word in services.items() if f"{word}服务：ON" in said]:
                    address = ("127.0.0.1", self.home.ports[name])
                    with contextlib.ExitStack() as crowd:
                        for _ in range(limit):
                            crowd.enter_context(socket.create_connection(address, 10))
                        wait_until(lambda: len(os.listdir(descriptors)) == limit, "a shortage")
                    with socket.create_connection(address, 10) as client:
                        client.sendall(b"GET / HTTP/1.0\r\n\r\n")
                        self.assertNotEqual(client.recv(1), b"", name)
                self.assertTrue(said.count("服务：ON") == 3
                                or limit < 32 and self.home.read("RunErr.Log"))
            self.home.kill()

    def test_it_records_its_directory_and_keeps_the_proxy_off(self):
        internet = ("[HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion"
                    "\\Internet Settings]\nProxyEnable=%d\n")
        registry = "config/Tarnwerk/registry.ini"
        self.home.write(registry, internet % 1)
        process = self.home.start_services()
        program_key = f"[HKEY_LOCAL_MACHINE\\Software\\VEQ\\通用系统]\nTARNPath={self.home.path}\n"
        self.assertEqual(self.home.read(registry), internet % 0 + program_key)
        # Switched on meanwhile, it is off again at the end.
        self.home.write(registry, internet % 1)
        self.end(process)
        self.assertEqual(self.home.read(registry), internet % 0)

    def test_a_name_of_four_bytes_is_itself_where_the_code_page_is_gb18030(self):
        name = "𠀀.txt".encode("gb18030")
        self.home.use_locale("zh_CN.GB18030")
        self.home.write(f"wwwroot/{os.fsdecode(name)}", PAGE)
        self.home.write("ftproot/up/old.txt", "old")
        self.home.start_services()
        self.assertEqual(fetch(self.home.ports["web"], b"GET /" + name + b" HTTP/1.0\r\n\r\n"), PAGE)
        ftp = self.converse(FtpConversation, "ftp")
        ftp.ask("CWD /up")
        ftp.transfer(b"STOR " + name + b"\r\n", b"uploaded")
        self.assertEqual(self.home.read_bytes(f"ftproot/up/{os.fsdecode(name)}"), b"uploaded")
        self.assertIn(name, ftp.transfer("LIST")[1])
        self.assertEqual(ftp.transfer(b"RETR " + name + b"\r\n")[1], b"uploaded")

    def test_signals_close_it(self):
        for number in (signal.SIGINT, signal.SIGHUP):
            process = self.home.start_services()
            process.send_signal(number)
            self.assertEqual(process.wait(PATIENCE), 0)

    def test_what_a_cgi_program_has_started_ends_with_it(self):
        pipe = self.home.path / "pipe"
        os.mkfifo(pipe)
        self.home.write("wwwroot/cgi-bin/parent.cgi",
                        f"#!/bin/sh\n(echo; exec sleep {PATIENCE * 2}) > {pipe} &\nwait\n")
        (self.home.path / "wwwroot/cgi-bin/parent.cgi").chmod(0o755)
        process = self.home.start_services()
        with (socket.create_connection(("127.0.0.1", self.home.ports["web"])) as client,
              open(os.open(pipe, os.O_RDONLY | os.O_NONBLOCK), "rb", buffering=0) as child):
            client.sendall(b"POST /parent.cgi? HTTP/1.0\r\n\r\n")
            wait_until(lambda: child.read(1) == b"\n", "the child")
            self.end(process)
            wait_until(lambda: child.read(1) == b"", "the child's end")

    def test_under_nohup_it_outlives_its_terminal(self):
        self.under("trap '' HUP")
        process = self.home.start_services()
        process.send_signal(signal.SIGHUP)
        self.check_page()
        self.end(process)

    def test_what_a_killed_instance_left_blocks_neither_start_nor_stop(self):
        self.home.start_services()
        self.home.kill()
        self.assertEqual(self.home.run("STOP"), (0, "", ""))
        self.stop(self.home.start_services())

    def test_unusable_user_directories_stop_nothing(self):
        self.home.environment.update(XDG_RUNTIME_DIR="/proc/none", XDG_CONFIG_HOME="/proc/none")
        self.end(self.home.start_services())

    def test_a_taken_port_fails_that_service_alone(self):
        with socket.create_server(("", self.home.ports["pop3"])):
            said = self.start_into_output()
        self.assertIn("E-Mail服务启动失败。请检查您的E-Mail与网络设置。\nMail服务：OFF\n", said)
        self.assertIn("捕获错误: ", self.home.read("RunErr.Log"))
        self.assertFalse(accepts(self.home.ports["smtp"]))
        self.assertTrue(accepts(self.home.ports["ftp"]))
        self.check_page()

    def test_no_service_starts_on_settings_that_are_there_and_cannot_be_read(self):
        settings = self.home.path / "Server.ini"
        torn = settings.read_bytes().split(b"UploadDir")[0]
        for spoil in (lambda: settings.write_bytes(torn), lambda: os.mkfifo(settings)):
            settings.unlink()
            spoil()
            said = self.start_into_output()
            self.assertEqual(said.count("服务：OFF\n设置文件 Server.ini "), 3)
            self.assertFalse(any(accepts(port) for port in self.home.ports.values()))
            self.home.kill()
        for service in ("Web", "Ftp", "Mail"):
            self.assertIn(f"[{service}Server Options]: cannot be read", self.home.read("RunErr.Log"))

    def test_web_opens_the_address_with_its_port_whether_or_not_it_runs(self):
        self.home.write("bin/xdg-open", f"#!/bin/sh\necho \"$1\" > {self.home.path}/opened\n")
        (self.home.path / "bin/xdg-open").chmod(0o755)
        self.home.environment["PATH"] = f"{self.home.path}/bin:{os.environ['PATH']}"
        self.home.start("x", "SHOW", "WEB")
        expected = f"http://localhost:{self.home.ports['web']}\n"
        wait_until(lambda: self.home.read("opened") == expected, "the browser")


class FirstStartTest(ProgramTest):
    """An installed program: its directory becomes the user's own, filled with the sample site."""

    def setUp(self):
        super().setUp()
        self.own = self.home.path / "data" / "tarnwerk"
        sample = self.home.path / "installed" / "sample"
        (sample / "ftproot" / "upload").mkdir(parents=True)
        shutil.move(self.home.path / "wwwroot", sample)
        # Settings, so that the usual ports are left alone.
        settings = self.home.read("Server.ini").replace(str(self.home.path), str(self.own))
        (sample / "Server.ini").write_text(settings)
        self.home.program = [shutil.copy(PROGRAM, sample.parent)]
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

    def test_a_portable_program_lets_nobody_change_but_the_upload_folder_or_leave_the_main_one(self):
        folder = self.home.path / "installed"
        sample = (folder / "sample").rename(folder / "portable")
        (sample / "Server.ini").write_text(self.sample_settings())
        self.stop(self.home.start_services())
        (folder / "wwwroot" / "index.htm").write_text("<p>mine</p>")
        moved = folder.rename(self.home.path / "moved")
        self.home.program = [moved / pathlib.Path(PROGRAM).name]

        self.home.start_services()
        self.assertEqual(self.home.get("/"), b"<p>mine</p>")
        self.assertFalse((moved / "portable.new").exists())
        with FTP() as client:
            client.connect("127.0.0.1", self.home.ports["ftp"], PATIENCE)
            client.login("a", "b")
            client.cwd("/upload")
            client.storbinary("STOR gift.txt", io.BytesIO(b"gift"))
            client.cwd("/")
            with self.assertRaises(error_perm):
                client.mkd("mine")
            read = []
            for name in ("../Server.ini", "/upload/../../Server.ini"):
                with self.subTest(name), self.assertRaises(error_temp):
                    client.retrbinary(f"RETR {name}", read.append)
            self.assertEqual(read, [])
        settings = (moved / "Server.ini").read_text()
        self.assertIn("\n[Protection]\nReach=lan\nConfine=1\n", settings.replace("\r", ""))
        self.assertEqual((moved / "ftproot" / "upload" / "gift.txt").read_bytes(), b"gift")

    def sample_settings(self):
        """Those of the packages, on free ports."""
        settings = (ROOT / "packaging" / "sample" / "Server.ini").read_text()
        for key, name in (("TCPPort", "web"), ("FtpPort", "ftp"), ("SMTP Port", "smtp"),
                          ("POP3 Port", "pop3")):
            settings = re.sub(f"(?m)^{key}=.*", f"{key}={self.home.ports[name]}", settings)
        return settings

    def test_without_a_sample_the_directory_is_the_executables(self):
        shutil.rmtree(self.home.path / "installed" / "sample")
        process = self.home.start("SHOW")
        wait_until(lambda: list(self.home.path.glob("runtime/Tarnwerk/*.socket")), "the program")
        self.stop(process)
        self.assertFalse(self.own.exists())


if __name__ == "__main__":
    run_tests()
