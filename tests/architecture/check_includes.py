"""Checks from the includes that the floors of the house lean downwards only: core knows no format and no screen, formats
know no screen, and a format's folder leans on another only where the table below says so."""
import pathlib
import re
import sys

FLOORS = {"core": {"core"}, "formats": {"core", "formats"}, "faces": {"core", "formats", "faces"},
          "cli": {"core", "formats", "faces", "cli"}, "ui": {"core", "formats", "faces", "ui"}}
# A file of one format folder that may include a header of another.
LEANINGS = {
    ("Formats.cpp", "dxf"), ("Formats.cpp", "landmark"), ("Formats.cpp", "shape"), ("Formats.cpp", "cdf"),
    ("Formats.cpp", "grid"), ("AscOutFilter", "grid"), ("TRDigOut", "shape"), ("CodeTables", "grid"),
    ("CodeTables", "dxf"),
}
STANDARD_ONLY = {"core", "formats"}
# Other packages register their folders with the system, on the one system that has a registry.
OF_THE_SYSTEM = {("LookupFile.cpp", "windows.h")}


def complaints(root):
    for path in sorted(root.rglob("*.[hc]*")):
        place = path.relative_to(root).parts
        floor = place[0]
        for included in re.findall(r'^\s*#\s*include\s+"([^"]+)"', path.read_text(), re.M):
            target = included.split("/")
            if target[0] not in FLOORS[floor]:
                yield f"{'/'.join(place)} includes {included}: that floor lies above"
            elif floor == "formats" and target[0] == "formats" and len(target) > 2:
                own = place[1] if len(place) > 2 else ""
                if target[1] != own and not any(path.name.startswith(n) and target[1] == f for n, f in LEANINGS):
                    yield f"{'/'.join(place)} includes {included}: format folders do not lean on each other here"
        if floor in STANDARD_ONLY:
            for header in re.findall(r"^\s*#\s*include\s+<([^>]+)>", path.read_text(), re.M):
                if (path.name, header) in OF_THE_SYSTEM:
                    continue
                if "/" in header or header.startswith("Q") or header.endswith(".h"):
                    yield f"{'/'.join(place)} includes <{header}>: this floor uses the standard library alone"


def main():
    root = pathlib.Path(sys.argv[1])
    found = list(complaints(root))
    print("\n".join(found) if found else "every include points downwards")
    return 1 if found or not any(root.rglob("*.cpp")) else 0


sys.exit(main())
