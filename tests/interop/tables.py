#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Attribute tables as other programs of their time wrote them (dBase III, Clipper, FoxPro, Visual FoxPro; memos, nulls, binary types),
listed in the standard dialect: every value must be what python3-dbf finds.

    tables.py --tesselink build/release/tesselink

Exit codes: 0 agrees, 1 deviates, 77 the other reader is not there.
"""
import argparse
import csv
import datetime
import io
import random
import subprocess
import sys
import tempfile

try:
    import dbf
except ImportError as error:
    print(f"skipped: {error}")
    sys.exit(77)

COMMON = ["C(20)", "N(10,3)", "D", "L", "M"]
KINDS = {"db3": COMMON + ["N(8,0)", "F(12,5)"], "clp": COMMON, "fp": COMMON, "vfp": COMMON + ["I", "B", "Y", "T"]}
TABLES = 32


def value(dice, kind):
    if dice.random() < 0.15 and kind not in "IBY":
        return None
    day = datetime.datetime(dice.randint(1900, 2100), dice.randint(1, 12), dice.randint(1, 28), dice.randint(0, 23), dice.randint(0, 59))
    return {
        "C(20)": lambda: "".join(dice.choice("abc XYZ äöß") for _ in range(dice.randint(0, 20))),
        "N(10,3)": lambda: round(dice.uniform(-9999, 9999), 3), "N(8,0)": lambda: dice.randint(-999999, 999999),
        "F(12,5)": lambda: round(dice.uniform(-99999, 99999), 5), "D": day.date, "L": lambda: dice.random() < .5,
        "M": lambda: "\n".join(f"Zeile {i} ü" for i in range(dice.randint(0, 200))), "I": lambda: dice.randint(-2**31, 2**31 - 1),
        "B": lambda: dice.uniform(-1e6, 1e6), "Y": lambda: dbf.Decimal(dice.randint(-10**9, 10**9)) / 10000, "T": lambda: day}[kind]()


def agrees(kind, got, wanted):
    if wanted is None or (kind in "DT" and not wanted):
        return got in ("", "?")
    if kind in ("C(20)", "M"):
        return got.replace("\r\n", "\n").rstrip() == str(wanted).replace("\r\n", "\n").rstrip()
    if kind == "D":
        return got == wanted.strftime("%Y%m%d")
    if kind == "T":
        return got == wanted.strftime("%Y-%m-%dT%H:%M:%S")
    if kind == "L":
        return got in ("TtYy" if wanted else "FfNn") and got != ""
    try:
        return abs(float(got) - float(wanted)) <= 1e-9 * max(1, abs(float(wanted)))
    except ValueError:
        return False


def compare(program, folder, number, dice):
    kind = list(KINDS)[number % len(KINDS)]
    types = [dice.choice(KINDS[kind]) for _ in range(dice.randint(3, 7))] + ["M"]
    path = f"{folder}/t{number}.dbf"
    with dbf.Table(path, "; ".join(f"f{i} {t}" for i, t in enumerate(types)), dbf_type=kind, codepage="cp1252") as table:
        for _ in range(dice.randint(1, 30)):
            table.append(tuple(value(dice, t) for t in types))
    with dbf.Table(path) as table:
        wanted = [[row[i] for i in range(len(types))] for row in table]
    listed = subprocess.run([program, "table", "--dialect", "standard", path], capture_output=True, check=True)
    got = list(csv.reader(io.StringIO(listed.stdout.decode(), newline="")))[1:]
    bad = [f"{kind}: {len(got)} rows instead of {len(wanted)}"] if len(got) != len(wanted) else []
    for g, w in zip(got, wanted):
        bad += [f"{kind} {t}: {a[:60]!r} instead of {str(b)[:60]!r}" for t, a, b in zip(types, g, w) if not agrees(t, a, b)]
    return len(got), bad + listed.stderr.decode().splitlines()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--tesselink", required=True)
    parser.add_argument("--data")
    program = parser.parse_args().tesselink
    dice = random.Random(7)
    rows, bad = 0, []
    with tempfile.TemporaryDirectory() as folder:
        for number in range(TABLES):
            count, wrong = compare(program, folder, number, dice)
            rows += count
            bad += wrong
    print("\n".join(bad[:40]))
    print(f"{TABLES} tables, {rows} rows, {len(bad)} deviations")
    return 1 if bad else 0


sys.exit(main())
