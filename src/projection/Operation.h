// SPDX-License-Identifier: MIT
// The way from one system to another: for each place the best operation.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/run/CoordinateOperation.h"
#include "projection/Handles.h"
#include "projection/Ranking.h"

namespace tesselink {

/// Places in source coordinates are divided into boxes of which no border of an operation's area passes through, so
/// that one ranking holds for all vertices in a box.
class Operation final : public CoordinateOperation {
 public:
  /// Throws Error when no operation leads from one system to the other.
  Operation(Proj& proj, ProjObject from, ProjObject to, bool allowBallpark);

  bool ChangesHeights() const override { return changesHeights_; }
  bool Transform(std::span<double> x, std::span<double> y, std::span<double> z) override;
  bool Probe(std::span<double> x, std::span<double> y) override;
  std::optional<Similarity> SimilarityAt(double x, double y) override;
  std::vector<OperationUse> Uses() const override;
  std::int64_t OutsideArea() const override { return outside_; }

 private:
  struct Box {
    double minX, minY, maxX, maxY;
    bool Holds(double x, double y) const { return x >= minX && x <= maxX && y >= minY && y <= maxY; }
  };
  // An operation in use.
  struct Way {
    ProjObject object;
    OperationUse use;
    Area area;
    bool isJudged = false;  // whether it is known if shapes are kept
    std::optional<Similarity> similarity;
  };
  struct Region {
    Box box;
    Way* way;
    bool outside;
  };

  // Null for what is no place.
  const Region* RegionAt(double x, double y);
  std::optional<Region> Found(double x, double y);
  Box BoxAt(double x, double y) const;
  void AddBorders(const Area& area);
  void AddBorder(double west, double south, double east, double north);
  Candidate& Allowed(std::vector<Candidate>& ranked) const;
  Way& WayOf(Candidate candidate, const std::string& better);

  Proj& proj_;
  const ProjObject from_, to_;
  const bool allowBallpark_;
  bool changesHeights_ = false;
  Ranking ranking_;
  ProjObject toDegrees_;  // from the source; null where it is in degrees
  std::vector<Box> borders_;
  std::vector<std::unique_ptr<Way>> ways_;
  std::vector<Region> regions_;
  std::size_t current_ = 0;  // of the regions
  Way* latest_ = nullptr;    // of the vertices so far
  std::int64_t outside_ = 0;
};

}  // namespace tesselink
