#!/usr/bin/env python3
"""A person's work at the window, by keyboard and mouse in an X server of its own: three conversions and a cancel. What
they leave is compared with what the command line writes when it is given the same answers.

    keyboard_and_mouse.py --window build/release/tesselink-gui --tesselink build/release/tesselink [--examples examples] [--pictures FOLDER]

Dialogs are found by their titles, controls by their underlined letters and the order of the keys. For the mouse the window
itself tells where a control is: the toolkit's own option -stylesheet paints each control that is to be clicked, found by its
name, in a colour that nothing else has, and only while it can be clicked. So no place, size, font or theme is assumed. There
is no window manager: each dialog is given the keyboard when it appears, and the close box is the message that one would send.

With --pictures every step leaves a picture, and so does a failure. Exit codes: 0 agrees, 1 deviates, 77 Xvfb or xdotool is
not installed.
"""
import argparse
import contextlib
import ctypes
import itertools
import json
import os
import pathlib
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time
import zlib

PATIENCE = 60  # seconds for a step
POLL = 0.02
MAIN, PROGRESS = "Tesselink File Conversion", "Progress..."
LAYERS, POINTS = "Layer Name Matching", "Point Entities Found in the Input File"
CDF_ROW, DXF_ROW = 3, 1  # of the output formats
LONG_INPUT = 60_000_000  # bytes
TRIES = 3  # a machine that has done before anyone could cancel is given four times as much

# The colours of what the mouse clicks.
MARKS = {
    "#BrowseIn": "#ffd0e1",
    "#OutFile": "#e1ffd1",
    "#OutFormat": "#d2e3ff",
    "#OutFormat QAbstractItemView": "#fff4c3",
    "#cmdApply": "#d3fff5",
    "#SmartAss": "#f1d4ff",
    "#frmProgress #cmdCancel": "#ffe0c5",
    "#frmProgress #cmdDone": "#c6ffe7",
}


class Deviation(Exception):
    pass


def check(condition, message):
    if not condition:
        raise Deviation(message)


