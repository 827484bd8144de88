// SPDX-License-Identifier: MIT
// What an element has besides its vertices, and a format may have no place for.
#pragma once

#include <array>
#include <cstdint>

#include "core/element/tEntity.h"
#include "core/run/Losses.h"

namespace tesselink {

/// Something that an element can have, as a bit of a set.
enum Trait : std::uint32_t {
  kHasLayer = 1,              ///< other than "0"
  kHasLayerBesideColour = 2,  ///< other than "0" and the name of its colour
  kHasLineType = 4,           ///< other than "CONTINUOUS"
  kHasColour = 8,             ///< any
  kHasUnnamedColour = 16,     ///< none of the eighteen that have a name
  kHasSymbol = 32,            ///< a point with a name or an angle
  kHasJustification = 64,     ///< a text that does not stand at its left on its baseline
  kHasBaseline = 128,         ///< a text on its baseline
  kHasEntityCode = 256,       ///< that of an entity type
  kHasUnmatchedLayer = 512,   ///< a layer without one
  kHasSeveralPoints = 1024,   ///< a group of points
  kHasClosedMark = 2048,      ///< a chain that is marked as closed
};
using TraitSet = std::uint64_t;
/// The lowest of the bits in which a set holds those of ReadingLoss.
inline constexpr TraitSet kFirstOfReading = TraitSet{1} << 32;

/// Counts what the elements of a run had of the traits that its writer lacks, and what their reader could not put into
/// them.
class TraitLosses {
 public:
  /// The losses outlive this. `kept`: those of ReadingLoss that the writer holds all the same.
  TraitLosses(TraitSet lacking, std::uint32_t kept, Losses& losses) : lacking_(lacking), kept_(kept), losses_(losses) {}

  /// Which of the lacking traits the element has, and above kFirstOfReading what its reader lost.
  TraitSet Of(const tEntity& entity);
  /// Counts them, once it has been written.
  void Count(TraitSet traits) {
    if (traits != 0) CountEach(traits);
  }

 private:
  void CountEach(TraitSet traits);
  bool IsNamed(std::int32_t rgb);
  void NameLooks(std::uint32_t lost);

  TraitSet lacking_;
  std::uint32_t kept_;
  Losses& losses_;
  std::int32_t asked_ = 0;  // the colour asked for last, and what was answered
  bool named_ = true;
  std::uint32_t looks_ = 0;  // of kLostAppearance, what has been counted
};

}  // namespace tesselink
