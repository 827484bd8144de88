// SPDX-License-Identifier: MIT
// What the run asks of the module that knows coordinate systems; src/projection implements it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/element/CoordinateSystem.h"

namespace tesselink {

/// One of the ways in which the vertices of a run were transformed.
struct OperationUse {
  std::string name;
  double accuracy = -1;            ///< metres; below 0 where nobody knows it
  std::vector<std::string> grids;  ///< names of the files that it reads
  bool isBallpark = false;         ///< passes over the difference of two datums
  std::int64_t count = 0;          ///< vertices
  std::string better;              ///< a more accurate one that lacks a grid, and which; empty where there is none
};

/// A change of coordinates that keeps every shape: what it does to lengths, and to angles counter-clockwise, in
/// degrees.
struct Similarity {
  double scale = 1, turn = 0;
};

/// The way from one system to another. x runs east and y north, as longitude and latitude do, whatever order the
/// systems give them. Each vertex takes the best operation for its place.
class CoordinateOperation {
 public:
  virtual ~CoordinateOperation() = default;
  /// Whether z is transformed too; else it stays.
  virtual bool ChangesHeights() const = 0;
  /// Transforms vertices in place; false when one of them has no place in the other system. Throws Error where the best
  /// operation lacks a grid or is none but a ballpark, unless these were allowed.
  virtual bool Transform(std::span<double> x, std::span<double> y, std::span<double> z) = 0;
  /// The same without counting, by the one operation of the first place.
  virtual bool Probe(std::span<double> x, std::span<double> y) = 0;
  /// What becomes of shapes by the operation of a place; nothing where it distorts them.
  virtual std::optional<Similarity> SimilarityAt(double x, double y) = 0;
  virtual std::vector<OperationUse> Uses() const = 0;
  /// Vertices outside of the area that their operation is made for.
  virtual std::int64_t OutsideArea() const = 0;
};

/// Systems are defined by a code as in "EPSG:32039", by WKT of any kind or by a PROJ text.
class CoordinateSystems {
 public:
  virtual ~CoordinateSystems() = default;
  /// Throws Error when that defines none for drawings.
  virtual CoordinateSystem Describe(const std::string& definition) = 0;
  /// Null when both are the same system. Throws Error when there is no way. `allowBallpark`: operations that lack a
  /// grid give way to the next best one, a ballpark at worst.
  virtual std::unique_ptr<CoordinateOperation> Between(const std::string& from, const std::string& to,
                                                       bool allowBallpark) = 0;
};

}  // namespace tesselink
