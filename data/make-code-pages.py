#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints src/core/io/CodePages.inc: the letters of bytes 128 to 255 in each code page of one byte a letter.

The tables are those of Python's own codecs. A test compares what it prints with the file.
"""

import sys

PAGES = [
    ("ANSI_874", "cp874"), ("ANSI_1250", "cp1250"), ("ANSI_1251", "cp1251"), ("ANSI_1252", "cp1252"),
    ("ANSI_1253", "cp1253"), ("ANSI_1254", "cp1254"), ("ANSI_1255", "cp1255"), ("ANSI_1256", "cp1256"),
    ("ANSI_1257", "cp1257"), ("ANSI_1258", "cp1258"),
    ("DOS437", "cp437"), ("DOS850", "cp850"), ("DOS852", "cp852"), ("DOS855", "cp855"), ("DOS857", "cp857"),
    ("DOS860", "cp860"), ("DOS861", "cp861"), ("DOS863", "cp863"), ("DOS864", "cp864"), ("DOS865", "cp865"),
    ("DOS866", "cp866"), ("DOS869", "cp869"),
    ("ISO8859-1", "iso8859-1"), ("ISO8859-2", "iso8859-2"), ("ISO8859-3", "iso8859-3"), ("ISO8859-4", "iso8859-4"),
    ("ISO8859-5", "iso8859-5"), ("ISO8859-6", "iso8859-6"), ("ISO8859-7", "iso8859-7"), ("ISO8859-8", "iso8859-8"),
    ("ISO8859-9", "iso8859-9"), ("MAC-ROMAN", "mac_roman"),
]


def letter(codec, byte):
    try:
        return bytes([byte]).decode(codec)
    except UnicodeDecodeError:
        return "\ufffd"


def row(codec, first):
    letters = (letter(codec, byte) for byte in range(first, first + 32))
    return 'u"' + "".join(c if c.isalnum() and c.isprintable() and ord(c) < 0x590 else f"\\u{ord(c):04X}" for c in letters) + '"'


def main():
    sys.stdout.reconfigure(encoding="utf-8", newline="\n")
    print("// Written by data/make-code-pages.py.")
    for name, codec in PAGES:
        print(f'{{"{name}",')
        print("\n".join(" " + row(codec, first) for first in range(128, 256, 32)) + "},")


main()
