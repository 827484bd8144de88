"""Comparing what stands beside a drawing's lines: leaders, their texts and blocks, tolerances; and lines that run in parallel."""
from drawing_geometry import CHORD_ERROR, array, check, closed_chain, extent


def joined(lines):
    """The chain of segments that follow each other."""
    return array([lines[0].dxf.start] + [line.dxf.end for line in lines])


class NotesReader:
    """Reads such entities; a mixin of a reader of drawings."""

    def parts(self, insert):
        """What the block of an insert draws. ezdxf makes an MLINE anew from its style; here its points are moved as they are."""
        whole = iter([e for e in insert.block() if e.dxftype() == "MLINE"])
        for part in insert.virtual_entities():
            if part.dxftype() == "MLINE":
                part.vertices = [v.copy() for v in next(whole).vertices]
                for v in part.vertices:
                    v.transform(insert.matrix44())
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
