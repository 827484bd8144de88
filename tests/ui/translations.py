#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Every text of the window has a translation, and the translation has what the text has.

    translations.py LUPDATE SOURCE_FOLDER
"""
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

OPTIONS = ["-silent", "-no-obsolete", "-locations", "none", "-tr-function-alias", "QT_TRANSLATE_NOOP+=TRANSLATABLE"]


def faults(path):
    for message in ElementTree.parse(path).getroot().iter("message"):
        # Carriage returns are elements of their own.
        text, translation = "".join(message.find("source").itertext()), message.find("translation")
        words = translation.text or ""
        if translation.get("type") == "unfinished":
            yield f"not translated: {text!r}"
        elif sorted(re.findall(r"%\d", text)) != sorted(re.findall(r"%\d", words)):
            yield f"other places to fill in: {text!r} {words!r}"
        elif ("&" in text) != ("&" in words):
            yield f"an underlined letter too many or too few: {text!r} {words!r}"


def main():
    lupdate, source = sys.argv[1], pathlib.Path(sys.argv[2])
    found = []
    with tempfile.TemporaryDirectory() as folder:
        for original in sorted((source / "src/ui/translations").glob("*.ts")):
            copy = pathlib.Path(folder) / original.name
            copy.write_bytes(original.read_bytes())
            subprocess.run([lupdate, *OPTIONS, f"-I{source}/src", source / "src", "-ts", copy],
                           check=True, stderr=subprocess.DEVNULL)
            found += [f"{original.name}: {fault}" for fault in faults(copy)]
            if ElementTree.tostring(ElementTree.parse(copy).getroot()) != ElementTree.tostring(
                    ElementTree.parse(original).getroot()) and not found:
                found.append(f"{original.name}: texts have gone; lupdate {' '.join(OPTIONS)} -Isrc takes them out")
    print("\n".join(found) or "every text is translated")
    return 1 if found else 0


sys.exit(main())
