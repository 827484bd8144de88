#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Times whole conversions beside ogr2ogr on the same files, in one run, and prints ratios.

    bench/conversions.py --build build/release [--folder FOLDER] [--vertices 10000000] [--runs 3] [--only TEXT]

Makes the inputs with make-bench-inputs in a scratch folder (kept when --folder names it), runs the programs of a row in
turn, takes the best of the runs, and compares the number of features in the two outputs: a fast wrong answer does not
count. Exit code 1 when a target is missed or the outputs differ.
"""
import argparse
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

MEMORY_LIMIT_MB = 32


def features(path):
    """Drawing elements of a DXF file, or records of a shapefile, or headers of a CDF file."""
    if path.suffix == ".shp":
        return (path.with_suffix(".shx").stat().st_size - 100) // 8
    count, tail = 0, b""
    with open(path, "rb") as file:
        if path.suffix == ".cdf":
            return sum(line.startswith(b"B") for line in file)
        while block := file.read(1 << 20):
            block = tail + block.replace(b"\r", b"")
            count += sum(block.count(b"\n" + name + b"\n") for name in (b"POLYLINE", b"LWPOLYLINE", b"POINT"))
            tail = block[-12:]
            count -= sum(tail.count(b"\n" + name + b"\n") for name in (b"POLYLINE", b"LWPOLYLINE", b"POINT"))
    return count


def remove(path):
    for partner in (path, *(path.with_suffix(s) for s in (".shx", ".dbf", ".prj") if path.suffix == ".shp")):
        partner.unlink(missing_ok=True)


def timed(command, output, quiet=subprocess.DEVNULL):
    """Seconds of wall clock and peak memory in MB of one run."""
    if output:
        remove(output)
    start = time.perf_counter()
    process = subprocess.Popen([str(word) for word in command], stdout=quiet, stderr=subprocess.PIPE)
    errors = process.stderr.read()
    _, status, usage = os.wait4(process.pid, 0)
    seconds = time.perf_counter() - start
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}: exit code {process.returncode}\n{errors.decode(errors='replace')}")
    return seconds, usage.ru_maxrss / 1024


class Side:
    """One program's command of a row, and the best of its runs."""

    def __init__(self, command, output):
        self.command, self.output, self.seconds, self.memory = command, output, float("inf"), 0

    def run(self):
        seconds, memory = timed(self.command, self.output)
        self.seconds, self.memory = min(self.seconds, seconds), max(self.memory, memory)


def rows(tesselink, folder):
    """Name, our side, the other side, the least ratio other / ours, whether our memory is limited."""
    def ours(source, target):
        fields = ["--layer-field", "LAYER"] if source.endswith(".shp") else []
        return Side([tesselink, "convert", "-q", "-O", *fields, folder / source, folder / target], folder / target)

    def theirs(source, target, field="LAYER"):
        form = "DXF" if target.endswith(".dxf") else "ESRI Shapefile"
        return Side(["ogr2ogr", "-f", form, "-select", field, folder / target, folder / source], folder / target)

    yield "lines  shp -> dxf", ours("lines.shp", "lines-ours.dxf"), theirs("lines.shp", "lines-ogr.dxf"), 15
    yield "points shp -> dxf", ours("points.shp", "points-ours.dxf"), theirs("points.shp", "points-ogr.dxf"), 15
    yield "lines  asc -> dxf, to our shp -> dxf", ours("lines.asc", "asc-ours.dxf"), ours("lines.shp", "lines-ours.dxf"), 1 / 1.5
    yield "lines  shp -> shp", ours("lines.shp", "lines-ours.shp"), theirs("lines.shp", "lines-ogr.shp"), 4
    yield "points shp -> shp", ours("points.shp", "points-ours.shp"), theirs("points.shp", "points-ogr.shp"), 8
    drawing = [tesselink, "convert", "-q", "-O", folder / "lines.shp", folder / "drawing.dxf"]
    subprocess.run(drawing, check=True)
    yield "lines  dxf -> shp", ours("drawing.dxf", "drawing-ours.shp"), theirs("drawing.dxf", "drawing-ogr.shp", "Layer"), 5
    yield "lines  shp -> cdf, to ogr shp -> dxf", ours("lines.shp", "lines-ours.cdf"), theirs("lines.shp", "lines-ogr.dxf"), 12
    source = [tesselink, "convert", "-q", "-O", folder / "lines.shp", folder / "source.cdf"]
    subprocess.run(source, check=True)
    yield "lines  cdf -> dxf, to ogr shp -> dxf", ours("source.cdf", "cdf-ours.dxf"), theirs("lines.shp", "lines-ogr.dxf"), 12
    yield "start, --version", Side([tesselink, "--version"], None), Side(["ogr2ogr", "--version"], None), 1


def measure(row, runs):
    name, ours, theirs, target = row
    for _ in range(runs if ours.output else 10 * runs):
        ours.run()
        theirs.run()
    ratio = theirs.seconds / ours.seconds
    verdict = "ok" if ratio >= target else "MISSED"
    if ours.output:
        counts = features(ours.output), features(theirs.output)
        if counts[0] != counts[1] or counts[0] == 0:
            verdict = f"DIFFER: {counts[0]} and {counts[1]} features"
        for side in (ours, theirs):
            remove(side.output)
    if ours.memory > MEMORY_LIMIT_MB:
        verdict += ", TOO MUCH MEMORY"
    print(f"{name:38} {ours.seconds:8.3f} s {theirs.seconds:8.3f} s {ratio:7.1f} (at least {target:4.2g}) "
          f"{ours.memory:6.1f} MB {theirs.memory:6.1f} MB  {verdict}", flush=True)
    return verdict == "ok"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--folder", type=pathlib.Path)
    parser.add_argument("--vertices", type=int, default=10_000_000)
    parser.add_argument("--runs", type=int, default=3)
    parser.add_argument("--only", default="")
    options = parser.parse_args()
    folder = options.folder or pathlib.Path(tempfile.mkdtemp(prefix="tesselink-bench-"))
    folder.mkdir(exist_ok=True)
    try:
        subprocess.run([options.build / "bench" / "make-bench-inputs", folder, str(options.vertices)], check=True)
        print(f"{'conversion':38} {'ours':>10} {'other':>10} {'ratio':>7} {'':15} {'peak memory':>19}")
        fine = [measure(row, options.runs) for row in rows(options.build / "tesselink", folder) if options.only in row[0]]
    finally:
        if not options.folder:
            shutil.rmtree(folder)
    return 0 if fine and all(fine) else 1


sys.exit(main())