class Screen:
    """An X server without a window manager, whose picture is read from its memory."""

    SIZE = "1400x1000x24"
    RUN = 24  # pixels of a colour beside each other that make a mark

    def __init__(self, stack, folder, environment):
        ours, theirs = os.pipe()
        with open(folder / "xvfb.log", "wb") as log:
            self.server = subprocess.Popen(
                ["Xvfb", "-displayfd", str(theirs), "-screen", "0", self.SIZE, "-nolisten", "tcp", "-fbdir", folder],
                pass_fds=[theirs], env=environment, stdout=log, stderr=log)
        stack.callback(end, self.server)
        os.close(theirs)
        with os.fdopen(ours) as answer:
            number = answer.readline().strip()
        check(number, "Xvfb does not start: " + (folder / "xvfb.log").read_text(errors="replace"))
        self.display = ":" + number
        self.memory = folder / "Xvfb_screen0"

    def pixels(self):
        """Width, and four bytes a pixel: blue, green, red and one that means nothing."""
        data = self.memory.read_bytes()
        header = struct.unpack(">25I", data[:100])
        width, height, depth, line, colours = header[4], header[5], header[11], header[12], header[19]
        check(depth == 32 and line == 4 * width, "the screen has other pixels than 32 bits")
        start = header[0] + 12 * colours
        pixels = bytearray(data[start:start + line * height])
        pixels[3::4] = bytes(width * height)
        return width, bytes(pixels)

    def place(self, colour):
        """Left, top, right and bottom of what is painted in the colour; None where nothing is."""
        width, pixels = self.pixels()
        red, green, blue = bytes.fromhex(colour[1:])
        run = bytes([blue, green, red, 0]) * self.RUN
        box, at = None, pixels.find(run)
        while at >= 0:
            if at % 4 == 0:
                y, x = divmod(at // 4, width)
                if x + self.RUN <= width:
                    left, top, right, _ = box or (x, y, x, y)
                    box = min(left, x), top, max(right, x + self.RUN - 1), y
            at = pixels.find(run, at + 4 - at % 4)
        return box

    def save(self, path):
        width, pixels = self.pixels()
        rgb = bytearray(len(pixels) // 4 * 3)
        rgb[0::3], rgb[1::3], rgb[2::3] = pixels[2::4], pixels[1::4], pixels[0::4]
        rows = b"".join(b"\0" + rgb[at:at + 3 * width] for at in range(0, len(rgb), 3 * width))

        def chunk(kind, data):
            return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

        size = struct.pack(">IIBBBBB", width, len(pixels) // 4 // width, 8, 2, 0, 0, 0)
        path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", size) + chunk(b"IDAT", zlib.compress(rows, 1)) + chunk(b"IEND", b""))


def request_close(display, window):
    """What a window manager sends when the close box is clicked."""
    class Message(ctypes.Structure):
        _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("sent", ctypes.c_int), ("display", ctypes.c_void_p),
                    ("window", ctypes.c_ulong), ("kind", ctypes.c_ulong), ("format", ctypes.c_int), ("data", ctypes.c_long * 5),
                    ("room", ctypes.c_long * 24)]  # as large as the largest event

    client_message, current_time = 33, 0
    library = ctypes.CDLL("libX11.so.6")
    library.XOpenDisplay.restype = ctypes.c_void_p
    library.XInternAtom.restype = ctypes.c_ulong
    library.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
    library.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long, ctypes.c_void_p]
    library.XCloseDisplay.argtypes = [ctypes.c_void_p]
    connection = library.XOpenDisplay(display.encode())
    check(connection, f"no connection to the display {display}")
    protocols, delete = (library.XInternAtom(connection, name, 0) for name in (b"WM_PROTOCOLS", b"WM_DELETE_WINDOW"))
    message = Message(type=client_message, window=window, kind=protocols, format=32)
    message.data[0], message.data[1] = delete, current_time
    library.XSendEvent(connection, window, 0, 0, ctypes.byref(message))
    library.XCloseDisplay(connection)  # sends what waits


class Person:
    """Hands and eyes at the screen, and the program that is before them."""

    def __init__(self, screen, program, environment, pictures):
        self.screen, self.program, self.environment, self.pictures = screen, program, environment, pictures
        self.steps = itertools.count(1)

    def xdotool(self, *words):
        run = subprocess.run(["xdotool", *map(str, words)], env=self.environment, capture_output=True, text=True, timeout=PATIENCE,
                             check=False)
        return run.stdout.split() if run.returncode == 0 else []

    def wait(self, what, condition):
        """What the condition gives as soon as that is something."""
        end_of_patience = time.monotonic() + PATIENCE
        while time.monotonic() < end_of_patience:
            found = condition()
            if found:
                return found
            check(self.program.poll() is None, f"expected {what}, but the program ended with {self.program.returncode}")
            time.sleep(POLL)
        raise Deviation(f"expected {what} within {PATIENCE} seconds; windows on the screen: {self.titles()}")

    def titles(self):
        names = (self.xdotool("getwindowname", window) for window in self.xdotool("search", "--onlyvisible", "--name", "."))
        return ", ".join(sorted({" ".join(name) for name in names if name})) or "none"

    def shown(self, title):
        return self.xdotool("search", "--onlyvisible", "--name", f"^{title}$")

    def at(self, title):
        """Waits for a window and gives it the keyboard."""
        window = self.wait(f'the window "{title}"', lambda: self.shown(title))[-1]

        def focused():
            self.xdotool("windowfocus", window)
            return self.xdotool("getwindowfocus", "-f") == [window]

        self.wait(f'the keyboard to follow to "{title}"', focused)
        return int(window)

    def keys(self, *keys):
        self.xdotool("key", "--clearmodifiers", *keys)

    def write(self, text):
        """In place of what the control holds."""
        self.keys("ctrl+a")
        self.xdotool("type", "--clearmodifiers", "--delay", 5, text)

    def marked(self, control):
        return self.wait(f"{control} to be there and enabled", lambda: self.screen.place(MARKS[control]))

    def click(self, control, row=0, rows=1):
        """One of the equal rows of a list, or the middle of a control."""
        left, top, right, bottom = self.marked(control)
        y = top + (bottom + 1 - top) * (2 * row + 1) // (2 * rows)
        self.xdotool("mousemove", (left + right) // 2, y, "click", 1)

    def picture(self, name):
        """For whoever wants to see the steps; waits until the screen stands still, but not for long."""
        if not self.pictures:
            return
        before = None
        for _ in range(10):
            now = self.screen.pixels()
            if now == before:
                break
            before = now
            time.sleep(0.1)
        self.screen.save(self.pictures / f"{next(self.steps):02}-{name}.png")


class Work:
    def __init__(self, person, command, folder, formats):
        self.person, self.command, self.folder, self.formats = person, command, folder, formats

    def by_command(self, *words):
        """The same by the command line, which remembers nothing of the window's runs."""
        home = pathlib.Path(tempfile.mkdtemp(dir=self.folder))
        run = subprocess.run([self.command, "convert", "-q", *words], env=surroundings(home), cwd=self.folder, capture_output=True,
                             text=True, timeout=5 * PATIENCE, check=False)
        check(run.returncode == 0, f"{' '.join(words)} ends with {run.returncode}: {run.stderr}")

    def same(self, ours, theirs):
        ours, theirs = self.folder / ours, self.folder / theirs
        check(ours.exists(), f"the window has written no {ours.name}")
        written, expected = ours.read_bytes(), theirs.read_bytes()
        check(expected, f"{theirs.name} is empty")
        at = len(os.path.commonprefix([written, expected]))
        check(written == expected, f"{ours.name} holds {len(written)} bytes, the command line's {theirs.name} {len(expected)}, and "
              f"they differ from byte {at} on: {written[at:at + 40]!r} in place of {expected[at:at + 40]!r}")

    def done(self, name):
        """The run is over; the keyboard or the mouse closes its summary."""
        self.person.marked("#frmProgress #cmdDone")
        self.person.at(PROGRESS)
        self.person.picture(f"{name}-done")

    def returned(self):
        self.person.wait("the progress to be gone", lambda: not self.person.shown(PROGRESS))
        self.person.marked("#cmdApply")
        self.person.at(MAIN)

    def leave_layers(self):
        """A drawing needs no entity types."""
        self.person.at(LAYERS)
        self.person.keys("alt+o")

    def wells_by_keyboard(self):
        person = self.person
        person.at(MAIN)
        person.picture("empty")
        person.keys("alt+f")
        person.write(str(self.folder / "wells.shp"))
        person.keys("alt+o", "Home", *["Down"] * CDF_ROW, "alt+u")
        person.write(str(self.folder / "out.cdf"))
        person.picture("wells")
        person.keys("alt+a")
        person.at("DBF Fields")
        person.keys("Down")
        person.picture("layer-field")
        person.keys("Return", "Down", "Down")
        person.picture("text-field")
        person.keys("Return")
        person.at(LAYERS)
        person.picture("layers")
        person.click("#SmartAss")
        person.picture("smart-assign")
        person.keys("alt+o")
        person.at(POINTS)
        person.picture("points")
        person.keys("Return")
        self.done("wells")
        person.keys("alt+d")
        self.returned()
        answers = ["--layer-field", "LAYER", "--text-field", "LABEL", "wells.shp"]
        self.by_command("--smart-assign", *answers, "cli.cdf")
        self.by_command(*answers, "unassigned.cdf")
        self.same("out.cdf", "cli.cdf")
        self.same("out.pts", "cli.pts")
        check((self.folder / "cli.cdf").read_bytes() != (self.folder / "unassigned.cdf").read_bytes(), "Smart Assign has no effect")

    def plat_by_mouse(self):
        person = self.person
        person.click("#BrowseIn")
        person.at("Browsing...")
        person.picture("browse")
        person.write(str(self.folder / "quarter-section.asc"))
        person.keys("Return")
        person.wait("the browsing to be over", lambda: not person.shown("Browsing..."))
        person.at(MAIN)
        person.click("#OutFile")
        person.write(str(self.folder / "plat.txt"))  # the name tells no format
        person.click("#OutFormat")
        person.marked("#OutFormat QAbstractItemView")
        person.picture("formats")
        person.click("#OutFormat QAbstractItemView", DXF_ROW, self.formats)
        person.wait("the list to close", lambda: not person.screen.place(MARKS["#OutFormat QAbstractItemView"]))
        person.at(MAIN)
        person.picture("plat")
        person.click("#cmdApply")
        self.leave_layers()
        self.done("plat")
        person.click("#frmProgress #cmdDone")
        self.returned()
        self.by_command("--to", "dxf", "quarter-section.asc", "cli-plat.txt")
        self.same("plat.txt", "cli-plat.txt")

    def cancelled(self):
        for attempt in range(TRIES):
            name = f"long{attempt}"
            make_long(self.folder / f"{name}.asc", LONG_INPUT * 4 ** attempt)
            if self.begin_and_cancel(name):
                self.by_command(f"{name}.asc", "whole.dxf")
                return self.begins(f"{name}.dxf", "whole.dxf")
            for path in self.folder.glob(f"{name}.*"):
                path.unlink()
        raise Deviation("the runs were over before they could be cancelled")

    def begin_and_cancel(self, name):
        """False when the run was over before the mouse was at the button."""
        person, output = self.person, self.folder / f"{name}.dxf"
        person.keys("alt+f")
        person.write(str(self.folder / f"{name}.asc"))
        person.keys("alt+u")
        person.write(str(output))
        person.keys("alt+a")
        self.leave_layers()
        if not self.ask_to_cancel():
            return False
        person.picture("cancel")
        check(not output.exists(), "the drawing is there before it is whole")
        person.keys("alt+n")
        person.wait("No to close the question", lambda: not person.shown("Cancel"))
        if not self.ask_to_cancel():
            return False
        person.keys("alt+y")
        self.done("cancelled")
        person.keys("alt+d")
        self.returned()
        check(output.exists(), "what was converted is not there")
        return True

    def ask_to_cancel(self):
        def button():
            return self.person.screen.place(MARKS["#frmProgress #cmdCancel"]) or over()

        def over():
            return self.person.screen.place(MARKS["#frmProgress #cmdDone"])

        self.person.wait("the progress", button)
        if not over():
            self.person.click("#frmProgress #cmdCancel")
            self.person.wait('the question "Cancel"', lambda: self.person.shown("Cancel") or over())
        if over():
            self.person.at(PROGRESS)
            self.person.keys("alt+d")
            self.returned()
            return False
        self.person.at("Cancel")
        return True

    def begins(self, part, whole):
        """The part holds the first elements of the whole, and not all of them."""
        with contextlib.ExitStack() as stack:
            def elements(name):
                reading = subprocess.Popen([self.command, "cat", self.folder / name], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
                stack.callback(end, reading)
                return reading, reading.stdout

            (reading, some), (_, every) = elements(part), elements(whole)
            count = 0
            for element in some:
                expected = every.readline()
                check(element == expected, f"element {count + 1} of {part} is {element}, of {whole} {expected}")
                count += 1
            check(reading.wait(PATIENCE) == 0, f"{part} is not readable: {reading.stderr.read()}")
            check(count > 0, f"{part} holds no element")
            check(every.readline(), f"{part} holds all {count} elements, so nothing was cancelled")
        print(f"cancelled after {count} elements")

    def closed(self):
        request_close(self.person.screen.display, self.person.at(MAIN))
        try:
            code = self.person.program.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            raise Deviation("the close box does not end the program") from None
        check(code == 0, f"the program ends with {code}")


def make_long(path, size):
    """Lines and texts by turns, each one different."""
    with open(path, "w", encoding="ascii", newline="\r\n") as file:
        file.write("METAFILE,Q,F,1,0,0\n")
        for i in itertools.count():
            file.write(f"LINE, , , , ,BLACK\nXY,{i}.25,{i % 977}.5\nXY,{i + 1}.75,0.125\nTEXT,'NO {i}',{i}.5,3.25,70,,0,BL,,RED\n")
            if i % 1000 == 0 and file.tell() > size:
                return


def surroundings(home):
    """Those of someone who has never run the program; nothing of the desktop that this runs on reaches it."""
    kept = {name: value for name, value in os.environ.items()
            if not name.startswith(("QT_", "XDG_", "LC_", "DBUS_", "WAYLAND_", "DISPLAY", "XAUTHORITY"))}
    folders = {"HOME": home, "XDG_CONFIG_HOME": home / "config", "XDG_RUNTIME_DIR": home / "runtime", "TMPDIR": home / "tmp"}
    for folder in folders.values():
        folder.mkdir(mode=0o700, exist_ok=True)
    return kept | {name: str(folder) for name, folder in folders.items()} | {"LC_ALL": "C.UTF-8", "TZ": "UTC"}


def end(process):
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(5)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()


def marks():
    return "".join(f"{control}:enabled {{ background-color: {colour}; border: 1px solid #606060; padding: 3px 14px; }}\n"
                   for control, colour in MARKS.items()) + f"""
        #OutFormat {{ combobox-popup: 0; }}
        #OutFormat QAbstractItemView {{ selection-background-color: {MARKS["#OutFormat QAbstractItemView"]}; color: black;
                                        selection-color: black; border: none; padding: 0; }}
        """


def play(options, folder, stack):
    for path in options.examples.iterdir():
        shutil.copy(path, folder)
    formats = json.loads(subprocess.run([options.tesselink, "formats", "--json"], capture_output=True, check=True).stdout)
    (folder / "marks.qss").write_text(marks())
    home = folder / "home"
    environment = surroundings(home)
    screen = Screen(stack, folder, environment)
    environment |= {"DISPLAY": screen.display, "QT_QPA_PLATFORM": "xcb", "QT_ACCESSIBILITY": "0"}
    log = stack.enter_context(open(folder / "window.log", "w+b"))
    program = subprocess.Popen([options.window, "-stylesheet", folder / "marks.qss"], env=environment, cwd=folder, stdout=log,
                               stderr=log)
    stack.callback(end, program)
    person = Person(screen, program, environment, options.pictures)
    work = Work(person, options.tesselink, folder, len(formats["output"]))
    try:
        for step in (work.wells_by_keyboard, work.plat_by_mouse, work.cancelled, work.closed):
            begun = time.monotonic()
            step()
            print(f"{step.__name__}: {time.monotonic() - begun:.1f} s", flush=True)
    except (Deviation, subprocess.TimeoutExpired) as deviation:
        print(f"DEVIATES {step.__name__}: {deviation}")
        print((folder / "window.log").read_text(errors="replace"), end="")
        if options.pictures and screen.server.poll() is None:
            screen.save(options.pictures / "failure.png")
            print(f"see {options.pictures / 'failure.png'}")
        return 1
    return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    here = pathlib.Path(__file__).resolve()
    parser.add_argument("--window", type=pathlib.Path, required=True)
    parser.add_argument("--tesselink", type=pathlib.Path, required=True)
    parser.add_argument("--examples", type=pathlib.Path, default=here.parents[2] / "examples")
    parser.add_argument("--pictures", type=pathlib.Path)
    options = parser.parse_args()
    for program in ("Xvfb", "xdotool"):
        if not shutil.which(program):
            print(f"skipped: {program} is not installed")
            return 77
    for name in ("window", "tesselink", "pictures"):
        path = getattr(options, name)
        setattr(options, name, path and path.resolve())
    if options.pictures:
        options.pictures.mkdir(parents=True, exist_ok=True)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    with tempfile.TemporaryDirectory() as folder, contextlib.ExitStack() as stack:
        return play(options, pathlib.Path(folder), stack)


if __name__ == "__main__":
    sys.exit(main())
