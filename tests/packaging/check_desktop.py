# SPDX-License-Identifier: MIT
"""Checks what desktops are told: the desktop entry, the AppStream metadata and the icons are whole and agree with each other
and with the program."""
import configparser
import pathlib
import re
import struct
import sys
import xml.etree.ElementTree as ElementTree

PROGRAM = "tesselink-gui"
REQUIRED_KEYS = ("Name", "GenericName", "Comment", "Exec", "Icon", "Categories", "MimeType")
REQUIRED_TEXTS = ("name", "summary", "description/p", "metadata_license", "project_license", "launchable")
SVG = "{http://www.w3.org/2000/svg}svg"


def listed(text):
    return set(filter(None, text.split(";")))


def desktop_entry(path):
    parser = configparser.ConfigParser(interpolation=None, delimiters="=", strict=True)
    parser.optionxform = str
    parser.read(path, encoding="utf-8")
    return parser["Desktop Entry"]


def entry_complaints(entry, identifier):
    for key in REQUIRED_KEYS:
        if not entry.get(key):
            yield f"the desktop entry has no {key}"
    if entry.get("Type") != "Application":
        yield "the desktop entry is no application"
    if entry.get("Exec", "").split() != [PROGRAM, "%F"]:
        yield f"the desktop entry does not run {PROGRAM} with the files that were chosen"
    if entry.get("Icon") != identifier:
        yield f"the desktop entry's icon is not {identifier}"


def metadata_complaints(root, component, entry, identifier):
    for path in REQUIRED_TEXTS:
        if not component.findtext(path, "").strip():
            yield f"the metadata has no {path}"
    if component.findtext("id") != identifier or component.findtext("launchable") != f"{identifier}.desktop":
        yield f"the metadata is not that of {identifier}"
    if component.findtext("name") != entry.get("Name"):
        yield "the metadata and the desktop entry name the program differently"
    if {e.text for e in component.iterfind("provides/mediatype")} != listed(entry.get("MimeType", "")):
        yield "the metadata and the desktop entry differ in media types"
    for image in component.iterfind("screenshots/screenshot/image"):
        picture = root / re.sub(r"^https://[^/]+/[^/]+/[^/]+/main/", "", image.text.strip())
        if not picture.is_file():
            yield f"the screenshot {image.text.strip()} is none of this tree's pictures"


def icon_complaints(folder, resources, identifier):
    if ElementTree.parse(folder / f"{identifier}.svg").getroot().tag != SVG:
        yield "the icon is no SVG picture"
    pictures = {path.resolve() for path in (folder / "icons").glob("*.png")}
    for path in pictures:
        start = path.read_bytes()[:24]
        size = int(path.stem)
        if start[:8] != b"\x89PNG\r\n\x1a\n" or struct.unpack(">II", start[16:24]) != (size, size):
            yield f"{path.name} is no picture of {size} by {size} pixels"
    compiled = {(resources.parent / e.text).resolve() for e in ElementTree.parse(resources).iter("file")}
    if compiled != pictures or not pictures:
        yield f"{resources.name} does not list the icon's pictures"


def version_complaints(root, component):
    version = re.search(r"project\(tesselink VERSION (\S+)", (root / "CMakeLists.txt").read_text())[1]
    told = {
        "CHANGELOG.md": re.search(r"^## (\S+)", (root / "CHANGELOG.md").read_text(), re.M)[1],
        "packaging/debian/changelog": re.match(r"tesselink \((\S+)\)", (root / "packaging/debian/changelog").read_text())[1],
        "the metadata": component.find("releases/release").get("version"),
    }
    yield from (f"{place} begins with {its}, and the version is {version}" for place, its in told.items() if its != version)


def complaints(root):
    folder = root / "packaging/desktop"
    entries = list(folder.glob("*.desktop"))
    identifier = entries[0].stem
    entry = desktop_entry(entries[0])
    component = ElementTree.parse(folder / f"{identifier}.metainfo.xml").getroot()
    yield from entry_complaints(entry, identifier)
    yield from metadata_complaints(root, component, entry, identifier)
    yield from version_complaints(root, component)
    yield from icon_complaints(folder, root / "src/ui/window.qrc", identifier)
    if f'setDesktopFileName("{identifier}")' not in (root / "src/ui/main.cpp").read_text():
        yield "the window does not tell the desktop its desktop entry"


def main():
    found = list(complaints(pathlib.Path(sys.argv[1])))
    print("\n".join(found) if found else "the desktop's files agree")
    return 1 if found else 0


sys.exit(main())
