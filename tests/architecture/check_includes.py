# SPDX-License-Identifier: MIT
"""Checks from the includes that arrows point downwards only: each room includes what the table below allows, and a format's
folder leans on another only where the second table says so. A source includes its own header first, which shows that the
header compiles by itself."""
import pathlib
import re
import sys

# What each room may include. `core` has rooms of its own.
ROOMS = {
    "core/io": {"core/io"},
    "core/element": {"core/element", "core/io"},
    "core/run": {"core/run", "core/element", "core/io"},
    "formats": {"core", "formats"},
    "picture": {"core", "picture"},
    # Modules, each around one library; see core/io/Module.h.
    "projection": {"core", "projection"},
    "linework": {"core", "linework"},
    "database": {"core", "database"},
    "app": {"core", "formats", "app"},
    "cli": {"core", "formats", "picture", "app", "cli"},
    "ui": {"core", "formats", "picture", "app", "ui"},
    # Describes the command line; no part of a program that is installed.
    "manual": {"core", "formats", "cli", "manual"},
}
# A file of one format folder that may include a header of another. The table of formats includes them all.
LEANINGS = {("AscOutFilter", "grid"), ("TRDigOut", "shape"), ("CodeTables", "grid"), ("CodeTables", "dxf"), ("FieldColours", "dxf")}
# Which module alone includes which library.
OF_MODULES = {"proj": "projection", "geos": "linework", "sqlite": "database"}
STANDARD_ONLY = {"core/io", "core/element", "core/run", "formats", "picture"}
# Calls to the system are made in one file; and other packages register their folders with the one system that has a registry.
OF_THE_SYSTEM = {("LookupFile.cpp", "windows.h"), ("CodePage.cpp", "iconv.h"), ("Module.cpp", "dlfcn.h")} | {
    ("System.cpp", header) for header in ("dirent.h", "fcntl.h", "sys/file.h", "sys/stat.h", "unistd.h")} | {
    ("Processes.cpp", header) for header in (
        "fcntl.h", "poll.h", "signal.h", "spawn.h", "string.h", "sys/prctl.h", "sys/resource.h", "sys/wait.h", "unistd.h")}


def complaints(root):
    for path in sorted(root.rglob("*.[hc]*")):
        place = path.relative_to(root).parts
        room = "/".join(place[:2]) if place[0] == "core" else place[0]
        if room not in ROOMS:
            yield f"{'/'.join(place)}: lies in no room"
            continue
        own = path.with_suffix(".h")
        first = re.search(r'^\s*#\s*include\s+["<]([^">]+)', path.read_text(), re.M)
        if path.suffix == ".cpp" and own.exists() and (first is None or first[1] != str(own.relative_to(root))):
            yield f"{'/'.join(place)} does not include {own.relative_to(root)} first"
        for included in re.findall(r'^\s*#\s*include\s+"([^"]+)"', path.read_text(), re.M):
            target = included.split("/")
            if not any(included.startswith(allowed + "/") for allowed in ROOMS[room]):
                yield f"{'/'.join(place)} includes {included}: that room is not below this one"
            elif room == "formats" and target[0] == "formats" and len(target) > 2:
                own = place[1] if len(place) > 2 else target[1]
                if target[1] != own and not any(path.name.startswith(n) and target[1] == f for n, f in LEANINGS):
                    yield f"{'/'.join(place)} includes {included}: format folders do not lean on each other here"
        for library in re.findall(r"^\s*#\s*include\s+<(proj|geos|sqlite)", path.read_text(), re.M):
            if OF_MODULES[library] != room:
                yield f"{'/'.join(place)} includes {library}: only src/{OF_MODULES[library]} does"
        if room in STANDARD_ONLY:
            for header in re.findall(r"^\s*#\s*include\s+<([^>]+)>", path.read_text(), re.M):
                if (path.name, header) in OF_THE_SYSTEM:
                    continue
                if "/" in header or header.startswith("Q") or header.endswith(".h"):
                    yield f"{'/'.join(place)} includes <{header}>: this room uses the standard library alone"


def main():
    root = pathlib.Path(sys.argv[1])
    found = list(complaints(root))
    print("\n".join(found) if found else "every include points downwards")
    return 1 if found or not any(root.rglob("*.cpp")) else 0


sys.exit(main())
