# SPDX-License-Identifier: MIT
"""Drawings of every entity that arrives, with each form it may have."""
import math
import random

import ezdxf
from ezdxf.math import OCS, UCS, Vec2, Vec3, closed_uniform_bspline
from ezdxf.render import mleader

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
        for look in (looks[:4], looks[:4:3])[level]:
            place = {"rotation": dice.uniform(0, 360), "xscale": 2, "yscale": -2, "zscale": 2, **look}
            block.add_blockref(("INNER", "MIDDLE")[level], vertex(dice), dxfattribs=place)
        block.add_lwpolyline([(0, 0, 0, 0, 0.5), (9, 0, 0, 0, -1), (9, 9)], close=True)
    for number, extrusion in enumerate(EXTRUSIONS):
        for case, (x, y) in enumerate(((1, 1), (-1, 1), (2, -2))):
            array = {"column_count": 2, "row_count": 3, "column_spacing": 50, "row_spacing": -20} if number % 3 == case else {}
            look = {"xscale": x, "yscale": y, "zscale": abs(x), "rotation": dice.uniform(0, 360), "extrusion": extrusion,
                    **looks[dice.randrange(6)], **array}
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


TOLERANCES = {
    r"{\Fgdt;j}%%v{\Fgdt;n}0.10{\Fgdt;m}%%vA%%vB%%v": ["\u2316 | \u00d80.10\u24c2 | A | B"],
    r"{\Fgdt;b}%%v%%v0.5 %%p1^J{\fgdt;t}%%vend %%v%%v^J^J%%vC": ["\u27c2 | 0.5 \u00b11", "\u2330 | end", "C"],
    "%%v%%v": [],
}


def in_each_place(space, name, add):
    """What `add` puts into an owner, in model space and in blocks that are turned, mirrored, tilted and in a block in turn."""
    block = space.doc.blocks.new(name)
    nest = space.doc.blocks.new(name + "-NEST")
    for owner in (space, block):
        add(owner)
    places = [{"rotation": 30}, {"xscale": -2, "yscale": 2, "zscale": 2}, {"extrusion": (0.3, -0.2, 0.9)}, {"extrusion": (0, 0, -1)}]
    for number, place in enumerate(places):
        space.add_blockref(name, (1000 * number, 500, 3), dxfattribs=place)
    nest.add_blockref(name, (5, 6, 7), dxfattribs=places[1])
    space.add_blockref(name + "-NEST", (0, 900), dxfattribs={"rotation": 200})


def add_leaders(space, dice):
    """Leaders with and without a hook below their text, straight and as splines, with what they say otherwise of their style."""
    def add(owner):
        for spline in (0, 1):
            for override in ({}, {"dimtad": 0}, {"dimscale": 3, "dimgap": 2}):
                for more in ({"annotation_type": 0, "text_width": 12}, {"hookline_direction": 0, "annotation_type": 0, "text_width": 7},
                             {"annotation_type": 0, "horizontal_direction": (0.6, 0.8, 0), "text_width": 4}, {"has_hookline": 0}, {}):
                    points = [vertex(dice) for _ in range(dice.randint(2, 5))]
                    owner.add_leader(points, override=override, dxfattribs={"path_type": spline, "has_arrowhead": 0, **more})
    in_each_place(space, "LEADERS", add)


def add_multilines(space, dice):
    style = space.doc.mline_styles.new("THREE")
    for offset in (1.5, 0.25, -2):
        style.elements.append(offset, color=256)

    def add(owner):
        for name in ("Standard", "THREE"):
            for justification in (0, 1, 2):
                for closed in (False, True):
                    points = [(dice.uniform(-50, 50), dice.uniform(-50, 50)) for _ in range(dice.randint(3, 6))]
                    owner.add_mline(points, close=closed, dxfattribs={
                        "style_name": name, "justification": justification, "scale_factor": dice.uniform(0.5, 3)})
    in_each_place(space, "MLINES", add)


