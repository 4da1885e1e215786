"""Child processes with an owner. Each child leads its own process group and dies with us; whatever a child leaves
behind becomes our child (we are its reaper), so ending the desktop ends exactly what the desktop started."""

import ctypes
import os
import shutil
import signal
import subprocess
import sys
import time

PR_SET_PDEATHSIG = 1
PR_SET_CHILD_SUBREAPER = 36
libc = ctypes.CDLL(None, use_errno=True)

# Where a program comes from, for the sentence that a missing one gives.
PACKAGES = {
    "Xvfb": "xvfb",
    "dbus-daemon": "dbus",
    "dbus-send": "dbus-bin",
    "ibus": "ibus",
    "ibus-daemon": "ibus",
    "openbox": "openbox",
    "kwin_x11": "kwin-x11",
    "metacity": "metacity",
    "mutter": "mutter",
    "xfwm4": "xfwm4",
    "picom": "picom",
    "pulseaudio": "pulseaudio",
    "tesseract": "tesseract-ocr",
    "tint2": "tint2",
    "xclip": "xclip",
    "xdotool": "xdotool",
    "xfce4-clipman": "xfce4-clipman",
    "xrandr": "x11-xserver-utils",
    "xwininfo": "x11-utils",
}


class MissingTool(Exception):
    pass


def require(tool):
    path = shutil.which(tool)
    if not path:
        raise MissingTool(f"{tool} is missing: install the package {PACKAGES.get(tool, tool)}")
    return path


def become_reaper():
    libc.prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)


def _tie_to_parent():
    libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL, 0, 0, 0)


class Owned:
    """The children of one desktop, ended in the reverse order of their start."""

    def __init__(self, log_folder):
        self.log_folder = log_folder
        self.children = []

    def start(self, command, name, environment, pass_fds=(), log=True, **options):
        command = [require(command[0]) if "/" not in command[0] else command[0], *command[1:]]
        if log:
            output = open(os.path.join(self.log_folder, f"{name}.log"), "ab")
            options.update(stdout=output, stderr=subprocess.STDOUT)
        options.setdefault("stdin", subprocess.DEVNULL)
        child = subprocess.Popen(command, env=environment, pass_fds=pass_fds, start_new_session=True,
                                 preexec_fn=_tie_to_parent, **options)
        if log:
            output.close()
        self.children.append(child)
        return child

    def end(self, child, patience=5.0):
        """Asks the child's group to end, insists when it doesn't. True when the child went by itself."""
        if child in self.children:
            self.children.remove(child)
        went = True
        if child.poll() is None:
            _signal_group(child.pid, signal.SIGTERM)
            try:
                child.wait(patience)
            except subprocess.TimeoutExpired:
                went = False
        _signal_group(child.pid, signal.SIGKILL)
        child.wait()
        return went

    def end_all(self):
        for child in list(reversed(self.children)):
            self.end(child, patience=3.0)
        _end_orphans()


def _signal_group(leader, number):
    try:
        os.killpg(leader, number)
    except (ProcessLookupError, PermissionError):
        pass


def _end_orphans():
    """Descendants that left their group were handed to us; no one else's process has us for a parent."""
    deadline = time.monotonic() + 3.0
    while time.monotonic() < deadline:
        orphans = [pid for pid in _children_of(os.getpid())]
        if not orphans:
            return
        for pid in orphans:
            try:
                os.kill(pid, signal.SIGKILL)
                os.waitpid(pid, 0)
            except (ProcessLookupError, ChildProcessError):
                pass


def _children_of(parent):
    for thread in os.listdir(f"/proc/{parent}/task"):
        try:
            with open(f"/proc/{parent}/task/{thread}/children") as file:
                yield from (int(pid) for pid in file.read().split())
        except OSError as error:
            print(f"session: can't list children: {error}", file=sys.stderr)
