// SPDX-License-Identifier: MIT
#include "formats/gpkg/GPKGOutFilter.h"

#include <algorithm>

#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Module.h"
#include "core/io/Paths.h"
#include "formats/gpkg/GPKGSchema.h"

namespace tesselink {
namespace {

constexpr std::array<const char*, kFeatureKinds> kNames{"points", "lines", "areas", "texts"};
constexpr std::size_t kMostColumns = 1900;  // SQLite has room for 2,000

}  // namespace

void GPKGOutFilter::Create(const std::string& path) {
  if (IsStream(path)) throw Error(path + ": a GeoPackage is written into a file, not into a device or a pipe");
  FileWriter(path).Close();
  path_ = path;
  layers_.clear();
  systems_.clear();
  system_ = gpkg::kUndefinedSystem;
  source_ = nullptr;
  sources_ = 0;
  try {
    database_.reset(CreateByModule<Database>(options().moduleFolder, "database", path.c_str()));
    database_->Run(gpkg::CommandsForFile());
  } catch (...) {
    Drop();
    throw;
  }
}

void GPKGOutFilter::SourceSystem(const CoordinateSystem& system) { system_ = IdOf(system); }

void GPKGOutFilter::SourceOpened(InputFilter& source) {
  source_ = &source;
  ++sources_;
}

// The row of a coordinate system, which is made where there is none yet.
int GPKGOutFilter::IdOf(const CoordinateSystem& system) {
  if (!system.IsKnown()) return gpkg::kUndefinedSystem;
  if (system.epsg == gpkg::kWgs84 || (system.epsg == 0 && system.isWgs84)) return gpkg::kWgs84;
  const std::string& wkt = system.wkt.empty() ? system.esriWkt : system.wkt;
  const auto found = std::find_if(systems_.begin(), systems_.end(), [&](const KnownSystem& known) {
    return system.epsg != 0 ? known.id == system.epsg : known.name == system.name && known.definition == wkt;
  });
  if (found != systems_.end()) return found->id;
  const int id = system.epsg != 0 ? system.epsg : gpkg::kFirstOwnSystem + static_cast<int>(systems_.size());
  systems_.push_back({system.name, wkt, id});
  const auto row = database_->Prepare("INSERT INTO gpkg_spatial_ref_sys VALUES (?1, ?2, ?3, ?2, ?4, NULL)");
  row->SetText(1, system.name);
  row->SetInteger(2, id);
  row->SetText(3, system.epsg != 0 ? "EPSG" : "NONE");
  row->SetText(4, wkt.empty() ? std::string_view("undefined") : std::string_view(wkt));
  row->Run();
  return id;
}

WriteResult GPKGOutFilter::Write(tEntity& entity) {
  const FeatureKind kind = FeatureKindOf(entity, source_ != nullptr ? source_->Form() : ElementForm{});
  if (!TakeGeometry(entity, kind)) return WriteResult::Skipped;
  const auto chains = geometry_.Chains();
  const bool isGroup = !chains.empty() && kind == FeatureKind::Points && chains[0].Count() > 1;
  GPKGTable& table = TableOf(kind, isGroup);
  if (!isGroup || table.IsMulti()) {
    table.Add(geometry_, chains);
    return WriteResult::Written;
  }
  Lost(WarningKind::PointGroups);
  for (tEntity::Index i = chains[0].begin; i < chains[0].end; ++i) {
    const FeatureChain point{.begin = i, .end = i + 1};
    table.Add(geometry_, {&point, 1});
  }
  return WriteResult::Written;
}

GPKGTable& GPKGOutFilter::TableOf(FeatureKind kind, bool ofGroups) {
  const auto found = std::find_if(layers_.begin(), layers_.end(), [&](const Layer& layer) {
    return layer.table->Kind() == kind && layer.table->System() == system_;
  });
  if (found == layers_.end()) return Make(kind, ofGroups);
  if (found->source != sources_) found->table->Turn(*source_);
  found->source = sources_;
  return *found->table;
}

GPKGTable& GPKGOutFilter::Make(FeatureKind kind, bool ofGroups) {
  const bool ofGroupedFile = source_ != nullptr && source_->Form().shape == ElementForm::Shape::PointGroups;
  const GPKGForm form{.system = system_, .isMulti = kind == FeatureKind::Points && (ofGroups || ofGroupedFile)};
  FeatureProperties properties(report(), options(), losses(),
                               {.reserved = {std::string(gpkg::kIdColumn), std::string(gpkg::kGeometryColumn)},
                                .most = kMostColumns,
                                .isStrict = true,
                                .areKindsApart = true});
  layers_.push_back(
      {std::make_unique<GPKGTable>(*database_, FreeName(kind), kind, form, std::move(properties), source_), sources_});
  return *layers_.back().table;
}

std::string GPKGOutFilter::FreeName(FeatureKind kind) const {
  const std::string name = kNames[static_cast<std::size_t>(kind)];
  const auto before =
      std::count_if(layers_.begin(), layers_.end(), [&](const Layer& layer) { return layer.table->Kind() == kind; });
  return before == 0 ? name : name + "_" + std::to_string(before + 1);
}

void GPKGOutFilter::Complete() {
  if (layers_.empty()) Make(FeatureKind::Points, false);
  for (const Layer& layer : layers_) layer.table->Complete();
  layers_.clear();
  database_->Run("COMMIT");
  database_->Close();
  database_.reset();
}

void GPKGOutFilter::Drop() noexcept {
  layers_.clear();
  database_.reset();
  RemoveWritten(path_);
}

std::int64_t GPKGOutFilter::Size() const {
  std::int64_t size = 0;
  for (const Layer& layer : layers_) size += layer.table->Size();
  return size;
}

}  // namespace tesselink
