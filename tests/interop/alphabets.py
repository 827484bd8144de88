#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Texts and layers of many alphabets, in drawings and tables of every encoding that holds them, converted to every format in the
standard dialect: what programs read there must be the same letters, and what the output cannot hold must be told.

    alphabets.py --tesselink build/release/tesselink

Exit codes: 0 agrees, 1 deviates, 77 a program that reads is not there.
"""
import argparse
import pathlib
import re
import sys
import tempfile

try:
    import ezdxf
    import shapefile
    import matrix_rules as rules
    from matrix_readers import Deviation, by_ezdxf, by_tesselink, check, ogr, tesselink
except ImportError as error:
    print(f"skipped: {error}")
    sys.exit(77)

# The second byte of some letters of two is a backslash or a brace.
ALPHABETS = {
    "English": ("cp1252", "Lot 12", "Well {A} 50%"), "Latin": ("cp1252", "Straße", "Über © Café €"),
    "Polish": ("cp1250", "Łąka", "Żółć gęś"), "Czech": ("cp1250", "Řeka", "příliš žluťoučký"),
    "Russian": ("cp1251", "Скважина", "Куст № 5"), "Greek": ("cp1253", "Όριο", "Φρεάτιο"),
    "Turkish": ("cp1254", "Kuyu ığş", "İçme"), "Hebrew": ("cp1255", "גבול", "באר 3"), "Arabic": ("cp1256", "بئر", "حدود 7"),
    "Baltic": ("cp1257", "Šulinys", "ūdens ģ"), "Vietnamese": ("cp1258", "Đương", "Giếng nước"),
    "Thai": ("cp874", "บ่อ", "ขอบเขต"), "Japanese": ("cp932", "表層", "ソ予ボЪ"), "Chinese": ("cp936", "边界", "井号乗俓"),
    "Taiwanese": ("cp950", "邊界", "許功蓋"), "Korean": ("cp949", "경계", "우물 뷁"), "Hindi": (None, "सीमा", "कुआँ"),
    "Russian and Greek": ("cp932", "Ж Ω", "скв Ф"), "emoji": (None, "Well 😀", "a 😀 b")}
CODES = re.compile(r"(?:\\U\+([0-9A-F]{4}))+")


def drawings(folder, page, layer, text):
    """Path, options, and the page that the input is known to be in."""
    releases = [("R2007", None), ("R2018", None)]
    if page and encodable(page, layer + text):
        releases += [(release, page) for release in ("R12", "R2000", "R2004")]
    for release, codec in releases:
        document = ezdxf.new(release)
        document.encoding = {None: "utf-8", "cp936": "gbk"}.get(codec, codec)
        document.modelspace().add_text(text.replace("%%", "%%%%%%"), dxfattribs={"layer": layer, "insert": (1, 2), "height": 2})
        path = folder / f"from-{release}.dxf"
        document.saveas(path)
        yield path, [], codec


def tables(folder, page, layer, text):
    kinds = [("utf-8", "UTF-8", None), ("utf-8", "1252", "UTF-8"), ("utf-8", None, "UTF-8")]
    if page and encodable(page, layer + text):
        kinds += [(page, page.replace("cp", ""), None), (page, "1251" if page != "cp1251" else "1253", page[2:]), (page, None, page[2:])]
    for number, (codec, named, chosen) in enumerate(kinds):
        path = folder / f"from-table-{number}.shp"
        with shapefile.Writer(str(path), shapeType=shapefile.POINT, encoding=codec) as writer:
            writer.field("LAYER", "C", 60)
            writer.field("LABEL", "C", 60)
            writer.point(1, 2)
            writer.record(layer, text)
        if named:
            path.with_suffix(".cpg").write_text(named)
        options = ["--layer-field", "LAYER", "--text-field", "LABEL", *(["--encoding", chosen] if chosen else [])]
        yield path, options, codec if codec != "utf-8" else None


def encodable(page, text):
    return all(c.isascii() or rules.is_in(page, c) for c in text)


def letters(text):
    """With the letters that codes stand for."""
    def of(found):
        return bytes.fromhex("".join(re.findall(r"[0-9A-F]{4}", found[0]))).decode("utf-16-be")
    return CODES.sub(of, text)


# ---- outputs: what was found of layer and text, each None where the format has none


def in_drawing(path, layer, text, page, said):
    """Strictly read; codes stand in texts and attributes alone, and only for letters that the page lacks."""
    source, document = ogr.Open(str(path)), ezdxf.readfile(path)
    fitting = rules.page_of([layer], [text])
    wanted = "".join(c if encodable(fitting, c) else "_" for c in layer)
    check(wanted == layer or "has another name" in said, "a name that changed is not told")
    check(document.encoding.replace("gbk", "cp936") == fitting, f"is in {document.encoding}, not in {fitting}")
    find("ezdxf", ((e.layer, letters(e.text or "")) for e in by_ezdxf(path)), wanted, text)
    by_gdal = [(f.GetField("Layer"), letters(f.GetField("Text") or "")) for f in source.GetLayer(0)]
    find("GDAL", by_gdal, *(shown_by_gdal(name, fitting) for name in (wanted, text)))
    find("Tesselink", ((e.layer, e.text) for e in by_tesselink(PROGRAM, path)), wanted, text)
    without_data = re.sub(rb"(?m)^1000\r\n.*\r\n", b"", path.read_bytes())
    codes = re.findall(rb"\\U\+....", without_data)
    lacking = "".join(c for c in text if not encodable(fitting, c))
    check(len(codes) == len(lacking.encode("utf-16-be")) // 2, f"codes are {codes}")


def shown_by_gdal(text, page):
    """It takes ANSI_1252 for ISO-8859-1, and loses the last letter in pages of letters that combine."""
    if page == "cp1252":
        return "".join(c.encode("cp1252").decode("latin-1") if encodable(page, c) else c for c in text)
    return text[:-1] if page in ("cp1255", "cp1258") and combines(text[-1], page) else text


def combines(c, page):
    return "\u05d0" <= c <= "\u05ea" if page == "cp1255" else c.isalpha()


def find(program, found, *wanted):
    found = {pair for pair in found if pair[1]}
    check(found == {wanted}, f"{program} finds {found}")


def in_2007(path, layer, text, page, said):
    for program, elements in (("ezdxf", by_ezdxf(path)), ("Tesselink", by_tesselink(PROGRAM, path))):
        find(program, ((e.layer, e.text) for e in elements), layer, text)


def in_table(path, layer, text, page, said):
    with shapefile.Reader(str(path), encoding="utf-8") as reader:
        check(path.with_suffix(".cpg").read_text() == "UTF-8", "the .cpg file does not say UTF-8")
        values = list(reader.record(0))
    check(layer in values and text in values, f"pyshp finds {values}")


def in_lines(path, layer, text, page, said):
    """Of one byte a letter, in the page of the input or Windows-1252."""
    page = page if page and int(page[2:]) not in (932, 936, 949, 950) else "cp1252"
    wanted = "".join(c if encodable(page, c) else "?" for c in text)
    check(wanted.encode(page) in path.read_bytes(), f"holds no {wanted!r}")
    check(wanted == text or "letters" in said, "letters that are lost are not told")


OUTPUTS = {"r12.dxf": ([], in_drawing), "2007.dxf": (["--release", "2007"], in_2007), "out.shp": ([], in_table), "out.asc": ([], in_lines),
           "out.cdf": (["--points", "ignore"], in_lines)}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--tesselink", required=True)
    parser.add_argument("--data", help="is not needed")
    global PROGRAM
    PROGRAM = parser.parse_args().tesselink
    done = deviations = 0
    with tempfile.TemporaryDirectory() as name:
        for alphabet, given in ALPHABETS.items():
            folder = pathlib.Path(name) / alphabet
            folder.mkdir()
            for path, options, page in [*drawings(folder, *given), *tables(folder, *given)]:
                for output, (more, compare) in OUTPUTS.items():
                    target = folder / f"{path.stem}-{output}"
                    kept = options[4:] if output == "out.shp" else options  # whose attributes go along
                    try:
                        code, _, said = tesselink(PROGRAM, "convert", "--dialect", "standard", *kept, *more, path, target)
                        check(code == 0, f"exit code {code}: {said[:200]}")
                        compare(target, *given[1:], page, said)
                        done += 1
                    except (Deviation, UnicodeError, ezdxf.DXFError, OSError) as deviation:
                        deviations += 1
                        print(f"DEVIATES: {alphabet}, {path.name} to {output}: {deviation}")
    print(f"{done} conversions agree, {deviations} deviate")
    sys.exit(1 if deviations or not done else 0)


if __name__ == "__main__":
    main()
