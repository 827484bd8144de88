#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""How long a folder of small drawings takes: by `tesselink batch`, one at a time and on all cores, by a shell loop of
`tesselink convert`, and by one of ogr2ogr. Shell loops run over the first files only; all figures are per 1000 files.

    bench/batch.py PROGRAM DRAWING... [--files N] [--loop-files N] [--rounds N]

The drawings (DXF) are copied as often as it takes. Load averages are printed, since others' work counts as well.
"""
import argparse
import os
import pathlib
import shutil
import statistics
import subprocess
import tempfile
import time


def seconds(command, folder):
    """By the clock, and of the processors."""
    shutil.rmtree(folder / "out", ignore_errors=True)
    (folder / "out").mkdir()
    os.sync()
    began, used = time.monotonic(), os.times()
    subprocess.run(command, cwd=folder, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    ended, after = time.monotonic(), os.times()
    return ended - began, after.children_user + after.children_system - used.children_user - used.children_system


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("program", type=lambda text: str(pathlib.Path(text).resolve()))
    parser.add_argument("drawings", nargs="+", type=pathlib.Path)
    parser.add_argument("--files", type=int, default=10_000)
    parser.add_argument("--loop-files", type=int, default=300)
    parser.add_argument("--rounds", type=int, default=3)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="tesselink-bench-") as name:
        folder = pathlib.Path(name)
        (folder / "in").mkdir()
        for number in range(options.files):
            shutil.copyfile(options.drawings[number % len(options.drawings)], folder / "in" / f"{number:05}.dxf")
        batch = [options.program, "batch", "-q", "--dialect", "standard", "--to", "shp", "--into", "out"]
        some = f"ls in | head -n {options.loop_files} | while read -r f; do"
        convert = f"{options.program} convert -q --dialect standard"
        ways = {
            "batch": (batch + ["in"], options.files),
            "batch -j 1": (batch + ["-j", "1", "in"], options.files),
            "batch --report": (batch + ["--report", "out.jsonl", "-O", "in"], options.files),
            "shell loop of convert": (["sh", "-c", f"{some} {convert} in/$f out/${{f%.dxf}}.shp; done"], options.loop_files),
            "shell loop of ogr2ogr": (["sh", "-c", f"{some} ogr2ogr -skipfailures out/${{f%.dxf}}.shp in/$f; done"],
                                      options.loop_files),
        }
        taken = {way: [] for way in ways}
        for _ in range(options.rounds):
            for way, (command, files) in ways.items():
                taken[way].append([time / files * 1000 for time in seconds(command, folder)])
    print(f"{options.files} files on {os.cpu_count()} cores, load averages {os.getloadavg()}")
    clock, processors = ({way: statistics.median(times[i] for times in all) for way, all in taken.items()} for i in (0, 1))
    for way in ways:
        print(f"{way:24} {clock[way]:8.2f} s per 1000 files, {processors[way]:.2f} s of processors")
    for way in ("batch -j 1", "shell loop of convert", "shell loop of ogr2ogr"):
        print(f"batch is {clock[way] / clock['batch']:.1f} times as fast as {way}")


if __name__ == "__main__":
    main()
