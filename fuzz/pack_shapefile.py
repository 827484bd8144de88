# SPDX-License-Identifier: MIT
"""Packs the files of a shapefile into one input of FuzzShapefile: pack_shapefile.py STEM OUTPUT."""
import pathlib
import struct
import sys

stem, output = sys.argv[1:]
shp, shx, dbf = (pathlib.Path(f"{stem}.{e}").read_bytes() if pathlib.Path(f"{stem}.{e}").exists() else b""
                 for e in ("shp", "shx", "dbf"))
pathlib.Path(output).write_bytes(struct.pack("<II", len(shp), len(shx)) + shp + shx + dbf)
