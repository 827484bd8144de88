// SPDX-License-Identifier: MIT
#include "formats/shape/ShapeLayout.h"

#include <algorithm>
#include <iterator>

namespace tesselink {
namespace {

// Code, layout, name; isArea, isClosed, hasZ, mayHaveM, isClassic.
constexpr ShapeType kTypes[] = {
    {0, ShapeLayout::None, "Null", false, false, false, false, true},
    {1, ShapeLayout::Point, "Point", false, false, false, false, true},
    {3, ShapeLayout::Parts, "PolyLine", false, false, false, false, true},
    {5, ShapeLayout::Parts, "Polygon", true, true, false, false, true},
    {8, ShapeLayout::MultiPoint, "MultiPoint", false, false, false, false, true},
    {11, ShapeLayout::Point, "PointZ", false, false, true, true, false},
    {13, ShapeLayout::Parts, "PolyLineZ", false, false, true, true, true},
    {15, ShapeLayout::Parts, "PolygonZ", true, true, true, true, true},
    {18, ShapeLayout::MultiPoint, "MultiPointZ", false, false, true, true, false},
    {21, ShapeLayout::Point, "PointM", false, false, false, true, false},
    {23, ShapeLayout::Parts, "PolylineM", false, false, false, true, false},
    {25, ShapeLayout::Parts, "PolygonM", true, true, false, true, false},
    {28, ShapeLayout::MultiPoint, "MultiPointM", false, false, false, true, false},
    {31, ShapeLayout::Patches, "MultiPatch", false, true, true, true, false},
};

}  // namespace

const ShapeType* ShapeTypeOf(std::int32_t code) {
  const auto* found =
      std::find_if(std::begin(kTypes), std::end(kTypes), [&](const ShapeType& t) { return t.code == code; });
  return found == std::end(kTypes) ? nullptr : found;
}

}  // namespace tesselink