def add_notes(space, dice):
    """Tolerances, tags, and columns of text as the newest release has them."""
    space.doc.dimstyles.new("LARGE", dxfattribs={"dimtxt": 3, "dimscale": 2})

    def add(owner):
        for content in TOLERANCES:
            for extrusion in ((0, 0, 1), (0, 0, -1)):
                for style in ("Standard", "LARGE"):
                    along = Vec3.from_deg_angle(dice.uniform(0, 360))
                    owner.new_entity("TOLERANCE", {"insert": vertex(dice), "x_axis_vector": along, "content": content, "dimstyle": style,
                                                   "extrusion": extrusion})
        for height in (1, 3):
            for attachment in range(1, 10):
                place = {"insert": vertex(dice), "attachment_point": attachment, "char_height": height,
                         "text_direction": Vec3.from_deg_angle(dice.uniform(0, 360))}
                owner.add_mtext_static_columns(["one\\Ptwo\\P", "three", "four"], width=20, gutter_width=3, height=10, dxfattribs=place)
                owner.add_mtext_dynamic_manual_height_columns("\\P".join("abcdefghijk"), 9, 1, [4 * height, 0, 9], dxfattribs=place)
            owner.add_mtext_dynamic_auto_height_columns("\\P".join("abcdefghijk"), 9, 1, 5 * height, 3, dxfattribs={"char_height": height})

    if space.doc.dxfversion >= "AC1032":
        in_each_place(space, "NOTES", add)
        for extrusion in EXTRUSIONS:
            space.add_attdef("TAG", vertex(dice), "value", dxfattribs={
                "rotation": dice.uniform(0, 360), "height": 3, "prompt": "Which?", "extrusion": extrusion, "halign": 1, "align_point": vertex(dice)})


def add_multileaders(space, dice):
    """Notes of a text and of a block, with several lines on each side, straight, as splines and hidden, in planes of their own."""
    bubble = space.doc.blocks.new("BUBBLE", base_point=(1, 0))
    bubble.add_circle((1, 1), 3)
    bubble.add_attdef("NUMBER", (0, 0), "7")

    def add(owner):
        for number, extrusion in enumerate(EXTRUSIONS[:4] * 3):
            plane = OCS(Vec3(extrusion).normalize())
            ucs = UCS(Vec3(vertex(dice)), ux=plane.ux, uz=plane.uz).rotate_local_z(dice.uniform(0, 6))
            text, block = owner.add_multileader_mtext("Standard"), owner.add_multileader_block("Standard")
            text.set_content("one\\Ptwo", char_height=dice.uniform(1, 3), alignment=mleader.TextAlignment(number % 3 + 1))
            block.set_content("BUBBLE", scale=2)
            for builder in (text, block):
                builder.set_leader_properties(leader_type=mleader.LeaderType((1, 2, 0)[number // 4]))
                builder.set_connection_properties(landing_gap=1, dogleg_length=5)
                for side in (mleader.ConnectionSide.left, mleader.ConnectionSide.right):
                    for _ in range(2):
                        builder.add_leader_line(side, [Vec2(dice.uniform(-60, 60), dice.uniform(-60, 60)) for _ in range(dice.randint(1, 3))])
                builder.build(insert=Vec2(dice.uniform(-9, 9), 0), rotation=dice.uniform(0, 360), ucs=ucs)

    add(space)
    block = space.doc.blocks.new("NOTES-IN-BLOCK")
    add(block)
    for number, place in enumerate(({"rotation": 30}, {"xscale": -2, "yscale": 2, "zscale": 2}, {"extrusion": (0, 0, -1)})):
        space.add_blockref("NOTES-IN-BLOCK", (1000 * number, 500, 3), dxfattribs=place)


def generated(folder):
    for maker in (add_arcs, add_polylines, add_ellipses, add_splines, add_texts, add_blocks, add_hatches, add_outlines, add_leaders, add_multilines, add_notes,
                  add_multileaders):
        for release, form in (("R2000", "asc"), ("R2018", "bin"), ("R12", "bin")):
            if release != "R12" or maker is add_arcs:
                document = ezdxf.new(release)
                maker(document.modelspace(), random.Random(7))
                path = folder / f"{maker.__name__}-{release}-{form}.dxf"
                document.saveas(path, fmt=form)
                yield path
