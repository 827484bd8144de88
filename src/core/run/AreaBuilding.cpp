// SPDX-License-Identifier: MIT
#include "core/run/AreaBuilding.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "core/io/Numbers.h"
#include "core/run/Filters.h"
#include "core/run/Losses.h"
#include "core/run/Report.h"

namespace tesselink {
namespace {

constexpr std::size_t kNoFace = static_cast<std::size_t>(-1);

bool IsFinite(const Vertex& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

}  // namespace

AreaBuilding::AreaBuilding(std::unique_ptr<Linework> linework, const FilterOptions& options, AreaPlace place,
                           Losses& losses)
    : linework_(std::move(linework)),
      tolerance_(options.Curves()),
      alone_(place == AreaPlace::Alone),
      losses_(losses),
      labelLayers_(options.labelLayers, {}),
      hasLabels_(!options.labelLayers.empty()),
      snap_(options.snap) {}

bool AreaBuilding::Takes(const tEntity& entity, bool curvesHeld) {
  if (entity.bType == kText) return TakeLabel(entity) && alone_;
  if (entity.IsArea || !(IsChain(entity.bType) || IsCurve(entity.bType))) return false;
  elements_.push_back({StyleOf(entity), entity.bType});
  const bool isCurved = IsCurve(entity.bType) || !entity.Bulges.empty();
  const bool enough = IsCurve(entity.bType) ? TakeCurve(entity) : TakeChain(entity);
  if (isCurved && (alone_ || curvesHeld)) {
    losses_.Add(WarningKind::Curves);
    if (!enough) losses_.Add(WarningKind::CoarseCurves);
  }
  return alone_;
}

bool AreaBuilding::TakeLabel(const tEntity& text) {
  if (!hasLabels_ || !labelLayers_.Takes(text.Layer)) return false;
  labels_.push_back({text.x(0), text.Y(0), text.TextAng, text.TextSize, text.Text, kNoFace});
  return true;
}

bool AreaBuilding::TakeCurve(const tEntity& entity) {
  chain_.clear();
  const bool enough = AppendCurve(chain_, entity, tolerance_);
  AddChain();
  return enough;
}

bool AreaBuilding::TakeChain(const tEntity& entity) {
  const tEntity* source = &entity;
  bool enough = true;
  if (!entity.Bulges.empty()) {
    drawn_.CopyFrom(entity);
    enough = DrawBulges(drawn_, chain_, tolerance_);
    source = &drawn_;
  }
  for (std::size_t part = 0; part < source->PartCount(); ++part) {
    chain_.clear();
    for (auto i = source->PartBegin(part); i < source->PartEnd(part); ++i) chain_.push_back(VertexAt(*source, i));
    if (source->Closed && !chain_.empty()) chain_.push_back(Vertex(chain_.front()));
    AddChain();
  }
  return enough;
}

void AreaBuilding::AddChain() {
  if (chain_.size() < 2) return;
  if (!std::all_of(chain_.begin(), chain_.end(), IsFinite)) return losses_.Add(WarningKind::WildLines);
  linework_->Add(chain_);
  chains_.push_back(elements_.size() - 1);
}

// Most elements look like the one before.
std::size_t AreaBuilding::StyleOf(const tEntity& entity) {
  const auto isLike = [&](const EntityAttributes& style) {
    return style.Layer == entity.Layer && style.LineStyle == entity.LineStyle && style.CDFCode == entity.CDFCode &&
           style.Colour == entity.Colour && style.RGB == entity.RGB && style.IsBlack == entity.IsBlack &&
           style.ColourFrom == entity.ColourFrom && style.LineStyleFrom == entity.LineStyleFrom;
  };
  if (!elements_.empty() && isLike(styles_[elements_.back().style])) return elements_.back().style;
  const auto [known, isNew] =
      styleNumbers_.try_emplace({entity.Layer, entity.LineStyle, entity.CDFCode, entity.Colour, entity.RGB,
                                 entity.IsBlack, entity.ColourFrom, entity.LineStyleFrom},
                                styles_.size());
  if (!isNew) return known->second;
  EntityAttributes& style = styles_.emplace_back();
  std::tie(style.Layer, style.LineStyle, style.CDFCode, style.Colour, style.RGB, style.IsBlack, style.ColourFrom,
           style.LineStyleFrom) = known->first;
  style.bType = kPolyline;
  style.Closed = true;
  return known->second;
}

bool AreaBuilding::Build(const std::function<bool()>& cancelled) {
  if (!linework_->Build(snap_, cancelled)) return false;
  Tell(WarningKind::LooseEnds, linework_->LooseEnds());
  Tell(WarningKind::Cuts, linework_->Cuts());
  Tell(WarningKind::InvalidRings, linework_->InvalidRings());
  PlaceLabels();
  return true;
}

void AreaBuilding::Tell(WarningKind kind, const LooseLines& lines) {
  place_ = lines.place;
  losses_.Add(kind, lines.count);
}

void AreaBuilding::PlaceLabels() {
  for (Label& label : labels_) {
    label.face = linework_->FaceAt(label.x, label.y).value_or(kNoFace);
    if (label.face == kNoFace) Tell(WarningKind::LabelsOutside, {1, {label.x, label.y, 0}});
  }
  std::stable_sort(labels_.begin(), labels_.end(), [](const Label& a, const Label& b) { return a.face < b.face; });
}

bool AreaBuilding::Next(tEntity& area) {
  if (nextFace_ >= linework_->FaceCount()) return false;
  linework_->Face(nextFace_, face_);
  area.Reset();
  static_cast<EntityAttributes&>(area) = StyleOfFace();
  StoreFace(area);
  StoreLabels(nextFace_++, area);
  return true;
}

// A line that bounds most of what its layer bounds stands for it.
const EntityAttributes& AreaBuilding::StyleOfFace() {
  static const EntityAttributes kNone = [] {
    EntityAttributes none;
    none.Layer = "0";
    none.bType = kPolyline;
    none.Closed = true;
    return none;
  }();
  std::map<std::size_t, double> lengths;  // by style
  for (const auto& side : face_.sides) {
    Element& element = elements_[chains_[side.chain]];
    element.used = true;
    lengths[element.style] += side.length;
  }
  std::map<std::string_view, double> ofLayers;
  for (const auto& [style, length] : lengths) ofLayers[styles_[style].Layer] += length;
  const EntityAttributes* chosen = &kNone;
  std::pair<double, double> most;  // of the layer, of the style
  for (const auto& [style, length] : lengths) {
    const std::pair<double, double> own{ofLayers[styles_[style].Layer], length};
    if (own > most) {
      most = own;
      chosen = &styles_[style];
    }
  }
  return *chosen;
}

void AreaBuilding::StoreFace(tEntity& area) {
  chain_.clear();
  for (const VertexChain& ring : face_.rings) chain_.insert(chain_.end(), ring.begin(), ring.end());
  StoreVertices(area, chain_);
  tEntity::Index end = 0;
  for (std::size_t ring = 0; ring + 1 < face_.rings.size(); ++ring) {
    end += std::ssize(face_.rings[ring]);
    area.Parts.push_back(end);
  }
  area.IsArea = true;
  place_ = chain_.front();
}

void AreaBuilding::StoreLabels(std::size_t face, tEntity& area) {
  const std::size_t begin = nextLabel_;
  while (nextLabel_ < labels_.size() && labels_[nextLabel_].face == face) ++nextLabel_;
  const auto labels = std::span(labels_).subspan(begin, nextLabel_ - begin);
  if (!hasLabels_) return;
  if (labels.empty()) losses_.Add(WarningKind::AreasUnlabelled);
  if (labels.size() > 1) {
    losses_.Add(WarningKind::LabelsJoined);
    SortForReading(labels);
  }
  for (const Label& label : labels) area.Text.append(area.Text.empty() ? "" : " ").append(label.text);
}

// Row by row, as the first text runs. Texts are of a row that lie within half its height of the first one in it.
void AreaBuilding::SortForReading(std::span<Label> labels) {
  const double angle = labels[0].angle * std::numbers::pi / 180, size = labels[0].size;
  const double dx = std::cos(angle), dy = std::sin(angle);
  const auto along = [&](const Label& label) { return label.x * dx + label.y * dy; };
  const auto above = [&](const Label& label) { return label.y * dx - label.x * dy; };
  std::stable_sort(labels.begin(), labels.end(), [&](const auto& a, const auto& b) { return above(a) > above(b); });
  for (auto row = labels.begin(); row != labels.end();) {
    const double least = above(*row) - size / 2;
    const auto end = std::find_if(row, labels.end(), [&](const Label& label) { return !(above(label) >= least); });
    const auto next = end == row ? row + 1 : end;
    std::stable_sort(row, next, [&](const auto& a, const auto& b) { return along(a) < along(b); });
    row = next;
  }
}

std::string AreaBuilding::Where() const { return NumberText(place_.x) + ", " + NumberText(place_.y); }

void AreaBuilding::Account(KindCounts& intoAreas, KindCounts& skipped) const {
  if (!alone_) return;
  for (const Element& element : elements_) (element.used ? intoAreas : skipped).Add(element.kind);
  for (const Label& label : labels_) (label.face == kNoFace ? skipped : intoAreas).Add(std::int16_t{kText});
}

}  // namespace tesselink
