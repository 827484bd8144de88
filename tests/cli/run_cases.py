#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Golden tests of the command line. README.md beside this file tells how a case is written.

    run_cases.py --program PATH [--examples FOLDER] [--locale NAME] [--only TEXT] [--accept] FILE.case...

Exit code 0: all cases passed; 1: some failed; 77: the locale asked for is not installed.
"""

import argparse
import difflib
import hashlib
import os
import pathlib
import re
import shlex
import shutil
import signal
import stat
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
GOLDEN = HERE / "golden"
TIMEOUT_SECONDS = 240
SKIPPED = 77


class CaseError(Exception):
    """A case that is written wrongly, with file and line."""


def shown(data):
    """Bytes as lines of a case file; what cannot be seen is escaped, a missing last line end shows as \\c."""
    text = data.decode("utf-8", "surrogateescape").replace("\\", "\\\\")
    text = re.sub(r"[\udc80-\udcff]", lambda byte: f"\\x{ord(byte[0]) - 0xDC00:02x}", text)
    text = re.sub(r"[\0-\t\x0b-\x1f\x7f]", lambda byte: f"\\x{ord(byte[0]):02x}", text)
    if not text:
        return []
    return text[:-1].split("\n") if text.endswith("\n") else (text + "\\c").split("\n")


def matches(expected, actual):
    """Whether lines are as expected; {number} stands for any whole number, {keys} for any list of formats."""
    pattern = "\n".join(re.escape(line) for line in expected)
    pattern = pattern.replace(r"\{number\}", r"\d+").replace(r"\{keys\}", r"[a-z]+(?:, [a-z]+)+")
    return re.fullmatch(pattern, "\n".join(actual)) is not None


# ---- case files


class Case:
    def __init__(self, name, line):
        self.name = name
        self.line = line
        self.lines = []  # as in the file, without the heading
        self.setup = []  # (the line, lines below it)
        self.commands = []
        self.interrupt = False
        self.exit = 0
        self.files = {}  # name -> (kind, lines or word); "out" and "err" are the two streams
        self.first_expectation = 0  # index into lines

    def parse(self, where):
        for index, line in enumerate(self.lines):
            if not line.strip() or line.startswith("#"):
                continue
            if line.startswith("+ ") and not self.commands:
                self.setup.append((line[2:], []))
            elif line.startswith("| ") and self.setup and not self.commands:
                self.setup[-1][1].append(line[2:])
            elif line.startswith("$ ") or line.startswith("^C "):
                self.interrupt = line.startswith("^C")
                self.commands.append(line.split(" ", 1)[1])
                self.first_expectation = index + 1
            elif not self.commands or not self.expect(line):
                raise CaseError(f"{where}:{self.line + 1 + index}: not understood here: {line}")
        if not self.commands:
            raise CaseError(f"{where}:{self.line}: a case without a command")

    def script(self):
        """For the shell. Of several commands a transcript: each one, what it says to either stream, and its exit code."""
        if len(self.commands) == 1:
            return ("exec " if self.interrupt else "") + self.commands[0]
        run = 'printf "%s\\n" {0}; ( {1} ) 2>&1 || echo "exit $?"'
        return "\n".join(run.format(shlex.quote("$ " + command), command) for command in self.commands)

    def expect(self, line):
        inline = re.match(r"(\S+)\| ?(.*)$", line)
        golden = re.match(r"(\S[^|]*)= (\S+)$", line)
        state = re.match(r"(\S[^|]*) is (changed|a whole drawing|a whole shapefile)$", line)
        if line.startswith("exit "):
            self.exit = int(line[5:])
        elif inline:
            self.files.setdefault(inline[1], ("inline", []))[1].append(inline[2])
        elif golden:
            self.files[golden[1]] = ("golden", golden[2])
        elif state:
            self.files[state[1]] = ("state", state[2])
        return line.startswith("exit ") or inline or golden or state


def read_cases(path):
    cases, head = [], []
    for number, line in enumerate(path.read_text("utf-8").split("\n"), 1):
        if line.startswith("=== "):
            cases.append(Case(line[4:].strip(), number))
        else:
            (cases[-1].lines if cases else head).append(line)
    for case in cases:
        case.parse(path.name)
    return head, cases


def set_up(folder, line, text, environment):
    word, *arguments = line.split(" ")
    if word == "landmark":  # lines that end with CR LF
        (folder / arguments[0]).write_bytes("".join(below + "\r\n" for below in text).encode())
    elif word == "patch":
        with open(folder / arguments[0], "r+b") as file:
            file.seek(int(arguments[1]))
            file.write(bytes.fromhex("".join(arguments[2:])))
    elif word == "cut":
        os.truncate(folder / arguments[0], int(arguments[1]))
    else:
        subprocess.run(["sh", "-eu", "-c", line], cwd=folder, env=environment, check=True, stdin=subprocess.DEVNULL)


# ---- running


def environment_in(home, locale):
    env = {key: value for key, value in os.environ.items() if not key.startswith(("LC_", "LANG", "XDG_", "TESSELINK_", "SOURCE_DATE"))}
    env.update(LC_ALL=locale, TZ="UTC", HOME=str(home / "home"), TMPDIR=str(home / "tmp"),
               XDG_CONFIG_HOME=str(home / "home" / ".config"), PATH=f"{home / 'bin'}:{env.get('PATH', '/usr/bin:/bin')}")
    return env


def run(case, options):
    """Runs a case; returns what came of it: exit code, name -> bytes, or None for a file that is not there, and problems."""
    home = pathlib.Path(tempfile.mkdtemp(prefix="tesselink-cli-"))
    try:
        return run_in(home, case, options)
    finally:
        shutil.rmtree(home)


def run_in(home, case, options):
    for name in ("bin", "home", "tmp"):
        (home / name).mkdir()
    (home / "bin" / "tesselink").symlink_to(options.program)
    folder, environment = home / "work", environment_in(home, options.locale)
    shutil.copytree(options.examples, folder)
    for line, text in case.setup:
        set_up(folder, line, text, environment)
    before = snapshot(folder)
    with open(home / "out", "wb") as out, open(home / "err", "wb") as err:
        # Whoever runs the tests in the background ignores Ctrl-C; the program then would, too.
        process = subprocess.Popen(["sh", "-c", case.script()], cwd=folder, env=environment, stdin=subprocess.DEVNULL,
                                   stdout=out, stderr=err, preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL))
        try:
            if case.interrupt:
                interrupt_at_work(process, home, folder)
            code = process.wait(TIMEOUT_SECONDS)
        except BaseException:
            process.kill()
            process.wait()
            raise
    found = {name: (home / name).read_bytes() for name in ("out", "err")}
    problems = [f"left behind in the temporary folder: {path.name}" for path in (home / "tmp").iterdir()]
    after = snapshot(folder)
    for name in sorted(before.keys() | after.keys() | case.files.keys() - {"out", "err"}):
        if name in before and before[name] != after.get(name) and name not in case.files:
            problems.append(f"changed, and must not be: {name}")
        elif before.get(name) != after.get(name) or name in case.files:
            found[name] = (folder / name).read_bytes() if name in after else None
    return code, found, problems


def snapshot(folder):
    """Name -> what a file is, for every file and link below a folder."""
    found = {}
    for path in folder.rglob("*"):
        name, mode = str(path.relative_to(folder)), path.lstat().st_mode
        if stat.S_ISLNK(mode):
            found[name] = ("link", os.readlink(path))
        elif stat.S_ISREG(mode):
            with open(path, "rb") as file:
                found[name] = ("file", mode, hashlib.file_digest(file, "sha256").digest())
    return found


def interrupt_at_work(process, home, folder):
    """Sends the signal of Ctrl-C once the program has written something: to a temporary file, its standard output or out.*."""
    deadline = time.monotonic() + TIMEOUT_SECONDS
    while process.poll() is None and time.monotonic() < deadline:
        try:
            written = [path.stat().st_size for path in [home / "out", *(home / "tmp").iterdir()]]
            beyond_headers = [path.stat().st_size > 4096 for path in folder.glob("**/out.*")]
        except FileNotFoundError:  # it has moved to its place meanwhile
            continue
        if any(written) or any(beyond_headers):
            process.send_signal(signal.SIGINT)
            return
        time.sleep(0.001)


def is_whole_shapefile(data):
    """Whether the header of a .shp or .shx gives the file's length."""
    return data[:4] == b"\x00\x00\x27\x0a" and int.from_bytes(data[24:28], "big") * 2 == len(data)


