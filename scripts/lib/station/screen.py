"""The screen as a person sees it: its windows, what a window manager does to them, and pictures."""

import os
import subprocess

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402


def windows(process_id):
    """{window id: title} of the windows that the process has on the screen."""
    listing = subprocess.run(["wmctrl", "-l", "-p"], capture_output=True, text=True, check=False).stdout
    found = {}
    for line in listing.splitlines():
        identity, _, owner, *rest = line.split(None, 4)
        if owner == str(process_id):
            found[identity] = rest[1] if len(rest) > 1 else ""
    return found


def close(window):
    """Asks the window manager to close it, as its close button does."""
    subprocess.run(["wmctrl", "-i", "-c", window], check=True)


def resize(window, width, height):
    subprocess.run(["wmctrl", "-i", "-r", window, "-e", f"0,0,0,{width},{height}"], check=True)


def size(window):
    """(width, height) in pixels."""
    told = subprocess.run(["xwininfo", "-id", window], capture_output=True, text=True, check=True).stdout
    facts = dict(line.strip().split(": ", 1) for line in told.splitlines() if ": " in line)
    return int(facts["Width"]), int(facts["Height"])


def move_pointer(x, y):
    """Where nothing lies under it, no tooltip gets into a picture."""
    Atspi.generate_mouse_event(x, y, "abs")


def picture(path):
    """Saves the whole screen as a picture."""
    os.makedirs(os.path.dirname(os.path.abspath(path)), exist_ok=True)
    subprocess.run(["/usr/bin/import", "-window", "root", path], check=True)
