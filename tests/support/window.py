"""Windows on the display, seen and used from outside. Needs Debian's openbox, xdotool and x11-utils."""

import subprocess

from program import PATIENCE, wait_until


def manage_windows(test_class):
    """Gives windows frames, places and the keyboard for as long as the tests of `test_class` run."""
    manager = subprocess.Popen(["openbox"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    test_class.addClassCleanup(manager.wait)
    test_class.addClassCleanup(manager.kill)


def xdotool(*words):
    return subprocess.run(["xdotool", *words], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          timeout=PATIENCE, text=True).stdout.split()


def visible(title):
    """The windows of that title, in ASCII, that can be seen."""
    return xdotool("search", "--onlyvisible", "--name", f"^{title}$")


def visible_of(process):
    return xdotool("search", "--onlyvisible", "--pid", str(process.pid))


def is_minimised(title):
    return any("Iconic" in subprocess.run(["xprop", "-id", window, "WM_STATE"],
                                          stdout=subprocess.PIPE, text=True).stdout
               for window in xdotool("search", "--name", f"^{title}$"))


def activate(title):
    """Waits until the window can be seen, and gives it the keyboard."""
    wait_until(lambda: visible(title), title)
    xdotool("windowactivate", "--sync", visible(title)[-1])


def press(*keys):
    for key in keys:
        xdotool("key", "--delay", "50", key)
