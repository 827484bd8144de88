// SPDX-License-Identifier: MIT
// The coordinate systems of a run: what its inputs are in, and how their elements come into that of the output.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/run/CoordinateOperation.h"
#include "core/run/Filters.h"

namespace tesselink {

/// The coordinate systems that a run met.
struct SystemsUsed {
  std::vector<CoordinateSystem> from;  ///< of the inputs, each once; none that is not known
  CoordinateSystem to;                 ///< of what is written; not known where that is not
  std::vector<OperationUse> operations;
};

/// The definition that a person named a system by: the text itself, or that of a file. Throws Error for what is
/// neither, or cannot be read.
std::string SystemDefinition(const std::string& named);

/// Those of the systems that a person named which are files.
std::vector<std::string> SystemFiles(const SystemChoice& choice);

/// Stands between reader and writer where a system was named, or the writer wishes to know it.
class Coordinates {
 public:
  /// What becomes of an element.
  enum class Placed {
    Whole,
    Drawn,    ///< its curves are chains now
    Nowhere,  ///< one of its vertices has no place in the other system
  };

  /// `holding`: what the writer's elements may hold.
  Coordinates(const FilterContext& context, const Holding& holding) : context_(context), holding_(holding) {}

  /// Finds the system of an input that is open, and tells the writer. Throws Error when it has to be known and is not,
  /// or when there is no way from it to that of the output.
  void Open(const InputFilter& reader, OutputFilter& writer);
  /// Brings an element into the system of the output. Throws Error that says where the reader is.
  Placed Place(tEntity& entity, const InputFilter& reader);
  /// Counts the drawn curves of an element that was written.
  void CountDrawn(Losses& losses) const;
  /// Counts what is known of all elements at the end.
  void CountAtEnd(Losses& losses) const;
  SystemsUsed Used() const;

 private:
  CoordinateSystems& Systems();
  CoordinateSystem Described(const std::string& definition, const std::string& named);
  CoordinateSystem SystemOf(const InputFilter& reader, SystemWish wish, std::string& definition);
  void RefuseUnknown(const InputFilter& reader, const std::string& why);
  CoordinateOperation* WayFrom(const std::string& definition, const std::string& named);
  bool PlaceCurves(tEntity& entity);
  void PlaceText(tEntity& entity);

  const SystemChoice& Choice() const { return context_.options.systems; }

  const FilterContext context_;
  const Holding holding_;
  std::unique_ptr<CoordinateSystems> systems_;  // once it is needed
  std::string target_;                          // its definition; empty: coordinates stay
  SystemsUsed used_;
  std::vector<std::pair<std::string, std::unique_ptr<CoordinateOperation>>> ways_;  // by what they lead from
  CoordinateOperation* way_ = nullptr;  // of the input that is open; null: its coordinates stay
  double step_ = 1;                     // that it takes to see how directions turn, in source units
  VertexChain chain_;
  bool coarse_ = false;  // of the element at hand
};

}  // namespace tesselink
