"""Who may use whom: reads every include of src/ against the order of the rooms.

Usage: house.py [PROJECT]   prints what breaks the order, one place a line; exit status 1 where something does.
"""

import pathlib
import re
import sys

FOUNDATION = "platform/foundation"
UIVALUES = "platform/uivalues"
SQLITE = "platform/sqlite"

# Rooms from the ground up, those of one storey together: a room may use those of the storeys below it.
STOREYS = [
    [FOUNDATION],
    [UIVALUES, SQLITE],
    ["platform/imageio", "platform/avfoundation", "platform/corelocation", "platform/messages"],
    ["platform/imageio/pixels", "platform/coreimage", "platform/photos"],
    ["platform/photos/import"],
    ["settings"],
    ["appearance"],
    ["categories"],
    ["metadata"],
    ["library"],
    ["sending"],
    ["platform/uikit", "cli"],
    ["interaction", "appearance/uikit", "categories/uikit", "hud"],
    ["cards"],
    ["screens"],
    ["extension"],
    ["host"],
]

# Rooms that may use fewer than all below them.
NARROWED = {
    "platform/imageio/pixels": {FOUNDATION, UIVALUES, "platform/imageio"},
    "platform/coreimage": {FOUNDATION, UIVALUES, "platform/imageio"},
    "platform/photos": {
        FOUNDATION,
        UIVALUES,
        SQLITE,
        "platform/imageio",
        "platform/coreimage",
        "platform/avfoundation",
        "platform/corelocation",
    },
}

QT_ROOMS = {room for storey in STOREYS[11:] for room in storey} - {"cli"}
CLI_LIBRARIES = ("fmt/", "CLI/", "nlohmann/")
CLI_ROOM = "cli"

SYSTEM_HEADER = re.compile(
    r"[a-z_0-9]+$"  # The standard library.
    r"|(sys|netinet|arpa|linux)/[a-z_0-9]+\.h$"
    r"|(dirent|dlfcn|fcntl|poll|pthread|signal|spawn|termios|unistd|wchar|locale|langinfo|time)\.h$"
)
INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)')
LONGEST = {"src": {".cpp": 500, ".h": 150}, "tests": {".cpp": 500, ".h": 150}}


def allowed_rooms():
    """For each room, the rooms that it may use."""
    table, below = {}, set()
    for storey in STOREYS:
        for room in storey:
            table[room] = NARROWED.get(room, set(below)) | {room}
        below |= set(storey)
    table[CLI_ROOM] = table["platform/uikit"] - {"platform/uikit"} | {CLI_ROOM}
    return table


def room_of(path):
    """The room that the file lies in, or nothing; `path` is relative to src/."""
    for folder in pathlib.PurePosixPath(path).parents:
        if any(str(folder) in storey for storey in STOREYS):
            return str(folder)
    return None


def include_fault(room, quoted, bracketed, source_root):
    """What is wrong with one include, or nothing."""
    if quoted is not None:
        if quoted.startswith("ui_") and room in QT_ROOMS:
            return None
        if not (source_root / quoted).is_file():
            return f'"{quoted}" is no file of src/'
        used = room_of(quoted)
        if used not in allowed_rooms()[room]:
            return f"{room} may not use {used}"
        return None
    if SYSTEM_HEADER.match(bracketed):
        return None
    if re.match(r"Q[A-Z]|Qt", bracketed):
        return None if room in QT_ROOMS else f"<{bracketed}>: no Qt below platform/uikit"
    if room.startswith("platform/") or (room == CLI_ROOM and bracketed.startswith(CLI_LIBRARIES)):
        return None
    return f"<{bracketed}>: a third party above platform/"


def include_faults(project):
    source_root = project / "src"
    for file in sorted(source_root.rglob("*")):
        if file.suffix not in {".cpp", ".h"}:
            continue
        path = file.relative_to(source_root).as_posix()
        room = room_of(path)
        if room is None:
            yield f"src/{path}: lies in no room of the house"
            continue
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            found = INCLUDE.match(line)
            fault = found and include_fault(room, found[1], found[2], source_root)
            if fault:
                yield f"src/{path}:{number}: {fault}"


def length_faults(project):
    for folder, longest in LONGEST.items():
        for file in sorted((project / folder).rglob("*")):
            limit = longest.get(file.suffix)
            count = len(file.read_bytes().splitlines()) if limit else 0
            if limit and count > limit:
                yield f"{file.relative_to(project)}: {count} lines, {limit} are the most"


def faults(project):
    """What breaks the order of the house, one text a place."""
    return [*include_faults(project), *length_faults(project)]


if __name__ == "__main__":
    found_faults = faults(pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "."))
    print("\n".join(found_faults))
    sys.exit(1 if found_faults else 0)
