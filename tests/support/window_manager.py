"""Whoever gives windows their frames, their places and the keyboard, for tests of windows."""

import subprocess


def manage_windows(test_class):
    """Runs Debian's openbox on the display for as long as the tests of `test_class` do."""
    manager = subprocess.Popen(["openbox"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    test_class.addClassCleanup(manager.wait)
    test_class.addClassCleanup(manager.kill)
