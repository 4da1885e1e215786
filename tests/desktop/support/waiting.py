"""Waiting for something that can be observed. Nothing here sleeps for its own sake: a condition is asked again and
again until it holds, and the deadline only turns a hang into a failure that says what was missing."""

import time

# Generous on purpose: a deadline is never a measure of speed, and a loaded machine may take its time.
DEADLINE = 30.0
INTERVAL = 0.005


class NeverHappened(AssertionError):
    """What was waited for didn't happen before the deadline."""


def wait_for(condition, what, deadline=DEADLINE):
    """The first true value that `condition` returns; `what` completes the sentence "never saw ..."."""
    end = time.monotonic() + deadline
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise NeverHappened(f"never saw {what} (waited {deadline:g} s)")
        time.sleep(INTERVAL)
