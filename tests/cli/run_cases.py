#!/usr/bin/env python3
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
import struct
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


# ---- text of expectations


def shown(data):
    """Bytes as lines of a case file; what cannot be seen is escaped, a missing last line end shows as \\c."""
    text = data.decode("utf-8", "surrogateescape")
    out = []
    for char in text:
        if char == "\\":
            out.append("\\\\")
        elif char == "\n":
            out.append(char)
        elif 0xDC80 <= ord(char) <= 0xDCFF:
            out.append(f"\\x{ord(char) - 0xDC00:02x}")
        elif ord(char) < 32 or ord(char) == 127:
            out.append(f"\\x{ord(char):02x}")
        else:
            out.append(char)
    text = "".join(out)
    if not text:
        return []
    return text[:-1].split("\n") if text.endswith("\n") else (text + "\\c").split("\n")


def written(lines, line_end):
    """The bytes of lines as a case file shows them."""
    text = "".join(line + "\n" for line in lines).replace("\\c\n", "").replace("\n", line_end)
    unescape = lambda match: "\\" if match[1] == "\\" else chr(0xDC00 + int(match[1][1:], 16))
    data = re.sub(r"\\(\\|x[89a-f][0-9a-f])", unescape, text)
    data = re.sub(r"\\x([0-7][0-9a-f])", lambda match: chr(int(match[1], 16)), data)
    return data.encode("utf-8", "surrogateescape")


def matches(expected, actual):
    """Whether lines are as expected; {number} stands for any whole number."""
    pattern = "\n".join(re.escape(line).replace(r"\{number\}", r"\d+") for line in expected)
    return re.fullmatch(pattern, "\n".join(actual)) is not None


# ---- case files


class Case:
    def __init__(self, name, line):
        self.name = name
        self.line = line
        self.lines = []  # as in the file, without the heading
        self.setup = []  # (words of the line, lines below it)
        self.command = None
        self.interrupt = False
        self.not_as_root = False
        self.exit = 0
        self.files = {}  # name -> (kind, lines or word); "out" and "err" are the two streams
        self.first_expectation = 0  # index into lines

    def parse(self, where):
        for index, line in enumerate(self.lines):
            place = f"{where}:{self.line + 1 + index}"
            if not line.strip() or line.startswith("#"):
                continue
            if line == "not as root":
                self.not_as_root = True
            elif line.startswith("+ "):
                if self.command is not None:
                    raise CaseError(f"{place}: set-up belongs before the command")
                self.setup.append((line[2:], []))
            elif line.startswith("| ") or line == "|":
                if not self.setup or self.command is not None:
                    raise CaseError(f"{place}: text without a file to hold it")
                self.setup[-1][1].append(line[2:])
            elif line.startswith("$ ") or line.startswith("^C "):
                if self.command is not None:
                    raise CaseError(f"{place}: a case has one command")
                self.interrupt = line.startswith("^C")
                self.command = line.split(" ", 1)[1]
                self.first_expectation = index + 1
            else:
                self.expect(line, place)
        if self.command is None:
            raise CaseError(f"{where}:{self.line}: a case without a command")

    def expect(self, line, place):
        inline = re.match(r"(\S+)\| ?(.*)$", line)
        golden = re.match(r"(\S[^|]*)= (\S+)$", line)
        state = re.match(r"(\S[^|]*) is (absent|changed|a whole drawing|a whole shapefile)$", line)
        if self.command is None:
            raise CaseError(f"{place}: an expectation before the command, or a line that says nothing: {line}")
        if line.startswith("exit "):
            self.exit = int(line[5:])
        elif inline:
            self.files.setdefault(inline[1], ("inline", []))[1].append(inline[2])
        elif golden:
            self.files[golden[1]] = ("golden", golden[2])
        elif state:
            self.files[state[1]] = ("state", state[2])
        else:
            raise CaseError(f"{place}: not understood: {line}")


def read_cases(path):
    cases, head = [], []
    for number, line in enumerate(path.read_text("utf-8").split("\n"), 1):
        if line.startswith("=== "):
            cases.append(Case(line[4:].strip(), number))
        elif cases:
            cases[-1].lines.append(line)
        else:
            head.append(line)
    for case in cases:
        case.parse(path.name)
    names = [case.name for case in cases]
    for name in names:
        if names.count(name) > 1:
            raise CaseError(f"{path.name}: two cases are named {name!r}")
    return head, cases


# ---- set-up


def entity_type(line):
    """A record of $CDF.MAP from a line "CODE DESCRIPTION"."""
    code, description = written([line], "").split(b" ", 1)
    code = code.ljust(7, b"\0")
    return b"\0\0" + code[:3] + bytes(7) + code[3:] + bytes(8) + description.ljust(43, b"\0")


def entity_colours(line):
    """A record of $LNGSL.DAT from a line "LINE-COLOUR TEXT-COLOUR DESCRIPTION"."""
    of_lines, of_texts, description = line.split(" ", 2)
    return description.encode().ljust(40, b"\0") + struct.pack("<hh", int(of_lines), int(of_texts)) + bytes(82)


