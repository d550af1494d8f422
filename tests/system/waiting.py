"""Waits for something that another process does. Checks again and again, for a bounded time, and says what did not
happen."""

import os
import threading
import time

LOOK_EVERY_SECONDS = 0.02
PATIENCE = int(os.environ.get("VELMORA_PATIENCE", "1"))  # more for an instrumented program


def until(condition, seconds, what="the condition"):
    """The first true value of condition(). AssertionError if there is none within the seconds."""
    seconds *= PATIENCE
    end = time.monotonic() + seconds
    pause = threading.Event()
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"{what() if callable(what) else what} did not come within {seconds} s")
        pause.wait(LOOK_EVERY_SECONDS)
