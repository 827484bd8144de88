#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The examples of batches by GNU parallel, Slurm's job arrays and Snakemake write the very files that `tesselink batch` writes.

    batch_engines.py --tesselink PROGRAM --data FOLDER --examples FOLDER
"""
import argparse
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77
OPTIONS = "--dialect standard --to dxf -O"


def contents(folder):
    return {str(path.relative_to(folder)): path.read_bytes() for path in folder.rglob("*.dxf")}


def engines(place):
    """How each is started; Slurm would set the number of the task, of which there are as many as it takes."""
    tasks = 'for t in 1 2 3; do SLURM_ARRAY_TASK_ID=$t "$0" commands 2; done'
    return {
        "batch": ["sh", "-c", f"tesselink batch {OPTIONS} --into batch plats"],
        "parallel": [place / "parallel.sh", "plats", "parallel", "--jobs", "2"],
        "slurm": ["bash", "-euc", f"tesselink batch {OPTIONS} --into slurm --dry-run plats > commands; {tasks}", place / "slurm.sh"],
        "xargs": ["sh", "-c", f"tesselink batch {OPTIONS} --into xargs --dry-run plats | xargs -d '\\n' -P 2 -I '{{}}' sh -c '{{}}'"],
        "snakemake": ["snakemake", "--snakefile", place / "Snakefile", "--cores", "2", "--config", "drawings=plats",
                      "into=snakemake"],
    }


def complaints(program, examples, folder):
    plats = folder / "plats"
    (plats / "it's text").mkdir(parents=True)
    shutil.copy(examples / "all-entities.dxf", plats / "two & more.dxf")
    shutil.copy(examples / "quarter-section.asc", plats / "it's text")
    for path in (*examples.glob("wells.*"), *examples.glob("sections.*")):
        shutil.copy(path, plats)
    (folder / "bin").mkdir()
    (folder / "bin" / "tesselink").symlink_to(program)
    environment = dict(os.environ, PATH=f"{folder / 'bin'}:/usr/bin:/bin", HOME=str(folder), XDG_CACHE_HOME=str(folder))
    wanted = None
    for name, command in engines(examples / "batch").items():
        ended = subprocess.run(command, cwd=folder, env=environment, capture_output=True, text=True)
        found = contents(folder / name)
        wanted = wanted or found
        if ended.returncode != 0 or found != wanted or len(found) != 4:
            yield f"{name}: exit code {ended.returncode}, {sorted(found)}\n{ended.stderr}"
    if len((folder / "parallel.joblog").read_text().splitlines()) != 5:
        yield "parallel: no log of its four jobs"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--tesselink", required=True, type=lambda text: pathlib.Path(text).resolve())
    parser.add_argument("--data")
    parser.add_argument("--examples", required=True, type=lambda text: pathlib.Path(text).resolve())
    options = parser.parse_args()
    missing = [name for name in ("parallel", "snakemake") if not os.path.exists(f"/usr/bin/{name}")]
    if missing:
        print(f"skipped: {' and '.join(missing)} are not installed")
        return SKIPPED
    with tempfile.TemporaryDirectory(prefix="tesselink-engines-") as folder:
        found = list(complaints(options.tesselink, options.examples, pathlib.Path(folder)))
    print("\n".join(found) if found else "every engine writes what batch writes")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
