# SPDX-License-Identifier: MIT
"""Runs what people will try first: the commands in the code blocks of README.md and the other pages, and the examples of every
--help, in their order, in a folder that holds the examples as a checkout does.

    check_commands.py PROGRAM ROOT

Each must end with exit code 0, find the fields that it names, and leave every input as it was.
"""
import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

# How many commands each page and each help has at least: those that are not found would not be run.
PAGES = {"README.md": 10, "examples/README.md": 3}
HELPS = {"": 2, "convert": 3, "batch": 3, "info": 1, "cat": 1, "layers": 2, "preview": 2, "table": 1}
# These need minutes, a screen or another program.
NOT_RUN = ("./run-tests", "./tesselink-gui")


def code_lines(page):
    for block in re.findall(r"^```\w*\n(.*?)^```$", page.read_text(encoding="utf-8"), re.M | re.S):
        yield from (line for line in block.splitlines() if line and not line.startswith("#"))


def commands(run):
    listed = run("tesselink --help").stdout.partition("Subcommands:\n")[2].partition("\n\n")[0]
    return ["", *re.findall(r"^  (\w+)", listed, re.M)]


def help_lines(run, command):
    examples = re.split(r"^Examples?:$", run(f"tesselink {command} --help").stdout, flags=re.M)[1:]
    yield from (line.strip() for line in "".join(examples).splitlines() if re.match(" +[^ #]", line))


def digests(folder):
    return {path: hashlib.sha256(path.read_bytes()).digest() for path in sorted(folder.rglob("*")) if path.is_file()}


def complaints(program, root, folder):
    shutil.copytree(root / "examples", folder / "examples")
    inputs = digests(folder)
    own = {name: value for name, value in os.environ.items() if not name.startswith("TESSELINK_")}
    environment = dict(own, PATH=f"{program.parent}:{os.environ['PATH']}", HOME=str(folder))
    environment["XDG_CONFIG_HOME"] = str(folder / ".config")

    def run(line):
        command = ["bash", "-euo", "pipefail", "-c", line]
        return subprocess.run(command, cwd=folder, env=environment, capture_output=True, text=True)

    sources = [(name, list(code_lines(root / name)), least) for name, least in PAGES.items()]
    for page in sorted(root.glob("docs/**/*.md")):
        sources.append((page.name, [line for line in code_lines(page) if re.match(r"(\./)?tesselink ", line)], 0))
    for command in commands(run):
        sources.append((f"{command} --help".strip(), list(help_lines(run, command)), HELPS.get(command, 0)))
    for source, lines, least in sources:
        lines = [line for line in lines if not line.startswith(NOT_RUN)]
        if len(lines) < least:
            yield f"{source}: {len(lines)} commands, where there should be {least} or more"
        for line in lines:
            ended = run(re.sub(r"(^|\s)\./tesselink\b", r"\1tesselink", line))
            if ended.returncode != 0 or "has no field" in ended.stderr:
                yield f"{source}: {line}\n    exit code {ended.returncode}: {ended.stderr.strip()}"
            if digests(folder / "examples") != inputs:
                yield f"{source}: {line}\n    changed what lies in examples"
                return


def main():
    program, root = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    with tempfile.TemporaryDirectory() as folder:
        found = list(complaints(program, root, pathlib.Path(folder)))
    print("\n".join(found) if found else "every command runs as printed")
    return 1 if found else 0


sys.exit(main())
