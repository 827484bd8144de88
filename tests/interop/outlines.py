# SPDX-License-Identifier: MIT
"""Entities that are bounded or marked rather than drawn: SOLID, TRACE, SHAPE, IMAGE and WIPEOUT. Drawings of them, lying, turned,
mirrored, tilted and in blocks, and how they are to be found."""
import random

import numpy
from ezdxf.math import OCS, Vec3

TILTS = [(0, 0, 1), (0, 0, -1), (0.3, -0.2, 0.9), (-0.5, 0.5, -0.7)]


def vertex(dice):
    return Vec3(*(dice.uniform(-100, 100) for _ in range(3)))


def add_outlines(space, dice: random.Random):
    document = space.doc
    picture = document.add_image_def("picture.png", (640, 480))
    block = document.blocks.new("OUTLINES", base_point=(5, -3, 1))
    for owner in (space, block):
        for tilt in TILTS:
            look = {"extrusion": tilt}
            for count in (3, 4, 4, 4):
                owner.add_solid([vertex(dice).vec2 for _ in range(count)], dxfattribs=look)
            owner.add_trace([vertex(dice).vec2 for _ in range(4)], dxfattribs=look)
            owner.add_solid([(0, 0), (4, 4), (0, 4), (4, 0)], dxfattribs=look)  # crosses itself
            for rotation in (0, 33, 215) if owner is space else ():  # ezdxf cannot place those of blocks
                owner.add_shape("TRACK", vertex(dice), dice.uniform(1, 9), dxfattribs={"rotation": rotation, **look})
            plane = OCS(Vec3(tilt).normalize())
            for clip in ([], [(10, 20), (300, 200)], [(0, 0), (600, 10), (400, 450), (80, 300)]):
                image = owner.add_image(picture, vertex(dice), (6, 4), rotation=dice.uniform(0, 360))
                image.dxf.u_pixel, image.dxf.v_pixel = plane.to_wcs(image.dxf.u_pixel), plane.to_wcs(image.dxf.v_pixel)
                if clip:
                    image.boundary_path = clip
            owner.add_wipeout([vertex(dice).vec2 for _ in range(2)])
            owner.add_wipeout([vertex(dice).vec2 for _ in range(5)])
    for tilt in TILTS:
        for x, y in ((1, 1), (-2, 2), (-1, -1)):
            space.add_blockref("OUTLINES", vertex(dice), dxfattribs={
                "xscale": x, "yscale": y, "zscale": abs(x), "rotation": dice.uniform(0, 360), "extrusion": tilt})


class Outlines:
    """How they arrive in the standard dialect; beside the readings of `drawings.py`, whose checks it uses."""

    def is_area(self, element, what):
        if not element.get("IsArea"):
            raise self.deviation(f"{what} is no area")
        x, y = element["chain"][:, 0], element["chain"][:, 1]
        if numpy.sum((x[:-1] - x[0]) * (y[1:] - y[0]) - (x[1:] - x[0]) * (y[:-1] - y[0])) > 1e-9 * max(numpy.ptp(x), numpy.ptp(y)) ** 2:
            raise self.deviation(f"{what} runs counter-clockwise")

    def ring(self, e, vertices):
        return self.chain(e, numpy.array([Vec3(v).xyz for v in vertices]), curved=False, closed=True)

    def read_solid(self, e):
        order = [e.dxf.vtx0, e.dxf.vtx1, e.dxf.get("vtx3", e.dxf.vtx2), e.dxf.vtx2, e.dxf.vtx0]
        self.is_area(self.ring(e, e.ocs().points_to_wcs(map(Vec3, order))), e)

    read_trace = read_solid

    def read_image(self, e):
        self.ring(e, e.boundary_path_wcs())

    def read_wipeout(self, e):
        self.is_area(self.ring(e, e.boundary_path_wcs()), e)

    def read_shape(self, e):
        plane = e.ocs()
        element = self.point(0, e, numpy.array([plane.to_wcs(Vec3(e.dxf.insert)).xyz]))
        self.angle(element, plane.to_wcs(Vec3.from_deg_angle(e.dxf.rotation)))
        if element["Text"] != e.dxf.name or abs(element["TextSize"] - e.dxf.size) > 1e-6 * abs(e.dxf.size):
            raise self.deviation(f"is {element['Text']} of size {element['TextSize']}")
