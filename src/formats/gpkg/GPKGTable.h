// SPDX-License-Identifier: MIT
// One table of features of a GeoPackage.
#pragma once

#include <memory>
#include <span>
#include <string>

#include "core/element/Extents.h"
#include "core/io/Database.h"
#include "formats/FeatureGeometry.h"
#include "formats/FeatureProperties.h"
#include "formats/gpkg/GPKGGeometry.h"

namespace tesselink {

/// Takes the features of one kind that are in one coordinate system. Lines and areas are MULTILINESTRING and
/// MULTIPOLYGON throughout, points POINT, or MULTIPOINT throughout.
class GPKGTable {
 public:
  /// The table is made with the properties of its first input; null for none.
  GPKGTable(Database& database, std::string name, FeatureKind kind, const GPKGForm& form, FeatureProperties properties,
            InputFilter* source);

  const std::string& Name() const { return name_; }
  FeatureKind Kind() const { return kind_; }
  int System() const { return form_.system; }
  bool IsMulti() const { return form_.isMulti; }
  /// Turns to a further input.
  void Turn(InputFilter& source);
  /// Adds a feature of some chains of an element; of none it has no geometry.
  void Add(const FeatureGeometry& geometry, std::span<const FeatureChain> chains);
  /// Registers the table, to which nothing is added afterwards.
  void Complete();
  /// Bytes that the database has been handed.
  std::int64_t Size() const { return size_; }

 private:
  struct Presence {
    bool some = false, all = true;
    void Note(bool has) {
      some = some || has;
      all = all && has;
    }
    /// 0: none has it, 1: every one, 2: some.
    int Code() const { return !some ? 0 : all ? 1 : 2; }
  };
  void AddGeometry(const FeatureGeometry& geometry, std::span<const FeatureChain> chains);
  void SetProperties(const tEntity& entity);
  std::string_view GeometryType() const;

  Database& database_;
  const std::string name_;
  const FeatureKind kind_;
  GPKGForm form_;  // of the feature at hand
  FeatureProperties properties_;
  bool hasFileHeights_ = false;  // every element of the input has z
  std::unique_ptr<DatabaseCommand> insert_, index_;
  std::string bytes_;
  std::int64_t count_ = 0, size_ = 0;
  Extents extents_;
  Presence heights_, measures_;
};

}  // namespace tesselink
