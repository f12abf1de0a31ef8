#!/usr/bin/env python3
"""check_layers.py PROJECT: the order of the rooms.

The link lines keep a room from calling what lies above it; this keeps it from including it, which the linker would not see
in a header of constants. Each room names the rooms that it may include; what those may include comes with them.
"""

import pathlib
import re
import sys

BELOW = {
    "base": [],
    "options/channels": ["base"],
    "launcher/catalogue": ["options/channels"],
    "launcher/capture": ["launcher/catalogue"],
    "options": ["launcher/capture"],
    "launcher": ["options"],
    "receiver": ["launcher"],
    "results": ["launcher/catalogue", "launcher/receiver_launch.h"],
    "measure": ["base"],
    "host": ["base"],
    "corvane": ["base"],
    "gui/kit": ["base"],
    "gui": ["launcher", "receiver", "results", "measure", "host", "corvane", "gui/kit"],
    "inspect": ["launcher", "receiver", "results", "measure", "host", "corvane"],
    "sim": ["options", "receiver", "results"],
}
# Longest first, so that "options/channels" is not taken for "options".
ROOMS = sorted(BELOW, key=len, reverse=True)
WITH_TOOLKIT = {"gui", "gui/kit"}
TOOLKIT = re.compile(r"<(gtk|gdk|gdk-pixbuf|atk|pango|cairo)/|<cairo\.h>|<cairo-")
INCLUDE = re.compile(r'^\s*#\s*include\s+([<"])([^>"]+)[>"]', re.MULTILINE)
CODE = {".cpp", ".h"}
LOOKED_AT = ("src", "sim", "corvane")


def room_of(path):
    """The room that a file or an include path below src/ belongs to, or None."""
    return next((room for room in ROOMS if path == room or path.startswith(room + "/")), None)


def allowed(room):
    """All that a room may include: itself and, all the way down, the rooms below it."""
    found, waiting = set(), [room]
    while waiting:
        each = waiting.pop()
        if each not in found:
            found.add(each)
            waiting += BELOW.get(each, [])
    return found


def layer_faults(path, text, root):
    inside = path.relative_to(root).as_posix().removeprefix("src/")
    room = room_of(inside)
    if room is None:
        yield "belongs to no room"
        return
    for bracket, target in INCLUDE.findall(text):
        if bracket == "<":
            if room not in WITH_TOOLKIT and TOOLKIT.search(f"<{target}>"):
                yield f"room {room} includes <{target}>, and only the window's rooms may"
            continue
        other = room_of(target)
        if other and other not in allowed(room) and target not in allowed(room):
            yield f"room {room} includes \"{target}\", which does not stand below it"


def main():
    root = pathlib.Path(sys.argv[1]).resolve()
    faults = []
    files = [path for folder in LOOKED_AT for path in sorted((root / folder).rglob("*")) if path.suffix in CODE]
    for path in files:
        text = path.read_text(encoding="utf-8", errors="replace")
        faults += [f"{path.relative_to(root)}: {fault}" for fault in layer_faults(path, text, root)]
    print("\n".join(faults) or f"{len(files)} files, every room below its users")
    return 1 if faults or not files else 0


if __name__ == "__main__":
    sys.exit(main())
