#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes all-entities.dxf: a small drawing with every kind of entity that is read, and one that is not.

    /usr/bin/python3 make-drawing.py      (in this folder; needs ezdxf)

The same bytes every time: handles are counted, and dates and identifiers are fixed.
"""

import io
import os
import sys

import ezdxf


def layers(drawing):
    drawing.layers.add("Wells", color=1)
    drawing.layers.add("Survey", color=3)
    drawing.layers.add("Roads", true_color=0xFF8000)
    drawing.layers.add("Texts", color=5).off()



def points_and_lines(space):
    space.add_point((10, 10, 350), dxfattribs={"layer": "Wells"})
    space.add_line((0, 0), (100, 0), dxfattribs={"layer": "Survey", "linetype": "DASHED"})
    space.add_circle((20, 20), 4, dxfattribs={"layer": "Wells"})
    space.add_arc((60, 40), 15, 300, 80, dxfattribs={"layer": "Survey"})
    space.add_arc((-40, 60), 8, 0, 90, dxfattribs={"layer": "Survey", "extrusion": (0, 0, -1)})



def polylines(space):
    section = [(0, 0), (80, 0), (80, 80), (0, 80)]
    space.add_lwpolyline(section, close=True, dxfattribs={"layer": "Survey"})
    space.add_lwpolyline([(0, 90, 0), (40, 90, 0.5), (60, 110, -0.5), (80, 90, 0)], format="xyb",
                         dxfattribs={"layer": "Roads", "color": 30})
    space.add_polyline2d([(5, 5), (30, 5), (30, 25)], dxfattribs={"layer": "Survey", "elevation": (0, 0, 12)})
    space.add_polyline3d([(5, 60, 1), (15, 65, 2), (25, 60, 3)], dxfattribs={"layer": "Roads"})



def curves(space):
    space.add_ellipse((60, 20), (12, 4), 0.4, dxfattribs={"layer": "Survey"})
    space.add_ellipse((60, 20), (16, 0), 0.5, 0.5, 4, dxfattribs={"layer": "Survey", "true_color": 0x336699})
    space.add_open_spline([(0, 120), (20, 140), (40, 100), (60, 130), (80, 120)], dxfattribs={"layer": "Roads"})
    space.add_spline([(0, 150), (30, 170), (60, 145), (80, 160)], dxfattribs={"layer": "Roads"})



def texts(space):
    layer = {"layer": "Texts"}
    space.add_text("Bearing N 45%%d E", dxfattribs={"insert": (5, 50), "height": 3, "rotation": 45, **layer})
    space.add_text("CENTRE", dxfattribs={"insert": (0, 0), "align_point": (40, 40), "halign": 1, "valign": 2,
                                         "height": 4, **layer})
    space.add_mtext("{\\fArial|b1;Section 12}\\PTownship 7 \\S1/2;", dxfattribs={
        "insert": (70, 75), "char_height": 2.5, "attachment_point": 3, **layer})



def blocks(drawing, space):
    block = drawing.blocks.new("GAS_WELL")
    block.add_circle((0, 0), 1)
    block.add_attdef("NAME", (2, 0), dxfattribs={"height": 2})
    well = space.add_blockref("GAS_WELL", (30, 50), dxfattribs={"layer": "Wells", "rotation": 30})
    well.add_attrib("NAME", "Smith 1", (32, 50), dxfattribs={"layer": "Texts", "height": 2})
    space.add_blockref("GAS_WELL", (10, 30), dxfattribs={
        "layer": "Wells", "column_count": 3, "row_count": 2, "column_spacing": 5, "row_spacing": 4})



def surfaces(space):
    space.add_3dface([(90, 0, 0), (100, 0, 1), (100, 10, 2), (90, 10, 1)], dxfattribs={"layer": "Survey"})
    space.add_solid([(90, 20), (100, 20), (90, 30), (100, 30)], dxfattribs={"layer": "Survey"})
    mesh = space.add_polymesh((3, 3), dxfattribs={"layer": "Survey"})
    for m in range(3):
        for n in range(3):
            mesh.set_mesh_vertex((m, n), (90 + 5 * m, 40 + 5 * n, m * n))
    faces = space.add_polyface(dxfattribs={"layer": "Survey"})
    faces.append_faces([[(90, 60, 0), (100, 60, 0), (95, 70, 0)], [(90, 60, 0), (95, 70, 0), (95, 65, 8)]])
    hatch = space.add_hatch(color=2)
    hatch.paths.add_polyline_path([(20, 60), (30, 60), (30, 70)])



def main():
    ezdxf.options.write_fixed_meta_data_for_testing = True
    drawing = ezdxf.new("R2010", setup=["linetypes"])
    layers(drawing)
    space = drawing.modelspace()
    points_and_lines(space)
    polylines(space)
    curves(space)
    texts(space)
    blocks(drawing, space)
    surfaces(space)
    drawing.layout("Layout1").add_text("Sheet 1", dxfattribs={"insert": (10, 10), "height": 5})
    text = io.StringIO()
    drawing.write(text)
    with open("all-entities.dxf", "w", encoding="utf-8", newline="\r\n") as out:
        out.write(text.getvalue())


if __name__ == "__main__":
    if os.environ.get("PYTHONHASHSEED") != "0":  # some of ezdxf's order is that of a set
        os.execve(sys.executable, [sys.executable, *sys.argv], {**os.environ, "PYTHONHASHSEED": "0"})
    main()
