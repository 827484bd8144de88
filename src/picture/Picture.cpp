// SPDX-License-Identifier: MIT
#include "picture/Picture.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <tuple>
#include <utility>

#include "core/io/Utf8.h"
#include "core/run/Losses.h"
#include "core/run/Reduction.h"

namespace tesselink {
namespace {

constexpr std::size_t kLeastBudget = 1024;
constexpr std::size_t kLongestText = 250;
// Far beyond it, vertices share the outermost cells, so that wild values are thinned like all others.
constexpr double kOutermostCell = 35184372088832;  // 2^45

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

void Picture::Add(const tEntity& entity, std::uint32_t number) {
  if (entity.PointCount() == -1) return;
  if ((entity.Lost & kLostHiding) != 0) return;
  while (IsThinning()) Thin();
  const std::int16_t kind = entity.bType;
  if (!IsChain(kind) && !IsCurve(kind) && !IsPointOrText(kind)) return;
  style_ = styles_.Of(entity);
  Count(entity, number);
  rested_ = false;
  if (entity.Bulges.empty() && !IsCurve(kind)) return AddPlain(entity);
  Losses unheeded;
  tEntity reduced = entity;
  Reduction({.parts = true, .areas = true}, unheeded, tolerance_).Reduce(reduced, [this](const tEntity& plain) {
    AddPlain(plain);
    return true;
  });
}

void Picture::AddPlain(const tEntity& entity) {
  const std::int16_t kind = entity.bType;
  if (IsChain(kind)) AddChain(entity);
  if (kind == kPoint) AddPoints(entity);
  if (kind == kText) AddText(entity);
}

void Picture::Count(const tEntity& entity, std::uint32_t number) {
  ++counts_.elements;
  element_ = number != 0 ? number : static_cast<std::uint32_t>(counts_.elements);
  ring_ = false;
  if (entity.bType == kPoint) ++counts_.points;
  if (entity.bType == kText) ++counts_.texts;
  if (IsChain(entity.bType)) CountChain(entity);
}

// The classic dialect delivers an area ring by ring; those behind the first are known by their record.
void Picture::CountChain(const tEntity& entity) {
  const bool begins = entity.IsArea || (entity.Lost & kLostArea) != 0;
  const bool goesOn = !begins && entity.Record > 0 && entity.Record == areaRecord_;
  ring_ = begins || goesOn;
  areaRecord_ = ring_ ? entity.Record : 0;
  if (begins) {
    ++counts_.areas;
    areaElement_ = element_;
  } else if (goesOn) {
    element_ = areaElement_;
    generation_ += rested_ ? 1 : 0;
  }
}

PictureCounts Picture::Counts() const {
  PictureCounts counts = counts_;
  counts.layers = static_cast<std::int64_t>(Layers().size());
  return counts;
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
  if (closed && !ring_ && !meets && Takes(first)) PutVertex(first);
  ring_ ? EndRing() : EndChain();
}

void Picture::AddText(const tEntity& entity) {
  const PicturePoint at{entity.x(0), entity.Y(0)};
  if (!Takes(at)) return;
  if (texts_.size() == budget_.texts) {
    PutPoint(at);
  } else {
    const bool ofTable = entity.Record > 0 && entity.TextUnits == "M";
    texts_.push_back({at, entity.TextSize, entity.TextAng, entity.TextJust, style_, element_, ofTable,
                      std::string(CutUtf8(entity.Text, kLongestText))});
  }
}

void Picture::PutPoint(PicturePoint at) {
  if (now_.vertices.size() >= budget_.vertices) MakeRoom();
  DrawPoint(at);
}

void Picture::DrawPoint(PicturePoint at) {
  if (cell_ > 0) {
    const CellPlace place = CellOf(at);
    if (!IsNew(place, place, true)) return;
  }
  now_.vertices.push_back(at);
  LiftPen(MarkKind::Point);
}

void Picture::BeginChain() { penSet_ = moved_ = false; }

void Picture::PutVertex(PicturePoint at) {
  if (now_.vertices.size() + 2 > budget_.vertices) MakeRoom();
  DrawTo(at);
}

void Picture::DrawTo(PicturePoint at) {
  if (cell_ == 0) {
    now_.vertices.push_back(at);
  } else {
    const CellPlace place = CellOf(at);
    if (ring_) {
      if (penSet_ && place == penPlace_) return;
      now_.vertices.push_back(at);
    } else if (penSet_) {
      if (place == penPlace_) return;
      moved_ = true;
      if (!IsNew(penPlace_, place, false)) {
        LiftPen();
      } else {
        if (now_.vertices.size() == RunBegin()) now_.vertices.push_back(pen_);
        now_.vertices.push_back(at);
      }
    }
    penPlace_ = place;
  }
  pen_ = at;
  penSet_ = true;
}

void Picture::EndChain() {
  if (cell_ > 0 && penSet_ && !moved_ && IsNew(penPlace_, penPlace_, false)) now_.vertices.push_back(pen_);
  LiftPen();
  penSet_ = false;
}

// A ring stays whole while it encloses anything that is seen.
void Picture::EndRing() {
  constexpr std::size_t kLeast = 4;
  const std::size_t begin = RunBegin();
  if (now_.vertices.size() > begin && now_.vertices.back() != now_.vertices[begin]) {
    const PicturePoint first = now_.vertices[begin];
    now_.vertices.push_back(first);
  }
  if (now_.vertices.size() - begin < kLeast && cell_ > 0) {
    DrawFlat();
  } else if (cell_ > 0 && !IsNewRing()) {
    now_.vertices.resize(begin);
  }
  LiftPen(MarkKind::Ring);
  penSet_ = false;
}

// Draws a ring that has shrunk to a line or a place as what it is.
void Picture::DrawFlat() {
  const std::vector<PicturePoint> flat(now_.vertices.begin() + static_cast<std::ptrdiff_t>(RunBegin()),
                                       now_.vertices.end());
  now_.vertices.resize(RunBegin());
  ring_ = false;
  BeginChain();
  for (const PicturePoint at : flat) DrawTo(at);
  EndChain();
  ring_ = true;
}

void Picture::LiftPen(MarkKind kind) {
  if (now_.vertices.size() <= RunBegin()) return;
  now_.marks.push_back({static_cast<std::uint32_t>(now_.vertices.size()), element_, style_, kind});
}

// One pass as a rule; where it makes little room, the next one comes the sooner. Cells so large that little is left end
// the loop in any case. The chain at work comes last and goes on from there.
void Picture::MakeRoom() {
  const std::size_t enough = budget_.vertices - 2;
  do {
    const auto [style, element, ring] = std::tuple(style_, element_, ring_);
    const PicturePoint pen = pen_;
    const bool penSet = penSet_, moved = moved_;
    const std::size_t begin = RunBegin(), end = now_.vertices.size();
    BeginThinning();
    while (IsThinning()) Thin();
    std::tie(style_, element_, ring_) = std::tuple(style, element, ring);
    BeginChain();
    for (std::size_t i = begin; i < end; ++i) DrawTo(before_.vertices[i]);
    if (begin < end) continue;
    pen_ = pen;
    penPlace_ = CellOf(pen);
    penSet_ = penSet;
    moved_ = moved;
  } while (now_.vertices.size() > enough);
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

void Picture::BeginThinning() {
  Coarsen();
  std::fill(drawn_.begin(), drawn_.end(), 0);
  std::swap(now_, before_);
  now_.vertices.clear();
  now_.marks.clear();
  thinned_ = 0;
}

void Picture::ThinOn() {
  if (!IsThinning()) BeginThinning();
  Thin();
}

// Draws some of the marks anew with the cells as they are now.
void Picture::Thin() {
  constexpr std::size_t kAhead = 12, kAtOnce = 32'768;
  const auto& [vertices, marks] = before_;
  std::size_t next = thinned_ == 0 ? 0 : marks[thinned_ - 1].end;
  const std::size_t enough = next + kAtOnce;
  for (; thinned_ < marks.size() && next < enough; ++thinned_) {
    if (thinned_ + kAhead < marks.size()) Foresee(marks[thinned_ + kAhead], vertices[marks[thinned_ + kAhead].end - 1]);
    const PictureMark& mark = marks[thinned_];
    style_ = mark.style;
    element_ = mark.element;
    ring_ = mark.kind == MarkKind::Ring;
    BeginChain();
    const bool point = mark.kind == MarkKind::Point;
    for (; next < mark.end; ++next) point ? DrawPoint(vertices[next]) : DrawTo(vertices[next]);
    if (!point) ring_ ? EndRing() : EndChain();
  }
  if (thinned_ < marks.size()) return;
  thinned_ = kAllThinned;
  ++generation_;
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

// Bits that stand for what runs between these cells.
std::uint64_t Picture::BitsOf(CellPlace from, CellPlace to, std::uint32_t style, bool point) {
  const auto [low, high] = std::minmax(from, to);
  const auto number = [](std::int64_t value) { return static_cast<std::uint64_t>(value); };
  return Mixed(number(low.x) * 0x9E3779B97F4A7C15U + number(low.y) * 0xC2B2AE3D27D4EB4FU +
               number(high.x) * 0x165667B19E3779F9U + number(high.y) * 0xD6E8FEB86659FD93U +
               number(style * 2 + (point ? 1 : 0)) * 0xA0761D6478BD642FU);
}

// Whether nothing of this look runs between these cells yet; from now on something does.
bool Picture::IsNew(CellPlace from, CellPlace to, bool point) { return Notes(BitsOf(from, to, style_, point)); }

// Fetches the place at which a point will be noted: half a million of them, each waited for, hold up a window.
void Picture::Foresee(const PictureMark& mark, PicturePoint at) const {
  if (mark.kind != MarkKind::Point) return;
  const CellPlace place = CellOf(at);
  __builtin_prefetch(&drawn_[BitsOf(place, place, mark.style, true) & (drawn_.size() - 1)], 1);
}

// The same of the ring at work, through all its cells.
bool Picture::IsNewRing() {
  std::uint64_t bits = style_;
  for (std::size_t i = RunBegin(); i < now_.vertices.size(); ++i) {
    const CellPlace place = CellOf(now_.vertices[i]);
    bits = Mixed(bits * 0x9E3779B97F4A7C15U + static_cast<std::uint64_t>(place.x) * 0xC2B2AE3D27D4EB4FU +
                 static_cast<std::uint64_t>(place.y));
  }
  return Notes(Mixed(~bits));
}

// Whether the bits are noted for the first time.
bool Picture::Notes(std::uint64_t bits) {
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
  const std::vector<PicturePoint>& vertices = Shown().vertices;
  const std::size_t count = vertices.size() + texts_.size();
  if (count < 8) return bounds_;
  const auto place = [&](std::size_t i) { return i < vertices.size() ? vertices[i] : texts_[i - vertices.size()].at; };
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
