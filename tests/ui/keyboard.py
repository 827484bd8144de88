#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""A person's work at the window in an X server of its own, by keys alone: a conversion through every dialog that it asks with,
whose files are compared with what the command line writes when it is given the same answers, and then every pair of formats.

    keyboard.py --window build/release/tesselink-gui --tesselink build/release/tesselink --examples examples

Dialogs are found by their titles, controls by their underlined letters and the order of the keys. There is no window manager:
each dialog is given the keyboard when it appears. Exit codes: 0 agrees, 1 deviates, 77 Xvfb or xdotool is not installed.
"""
import argparse
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

PATIENCE = 60  # seconds for a step
CDF_ROW = 3  # of the output formats
# As the drop-downs have them; of the third, an overlay, nothing is delivered yet.
INPUTS = ("wells.shp", "all-entities.dxf", None, "quarter-section.asc", "quarter-section.cdf")
OUTPUTS = ("shp", "dxf", "asc", "cdf", "grd")
MAIN = "Tesselink File Conversion"


class Deviation(Exception):
    pass


def xdotool(environment, *words):
    run = subprocess.run(["xdotool", *map(str, words)], env=environment, capture_output=True, text=True, timeout=PATIENCE, check=False)
    return run.stdout.split() if run.returncode == 0 else []


def wait(what, condition):
    end = time.monotonic() + PATIENCE
    while not condition():
        if time.monotonic() > end:
            raise Deviation(f"expected {what} within {PATIENCE} seconds")
        time.sleep(0.02)


class Person:
    def __init__(self, environment):
        self.environment = environment

    def front(self):
        """The title of the window that was opened last, which is given the keyboard."""
        windows = xdotool(self.environment, "search", "--onlyvisible", "--name", ".+")
        if not windows:
            return ""
        xdotool(self.environment, "windowfocus", windows[-1])
        return " ".join(xdotool(self.environment, "getwindowname", windows[-1]))

    def at(self, title):
        """Waits for a window and gives it the keyboard."""
        def focused():
            windows = xdotool(self.environment, "search", "--onlyvisible", "--name", f"^{title}$")
            return windows and (xdotool(self.environment, "windowfocus", windows[-1]),
                                xdotool(self.environment, "getwindowfocus", "-f") == windows[-1:])[1]
        wait(f'the keyboard at the window "{title}"', focused)

    def keys(self, *keys):
        xdotool(self.environment, "key", "--clearmodifiers", *keys)

    def write(self, text):
        self.keys("ctrl+a")
        xdotool(self.environment, "type", "--clearmodifiers", "--delay", 5, text)


def convert_wells(person, folder):
    person.at(MAIN)
    person.keys("alt+f")
    person.write(folder / "wells.shp")
    person.keys("alt+o", "Home", *["Down"] * CDF_ROW, "alt+u")
    person.write(folder / "out.cdf")
    person.keys("alt+a")
    person.at("DBF Fields")
    person.keys("Down", "Return", "Down", "Down", "Return")
    person.at("Layer Name Matching")
    person.keys(*["Tab"] * 5, "space", "alt+o")  # Smart Assign stands behind the four layers and Assign Types
    person.at("Point Entities Found in the Input File")
    person.keys("Return")
    wait("the point file", (folder / "out.pts").exists)
    person.at("Progress...")
    wait("the drawing", (folder / "out.cdf").exists)
    time.sleep(0.5)  # the summary, which the same window shows
    person.keys("alt+d")


FIELDS = "Locate Township and Range Fields"
ANSWERS = {
    "DBF Fields": ["Return", "Return"],
    "Layer Name Matching": ["alt+o"],
    "Point Entities Found in the Input File": ["Return"],
    "ESRI Shape File Type": ["Return"],
}


def give_table(person, table):
    person.at(FIELDS)
    person.keys("alt+b")
    person.at("Browsing...")
    person.write(table)
    while person.front() == "Browsing...":  # the first key may go to the list of proposals
        person.keys("Return")
        time.sleep(0.2)
    person.at(FIELDS)
    person.keys("Return")


def convert_pair(person, row, source, column, output):
    """What is asked on the way is answered by the keys that take what is proposed."""
    person.at(MAIN)
    person.keys("alt+i", "Home", *["Down"] * row, "alt+f")
    person.write(source)
    person.keys("alt+o", "Home", *["Down"] * column, "alt+u")
    person.write(output)
    person.keys("alt+a")
    end = time.monotonic() + PATIENCE
    asked = []
    while (title := person.front()) != "Progress..." or not output.exists():
        if title == FIELDS:
            give_table(person, source.with_name("sections.dbf"))
            asked.append(title)
        elif title in ANSWERS:
            asked.append(title)
            person.keys(*ANSWERS[title])
        if time.monotonic() > end:
            raise Deviation(f"{source.name} to {output.name}: the keys end at the window \"{title}\"")
        time.sleep(0.1)
    time.sleep(0.3)
    person.keys("alt+d")
    return asked


def convert_pairs(person, folder):
    """Inputs and outputs of the pairs that asked nothing."""
    silent = []
    for row, name in enumerate(INPUTS):
        if name is None:
            continue
        for column, extension in enumerate(OUTPUTS):
            output = folder / f"{name.replace('.', '-')}.{extension}"
            if not convert_pair(person, row, folder / name, column, output):
                silent.append((name, output))
    return silent


def surroundings(home):
    """Those of someone who has never run the program; nothing of the desktop that this runs on reaches it."""
    kept = {name: value for name, value in os.environ.items() if not name.startswith(("QT_", "XDG_", "LC_", "DBUS_", "WAYLAND_"))}
    (home / "run").mkdir(mode=0o700, parents=True)
    return kept | {"HOME": str(home), "XDG_CONFIG_HOME": str(home), "XDG_RUNTIME_DIR": str(home / "run"), "LC_ALL": "C.UTF-8",
                   "QT_QPA_PLATFORM": "xcb", "QT_ACCESSIBILITY": "0"}


def play(options, folder):
    for path in options.examples.iterdir():
        if path.is_file():
            shutil.copy(path, folder)
    environment = surroundings(folder / "home")
    ours, theirs = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(theirs), "-screen", "0", "1400x1000x24", "-nolisten", "tcp"],
                              pass_fds=[theirs], stderr=subprocess.DEVNULL)
    try:
        os.close(theirs)
        with os.fdopen(ours) as answer:
            environment["DISPLAY"] = ":" + answer.readline().strip()
        with subprocess.Popen([options.window], env=environment, cwd=folder) as program:
            try:
                person = Person(environment)
                convert_wells(person, folder)
                silent = convert_pairs(person, folder)
                person.at(MAIN)
                person.keys("alt+c")
                if program.wait(PATIENCE) != 0:
                    raise Deviation(f"the program ends with {program.returncode}")
            finally:
                program.kill()
    finally:
        server.terminate()
        server.wait()
    if subprocess.run([options.window, "--nonsense"], env=surroundings(folder / "third") | {"QT_QPA_PLATFORM": "offscreen"}, timeout=PATIENCE,
                      stderr=subprocess.DEVNULL).returncode != 2:
        raise Deviation("an option that is not known is no error")
    subprocess.run([options.tesselink, "convert", "-q", "--smart-assign", "--layer-field", "LAYER", "--text-field", "LABEL", "wells.shp",
                    "cli.cdf"], env=surroundings(folder / "other"), cwd=folder, check=True)
    (folder / "again").mkdir()
    for name, output in silent:
        subprocess.run([options.tesselink, "convert", "-q", name, f"again/{output.name}"], env=surroundings(folder / "homes" / output.name),
                       cwd=folder, check=True)
        if output.read_bytes() != (folder / "again" / output.name).read_bytes():
            raise Deviation(f"the window's {output.name} is not what the command line writes")
    for end in ("cdf", "pts"):
        if (folder / f"out.{end}").read_bytes() != (folder / f"cli.{end}").read_bytes():
            raise Deviation(f"the window's out.{end} is not what the command line writes")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ("--window", "--tesselink", "--examples"):
        parser.add_argument(name, type=lambda text: pathlib.Path(text).resolve(), required=True)
    options = parser.parse_args()
    if not shutil.which("Xvfb") or not shutil.which("xdotool"):
        print("skipped: Xvfb or xdotool is not installed")
        return 77
    try:
        with tempfile.TemporaryDirectory() as folder:
            play(options, pathlib.Path(folder))
    except (Deviation, subprocess.SubprocessError) as deviation:
        print(f"DEVIATES: {deviation}")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
