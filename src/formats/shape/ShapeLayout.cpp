#include "formats/shape/ShapeLayout.h"

#include <algorithm>
#include <iterator>

namespace tesselink {
namespace {

// Code, name, layout; isArea, isClosed, hasZ, mayHaveM, isClassic.
constexpr ShapeType kTypes[] = {
    {0, "Null", ShapeLayout::None, false, false, false, false, true},
    {1, "Point", ShapeLayout::Point, false, false, false, false, true},
    {3, "PolyLine", ShapeLayout::Parts, false, false, false, false, true},
    {5, "Polygon", ShapeLayout::Parts, true, true, false, false, true},
    {8, "MultiPoint", ShapeLayout::MultiPoint, false, false, false, false, true},
    {11, "PointZ", ShapeLayout::Point, false, false, true, true, false},
    {13, "PolyLineZ", ShapeLayout::Parts, false, false, true, true, true},
    {15, "PolygonZ", ShapeLayout::Parts, true, true, true, true, true},
    {18, "MultiPointZ", ShapeLayout::MultiPoint, false, false, true, true, false},
    {21, "PointM", ShapeLayout::Point, false, false, false, true, false},
    {23, "PolylineM", ShapeLayout::Parts, false, false, false, true, false},
    {25, "PolygonM", ShapeLayout::Parts, true, true, false, true, false},
    {28, "MultiPointM", ShapeLayout::MultiPoint, false, false, false, true, false},
    {31, "MultiPatch", ShapeLayout::Patches, false, true, true, true, false},
};

}  // namespace

const ShapeType* ShapeTypeOf(std::int32_t code) {
  const auto* found =
      std::find_if(std::begin(kTypes), std::end(kTypes), [&](const ShapeType& t) { return t.code == code; });
  return found == std::end(kTypes) ? nullptr : found;
}

}  // namespace tesselink
