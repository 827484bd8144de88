"""Drawings of every entity that arrives, with each form it may have."""
import math
import random

import ezdxf
from ezdxf.math import OCS, Vec3, closed_uniform_bspline

from outlines import add_outlines

EXTRUSIONS = [(0, 0, 1), (0, 0, -1), (0.3, -0.2, 0.9), (1, 0, 0), (0.01, 0.01, 1), (-0.5, 0.5, -0.7)]


def vertex(dice, size=100):
    return tuple(dice.uniform(-size, size) for _ in range(3))


def add_arcs(space, dice):
    for extrusion in EXTRUSIONS:
        for _ in range(20):
            attributes = {"extrusion": extrusion}
            start = dice.uniform(-400, 400)
            space.add_arc(vertex(dice), dice.uniform(0.01, 500), start, start + dice.uniform(0.5, 359), dxfattribs=attributes)
            space.add_circle(vertex(dice), dice.uniform(0.01, 500), dxfattribs=attributes)


def add_polylines(space, dice):
    for extrusion in EXTRUSIONS:
        for closed in [False, True] * 15:
            points = [(dice.uniform(-50, 50), dice.uniform(-50, 50),
                       dice.choice([0, 1, -1, dice.uniform(-9, 9), dice.uniform(-0.01, 0.01)])) for _ in range(dice.randint(3, 9))]
            height = dice.uniform(-5, 5)
            space.add_lwpolyline(points, "xyb", close=closed, dxfattribs={"extrusion": extrusion, "elevation": height})
            old = space.add_polyline2d(points, "xyb", close=closed, dxfattribs={"extrusion": extrusion, "elevation": (0, 0, height)})
            for v in old.vertices:
                v.dxf.location = v.dxf.location.replace(z=height)


def add_ellipses(space, dice):
    for extrusion in EXTRUSIONS:
        across = OCS(Vec3(extrusion).normalize()).ux
        for ratio in (1, 0.7, 0.2, 0.01, 1e-4):
            for whole in (False, True):
                start = 0 if whole else dice.uniform(0, 6)
                end = math.tau if whole else start + dice.uniform(0.1, 6)
                space.add_ellipse(vertex(dice), across * dice.uniform(0.1, 200), ratio, start, end,
                                  dxfattribs={"extrusion": extrusion})


def add_splines(space, dice):
    for degree in (1, 2, 3, 4, 5, 7):
        for _ in range(12):
            points = [vertex(dice) for _ in range(degree + dice.randint(1, 12))]
            space.add_open_spline(points, degree)
            space.add_rational_spline(points, [dice.uniform(0.3, 3) for _ in points], degree)
            if degree > 1:
                closed = closed_uniform_bspline(points, degree + 1)
                curve = space.add_spline(degree=degree)
                curve.control_points, curve.knots = closed.control_points, closed.knots()
                curve.dxf.flags |= 1
    for count in (3, 4, 9, 30):
        curve = space.add_spline([vertex(dice) for _ in range(count)])
        curve.dxf.start_tangent, curve.dxf.end_tangent = Vec3(vertex(dice)).normalize(), Vec3(vertex(dice)).normalize()


def add_texts(space, dice):
    for extrusion in EXTRUSIONS:
        for halign in range(6):
            for valign in range(4 if halign < 3 else 1):
                space.add_text("a%%d b%%p c %%C", dxfattribs={
                    "extrusion": extrusion, "insert": vertex(dice), "align_point": vertex(dice), "halign": halign,
                    "valign": valign, "height": dice.uniform(1, 9), "rotation": dice.uniform(-180, 180), "layer": "Texts \u00e9"})
        space.add_point(vertex(dice), dxfattribs={"extrusion": extrusion})
        space.add_solid([vertex(dice)] * 2 + [vertex(dice), vertex(dice)], dxfattribs={"extrusion": extrusion})
        space.add_3dface([vertex(dice) for _ in range(4)])


