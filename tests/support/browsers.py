"""Real browsers without a display: Chromium by its driver, Firefox by its own remote control
(Marionette), for which Debian has no driver.

Both have the part of selenium's face that tests need; `show_at` gives the page a size in pixels,
however small.
"""

import base64
import json
import os
import pathlib
import shutil
import socket
import subprocess

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

from program import PATIENCE, wait_until

WIDEST_PHONE = 500  # pixels


class Chromium(webdriver.Chrome):
    def __init__(self, profile):
        options = webdriver.ChromeOptions()
        options.binary_location = shutil.which("chromium")
        for word in ("headless=new", "no-sandbox", "disable-gpu", "no-proxy-server",
                     "disable-dev-shm-usage", f"user-data-dir={profile}"):
            options.add_argument(f"--{word}")
        super().__init__(options=options, service=Service(shutil.which("chromedriver")))
        self.set_page_load_timeout(PATIENCE)

    def show_at(self, width, height):
        self.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": height, "deviceScaleFactor": 1,
            "mobile": width <= WIDEST_PHONE})


class Firefox:
    # The port is chosen by the system, and no network is no reason to refuse a page.
    PREFERENCES = {"marionette.port": 0, "network.proxy.type": 0,
                   "network.manage-offline-status": False}

    def __init__(self, profile):
        profile = pathlib.Path(profile)
        profile.mkdir()
        (profile / "user.js").write_text("".join(
            f"user_pref({json.dumps(name)}, {json.dumps(value)});\n"
            for name, value in self.PREFERENCES.items()))
        self.process = subprocess.Popen(
            ["firefox-esr", "--headless", "--marionette", "--remote-allow-system-access",
             "--no-remote", "--profile", str(profile)],
            env=dict(os.environ, HOME=str(profile)),
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            self._connect(profile / "MarionetteActivePort")
        except BaseException:
            self._kill()
            raise

    def get(self, url):
        self._ask("Navigate", url=url)

    @property
    def title(self):
        return self._ask("GetTitle")["value"]

    def execute_script(self, script, *values):
        return self._ask("ExecuteScript", script=script, args=values)["value"]

    def find_element(self, by, value):
        return _Element(self._ask, self._ask("FindElement", using=by, value=value)["value"])

    def save_screenshot(self, path):
        picture = self._ask("TakeScreenshot", full=False)["value"]
        pathlib.Path(path).write_bytes(base64.b64decode(picture))

    def show_at(self, width, height):
        """The window cannot be as narrow as a phone; the page in it can."""
        self._ask("SetWindowRect", width=max(width, WIDEST_PHONE), height=height)
        self._ask("Marionette:SetContext", value="chrome")
        self.execute_script("""
            for (const [side, size] of [["width", arguments[0]], ["height", arguments[1]]])
                for (const bound of ["min", "max"])
                    gBrowser.selectedBrowser.style.setProperty(`${bound}-${side}`, `${size}px`);
            """, width, height)
        self._ask("Marionette:SetContext", value="content")
        wait_until(lambda: self.execute_script("return [innerWidth, innerHeight]") ==
                   [width, height], "the page's size")

    def quit(self):
        try:
            self._ask("Marionette:Quit", flags=["eForceQuit"])
            self.process.wait(PATIENCE)
        finally:
            self.answers.close()
            self.socket.close()
            self._kill()

    def _connect(self, port):
        wait_until(lambda: port.exists() and port.read_text(), "Firefox")
        self.socket = socket.create_connection(("127.0.0.1", int(port.read_text())), PATIENCE)
        self.answers = self.socket.makefile("rb")
        self.asked = 0
        self._receive()  # a greeting
        self._ask("NewSession", capabilities={})
        self._ask("SetTimeouts", pageLoad=PATIENCE * 1000)

    def _ask(self, command, **parameters):
        self.asked += 1
        name = command if ":" in command else f"WebDriver:{command}"
        message = json.dumps([0, self.asked, name, parameters]).encode()
        self.socket.sendall(b"%d:%s" % (len(message), message))
        _, _, error, result = self._receive()
        if error:
            raise RuntimeError(f"{name}: {error['error']}: {error['message']}")
        return result

    def _receive(self):
        size = b"".join(iter(lambda: self.answers.read(1), b":"))
        return json.loads(self.answers.read(int(size)))

    def _kill(self):
        self.process.kill()
        self.process.wait()


class _Element:
    def __init__(self, ask, found):
        self._ask = ask
        self._id = next(iter(found.values()))

    def click(self):
        self._ask("ElementClick", id=self._id)

    def send_keys(self, text):
        self._ask("ElementSendKeys", id=self._id, text=text)
