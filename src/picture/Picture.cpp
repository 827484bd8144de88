// SPDX-License-Identifier: MIT
#include "picture/Picture.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "core/run/Losses.h"
#include "core/run/Reduction.h"
#include "picture/PictureColours.h"

namespace tesselink {
namespace {

constexpr std::size_t kLeastBudget = 1024;
constexpr std::size_t kLongestName = 250;
constexpr std::size_t kLongestText = 250;
// Far beyond it, vertices share the outermost cells, so that wild values are thinned like all others.
constexpr double kOutermostCell = 35184372088832;  // 2^45

// The first bytes of a text, up to the end of a character of UTF-8.
std::string Clipped(const std::string& text, std::size_t most) {
  if (text.size() <= most) return text;
  std::size_t length = most;
  while (length > most - 4 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
  return text.substr(0, length);
}

// SplitMix64's last steps.
std::uint64_t Mixed(std::uint64_t bits) {
  bits = (bits ^ (bits >> 30U)) * 0xBF58476D1CE4E5B9U;
  bits = (bits ^ (bits >> 27U)) * 0x94D049BB133111EBU;
  return bits ^ (bits >> 31U);
}

double Side(const Extents& box) { return std::max(box.maxX - box.minX, box.maxY - box.minY); }

}  // namespace

Picture::Picture(PictureBudget budget, const CurveTolerance& tolerance) : budget_(budget), tolerance_(tolerance) {
  budget_.vertices = std::max(budget_.vertices, kLeastBudget);
}

void Picture::Add(const tEntity& entity) {
  if (entity.PointCount() == -1) return;
  if ((entity.Lost & kLostHiding) != 0) return;
  const std::int16_t kind = entity.bType;
  if (!IsChain(kind) && !IsCurve(kind) && !IsPointOrText(kind)) return;
  Count(entity);
  layer_ = LayerOf(entity);
  if (entity.Bulges.empty() && !IsCurve(kind)) return AddPlain(entity);
  Losses unheeded;
  tEntity reduced = entity;
  Reduction({}, unheeded, tolerance_).Reduce(reduced, [this](const tEntity& plain) {
    AddPlain(plain);
    return true;
  });
}

// The classic dialect delivers an area ring by ring; those behind the first are known by their record.
void Picture::Count(const tEntity& entity) {
  ++counts_.elements;
  const std::int16_t kind = entity.bType;
  counts_.points += kind == kPoint ? 1 : 0;
  counts_.texts += kind == kText ? 1 : 0;
  if (!IsChain(kind)) return;
  const bool begins = entity.IsArea || (entity.Lost & kLostArea) != 0;
  const bool goesOn = !begins && entity.Record > 0 && entity.Record == areaRecord_;
  areaRecord_ = begins || goesOn ? entity.Record : 0;
  if (begins) ++counts_.areas;
  if (begins || goesOn) return;
  const tEntity::Index last = entity.PointCount();
  const bool meets = last > 1 && entity.x(0) == entity.x(last) && entity.Y(0) == entity.Y(last);
  if (entity.Closed || meets) ++counts_.closedChains;
}

PictureCounts Picture::Counts() const {
  PictureCounts counts = counts_;
  counts.layers = static_cast<std::int64_t>(layers_.size());
  return counts;
}

void Picture::AddPlain(const tEntity& entity) {
  const std::int16_t kind = entity.bType;
  if (IsChain(kind)) AddChain(entity);
  if (kind == kPoint) AddPoints(entity);
  if (kind == kText) AddText(entity);
}

std::uint8_t Picture::LayerOf(const tEntity& entity) {
  const bool same = layer_ < layers_.size() && !layers_[layer_].others && layers_[layer_].name == entity.Layer;
  const std::uint8_t number = same ? layer_ : LayerNumber(Clipped(entity.Layer, kLongestName));
  PictureLayer& layer = layers_[number];
  ++layer.elements;
  if (!layer.coloured && entity.RGB != 0) {
    layer.colour = entity.RGB & 0xFFFFFF;
    layer.coloured = true;
    ++generation_;
  }
  return number;
}

std::uint8_t Picture::LayerNumber(const std::string& name) {
  const auto known = layerNumbers_.find(name);
  if (known != layerNumbers_.end()) return known->second;
  const auto number = static_cast<std::uint8_t>(std::min(layers_.size(), kMostLayers));
  if (number == kMostLayers) {
    if (layers_.size() == kMostLayers) layers_.push_back({"other layers", 0, PaletteColour(number), true, true});
    return number;
  }
  const auto named = ColourNamed(name);
  layers_.push_back({name, 0, named.value_or(PaletteColour(number)), named.has_value()});
  layerNumbers_.emplace(name, number);
  return number;
}

bool Picture::Takes(PicturePoint at) {
  if (!std::isfinite(at.x) || !std::isfinite(at.y)) {
    ++leftOut_;
    return false;
  }
  bounds_.Add(at.x, at.y, 0);
  return true;
}

void Picture::AddPoints(const tEntity& entity) {
  const tEntity::Index last = entity.PointCount();
  for (tEntity::Index i = 0; i <= last; ++i) {
    const PicturePoint at{entity.x(i), entity.Y(i)};
    if (Takes(at)) PutPoint(at);
  }
}

void Picture::AddChain(const tEntity& entity) {
  for (std::size_t part = 0; part < entity.PartCount(); ++part) {
    const auto begin = static_cast<std::size_t>(entity.PartBegin(part)),
               end = static_cast<std::size_t>(entity.PartEnd(part));
    AddPart(entity.AllX().subspan(begin, end - begin), entity.AllY().subspan(begin, end - begin), entity.Closed);
  }
}

void Picture::AddPart(std::span<const double> xs, std::span<const double> ys, bool closed) {
  const std::size_t count = xs.size();
  if (count == 0) return;
  BeginChain();
  for (std::size_t i = 0; i < count; ++i) {
    const PicturePoint at{xs[i], ys[i]};
    if (Takes(at)) PutVertex(at);
  }
  const PicturePoint first{xs.front(), ys.front()};
  const bool meets = xs.back() == first.x && ys.back() == first.y;
  if (closed && !meets && Takes(first)) PutVertex(first);
  EndChain();
}

void Picture::AddText(const tEntity& entity) {
  const PicturePoint at{entity.x(0), entity.Y(0)};
  if (!Takes(at)) return;
  if (texts_.size() == budget_.texts) {
    PutPoint(at);
  } else {
    texts_.push_back(
        {at, entity.TextSize, entity.TextAng, entity.TextJust, layer_, Clipped(entity.Text, kLongestText)});
  }
}

void Picture::PutPoint(PicturePoint at) {
  if (vertices_.size() >= budget_.vertices) MakeRoom();
  DrawPoint(at);
}

void Picture::DrawPoint(PicturePoint at) {
  if (cell_ > 0) {
    const CellPlace place = CellOf(at);
    if (!IsNew(place, place, true)) return;
  }
  vertices_.push_back(at);
  LiftPen(true);
}

void Picture::BeginChain() { penSet_ = moved_ = false; }

void Picture::PutVertex(PicturePoint at) {
  if (vertices_.size() + 2 > budget_.vertices) MakeRoom();
  DrawTo(at);
}

void Picture::DrawTo(PicturePoint at) {
  if (cell_ == 0) {
    vertices_.push_back(at);
  } else {
    const CellPlace place = CellOf(at);
    if (penSet_) {
      if (place == penPlace_) return;
      moved_ = true;
      if (!IsNew(penPlace_, place, false)) {
        LiftPen();
      } else {
        if (vertices_.size() == RunBegin()) vertices_.push_back(pen_);
        vertices_.push_back(at);
      }
    }
    penPlace_ = place;
  }
  pen_ = at;
  penSet_ = true;
}

void Picture::EndChain() {
  if (cell_ > 0 && penSet_ && !moved_ && IsNew(penPlace_, penPlace_, false)) vertices_.push_back(pen_);
  LiftPen();
  penSet_ = false;
}

void Picture::LiftPen(bool point) {
  if (vertices_.size() > RunBegin()) marks_.push_back({static_cast<std::uint32_t>(vertices_.size()), layer_, point});
}

// One pass as a rule, so that a window that adds an element is not held up for long; the next pass comes the sooner.
// Cells so large that little is left end the loop in any case.
void Picture::MakeRoom() {
  const std::size_t enough = budget_.vertices - budget_.vertices / 64;
  do {
    Coarsen();
    Rewrite();
  } while (vertices_.size() > enough);
}

void Picture::Coarsen() {
  const Extents view = View();
  double side = Side(view);
  if (cell_ == 0) {
    anchor_ = {view.minX, view.minY};
    side = std::isfinite(side) ? side : 1e300;
    cell_ = side > 0 ? std::max(side / kFirstCells, 1e-300) : 1;
    perCell_ = 1 / cell_;
    drawn_.resize(std::bit_ceil(budget_.vertices * 2));
    return;
  }
  do {
    cell_ *= 2;
    perCell_ /= 2;
  } while (cell_ * kFirstCells < side);
}

// Draws everything anew with the cells as they are now. The chain at work comes last and goes on from there.
void Picture::Rewrite() {
  ++generation_;
  std::fill(drawn_.begin(), drawn_.end(), 0);
  const std::vector<PictureMark> marks = std::exchange(marks_, {});
  const std::vector<PicturePoint> vertices = std::exchange(vertices_, {});
  const std::uint8_t layer = layer_;
  const PicturePoint pen = pen_;
  const bool penSet = penSet_, moved = moved_;
  std::size_t next = 0;
  for (const PictureMark& mark : marks) {
    layer_ = mark.layer;
    BeginChain();
    for (; next < mark.end; ++next) mark.point ? DrawPoint(vertices[next]) : DrawTo(vertices[next]);
    if (!mark.point) EndChain();
  }
  layer_ = layer;
  BeginChain();
  for (std::size_t i = next; i < vertices.size(); ++i) DrawTo(vertices[i]);
  if (next < vertices.size()) return;
  pen_ = pen;
  penPlace_ = CellOf(pen);
  penSet_ = penSet;
  moved_ = moved;
}

Picture::CellPlace Picture::CellOf(PicturePoint at) const {
  const auto place = [this](double value, double anchor) {
    const double cells = (value - anchor) * perCell_;
    // A difference that overflowed may be no number by now.
    if (!(cells > -kOutermostCell)) return -static_cast<std::int64_t>(kOutermostCell);
    const auto towardsZero = static_cast<std::int64_t>(std::min(cells, kOutermostCell));
    return towardsZero - (cells < static_cast<double>(towardsZero) ? 1 : 0);
  };
  return {place(at.x, anchor_.x), place(at.y, anchor_.y)};
}

// Whether nothing of this layer runs between these cells yet; from now on something does.
bool Picture::IsNew(CellPlace from, CellPlace to, bool point) {
  const auto [low, high] = std::minmax(from, to);
  const auto number = [](std::int64_t value) { return static_cast<std::uint64_t>(value); };
  const std::uint64_t bits = Mixed(number(low.x) * 0x9E3779B97F4A7C15U + number(low.y) * 0xC2B2AE3D27D4EB4FU +
                                   number(high.x) * 0x165667B19E3779F9U + number(high.y) * 0xD6E8FEB86659FD93U +
                                   number(layer_ * 2 + (point ? 1 : 0)) * 0xA0761D6478BD642FU);
  const auto fingerprint = static_cast<std::uint32_t>(bits >> 32U) | 1;  // never that of a free place
  const std::size_t mask = drawn_.size() - 1;
  std::size_t at = static_cast<std::size_t>(bits) & mask;
  while (drawn_[at] != 0 && drawn_[at] != fingerprint) at = (at + 1) & mask;
  if (drawn_[at] == fingerprint) return false;
  drawn_[at] = fingerprint;
  return true;
}

Extents Picture::View() const {
  constexpr std::size_t kSample = 4096;
  constexpr double kFar = 30;
  const std::size_t count = vertices_.size() + texts_.size();
  if (count < 8) return bounds_;
  const auto place = [this](std::size_t i) {
    return i < vertices_.size() ? vertices_[i] : texts_[i - vertices_.size()].at;
  };
  std::vector<double> xs, ys;
  const std::size_t step = (count + kSample - 1) / kSample;
  for (std::size_t i = 0; i < count; i += step) {
    xs.push_back(place(i).x);
    ys.push_back(place(i).y);
  }
  const auto middle = [](std::vector<double>& values) {
    std::sort(values.begin(), values.end());
    const std::size_t cut = std::max<std::size_t>(values.size() / 20, 1);
    return std::pair(values[cut], values[values.size() - 1 - cut]);
  };
  const auto [lowX, highX] = middle(xs);
  const auto [lowY, highY] = middle(ys);
  const double far = std::max(highX - lowX, highY - lowY) * kFar;
  const bool allNear = bounds_.minX >= lowX - far && bounds_.maxX <= highX + far && bounds_.minY >= lowY - far &&
                       bounds_.maxY <= highY + far;
  if (far == 0 || allNear) return bounds_;
  Extents view;
  for (std::size_t i = 0; i < count; ++i) {
    const PicturePoint at = place(i);
    const bool isNear = at.x >= lowX - far && at.x <= highX + far && at.y >= lowY - far && at.y <= highY + far;
    if (isNear) view.Add(at.x, at.y, 0);
  }
  return view;
}

bool Picture::LeavesOutOfView() const {
  const Extents view = View();
  return view.minX > bounds_.minX || view.maxX < bounds_.maxX || view.minY > bounds_.minY || view.maxY < bounds_.maxY;
}

}  // namespace tesselink
