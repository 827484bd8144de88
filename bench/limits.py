#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Times whole conversions beside the bare programs of bench/bare, which do the same work with nothing around it.

    bench/limits.py --build build/release [--folder FOLDER] [--vertices 10000000] [--runs 5] [--only TEXT] [--inputs FOLDER]

The two programs of a row run in turn, each without an output of the run before, which only the bare one would reuse; medians
of processor time and of wall-clock time are printed, and their ratios. Where the outputs should be equal they are compared.
Exit code 1 when a ratio of processor time is above its limit. `--inputs` names a folder with points, lines, polygons and
linesz as shapefiles that have a field LAYER, instead of generated ones.
"""
import argparse
import filecmp
import os
import pathlib
import resource
import shutil
import statistics
import subprocess
import sys
import tempfile
import time


def spent(command, environment):
    """Seconds of wall clock and of processor time that a command takes."""
    before, start = resource.getrusage(resource.RUSAGE_CHILDREN), time.perf_counter()
    result = subprocess.run([str(word) for word in command], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, env=environment)
    wall, after = time.perf_counter() - start, resource.getrusage(resource.RUSAGE_CHILDREN)
    if result.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}: exit code {result.returncode}\n{result.stderr.decode(errors='replace')}")
    return wall, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def rows(build, inputs, folder):
    """Name, our command, the bare one, the greatest ratio, the two outputs where they are to be equal."""
    convert = [build / "tesselink", "convert", "-q", "-O"]

    def bare(program, source, target):
        return [build / "bench" / ("bare-" + program), source, target]

    ours, theirs = folder / "ours", folder / "bare"
    for name in ("points", "lines", "polygons", "linesz"):
        source = inputs / (name + ".shp")
        if source.exists():
            yield (f"{name} shp -> dxf", [*convert, "--layer-field", "LAYER", source, ours / "shapes.dxf"],
                   bare("shp-to-dxf", source, theirs / "shapes.dxf"), 1.25, None)
    drawing, survey = folder / "source.dxf", folder / "source.asc"
    subprocess.run([*convert, "--layer-field", "LAYER", inputs / "lines.shp", drawing], check=True, stderr=subprocess.DEVNULL)
    subprocess.run([*convert, "--dialect", "standard", drawing, survey], check=True, stderr=subprocess.DEVNULL)
    pair = ours / "chains.dxf", theirs / "chains.dxf"
    yield "lines asc -> dxf", [*convert, survey, pair[0]], bare("asc-to-dxf", survey, pair[1]), 1.25, pair
    pair = ours / "chains.asc", theirs / "chains.asc"
    yield ("lines dxf -> asc", [*convert, "--dialect", "standard", drawing, pair[0]], bare("dxf-to-asc", drawing, pair[1]), 1.25,
           pair)
    yield "lines dxf -> shp", [*convert, drawing, ours / "chains.shp"], bare("dxf-to-shp", drawing, theirs / "chains.shp"), 1.25, None
    parts = " ".join(str(inputs / ("lines" + end)) for end in (".shp", ".shx", ".dbf"))
    copy = ["sh", "-c", f"cp --reflink=never {parts} {theirs} && cat {parts}"]
    yield "lines shp -> shp", [*convert, inputs / "lines.shp", ours / "copy.shp"], copy, 1.5, None


def measure(row, runs, folder, environment):
    name, ours, other, limit, outputs = row
    times = [], []
    for _ in range(runs):
        for command, list_, outputs_of in zip((ours, other), times, ("ours", "bare")):
            shutil.rmtree(folder / outputs_of, ignore_errors=True)
            (folder / outputs_of).mkdir()
            list_.append(spent(command, environment))
    wall, processor = ([statistics.median(time[i] for time in side) for side in times] for i in (0, 1))
    fine = processor[0] <= limit * processor[1]
    verdict = "ok" if fine else "MISSED"
    if outputs and not filecmp.cmp(*outputs, shallow=False):
        fine, verdict = False, "DIFFERENT BYTES"
    print(f"{name:20} {processor[0]:7.3f} s {processor[1]:7.3f} s {processor[0] / processor[1]:6.2f} (at most {limit:4.2f})   wall "
          f"{wall[0]:7.3f} s {wall[1]:7.3f} s {wall[0] / wall[1]:6.2f}   {verdict}", flush=True)
    return fine


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--folder", type=pathlib.Path)
    parser.add_argument("--inputs", type=pathlib.Path)
    parser.add_argument("--vertices", type=int, default=10_000_000)
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--only", default="")
    options = parser.parse_args()
    folder = options.folder or pathlib.Path(tempfile.mkdtemp(prefix="tesselink-limits-"))
    folder.mkdir(exist_ok=True)
    # Temporary files lie where the outputs do, as those of the bare programs.
    environment = dict(os.environ, TMPDIR=str(folder))
    try:
        if not options.inputs:
            subprocess.run([options.build / "bench" / "make-bench-inputs", folder, str(options.vertices)], check=True)
        print(f"{'conversion':20} {'ours':>9} {'bare':>9}  ratio of processor time")
        fine = [measure(row, options.runs, folder, environment)
                for row in rows(options.build, options.inputs or folder, folder) if options.only in row[0]]
    finally:
        if not options.folder:
            shutil.rmtree(folder)
    return 0 if fine and all(fine) else 1


sys.exit(main())
