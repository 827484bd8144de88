# SPDX-License-Identifier: MIT
"""What a person sees at a terminal: the progress bar, which leaves nothing behind, and colours; and that neither gets into pipes.

    check_terminal.py PROGRAM EXAMPLES
"""
import fcntl
import os
import pathlib
import pty
import re
import signal
import struct
import subprocess
import sys
import tempfile
import termios

ESCAPE, RED, YELLOW = "\x1b", "\x1b[31m", "\x1b[33m"


def drawing_of_minutes(path):
    """A small drawing that draws a block millions of times."""
    block = "0 BLOCK 2 B 70 0 10 0 20 0 0 LINE 8 A 10 0 20 0 11 1 21 1 0 ENDBLK 0 ENDSEC"
    inserts = " ".join(f"0 INSERT 2 B 10 {i} 20 0 70 2000 71 2000 44 2 45 2" for i in range(20))
    words = f"0 SECTION 2 BLOCKS {block} 0 SECTION 2 ENTITIES {inserts} 0 ENDSEC 0 EOF"
    path.write_text(words.replace(" ", "\n") + "\n")


def at_terminal(command, columns=100, until=None, **environment):
    """What the command writes to a terminal so wide; with `until` it is interrupted once that text has come."""
    process, terminal = pty.fork()
    if process == 0:
        fcntl.ioctl(2, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
        clean = {k: v for k, v in os.environ.items() if k != "NO_COLOR"}
        os.execve(command[0], command, {**clean, "TERM": "xterm", **environment})
    written = b""
    try:
        while piece := os.read(terminal, 65536):
            written += piece
            if until is not None and re.search(until, written):
                os.kill(process, signal.SIGINT)
                until = None
    except OSError:
        pass  # how a terminal that its last process has left ends
    os.close(terminal)
    return os.waitstatus_to_exitcode(os.waitpid(process, 0)[1]), written.decode()


def bar_complaints(program, folder):
    drawing_of_minutes(folder / "blocks.dxf")
    reading = ["--dialect", "standard", "--limit", "1000000000", folder / "blocks.dxf"]
    for columns, ends_with, command in (
            (100, rb"elements, [\d.]+[kM]?/s, about .* remaining", ["convert", "-O", *reading, folder / "out.asc"]),
            (30, rb"\] +\d+%\x1b", ["convert", "-O", *reading, folder / "out.asc"]), (80, rb"\] +\d+%", ["info", *reading])):
        code, written = at_terminal(list(map(str, [program, *command])), columns, until=ends_with)
        bars, _, rest = written.rpartition("\r\x1b[K")
        if code != 130 or "cancelled" not in rest or not re.fullmatch(r"(\x1b\[3[13]mtesselink:[^\r]+\r\n)+", rest):
            yield f"{command[0]} in {columns} columns: exit code {code}, and what is left behind is {rest!r}"
        lines = bars.split("\r")
        if wrong := [line for line in lines[1:] if not re.fullmatch(r"\[#*\.*\] +\d+%.*\x1b\[K", line) or len(line) - 3 >= columns]:
            yield f"{command[0]} in {columns} columns: {wrong[0]!r} is no bar that fits"
        if lines[0] != "":
            yield f"{command[0]} in {columns} columns: something stands before the bar: {lines[0]!r}"


def colour_complaints(program, examples, folder):
    warns = [program, "convert", "-O", f"{examples}/wells.shp", f"{folder}/out.dxf"]
    fails = [program, "info", "missing.shp"]
    mistaken = [program, "inof"]
    for command, colour in ((warns, YELLOW), (fails, RED), (mistaken, RED)):
        for environment, wanted in (({}, True), ({"NO_COLOR": "1"}, False), ({"NO_COLOR": ""}, True), ({"TERM": "dumb"}, False)):
            written = at_terminal(command, **environment)[1]
            if (colour + "tesselink:" in written) != wanted or (ESCAPE in written) != wanted:
                yield f"{command[1:]} with {environment}: {written!r}"
        ended = subprocess.run(command + ["--progress"] * (command is warns), capture_output=True, text=True)
        if ESCAPE in ended.stdout + ended.stderr or "\r" in ended.stderr or "tesselink: " not in ended.stderr:
            yield f"{command[1:]} through pipes: {ended.stderr!r}"


def main():
    program, examples = sys.argv[1:3]
    with tempfile.TemporaryDirectory() as name:
        os.environ.update(XDG_CONFIG_HOME=name)
        found = [*bar_complaints(program, pathlib.Path(name)), *colour_complaints(program, examples, name)]
    print("\n".join(found) if found else "terminals get bars and colours, pipes do not")
    return 1 if found else 0


sys.exit(main())
