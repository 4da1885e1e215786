"""A disk that keeps the program waiting in the middle of writing a capture."""

import os

from support.program import Program
from support.waiting import wait_for

SLOW_DISK = os.environ.get("MARROWFIN_SLOW_DISK", "")


class SlowCapture:
    """Starts the story's program and takes the screen; returns once a file below `folder`, the history's where none
    is given, is begun. `expected` is the
    picture that the file has to hold in the end. The write goes on with `let_go`."""

    def __init__(self, story, folder=None):
        story.assertTrue(os.path.exists(SLOW_DISK), "MARROWFIN_SLOW_DISK names the library that makes writes wait")
        self.gate = os.path.join(story.desktop.folder, "slow")
        with open(self.gate, "w"):
            pass
        story.program = Program(story.desktop, settings=story.settings)
        story.program.environment.update({"LD_PRELOAD": SLOW_DISK, "SLOW_FOLDER": folder or story.program.history_folder,
                                          "SLOW_WHILE": self.gate})
        story.program.start()
        self.expected = story.expected_area(story.settled(), (0, 0, *story.desktop.options.size))
        story.input.hot_key(3)
        wait_for(lambda: os.path.exists(self.gate + ".waiting") or story.program.check_running(), "a file begun")

    def let_go(self):
        os.remove(self.gate)
