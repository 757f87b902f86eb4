"""The sample site in a real browser: page, picture, style sheet, a link, and the form whose CGI
program writes the next page.

Browsers show pages without a status line on port 80 only, so program and browser share a network
of their own, in which that port is free and nobody else's.

    browser_test.py PROGRAM GUESTBOOK.CGI SAMPLE_FOLDER
"""

import os
import pathlib
import shutil
import subprocess
import sys
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.support.wait import WebDriverWait

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from program import PATIENCE, Home, accepts, run_tests, wait_until  # noqa: E402

PROGRAM, GUESTBOOK, SAMPLE = sys.argv[1:4]


def enter_own_network():
    """Starts this script anew in a network of its own, unless it runs in one."""
    if os.environ.get("TARNWERK_OWN_NETWORK"):
        subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
        return
    os.environ["TARNWERK_OWN_NETWORK"] = "1"
    words = ["unshare", "--net"] + ([] if os.geteuid() == 0 else ["--map-root-user"])
    os.execvp(words[0], [*words, sys.executable, "-B", *sys.argv])


class BrowserTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        home = Home([PROGRAM])
        cls.addClassCleanup(home.close)
        shutil.copytree(SAMPLE, home.path, dirs_exist_ok=True)
        (home.path / "wwwroot" / "cgi-bin").mkdir(exist_ok=True)
        shutil.copy(GUESTBOOK, home.path / "wwwroot" / "cgi-bin")
        home.start("START")
        wait_until(lambda: accepts(80), "the Web service")
        options = webdriver.ChromeOptions()
        options.binary_location = shutil.which("chromium")
        for word in ("headless=new", "no-sandbox", "disable-gpu", "no-proxy-server",
                     "disable-dev-shm-usage", f"user-data-dir={home.file('profile')}"):
            options.add_argument(f"--{word}")
        cls.browser = webdriver.Chrome(options=options,
                                       service=Service(shutil.which("chromedriver")))
        cls.addClassCleanup(cls.browser.quit)
        cls.browser.set_page_load_timeout(PATIENCE)

    def wait_for_title(self, title):
        WebDriverWait(self.browser, PATIENCE).until(lambda browser: browser.title == title)

    def test_the_sample_site_is_shown_with_what_it_consists_of(self):
        self.browser.get("http://localhost/")
        self.wait_for_title("山下人家")
        banner = self.browser.find_element(By.CLASS_NAME, "banner")
        self.assertEqual(banner.get_property("naturalWidth"), 640)
        self.assertEqual(banner.value_of_css_property("border-radius"), "8px")
        self.browser.find_element(By.LINK_TEXT, "关于这个示例站点").click()
        self.wait_for_title("关于 - 山下人家")
        self.browser.get("http://localhost/nowhere.htm")
        self.assertIn("404", self.browser.page_source)

    def test_form_shows_the_page_that_the_program_wrote(self):
        for name, message in (("小李", "你好，邻居！"), ("Ann", "1 < 2 & 3")):
            self.browser.get("http://localhost/")
            self.browser.find_element(By.NAME, "name").send_keys(name)
            self.browser.find_element(By.NAME, "message").send_keys(message)
            self.browser.find_element(By.TAG_NAME, "button").click()
            self.wait_for_title("留言簿 - 山下人家")
        entries = [entry.text for entry in self.browser.find_elements(By.TAG_NAME, "li")]
        self.assertEqual(entries, ["小李：你好，邻居！", "Ann：1 < 2 & 3"])


if __name__ == "__main__":
    enter_own_network()
    run_tests()
