#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""A folder of many drawings by `tesselink batch`: damaged ones are named and the rest is written; killed and cancelled on the way
and resumed, the same comes of it, byte for byte; memory and open files do not follow the number of files.

    batch_folder.py --tesselink PROGRAM --data FOLDER [--files N] [--keep FOLDER]
"""
import argparse
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

LARGEST = 20_000  # bytes of a drawing that is copied
DAMAGED = 30
SET = (".shx", ".dbf", ".prj", ".cpg")
OPTIONS = ("--dialect", "standard", "--shape-type", "each", "--to", "shp")

# What makes a drawing unreadable, by extension.
DAMAGES = {
    ".dxf": (lambda data: b"", lambda data: b"\x07\xfe" * 400, lambda data: b"no drawing\r\nat all\r\n"),
    ".shp": (lambda data: data[:50], lambda data: b"\x00\x01" * 300, lambda data: b""),
}


def samples(program, data, folder):
    """Small drawings of the data that are converted whole."""
    found = [path for path in sorted(data.rglob("*")) if path.suffix in DAMAGES and path.stat().st_size < LARGEST]
    chosen = []
    for path in found:
        command = [program, "convert", "-O", *OPTIONS, str(path), str(folder / "sample.shp")]
        if subprocess.run(command, capture_output=True).returncode == 0:
            chosen.append(path)
    shutil.rmtree(folder)
    return chosen


def generate(chosen, folder, count, damaged):
    """Copies of the samples in a tree; the names of those that are damaged."""
    bad = set()
    for number in range(count):
        source = chosen[number % len(chosen)]
        place = folder / f"{number // 1000:03}" / f"{number // 100 % 10}"
        place.mkdir(parents=True, exist_ok=True)
        target = place / f"{number:05}{source.suffix}"
        content = source.read_bytes()
        if number % (count // damaged) == 1 and len(bad) < damaged:
            kinds = DAMAGES[source.suffix]
            content = kinds[len(bad) % len(kinds)](content)
            bad.add(str(target.relative_to(folder)))
        target.write_bytes(content)
        for extension in SET:
            if source.with_suffix(extension).exists() and source.suffix == ".shp":
                shutil.copyfile(source.with_suffix(extension), target.with_suffix(extension))
    return bad


def contents(folder):
    return {str(path.relative_to(folder)): path.read_bytes() for path in folder.rglob("*") if path.is_file()}


def lines_of(report):
    return [json.loads(line) for line in report.read_text("utf-8").splitlines()]


class Batch:
    def __init__(self, program, folder):
        self.command = [program, "batch", *OPTIONS, "--into", "out", "--report", "report.jsonl", "--json"]
        self.folder = folder
        self.memory = self.files = 0

    def start(self, *options):
        return subprocess.Popen([*self.command, *options, str(self.folder / "in")], cwd=self.folder, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, start_new_session=True,
                                preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL))

    def watch(self, process, until=None):
        """Notes the memory and open files of the parent, until it ends or the report has so many lines."""
        report, place = self.folder / "report.jsonl", pathlib.Path(f"/proc/{process.pid}")
        while process.poll() is None:
            try:
                status = (place / "status").read_text().split("VmHWM:")
                self.memory = max(self.memory, int(status[1].split()[0]) if len(status) > 1 else 0)
                self.files = max(self.files, len(os.listdir(place / "fd")))
            except (FileNotFoundError, ProcessLookupError):
                break
            if until and report.exists() and report.read_bytes().count(b"\n") >= until:
                return
            time.sleep(0.002)

    def run(self, *options):
        process = self.start(*options)
        while process.poll() is None:  # what it says fits a pipe
            self.watch(process)
        return (process.returncode, *process.communicate())

    def children(self, parent):
        found = []
        for place in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                words = (place / "cmdline").read_bytes().split(b"\0")
            except OSError:
                continue
            if b"--part-of-batch" in words and str(parent).encode() in words:
                found.append(place.name)
        return found


def interrupted(batch, count, failures):
    """Kills the batch after a third of the files, cancels it after two thirds, and lets it end."""
    process = batch.start()
    batch.watch(process, count // 3)
    process.kill()
    process.communicate()
    deadline = time.monotonic() + 10
    while batch.children(process.pid) and time.monotonic() < deadline:
        time.sleep(0.01)
    if batch.children(process.pid):
        failures.append("conversions go on when the batch has been killed")
    # A line that was being written when the power failed.
    with open(batch.folder / "report.jsonl", "a") as report:
        report.write('{"input":"torn')
    process = batch.start("--resume")
    batch.watch(process, 2 * count // 3)
    os.killpg(process.pid, signal.SIGINT)  # as a terminal does
    _, said = process.communicate()
    if process.returncode != 130 or "--resume goes on" not in said or "ended by" in said:
        failures.append(f"cancelled, it ends with {process.returncode} and says {said!r}")
    return batch.run("--resume")


def check(program, data, home, count):
    failures = []
    chosen = samples(program, data, home)
    damaged = min(DAMAGED, count // 4)
    for name in ("whole", "parts"):
        (home / name).mkdir(parents=True)
        bad = generate(chosen, home / name / "in", count, damaged)
    whole, parts = (Batch(program, home / name) for name in ("whole", "parts"))

    code, out, said = whole.run()
    seconds = json.loads(out)["seconds"]
    lines = lines_of(whole.folder / "report.jsonl")
    failed = {str(pathlib.Path(line["input"]).relative_to(whole.folder / "in")) for line in lines if line["exit"] != 0}
    if code != 3 or json.loads(out)["converted"] != count - damaged:
        failures.append(f"ends with {code}: {out}")
    if failed != bad or not all(line.get("reason") for line in lines if line["exit"] != 0):
        failures.append(f"the report names {sorted(failed ^ bad)} otherwise than they are")
    if any(name not in said for name in bad) or len(said.splitlines()) > 60:
        failures.append(f"the damaged files are not all named, or more than fits a screen is said:\n{said}")
    for line in lines[:: max(1, count // 5)]:
        expect_like_convert(program, line, home, failures)

    code, out, _ = interrupted(parts, count, failures)
    if code != 3 or json.loads(out)["failed"] != damaged:
        failures.append(f"resumed, it ends with {code}: {out}")
    if contents(whole.folder / "out") != contents(parts.folder / "out"):
        one, other = contents(whole.folder / "out"), contents(parts.folder / "out")
        odd = [name for name in one.keys() | other.keys() if one.get(name) != other.get(name)]
        failures.append(f"killed and resumed, other files come of it: {sorted(odd)[:10]}")
    last = {line["input"]: line for line in lines_of(parts.folder / "report.jsonl")}
    if len(last) != count or (parts.folder / "report.jsonl.begun").exists():
        failures.append(f"the report tells of {len(last)} files, or is not closed")
    code, out, _ = parts.run("--resume")
    if json.loads(out)["passedOver"] != count - damaged:
        failures.append(f"resumed once more, it converts again: {out}")
    check_memory(program, home, failures)
    print(f"{count} files in {seconds:.1f} s; the parent took {max(whole.memory, parts.memory)} KiB and "
          f"{max(whole.files, parts.files)} open files")
    return failures


def expect_like_convert(program, line, home, failures):
    """The outputs are those of `convert`, and so is the summary."""
    if line["exit"] != 0:
        return
    single = home / "single" / pathlib.Path(line["output"]).name
    single.parent.mkdir(exist_ok=True)
    summary = json.loads(subprocess.run([program, "convert", *OPTIONS, "--json", line["input"], str(single)],
                                        capture_output=True, text=True).stdout)
    for ours, theirs in zip(line["outputs"], summary["outputs"], strict=True):
        if (home / "whole" / ours).read_bytes() != pathlib.Path(theirs).read_bytes():
            failures.append(f"{ours} is not what convert writes")
    if summary["written"] != line["summary"]["written"]:
        failures.append(f"the summary of {line['input']} is not that of convert")


def check_memory(program, home, failures):
    """One drawing that takes more memory than it may is told; those beside it are converted."""
    (home / "hog").mkdir()
    head, tail = "0\nSECTION\n2\nENTITIES\n0\nLWPOLYLINE\n", "0\nENDSEC\n0\nEOF\n"
    (home / "hog" / "long.dxf").write_text(head + "".join(f"10\n{i}\n20\n1\n" for i in range(1_500_000)) + tail)
    (home / "hog" / "short.dxf").write_text(head + "10\n1\n20\n1\n10\n2\n20\n2\n" + tail)
    command = [program, "batch", "--memory", "32M", "--dialect", "standard", "--to", "asc", "--into", "hog/out", "hog"]
    ended = subprocess.run(command, cwd=home, capture_output=True, text=True)
    if ended.returncode != 3 or "hog/long.dxf: takes more than the 32M" not in ended.stderr or "1 of 2" not in ended.stdout:
        failures.append(f"with little memory it ends with {ended.returncode} and says {ended.stderr}")
    if os.listdir(home / "hog" / "out") != ["short.asc"]:
        failures.append("a conversion without memory leaves something")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--tesselink", required=True, type=lambda text: str(pathlib.Path(text).resolve()))
    parser.add_argument("--data", required=True, type=pathlib.Path)
    parser.add_argument("--files", type=int, default=200)
    parser.add_argument("--keep", type=pathlib.Path, help="work in this new folder, and leave it")
    options = parser.parse_args()
    home = options.keep or pathlib.Path(tempfile.mkdtemp(prefix="tesselink-batch-"))
    try:
        home.mkdir(exist_ok=True)
        failures = check(options.tesselink, options.data.resolve(), home.resolve(), options.files)
    finally:
        if not options.keep:
            shutil.rmtree(home, ignore_errors=True)
    print("\n".join(failures) if failures else "all as it should be")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
