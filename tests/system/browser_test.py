"""The Web server in real browsers: Chromium and Firefox, at the sizes of a phone and of a desktop.

Bare contents are shown on port 80 only, and HTTP on any: program and browsers share a network of
their own, in which the ports are free and nobody else's, and which has the address of a home
network.

    browser_test.py PROGRAM GUESTBOOK.CGI SAMPLE_FOLDER
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest
import wave

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from browsers import Chromium, Firefox  # noqa: E402
from program import Home, accepts, run_tests, wait_until  # noqa: E402
from relay import Relay  # noqa: E402

PROGRAM, GUESTBOOK, SAMPLE = sys.argv[1:4]
ADDRESS = "192.168.1.5"
PHONE, DESKTOP = (390, 844), (1280, 800)
MINUTES = 20


def enter_own_network():
    """Starts this script anew in a network of its own, unless it runs in one."""
    if os.environ.get("TARNWERK_OWN_NETWORK"):
        subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
        subprocess.run(["ip", "address", "add", ADDRESS, "dev", "lo"], check=True)
        return
    os.environ["TARNWERK_OWN_NETWORK"] = "1"
    words = ["unshare", "--net"] + ([] if os.geteuid() == 0 else ["--map-root-user"])
    os.execvp(words[0], [*words, sys.executable, "-B", *sys.argv])


def write_silence(path):
    """38 MB: more than a browser loads before it knows that the end is wanted."""
    with wave.open(str(path), "wb") as sound:
        sound.setnchannels(1)
        sound.setsampwidth(2)
        sound.setframerate(16000)
        sound.writeframes(bytes(2 * 16000 * 60 * MINUTES))


class SampleChecks:
    """The sample site in a browser that has just been installed. `browser_kind`: its class."""

    site = "http://localhost/"
    port = 80
    size = DESKTOP

    @classmethod
    def setUpClass(cls):
        home = Home([PROGRAM])
        cls.addClassCleanup(home.close)
        shutil.copytree(SAMPLE, home.path, dirs_exist_ok=True)
        (home.path / "wwwroot" / "cgi-bin").mkdir(exist_ok=True)
        shutil.copy(GUESTBOOK, home.path / "wwwroot" / "cgi-bin")
        cls.prepare(home)
        home.start("START")
        wait_until(lambda: accepts(cls.port), "the Web service")
        cls.browser = cls.browser_kind(home.file("profile"))
        cls.addClassCleanup(cls.browser.quit)
        cls.browser.show_at(*cls.size)

    @classmethod
    def prepare(cls, home):
        """What there is beside the sample."""

    def click(self, selector):
        self.browser.find_element("css selector", selector).click()

    def ask(self, expression):
        return self.browser.execute_script(f"return {expression}")

    def shown(self, selector):
        """The texts of all such elements."""
        return self.ask(f"[...document.querySelectorAll('{selector}')]"
                        ".map(element => element.innerText.trim())")

    def wait_for_title(self, title):
        wait_until(lambda: self.browser.title == title, title)

    def test_the_sample_site_is_shown_with_what_it_consists_of(self):
        self.browser.get(self.site)
        self.wait_for_title("山下人家")
        self.assertEqual(self.ask("document.querySelector('.banner').naturalWidth"), 640)
        self.assertEqual(
            self.ask("getComputedStyle(document.querySelector('.banner')).borderRadius"), "8px")
        self.browser.find_element("link text", "关于这个示例站点").click()
        self.wait_for_title("关于 - 山下人家")
        self.browser.get(f"{self.site}nowhere.htm")
        self.assertIn("404", self.ask("document.documentElement.innerText"))

    def test_form_shows_the_page_that_the_program_wrote(self):
        for name, message in (("小李", "你好，邻居！"), ("Ann", "1 < 2 & 3")):
            self.browser.get(self.site)
            self.browser.find_element("css selector", "[name=name]").send_keys(name)
            self.browser.find_element("css selector", "[name=message]").send_keys(message)
            self.click("button")
            self.wait_for_title("留言簿 - 山下人家")
        self.assertEqual(self.shown("li"), ["小李：你好，邻居！", "Ann：1 < 2 & 3"])


class HttpChecks(SampleChecks):
    """What only HTTP offers, as a friend in the same network sees it."""

    site = f"http://{ADDRESS}:8080/"
    port = 8080

    @classmethod
    def prepare(cls, home):
        settings = home.read("Server.ini")
        home.write("Server.ini", settings.replace("TCPPort=80", "TCPPort=8080\nAnswers=HTTP"))
        home.write("wwwroot/目录.htm", "<title>目录</title><a href='我的 照片/说明.htm'>照片说明</a>"
                                      "<a href='我的 照片'>照片</a>")
        home.write("wwwroot/我的 照片/说明.htm", "<title>照片说明</title>")
        home.write("wwwroot/我的 照片/山 100%#1.png", home.read_bytes("wwwroot/picture.png"))
        home.write("wwwroot/我的 照片/去年/雪.txt", "雪")
        home.write("wwwroot/utf8.txt", "山下人家，你好\n" * 3000)
        home.write("wwwroot/gbk.txt", ("山下人家，你好\r\n" * 3000).encode("gbk"))
        home.write("wwwroot/script.htm", "<script src='脚本.js'></script>")
        home.write("wwwroot/脚本.js", "document.title = '脚本运行了'")
        home.write("wwwroot/sound.htm", "<audio controls preload=metadata src=sound.wav></audio>")
        write_silence(home.path / "wwwroot" / "sound.wav")

    def test_chinese_names_lead_to_their_pages_clicked_or_typed(self):
        self.browser.get(f"{self.site}目录.htm")
        self.browser.find_element("link text", "照片说明").click()
        self.wait_for_title("照片说明")
        self.browser.get(f"{self.site}我的 照片/说明.htm")
        self.assertEqual(self.browser.title, "照片说明")

    def test_a_folder_is_a_list_to_walk_and_sort(self):
        names = ["上一级文件夹", "去年", "山 100%#1.png", "说明.htm"]
        self.browser.get(f"{self.site}目录.htm")
        self.browser.find_element("link text", "照片").click()
        self.wait_for_title("我的 照片")
        self.assertEqual(self.shown(".fl-name"), names)
        wait_until(lambda: self.ask("document.querySelector('.fl-list img').naturalWidth") == 640,
                   "the preview")
        self.assertLessEqual(self.ask("document.documentElement.scrollWidth"), self.size[0])
        there, back = names[2:], names[:1:-1]
        for caption, files in (("名称 ↑", back), ("大小", there), ("大小 ↓", back)):
            self.browser.find_element("link text", caption).click()
            wait_until(lambda files=files: self.shown(".fl-name")[2:] == files, caption)
        self.click(".fl-list li:nth-child(2) a")
        self.wait_for_title("去年")
        self.assertEqual(self.shown(".fl-name"), ["上一级文件夹", "雪.txt"])
        self.click(".fl-up a")
        self.wait_for_title("我的 照片")
        self.click(".fl-list li:nth-child(3) a")
        wait_until(lambda: self.ask("document.contentType") == "image/png", "the picture")

    def test_texts_are_read_in_their_character_set(self):
        for name, charset in (("utf8", "UTF-8"), ("gbk", "GBK")):
            self.browser.get(f"{self.site}{name}.txt")
            self.assertEqual(self.ask("document.characterSet"), charset)
            self.assertEqual(self.ask("document.body.innerText.split('\\n')[2999].trim()"),
                             "山下人家，你好")

    def test_a_script_runs_whose_type_may_not_be_guessed(self):
        self.browser.get(f"{self.site}script.htm")
        self.wait_for_title("脚本运行了")

    def test_a_sound_is_sought_in_by_asking_for_its_end(self):
        relay = Relay((ADDRESS, self.port))
        self.addCleanup(relay.close)
        self.browser.get(f"http://{ADDRESS}:{relay.port}/sound.htm")
        sound = "document.querySelector('audio')"
        wait_until(lambda: self.ask(f"{sound}.readyState >= 1"), "what the sound is")
        self.assertEqual(self.ask(f"{sound}.duration"), 60 * MINUTES)
        self.browser.execute_script(f"{sound}.currentTime = 60 * {MINUTES - 1};"
                                    f"{sound}.onseeked = () => document.title = 'sought'")
        self.wait_for_title("sought")
        self.assertEqual(self.ask(f"{sound}.currentTime"), 60 * (MINUTES - 1))
        begins = re.findall(rb"\r\nRange: bytes=(\d+)-", relay.sent)
        self.assertGreater(max(map(int, begins)), 2 * 16000 * 60 * (MINUTES - 2))


class BareChromium(SampleChecks, unittest.TestCase):
    browser_kind = Chromium


class HttpChromiumPhone(HttpChecks, unittest.TestCase):
    browser_kind, size = Chromium, PHONE


class HttpChromiumDesktop(HttpChecks, unittest.TestCase):
    browser_kind = Chromium


class HttpFirefoxPhone(HttpChecks, unittest.TestCase):
    browser_kind, size = Firefox, PHONE


class HttpFirefoxDesktop(HttpChecks, unittest.TestCase):
    browser_kind = Firefox


if __name__ == "__main__":
    enter_own_network()
    run_tests()
