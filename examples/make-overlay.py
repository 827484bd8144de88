#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes overlay.mol: invented bytes in the steps that a WinPICS map overlay is scanned by, two of them coloured items."""
import pathlib
import struct

STEP, COLOURED = 12, 0x00120002


def step(value):
    return struct.pack("<i", value) + bytes(STEP - 4)


def coloured(colour):
    return struct.pack("<i", COLOURED) + bytes(10) + bytes([colour]) + bytes(15)


overlay = step(1) + coloured(4) + step(7) + step(0) + coloured(12) + step(9)
pathlib.Path(__file__).with_name("overlay.mol").write_bytes(overlay)
