// SPDX-License-Identifier: MIT
// Elements as the geometries that formats of features have: points, chains, and polygons with their holes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "core/element/Rings.h"
#include "core/element/VertexChains.h"
#include "core/element/tEntity.h"
#include "core/run/Filters.h"

namespace tesselink {

/// What features are told apart by, each kind in a file or a table of its own where a format has such.
enum class FeatureKind : std::size_t { Points, Lines, Areas, Texts };
inline constexpr std::size_t kFeatureKinds = 4;

/// `form` is that of the source, which tells of what kind a record without vertices is.
FeatureKind FeatureKindOf(const tEntity& entity, const ElementForm& form);

/// A chain or ring by the vertices of its element.
struct FeatureChain {
  tEntity::Index begin = 0, end = 0;
  tEntity::Index again = 0;    ///< how often the first vertex comes once more behind the others
  bool isReversed = false;     ///< from its last vertex to its first
  bool beginsPolygon = false;  ///< an outer ring; the holes in it follow

  tEntity::Index Count() const { return end - begin + again; }
  /// The element's vertex at a place in the chain.
  tEntity::Index At(tEntity::Index place) const {
    const tEntity::Index own = place < end - begin ? place : 0;
    return isReversed ? end - 1 - own : begin + own;
  }
};

/// What an element draws: the places of a point or text; the parts of a chain, of two vertices at least, which closed
/// ones end on their first; and of areas polygons, whose rings have four vertices at least, the outer ones
/// counter-clockwise, the holes behind each of them clockwise. No vertex is lost: rings and chains of fewer repeat one.
class FeatureGeometry {
 public:
  /// Takes an element in. False for one that has vertices which are no finite numbers.
  bool Take(const tEntity& entity, FeatureKind kind);

  const tEntity& Element() const { return *entity_; }
  FeatureKind Kind() const { return kind_; }
  /// None for an element without vertices. Of points one chain with all of them.
  std::span<const FeatureChain> Chains() const { return chains_; }
  std::size_t Polygons() const;
  /// An area had so many rings that holes were not told from other rings by where they lie.
  bool AreHolesGuessed() const { return areHolesGuessed_; }

 private:
  struct OwnedRing {
    std::size_t ring, owner;  // the owner of an outer one is itself
    bool isHole;
  };
  struct CopiedRing {
    std::size_t part, end;  // behind its last vertex in the copy
  };
  void TakeChains();
  void TakeRings();
  void CopyRings();
  void FindOwners();
  std::size_t OwnerOf(std::size_t hole, std::int64_t& looked);
  FeatureChain ChainOf(std::size_t part, bool closes, tEntity::Index least) const;

  const tEntity* entity_ = nullptr;
  FeatureKind kind_ = FeatureKind::Points;
  bool areHolesGuessed_ = false;
  std::vector<FeatureChain> chains_;
  // Of an area:
  VertexChain vertices_;
  std::vector<CopiedRing> copied_;
  std::vector<Ring> rings_;
  std::vector<OwnedRing> owned_;
};

}  // namespace tesselink
