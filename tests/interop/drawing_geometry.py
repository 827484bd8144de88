# SPDX-License-Identifier: MIT
"""Comparing the geometry of drawings, as arrays of vertices."""
import cmath
import math

import numpy
from ezdxf.math import Vec3

POINT, LINE, POLYLINE, TEXT, CIRCLE, ARC = 0, 1, 2, 3, 4, 6
CHORD_ERROR = 1e-3


class Deviation(Exception):
    pass


class Unreadable(Exception):
    """ezdxf gives up."""


def check(condition, message):
    if not condition:
        raise Deviation(message)


def array(vectors):
    return numpy.array([(v.x, v.y, v.z) for v in map(Vec3, vectors)], dtype=float).reshape(-1, 3)


def distances(points, chain):
    """The distance of each point from a chain of straight segments."""
    if len(chain) == 1:
        return numpy.linalg.norm(points - chain[0], axis=1)
    starts, along = chain[:-1], numpy.diff(chain, axis=0)
    squares = (along * along).sum(axis=1)
    squares[squares == 0] = 1
    nearest = []
    for some in numpy.array_split(points, len(points) * len(starts) // 100_000 + 1):
        off = some[:, None] - starts
        t = numpy.clip((off * along).sum(axis=2) / squares, 0, 1)
        nearest.append(numpy.linalg.norm(off - t[..., None] * along, axis=2).min(axis=1))
    return numpy.concatenate(nearest)


def with_arcs(chain, element):
    """A chain whose bulges are drawn, 64 segments each."""
    drawn = list(chain[:1])
    bulges = element.get("Bulges", [])
    for i, (start, end) in enumerate(zip(chain[:-1], chain[1:])):
        bulge = bulges[i] if i < len(bulges) else 0
        if bulge:
            across = complex(*(end - start)[:2])
            centre = complex(*start[:2]) + across / 2 + across * 1j * (1 - bulge * bulge) / (4 * bulge)
            arm = complex(*start[:2]) - centre
            for step in range(1, 64):
                at = centre + arm * cmath.exp(4j * math.atan(bulge) * step / 64)
                drawn.append((at.real, at.imag, start[2]))
        drawn.append(end)
    return numpy.array(drawn)


def extent(chain):
    return float((chain.max(axis=0) - chain.min(axis=0)).max())


def box(chain):
    return numpy.concatenate([chain.min(axis=0), chain.max(axis=0)])


def inside(points, ring):
    """Which of some points lie within a ring."""
    x, y = points[:, :1], points[:, 1:2]
    (x1, y1), (x2, y2) = ring[:-1, :2].T, ring[1:, :2].T
    with numpy.errstate(divide="ignore", invalid="ignore"):
        crossed = ((y1 > y) != (y2 > y)) & (x < x1 + (y - y1) / (y2 - y1) * (x2 - x1))
    return crossed.sum(axis=1) % 2 == 1


def closed_chain(chain):
    return chain if (chain[0] == chain[-1]).all() else numpy.vstack([chain, chain[:1]])


def compare_chains(ours, theirs, radius, curved):
    """Two chains for one curve; theirs is much finer, or exact for straight segments."""
    size = max(extent(theirs), 1e-12)
    rounding = 1e-6 * max(size, numpy.abs(theirs).max() * 1e-1) + 1e-9
    allowed = rounding + (CHORD_ERROR * (radius or size) if curved else 0)
    off = max(distances(ours, theirs).max(), distances(theirs, ours).max())
    check(off <= allowed, f"chain is {off:.3g} off, allowed {allowed:.3g} of {size:.3g}")
    ends = max(numpy.linalg.norm(ours[0] - theirs[0]), numpy.linalg.norm(ours[-1] - theirs[-1]))
    check(ends <= rounding, f"an end is {ends:.3g} off")
