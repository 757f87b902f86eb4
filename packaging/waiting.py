"""Waiting in the tests of the packages."""

import time

PATIENCE = 90  # seconds, for every wait


def wait_until(condition, what):
    end = time.monotonic() + PATIENCE
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"timed out waiting for {what}")
        time.sleep(0.1)