def is_whole_drawing(data):
    """Whether bytes are pairs of group code and value, in sections that end, with EOF last."""
    lines = data.decode("utf-8", "replace").split("\r\n")
    if lines.pop() != "" or len(lines) % 2 != 0 or not all(re.fullmatch(r" *\d+", code) for code in lines[::2]):
        return False
    sections = [value for code, value in zip(lines[::2], lines[1::2]) if code == "  0" and value in ("SECTION", "ENDSEC")]
    return sections == ["SECTION", "ENDSEC"] * (len(sections) // 2) and lines[-2:] == ["  0", "EOF"]


STATES = {"changed": lambda data: True, "a whole drawing": is_whole_drawing, "a whole shapefile": is_whole_shapefile}


# ---- comparing


def compare(case, code, found):
    problems = [] if code == case.exit else [f"exit code {code}, expected {case.exit}"]
    for name in sorted(found.keys() | case.files.keys()):
        kind, value = case.files.get(name, ("inline", []))
        data = found.get(name)
        if data is None:
            problems.append(f"{name} is not there")
        elif kind == "state":
            problems += [] if STATES[value](data) else [f"{name} is not {value}"]
        elif kind == "golden":
            wanted = (GOLDEN / value).read_bytes() if (GOLDEN / value).exists() else b""
            if data != wanted and not matches(shown(wanted), shown(data)):
                problems.append(f"{name} differs from golden/{value}" + difference(shown(wanted), shown(data)))
        elif name not in case.files and name not in ("out", "err"):
            problems.append(f"{name} was written, and the case does not expect it")
        elif not matches(value, shown(data)):
            problems.append(f"{name} differs" + difference(value, shown(data)))
    return problems


def difference(wanted, got):
    lines = list(difflib.unified_diff(wanted, got, "expected", "actual", lineterm="", n=1))
    return "".join("\n    " + line[:300] for line in lines[:40]) + ("\n    ..." if len(lines) > 40 else "")


def accepted(case, code, found):
    """The lines of a case with what it now yields as what it expects."""
    lines = case.lines[:case.first_expectation] + ([f"exit {code}"] if code else [])
    for name in ["err", "out"] + sorted(found.keys() - {"out", "err"}):
        kind, value = case.files.get(name, ("inline", []))
        data = found[name] or b""
        if name not in case.files and is_whole_drawing(data):
            kind, value = "state", "a whole drawing"
        if kind == "state":
            lines.append(f"{name} is {value}")
        elif kind == "golden":
            path = GOLDEN / value
            if not path.exists() or not matches(shown(path.read_bytes()), shown(data)):
                path.write_bytes(data)
            lines.append(f"{name}= {value}")
        else:
            actual = shown(data)
            lines += [f"{name}| {line}".rstrip(" ") for line in (value if matches(value, actual) else actual)]
    return lines + [""]


def run_file(path, options):
    head, cases = read_cases(path)
    ran = failed = 0
    for case in cases:
        if options.only and options.only not in case.name:
            continue
        ran += 1
        code, found, problems = run(case, options)
        if options.accept:
            case.lines = accepted(case, code, found)
        else:
            problems += compare(case, code, found)
        if problems:
            failed += 1
            print(f"FAILED {path.name}:{case.line}: {case.name}")
            print("\n".join("  " + problem for problem in problems))
    if options.accept:
        text = "\n".join(head + [line for case in cases for line in [f"=== {case.name}"] + case.lines])
        path.write_text(text.rstrip("\n") + "\n", "utf-8")
    print(f"{path.name}: {ran - failed} of {ran} cases passed")
    return failed


def main():
    parser = argparse.ArgumentParser(description="Golden tests of the command line")
    parser.add_argument("--program", required=True, type=lambda text: pathlib.Path(text).resolve())
    parser.add_argument("--examples", default=HERE.parent.parent / "examples", type=pathlib.Path)
    parser.add_argument("--locale", default="C.UTF-8")
    parser.add_argument("--only", help="run the cases whose name holds this text")
    parser.add_argument("--accept", action="store_true", help="write what the program does now as what is expected")
    parser.add_argument("files", nargs="+", type=pathlib.Path)
    options = parser.parse_args()
    installed = subprocess.run(["locale", "-a"], capture_output=True, text=True, check=True).stdout.lower().split()
    if options.locale.lower().replace("utf-8", "utf8") not in installed:
        print(f"skipped: the locale {options.locale} is not installed")
        return SKIPPED
    try:
        return 1 if sum(run_file(path, options) for path in options.files) else 0
    except CaseError as error:
        print(error)
        return 1


if __name__ == "__main__":
    sys.exit(main())
