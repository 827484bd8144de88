# SPDX-License-Identifier: MIT
"""Compares manual pages and completions with what the program says of itself, and has the shells complete.

    check_manual.py PROGRAM SHARE EXAMPLES
"""
import os
import pathlib
import re
import subprocess
import sys

BASH = """source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _tesselink; printf '%s\\n' "${COMPREPLY[@]}" """


def run(*command, **options):
    return subprocess.run(list(map(str, command)), capture_output=True, text=True, **options)


class Manual:
    def __init__(self, program, share, examples):
        self.program, self.share, self.examples = program, share, examples
        self.bash = share / "bash-completion/completions/tesselink"
        self.fish = share / "fish/vendor_completions.d/tesselink.fish"
        self.zsh = share / "zsh/vendor-completions/_tesselink"
        self.commands = re.findall(r"^  (\w+)", self.help().partition("Subcommands:\n")[2].partition("\n\n")[0], re.M)

    def help(self, *command):
        return run(self.program, *command, "--help").stdout

    def options(self, *command):
        return {name for line in re.findall(r"^  (-\S+)", self.help(*command), re.M) for name in line.split(",")}

    def in_bash(self, *words):
        return set(run("bash", "--norc", "-c", BASH, "bash", self.bash, *words, cwd=self.examples).stdout.split())

    def in_fish(self, line):
        said = run("fish", "--no-config", "-c", f"source {self.fish}; complete -C '{line}'", cwd=self.examples).stdout
        return {one.split("\t")[0] for one in said.splitlines()}


def form_complaints(manual):
    """What each language has to say of a file of its own."""
    pages = sorted(manual.share.glob("man/man?/*"), key=lambda page: page.name)
    if [page.name for page in pages] != sorted(["tesselink.1", "tesselink-formats.5", *(f"tesselink-{c}.1" for c in manual.commands)]):
        yield f"the pages are {[page.name for page in pages]}"
    environment = {**os.environ, "LC_ALL": "C.UTF-8", "MANROFFSEQ": "", "MANWIDTH": "80"}
    checks = [["bash", "-n", manual.bash], ["zsh", "-n", manual.zsh], ["fish", "-n", manual.fish]]
    for page in pages:
        checks += [["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page], ["mandoc", "-T", "lint", page]]
    for check in checks:
        ended = run(*check, env=environment)
        said = ended.stderr + (ended.stdout if check[0] != "man" else "")
        # It looks for other pages where those of the system are.
        said = "\n".join(line for line in said.splitlines() if "referenced manual not found" not in line)
        if ended.returncode != 0 and check[0] != "mandoc" or said:
            yield f"{' '.join(map(str, check))}: {said}"


def option_complaints(manual):
    """Every option that --help lists, and no other, in each page and completion."""
    zsh, fish = manual.zsh.read_text(), manual.fish.read_text()
    for command in manual.commands:
        options = manual.options(command)
        page = (manual.share / f"man/man1/tesselink-{command}.1").read_text()
        tagged = re.findall(r"^\.TP\n(\\fB\\-.*)", page, re.M)
        own = re.search(rf"^        \({command}\)\n(.*?);;", zsh, re.M | re.S)[1]
        lines = [line for line in fish.splitlines() if f"__tesselink_command_is {command}'" in line]
        for place, found in (
                ("the page", {name.replace("\\-", "-") for line in tagged for name in re.findall(r"\\fB(\\-.*?)\\fR", line)}),
                ("bash", manual.in_bash("tesselink", command, "-")),
                ("zsh", set(re.findall(r"[){,*](--?[\w-]+)", own))),
                ("fish", {"-" * (1 + (kind == "l")) + name for line in lines for kind, name in re.findall(r" -([ls]) (\S+)", line)}),
                ("fish itself", {name.split("=")[0] for start in ("-", "--") for name in manual.in_fish(f"tesselink {command} {start}")
                                 if name.startswith("--") or len(name) == 2})):
            if found != options:
                yield f"{command}: {place} has {sorted(found - options)} more and {sorted(options - found)} less than --help"


def value_complaints(manual):
    """What is offered for values and operands, by the two shells that can be asked."""
    choices = dict(re.findall(r"^  (--[\w-]+) \w+:\{(.*?)\}", manual.help("convert"), re.M))
    expected = {option: {re.sub("=.*", "=", word) for word in words.split(",")} for option, words in choices.items()}
    expected["--from"] = set(re.search(r"extension: (.*)", manual.help("convert"))[1].split(", "))
    if len(expected) < 5:
        yield f"--help tells choices of {sorted(expected)} alone"
    cases = [(("convert", option, ""), words) for option, words in expected.items()]
    cases += [((""), {*manual.commands, *manual.options()}), (("help", ""), set(manual.commands)), (("conv",), {"convert"}),
              (("convert", "--shape-type", "poly"), {"polylines", "polygons"}), (("convert", "--layer-field", ""), set()),
              (("table", "w"), {"wells.dbf"}), (("info", "quarter-section.s"), {"quarter-section.shp"}),
              (("cat", "--lngsl", "READ"), {"README.md"})]
    for words, wanted in [(words if isinstance(words, tuple) else (words,), wanted) for words, wanted in cases]:
        line = " ".join(("tesselink", *words))
        if (found := manual.in_bash("tesselink", *words)) != wanted:
            yield f"bash: {line!r} offers {sorted(found)} instead of {sorted(wanted)}"
        commands = {word for word in wanted if not word.startswith("-")}
        if (found := manual.in_fish(line)) != commands:
            yield f"fish: {line!r} offers {sorted(found)} instead of {sorted(commands)}"
    glob = re.search(r'_files -g "(.*?)"', manual.zsh.read_text().partition("(table)")[2])[1]
    listed = run("zsh", "-f", "-c", "setopt extendedglob; print -l ${~1}", "zsh", glob, cwd=manual.examples).stdout.split()
    if set(listed) != {path.name for path in manual.examples.glob("*.dbf")}:
        yield f"zsh: {glob} stands for {listed}"
    for words in (("--dialect", "=", "st"), ("--dialect", "=")):
        wanted = {"standard"} if len(words) == 3 else {"classic", "standard"}
        if (found := manual.in_bash("tesselink", "cat", *words)) != wanted:
            yield f"bash: {''.join(words)} offers {sorted(found)}"


def main():
    manual = Manual(*(pathlib.Path(argument).resolve() for argument in sys.argv[1:4]))
    found = [*form_complaints(manual), *option_complaints(manual), *value_complaints(manual)]
    print("\n".join(found) if found else "pages and completions say what the program does")
    return 1 if found else 0


sys.exit(main())
