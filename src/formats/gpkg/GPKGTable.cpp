// SPDX-License-Identifier: MIT
#include "formats/gpkg/GPKGTable.h"

#include "core/io/FixedTime.h"
#include "formats/gpkg/GPKGSchema.h"

namespace tesselink {

GPKGTable::GPKGTable(Database& database, std::string name, FeatureKind kind, const GPKGForm& form,
                     FeatureProperties properties, InputFilter* source)
    : database_(database), name_(std::move(name)), kind_(kind), form_(form), properties_(std::move(properties)) {
  properties_.Turn(source, kind_);
  hasFileHeights_ = source != nullptr && source->Form().heights;
  database_.Run(gpkg::CommandsForTable(name_, GeometryType(), properties_.All()));
  std::string insert = "INSERT INTO " + gpkg::Name(name_) + " VALUES (?, ?";
  for (std::size_t i = 0; i < properties_.All().size(); ++i) insert += ", ?";
  insert_ = database_.Prepare(insert + ")");
  index_ = database_.Prepare("INSERT INTO " + gpkg::Name(gpkg::IndexOf(name_)) + " VALUES (?, ?, ?, ?, ?)");
}

std::string_view GPKGTable::GeometryType() const {
  switch (kind_) {
    case FeatureKind::Lines:
      return "MULTILINESTRING";
    case FeatureKind::Areas:
      return "MULTIPOLYGON";
    case FeatureKind::Points:
    case FeatureKind::Texts:
      break;
  }
  return form_.isMulti ? "MULTIPOINT" : "POINT";
}

void GPKGTable::Turn(InputFilter& source) {
  properties_.Turn(&source, kind_);
  hasFileHeights_ = source.Form().heights;
}

void GPKGTable::Add(const FeatureGeometry& geometry, std::span<const FeatureChain> chains) {
  insert_->SetInteger(1, ++count_);
  if (chains.empty()) {
    insert_->SetNull(2);
  } else {
    AddGeometry(geometry, chains);
  }
  SetProperties(geometry.Element());
  insert_->Run();
}

void GPKGTable::AddGeometry(const FeatureGeometry& geometry, std::span<const FeatureChain> chains) {
  const tEntity& entity = geometry.Element();
  form_.heights = hasFileHeights_ || entity.HasHeight();
  form_.measures = !entity.Measures.empty();
  heights_.Note(form_.heights);
  measures_.Note(form_.measures);
  const Extents box = BoxOf(geometry, chains);
  extents_.Add(box.minX, box.minY, 0);
  extents_.Add(box.maxX, box.maxY, 0);
  bytes_.clear();
  AppendGeometry(bytes_, geometry, chains, box, form_);
  size_ += std::ssize(bytes_);
  insert_->SetBytes(2, bytes_);
  index_->SetInteger(1, count_);
  int parameter = 1;
  for (const double bound : {box.minX, box.maxX, box.minY, box.maxY}) index_->SetReal(++parameter, bound);
  index_->Run();
}

void GPKGTable::SetProperties(const tEntity& entity) {
  constexpr std::int64_t kNumberSize = 8;
  int parameter = 2;
  for (const PropertyValue& value : properties_.Of(entity)) {
    ++parameter;
    if (const auto* text = std::get_if<std::string_view>(&value)) {
      insert_->SetText(parameter, *text);
      size_ += std::ssize(*text);
    } else if (const auto* real = std::get_if<double>(&value)) {
      insert_->SetReal(parameter, *real);
    } else if (const auto* whole = std::get_if<std::int64_t>(&value)) {
      insert_->SetInteger(parameter, *whole);
    } else if (const auto* truth = std::get_if<bool>(&value)) {
      insert_->SetInteger(parameter, *truth ? 1 : 0);
    } else {
      insert_->SetNull(parameter);
      continue;
    }
    size_ += kNumberSize;
  }
}

void GPKGTable::Complete() {
  insert_.reset();
  index_.reset();
  const auto contents = database_.Prepare(
      "INSERT INTO gpkg_contents (table_name, data_type, identifier, srs_id, min_x, min_y, max_x, max_y, last_change) "
      "VALUES (?1, 'features', ?1, ?2, ?3, ?4, ?5, ?6, "
      "strftime('%Y-%m-%dT%H:%M:%fZ', coalesce(datetime(?7, 'unixepoch'), 'now')))");
  contents->SetText(1, name_);
  contents->SetInteger(2, form_.system);
  int parameter = 2;
  for (const double bound : {extents_.minX, extents_.minY, extents_.maxX, extents_.maxY}) {
    ++parameter;
    extents_.Empty() ? contents->SetNull(parameter) : contents->SetReal(parameter, bound);
  }
  const std::optional<std::int64_t> fixed = FixedTime();
  fixed ? contents->SetInteger(7, *fixed) : contents->SetNull(7);
  contents->Run();
  const std::string name = gpkg::Text(name_), column = gpkg::Text(gpkg::kGeometryColumn);
  database_.Run("INSERT INTO gpkg_geometry_columns VALUES (" + name + ", " + column + ", " +
                gpkg::Text(GeometryType()) + ", " + std::to_string(form_.system) + ", " +
                std::to_string(heights_.Code()) + ", " + std::to_string(measures_.Code()) + ")");
  database_.Run("INSERT INTO gpkg_extensions VALUES (" + name + ", " + column +
                ", 'gpkg_rtree_index', 'http://www.geopackage.org/spec130/#extension_rtree', 'write-only')");
  database_.Run(gpkg::CommandsForTriggers(name_));
}

}  // namespace tesselink