def add_blocks(space, dice):
    """Blocks in blocks: turned, mirrored, unequally scaled, in arrays, tilted, coloured by block and by layer."""
    document = space.doc
    for i, colour in enumerate((1, 5, 30)):
        document.layers.add(f"L{i}", color=colour)
    looks = [{"layer": layer, "color": colour} for layer in ("0", "L1") for colour in (0, 256, 3)]
    inner = document.blocks.new("INNER", base_point=(1, 2, 0.5))
    for look in looks:
        inner.add_line(vertex(dice), vertex(dice), dxfattribs=look)
        inner.add_circle(vertex(dice), 7, dxfattribs=look)
        inner.add_arc(vertex(dice), 5, dice.uniform(0, 360), dice.uniform(0, 360), dxfattribs=look)
        inner.add_point(vertex(dice), dxfattribs=look)
        inner.add_text("inner", dxfattribs={"rotation": 30, "height": 2, **look}).set_pos(vertex(dice)[:2])
        inner.add_polyline3d([vertex(dice) for _ in range(4)], dxfattribs=look)
        inner.add_solid([vertex(dice)[:2] for _ in range(4)], dxfattribs=look)
    for level, name in enumerate(("MIDDLE", "OUTER")):
        block = document.blocks.new(name, base_point=(-3, level, 0))
        for look in looks[:4]:
            place = {"rotation": dice.uniform(0, 360), "xscale": 2, "yscale": -2, "zscale": 2, **look}
            block.add_blockref(("INNER", "MIDDLE")[level], vertex(dice), dxfattribs=place)
        block.add_lwpolyline([(0, 0, 0, 0, 0.5), (9, 0, 0, 0, -1), (9, 9)], close=True)
    for extrusion in EXTRUSIONS:
        for x, y in ((1, 1), (-1, 1), (2, -2)):
            look = {"xscale": x, "yscale": y, "zscale": abs(x), "rotation": dice.uniform(0, 360), "extrusion": extrusion,
                    **looks[dice.randrange(6)], "column_count": 2, "row_count": 3, "column_spacing": 50, "row_spacing": -20}
            space.add_blockref("OUTER", vertex(dice), dxfattribs=look)
    for x, y in ((3, 0.5), (-1, 4)):
        look = {"xscale": x, "yscale": y, "rotation": dice.uniform(0, 360), **looks[dice.randrange(6)]}
        space.add_blockref("INNER", vertex(dice), dxfattribs=look)


def add_hatches(space, dice):
    """Boundaries of every kind of edge, islands within islands, tilted and in a mirrored block."""
    block = space.doc.blocks.new("HATCHES")
    for owner in (space, block):
        for extrusion in EXTRUSIONS:
            for style in (0, 1, 2):
                hatch = owner.add_hatch(color=3, dxfattribs={"hatch_style": style, "extrusion": extrusion, "elevation": (0, 0, 4)})
                for size in (40, 25, 12):
                    hatch.paths.add_polyline_path([(-size, -size, 0.3), (size, -size), (size, size, -0.2), (-size, size)], is_closed=True)
                for x, counter in ((60, True), (160, False)):
                    edges = hatch.paths.add_edge_path()
                    start, end = dice.uniform(0, 90), dice.uniform(100, 300)
                    arc = edges.add_arc((x, 0), 20, start, end, counter)
                    edges.add_line(arc.end_point, arc.start_point)
                    edges = hatch.paths.add_edge_path()
                    ellipse = edges.add_ellipse((x, 70), (30, 10), 0.4, start, end, counter)
                    edges.add_line(ellipse.end_point, ellipse.start_point)
                edges = hatch.paths.add_edge_path()
                points = [(200, 0), (230, 40), (260, -30), (290, 10)]
                edges.add_spline(control_points=points, degree=3, knot_values=[0, 0, 0, 0, 1, 1, 1, 1])
                edges.add_line(points[-1], points[0])
                hatch.paths.add_edge_path().add_arc((200, 200), 15, 0, 360)
    space.add_blockref("HATCHES", (1000, 0), dxfattribs={"xscale": -2, "yscale": 2, "zscale": 2, "rotation": 20})


def generated(folder):
    for maker in (add_arcs, add_polylines, add_ellipses, add_splines, add_texts, add_blocks, add_hatches, add_outlines):
        for release, form in (("R2000", "asc"), ("R2018", "bin"), ("R12", "bin")):
            if release != "R12" or maker is add_arcs:
                document = ezdxf.new(release)
                maker(document.modelspace(), random.Random(7))
                path = folder / f"{maker.__name__}-{release}-{form}.dxf"
                document.saveas(path, fmt=form)
                yield path
