// SPDX-License-Identifier: MIT
// Geometries as GeoPackages store them: a header with the box, and the well-known binary form of ISO 13249-3.
#pragma once

#include <span>
#include <string>

#include "core/element/Extents.h"
#include "formats/FeatureGeometry.h"

namespace tesselink {

struct GPKGForm {
  int system = 0;         ///< as in gpkg_spatial_ref_sys
  bool isMulti = false;   ///< of points; lines and areas are so always
  bool heights = false;   ///< each vertex has a z
  bool measures = false;  ///< an m
};

/// The box of the vertices of some chains.
Extents BoxOf(const FeatureGeometry& geometry, std::span<const FeatureChain> chains);
/// Appends a geometry of some chains, one at least, to bytes.
void AppendGeometry(std::string& bytes, const FeatureGeometry& geometry, std::span<const FeatureChain> chains,
                    const Extents& box, const GPKGForm& form);

}  // namespace tesselink
