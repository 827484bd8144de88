// SPDX-License-Identifier: MIT
#include "formats/shape/ShapesByKind.h"

#include <algorithm>

#include "core/io/Paths.h"

namespace tesselink {
namespace {

const std::vector<std::string> kParts{"-points", "-lines", "-areas", "-texts"};

}  // namespace

ShapesByKind::ShapesByKind(const FilterContext& context) : OutputFilter(context), context_(context) {
  const ESRIOutFilt likeAll(context);
  holding_ = likeAll.Holds();
  carrying_ = likeAll.CarriesSource();
}

std::unique_ptr<OutputFilter> ShapesByKind::Writer(const FilterContext& context) {
  if (Parts(context.options.own).empty()) return std::make_unique<ESRIOutFilt>(context);
  return std::make_unique<ShapesByKind>(context);
}

std::vector<std::string> ShapesByKind::Parts(const OptionValues& values) {
  return values.Text(ESRIOutFilt::kKindOption) == ESRIOutFilt::kEachKind ? kParts : std::vector<std::string>{};
}

AreaPlace ShapesByKind::PlaceOfAreas(const OptionValues& values) {
  const std::string kind = values.Text(ESRIOutFilt::kKindOption);
  return kind == ESRIOutFilt::kEachKind    ? AreaPlace::Beside
         : kind == ESRIOutFilt::kAreasKind ? AreaPlace::Alone
                                           : AreaPlace::None;
}

KindSet ShapesByKind::LeftOut(const OptionValues& values) {
  const std::string kind = values.Text(ESRIOutFilt::kKindOption);
  if (kind.empty() || kind == ESRIOutFilt::kEachKind) return 0;
  const bool ofPoints = kind == "points" || kind == "multipoints";
  return ofPoints ? kChainsAndCurves : SetOf(kPoint) | SetOf(kText);
}

void ShapesByKind::Create(const std::string& path) {
  ESRIOutFilt::CheckName(path);
  path_ = path;
  shapefiles_ = {};
}

WriteResult ShapesByKind::Write(tEntity& entity) {
  return WriterOf(FeatureKindOf(entity, source_ != nullptr ? source_->Form() : ElementForm{})).WriteEntity(entity);
}

// A shapefile has the attributes and the coordinate system of those inputs alone whose elements it holds.
ESRIOutFilt& ShapesByKind::WriterOf(FeatureKind kind) {
  const auto at = static_cast<std::size_t>(kind);
  Shapefile& shapefile = shapefiles_[at];
  if (!shapefile.writer) Begin(at);
  if (shapefile.source != sources_) {
    shapefile.writer->SourceSystem(system_);
    shapefile.writer->SourceOpened(*source_);
  }
  shapefile.source = sources_;
  return *shapefile.writer;
}

void ShapesByKind::Begin(std::size_t kind) {
  const bool ofGroups = source_ != nullptr && source_->Form().shape == ElementForm::Shape::PointGroups;
  const ShapeKind kinds[kFeatureKinds] = {ofGroups ? ShapeKind::MultiPoint : ShapeKind::PointsOrText,
                                          ShapeKind::Polyline, ShapeKind::Polygon, ShapeKind::PointsOrText};
  shapefiles_[kind].writer = std::make_unique<ESRIOutFilt>(context_, kinds[kind]);
  shapefiles_[kind].writer->CountIn(losses());
  shapefiles_[kind].writer->filename(BehindStem(path_, kParts[kind]));
}

void ShapesByKind::Complete() {
  const auto isThere = [](const Shapefile& file) { return file.writer != nullptr; };
  if (std::none_of(shapefiles_.begin(), shapefiles_.end(), isThere)) WriterOf(FeatureKind::Points);
  for (const Shapefile& shapefile : shapefiles_) {
    if (shapefile.writer) shapefile.writer->Release();
  }
}

void ShapesByKind::Drop() noexcept {
  for (const Shapefile& shapefile : shapefiles_) {
    if (shapefile.writer) shapefile.writer->Abandon();
  }
}

std::vector<std::string> ShapesByKind::Outputs() const {
  std::vector<std::string> files;
  for (const Shapefile& shapefile : shapefiles_) {
    const auto own = shapefile.writer ? shapefile.writer->Outputs() : std::vector<std::string>{};
    files.insert(files.end(), own.begin(), own.end());
  }
  return files;
}

std::int64_t ShapesByKind::Size() const {
  std::int64_t size = 0;
  for (const Shapefile& shapefile : shapefiles_) size += shapefile.writer ? shapefile.writer->Size() : 0;
  return size;
}

}  // namespace tesselink