LOOKUPS = {"entity-types": (entity_type, "CDFMAP", "$CDF.MAP"), "entity-colours": (entity_colours, "LNGSL", "$LNGSL.DAT")}


def put_lookup(folder, word, name, text):
    """Writes a lookup file and, as if it had been found before, its place into the settings."""
    record, application, key = LOOKUPS[word]
    (folder / name).write_bytes(b"".join(record(line) for line in text))
    settings = folder.parent / "home" / ".config" / "Tesselink" / f"{application}.ini"
    settings.parent.mkdir(parents=True, exist_ok=True)
    settings.write_text(f"[Locations]\n{key.replace('$', '%2524')}={name}\n")


def set_up(folder, line, text, environment):
    words = shlex.split(line)
    word, arguments = words[0], words[1:]
    if word in ("text", "landmark"):  # lines end with LF, or with CR LF as Landmark's do
        (folder / arguments[0]).write_bytes(written(text, "\n" if word == "text" else "\r\n"))
    elif word == "hex":
        (folder / arguments[0]).write_bytes(bytes.fromhex("".join(arguments[1:])))
    elif word == "patch":
        with open(folder / arguments[0], "r+b") as file:
            file.seek(int(arguments[1]))
            file.write(bytes.fromhex("".join(arguments[2:])))
    elif word == "cut":
        os.truncate(folder / arguments[0], int(arguments[1]))
    elif word in LOOKUPS:
        put_lookup(folder, word, arguments[0], text)
    elif word == "repeat":  # FILE MEGABYTES: the text below it, again and again
        block = written(text, "\r\n")
        with open(folder / arguments[0], "wb") as file:
            for _ in range(int(arguments[1]) * 16):
                file.write(block * (65536 // len(block) + 1))
    elif word == "long-line":  # FILE MEGABYTES: one line, after the text below it
        with open(folder / arguments[0], "wb") as file:
            file.write(written(text, "\r\n"))
            for _ in range(int(arguments[1])):
                file.write(b"7" * (1 << 20))
    else:
        subprocess.run(["sh", "-eu", "-c", line], cwd=folder, env=environment, check=True,
                       stdin=subprocess.DEVNULL)


# ---- running


class Runner:
    def __init__(self, options):
        self.options = options
        self.failures = []

    def environment(self, home):
        env = {key: value for key, value in os.environ.items() if not key.startswith(("LC_", "LANG", "XDG_"))}
        env.update(LC_ALL=self.options.locale, TZ="UTC", HOME=str(home / "home"), TMPDIR=str(home / "tmp"),
                   XDG_CONFIG_HOME=str(home / "home" / ".config"), PATH=f"{home / 'bin'}:{env.get('PATH', '/usr/bin:/bin')}")
        return env

    def run(self, case):
        """Runs a case; returns what came of it: exit code, and name -> bytes, or None for a file that is not there."""
        home = pathlib.Path(tempfile.mkdtemp(prefix="tesselink-cli-"))
        try:
            return self.run_in(home, case)
        finally:
            subprocess.run(["chmod", "-R", "u+rwX", str(home)], check=True)
            shutil.rmtree(home)

    def run_in(self, home, case):
        for name in ("bin", "home", "tmp"):
            (home / name).mkdir()
        (home / "bin" / "tesselink").symlink_to(self.options.program)
        folder = home / "work"
        shutil.copytree(self.options.examples, folder)
        for line, text in case.setup:
            set_up(folder, line, text, self.environment(home))
        before = snapshot(folder)
        streams = {name: open(home / name, "w+b") for name in ("out", "err")}
        # "exec", so that the signal of an interrupted case reaches the program itself.
        process = subprocess.Popen(["sh", "-c", "exec " + case.command if case.interrupt else case.command], cwd=folder,
                                   env=self.environment(home), stdin=subprocess.DEVNULL, stdout=streams["out"],
                                   stderr=streams["err"])
        try:
            if case.interrupt:
                interrupt_at_work(process, home, folder)
            code = process.wait(TIMEOUT_SECONDS)
        except BaseException:
            process.kill()
            process.wait()
            raise
        found = {}
        for name, stream in streams.items():
            stream.seek(0)
            found[name] = stream.read().replace(str(folder).encode(), b"{folder}").replace(str(home).encode(), b"{home}")
            stream.close()
        problems = [f"left behind in the temporary folder: {path.name}" for path in (home / "tmp").iterdir()]
        after = snapshot(folder)
        for name in sorted(before.keys() | after.keys() | case.files.keys() - {"out", "err"}):
            if before.get(name) != after.get(name) or name in case.files:
                found[name] = (folder / name).read_bytes() if name in after else None
                if name in before and name not in case.files:
                    problems.append(f"changed, and must not be: {name}")
                    del found[name]
        return code, found, problems


def snapshot(folder):
    """Name -> what a file is, for every file and link below a folder."""
    found = {}
    for path in folder.rglob("*"):
        name, mode = str(path.relative_to(folder)), path.lstat().st_mode
        if stat.S_ISLNK(mode):
            found[name] = ("link", os.readlink(path))
        elif stat.S_ISREG(mode):
            try:
                with open(path, "rb") as file:
                    digest = hashlib.sha256()
                    while block := file.read(1 << 20):
                        digest.update(block)
                found[name] = ("file", mode, digest.hexdigest())
            except PermissionError:
                found[name] = ("closed file", mode)
        else:
            found[name] = ("folder", mode)
    return found


def interrupt_at_work(process, home, folder):
    """Sends the signal of Ctrl-C once the program has written something: to a temporary file, its standard output or out.*."""
    deadline = time.monotonic() + TIMEOUT_SECONDS
    while process.poll() is None and time.monotonic() < deadline:
        written = [path.stat().st_size for path in [home / "out", *(home / "tmp").iterdir()]]
        beyond_headers = [path.stat().st_size > 4096 for path in folder.glob("out.*")]
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
    if lines.pop() != "" or len(lines) % 2 != 0:
        return False
    depth = 0
    for code, value in zip(lines[::2], lines[1::2]):
        if not re.fullmatch(r" *\d+", code):
            return False
        depth += {"SECTION": 1, "ENDSEC": -1}.get(value, 0) if code.strip() == "0" else 0
    return depth == 0 and lines[-2:] == ["  0", "EOF"]


# ---- comparing


def compare(case, code, found):
    problems = [] if code == case.exit else [f"exit code {code}, expected {case.exit}"]
    for name in sorted(found.keys() | case.files.keys()):
        kind, value = case.files.get(name, ("inline", []))
        data = found.get(name)
        if kind == "state":
            good = {"absent": data is None, "changed": True,
                    "a whole shapefile": data is not None and is_whole_shapefile(data),
                    "a whole drawing": data is not None and is_whole_drawing(data)}[value]
            if not good:
                problems.append(f"{name} is not {value}")
        elif data is None:
            problems.append(f"{name} was not written")
        elif kind == "golden":
            golden = GOLDEN / value
            wanted = golden.read_bytes() if golden.exists() else b""
            if data != wanted:
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
    lines = case.lines[:case.first_expectation]
    if code != 0:
        lines.append(f"exit {code}")
    for name in ["err", "out"] + sorted(found.keys() - {"out", "err"}):
        kind, value = case.files.get(name, ("inline", []))
        data = found[name]
        if name not in case.files and data is not None and is_whole_drawing(data):
            kind, value = "state", "a whole drawing"
        if kind == "state":
            lines.append(f"{name} is {value}")
        elif data is None:
            lines.append(f"{name} is absent")
        elif kind == "golden":
            GOLDEN.mkdir(exist_ok=True)
            (GOLDEN / value).write_bytes(data)
            lines.append(f"{name}= {value}")
        else:
            actual = shown(data)
            lines += [f"{name}| {line}" if line else f"{name}|"
                      for line in (value if matches(value, actual) else actual)]
    return lines + [""]


def run_file(path, options):
    head, cases = read_cases(path)
    runner = Runner(options)
    ran = failed = skipped = 0
    for case in cases:
        if options.only and options.only not in case.name:
            continue
        if case.not_as_root and os.geteuid() == 0:
            print(f"skipped (the superuser may write everywhere): {path.name}: {case.name}")
            skipped += 1
            continue
        ran += 1
        code, found, problems = runner.run(case)
        if options.accept:
            case.lines = accepted(case, code, found)
        else:
            problems += compare(case, code, found)
        if problems:
            failed += 1
            print(f"FAILED {path.name}:{case.line}: {case.name}\n  $ {case.command}")
            print("\n".join("  " + problem for problem in problems))
    if options.accept:
        text = "\n".join(head + [line for case in cases for line in [f"=== {case.name}"] + case.lines])
        path.write_text(text.rstrip("\n") + "\n", "utf-8")
    print(f"{path.name}: {ran - failed} of {ran} cases passed" + (f", {skipped} skipped" if skipped else ""))
    return failed


def locale_is_installed(name):
    names = subprocess.run(["locale", "-a"], capture_output=True, text=True, check=True).stdout.lower().split()
    return name.lower().replace("utf-8", "utf8") in names


def main():
    parser = argparse.ArgumentParser(description="Golden tests of the command line")
    parser.add_argument("--program", required=True, type=lambda text: pathlib.Path(text).resolve())
    parser.add_argument("--examples", default=HERE.parent.parent / "examples", type=pathlib.Path)
    parser.add_argument("--locale", default="C.UTF-8")
    parser.add_argument("--only", help="run the cases whose name holds this text")
    parser.add_argument("--accept", action="store_true", help="write what the program does now as what is expected")
    parser.add_argument("files", nargs="+", type=pathlib.Path)
    options = parser.parse_args()
    if options.locale != "C.UTF-8" and not locale_is_installed(options.locale):
        print(f"skipped: the locale {options.locale} is not installed")
        return SKIPPED
    try:
        return 1 if sum(run_file(path, options) for path in options.files) else 0
    except CaseError as error:
        print(error)
        return 1


if __name__ == "__main__":
    sys.exit(main())
