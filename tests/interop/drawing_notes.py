# SPDX-License-Identifier: MIT
"""Comparing what stands beside a drawing's lines: leaders, their texts and blocks, tolerances; and lines that run in parallel."""
import math

import numpy
from ezdxf.math import Matrix44, Vec3, fit_points_to_cad_cv
from ezdxf.render.mleader import RenderEngine
from ezdxf.tools.text import plain_mtext

from drawing_geometry import CHORD_ERROR, TEXT, array, check, closed_chain, extent
from generated_drawings import TOLERANCES


def joined(lines):
    """The chain of segments that follow each other."""
    return array([lines[0].dxf.start] + [line.dxf.end for line in lines])


class NotesReader:
    """Reads such entities; a mixin of a reader of drawings."""

    def parts(self, insert):
        """What the block of an insert draws. ezdxf makes an MLINE anew from its style and misplaces the block of a mirrored
        MULTILEADER; here they are moved as they are."""
        whole = iter([e for e in insert.block() if e.dxftype() in ("MLINE", "MULTILEADER")])
        for part in insert.virtual_entities():
            if part.dxftype() == "MLINE":
                part.vertices = [v.copy() for v in next(whole).vertices]
                for v in part.vertices:
                    v.transform(insert.matrix44())
            elif part.dxftype() == "MULTILEADER":
                part.moved = (next(whole), insert.matrix44())
            yield part

    def spline(self, e, fine):
        size = extent(array(fine.approximate(50)))
        self.chain(e, array(fine.flattening(size * CHORD_ERROR / 10, 16)), closed=False)

    def read_leader(self, e):
        style = e.doc.dimstyles.get(e.dxf.dimstyle)
        for name, value in (("dimtad", 0), ("dimgap", 0.09)):  # what drawings leave out; ezdxf has other values
            if not style.dxf.hasattr(name):
                style.dxf.set(name, value)
        lines = list(e.virtual_entities())
        if e.dxf.path_type == 1:
            self.spline(e, lines[0].construction_tool())
            return
        # The head of the arrow comes behind the line, and so do lines of it.
        points = len(e.vertices) - 1
        while points < len(lines) and lines[points].dxftype() == "LINE" and lines[points].dxf.start == lines[points - 1].dxf.end:
            points += 1
        self.chain(e, joined(lines[:points]), curved=False, closed=False)

    def read_mline(self, e):
        lines = [part for part in e.virtual_entities() if part.dxftype() == "LINE"]
        count = len(e.style.elements)
        segments = len(e.vertices) - (not e.is_closed)
        check(len(lines) == count * segments, "has lines across, which this comparison does not know")
        for number in range(count):
            chain = joined(lines[number::count])
            self.chain(e, closed_chain(chain) if e.is_closed else chain, curved=False, closed=e.is_closed)

    def read_multileader(self, e):
        """The lines, which ezdxf lets begin behind their arrows, then the text or the block."""
        engine = RenderEngine(e, e.doc)
        for leader in e.context.leaders:
            for line in leader.lines if engine.leader_type else ():
                points = engine.leader_vertices(leader, line.vertices, engine.has_dogleg and engine.leader_type == 1)
                if engine.leader_type == 1:
                    self.chain(e, array(points), curved=False, closed=False)
                else:
                    last = points[-1] - leader.last_leader_point if leader.has_horizontal_attachment else points[-1] - points[-2]
                    self.spline(e, fit_points_to_cad_cv(points, tangents=[points[1] - points[0], last]))
        whole, matrix = getattr(e, "moved", (e, Matrix44()))
        engine = RenderEngine(whole, e.doc)
        engine.add_content()
        for part in engine.entities:
            part.dxf.layer, part.dxf.color = e.dxf.layer, e.dxf.color
            if part.dxftype() == "INSERT":
                part.attribs.clear()
            self.entity(part.transform(matrix))

    read_mleader = read_multileader

    def line(self, e, text, place, size):
        """A line of text that stands at a place."""
        element = self.take(TEXT, e.dxf.layer, e)
        off = numpy.abs(element["chain"][0] - array([place])[0]).max()
        check(off <= 1e-6 * max(1, abs(place.x), abs(place.y)), f"{text!r} is {off:.3g} off")
        check(math.isclose(element["TextSize"], size, rel_tol=1e-9), f"{text!r} is {element['TextSize']} high, not {size}")
        check("".join(element["Text"].split()) == "".join(text.split()), f"{element['Text']!r} is not {text!r}")

    def read_tolerance(self, e):
        style = e.doc.dimstyles.get(e.dxf.dimstyle)
        size = style.dxf.dimtxt * style.dxf.dimscale * (abs(self.open[-1].dxf.xscale) if self.open else 1)
        up = Vec3(e.dxf.extrusion).normalize().cross(Vec3(e.dxf.x_axis_vector).normalize())
        for row, text in enumerate(TOLERANCES[e.dxf.content]):
            self.line(e, text, Vec3(e.dxf.insert) - up * (2 * size * row), size)

    def read_attdef(self, e):
        if not self.open:
            e.dxf.text = e.dxf.tag
            self.read_text(e)

    def read_columns(self, e):
        """Lines go on in the next column where it says so, or where the next line would end below its column."""
        columns, size, texts = e.columns, e.dxf.char_height, e.text.split("\\N")
        apart = size * 5 / 3 * e.dxf.line_spacing_factor
        open_end = columns.column_type.name == "DYNAMIC" and columns.auto_height
        heights = columns.heights if columns.column_type.name == "DYNAMIC" and not open_end else [columns.defined_height]
        places, column = [], 0
        for text in texts:
            row = 0
            for line in plain_mtext(text, split=True):
                height = heights[min(column, len(heights) - 1)]
                if height > 0 and row * apart + size > height * (1 + 1e-9) and row and (open_end or column + 1 < columns.count):
                    column, row = column + 1, 0
                places.append((column, row, line))
                row += 1
            column += 1
        along = Vec3(e.dxf.text_direction).normalize() if e.dxf.hasattr("text_direction") else Vec3.from_deg_angle(e.dxf.rotation)
        up = Vec3(e.dxf.extrusion).normalize().cross(along)
        across, down = (e.dxf.attachment_point - 1) % 3, (e.dxf.attachment_point - 1) // 3
        step = columns.width + columns.gutter_width
        depth = max(heights) - size if max(heights) > 0 else max(row for _, row, _ in places) * apart
        first = Vec3(e.dxf.insert) + up * (depth * down / 2) - along * (across * (columns.count - 1) * step / 2)
        for column, row, line in places:
            if line.strip():
                self.line(e, line, first + along * (column * step) - up * (row * apart), size)
