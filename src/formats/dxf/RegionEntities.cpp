// SPDX-License-Identifier: MIT
#include "formats/dxf/RegionEntities.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/element/VertexAlgebra.h"
#include "core/io/Numbers.h"
#include "core/run/Report.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"
#include "formats/dxf/ObjectCoordinates.h"
#include "formats/dxf/RingNesting.h"

namespace tesselink {
namespace {

// A record: "NAME $link ... values #". Which links and values a record has differs between the versions of the format;
// what a link leads to tells what it means.
struct Record {
  std::string_view name;
  std::vector<std::int64_t> links;
  std::string_view values;  // behind the last link
  bool isReversed = false;
};

// More links or numbers than any record has that is read.
constexpr std::size_t kMostOfRecord = 20;

// The next word. A text is given with its length, as "@7 unknown"; it is passed over.
std::string_view TakeWord(std::string_view& text) {
  constexpr std::string_view kBlanks = " \t\n";
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
  text.remove_prefix(word.size());
  if (word.size() > 1 && word[0] == '@') {
    const std::size_t length = std::strtoul(std::string(word.substr(1)).c_str(), nullptr, 10);
    text.remove_prefix(std::min(text.size(), length < text.size() ? length + 1 : text.size()));
  }
  return word;
}

// The numbers that a text begins with.
std::vector<double> NumbersOf(std::string_view text) {
  std::vector<double> numbers;
  for (double value = 0; numbers.size() < kMostOfRecord; numbers.push_back(value)) {
    const std::string_view word = TakeWord(text);
    const char* const end = word.data() + word.size();
    if (word.empty() || ParseNumber(word.data(), end, value) != end) return numbers;
  }
  return numbers;
}

Vertex VertexAt(const std::vector<double>& numbers, std::size_t at) {
  return {numbers[at], numbers[at + 1], numbers[at + 2]};
}

// The rings of all faces of the data.
class Boundary {
 public:
  explicit Boundary(EntityContext& context) : context_(context) { ReadRecords(context.regionData); }

  // Draws the rings as wires; false where an edge is of another kind, or the records do not go together.
  bool Draw() {
    for (const Record& record : records_) {
      if (record.name == "loop" && !DrawRing(record)) return false;
    }
    Move();
    return std::all_of(context_.chain.begin(), context_.chain.end(), IsFinite);
  }

 private:
  void ReadRecords(std::string_view text) {
    Record record;
    std::string_view before;
    while (!text.empty()) {
      const std::string_view word = TakeWord(text);
      if (word == "#") {
        if (!record.links.empty()) {
          record.values = record.values.substr(0, static_cast<std::size_t>(word.data() - record.values.data()));
        }
        records_.push_back(std::move(record));
        record = {};
      } else if (word.starts_with('$')) {
        if (record.links.empty()) record.name = before;
        if (record.links.size() == kMostOfRecord) continue;
        record.links.push_back(std::strtoll(std::string(word.substr(1)).c_str(), nullptr, 10));
        record.values = text;
      } else if (word == "reversed") {
        record.isReversed = true;
      }
      before = word;
    }
  }

  // The first record of a name that another one links to, after so many others of that name; null where there is none.
  template <typename IsWanted>
  const Record* Linked(const Record& record, const IsWanted& isWanted, int skipped = 0) const {
    for (const std::int64_t link : record.links) {
      if (link < 0 || link >= std::ssize(records_)) continue;
      const Record& linked = records_[static_cast<std::size_t>(link)];
      if (isWanted(linked.name) && skipped-- == 0) return &linked;
    }
    return nullptr;
  }
  const Record* Linked(const Record& record, const char* name, int skipped = 0) const {
    return Linked(
        record, [name](std::string_view other) { return other == name; }, skipped);
  }

  bool DrawRing(const Record& loop) {
    VertexChain& chain = context_.chain;
    const std::size_t begin = chain.size();
    const Record *const first = Linked(loop, "coedge"), *at = first;
    do {
      const Record* edge = at == nullptr ? nullptr : Linked(*at, "edge");
      if (edge == nullptr || !DrawEdge(*edge)) return false;
      if (at->isReversed) std::reverse(piece_.begin(), piece_.end());
      chain.insert(chain.end(), piece_.begin() + (chain.size() > begin ? 1 : 0), piece_.end());
      at = Linked(*at, "coedge");
      if (++steps_ > records_.size() || chain.size() > kMostVerticesOfChain) return false;
    } while (at != first);
    EndRing(context_, begin);
    return true;
  }

  std::optional<Vertex> PlaceOf(const Record* vertex) const {
    const Record* point = vertex == nullptr ? nullptr : Linked(*vertex, "point");
    const auto numbers = point == nullptr ? std::vector<double>() : NumbersOf(point->values);
    return numbers.size() < 3 ? std::nullopt : std::optional(VertexAt(numbers, 0));
  }

  // From its first vertex to its second one; a closed edge has the same for both.
  bool DrawEdge(const Record& edge) {
    const auto start = PlaceOf(Linked(edge, "vertex")), end = PlaceOf(Linked(edge, "vertex", 1));
    const Record* curve = Linked(edge, [](std::string_view name) { return name.ends_with("-curve"); });
    piece_.clear();
    if (!start || curve == nullptr) return false;
    if (curve->name == "straight-curve" && end) {
      piece_.assign({*start, *end});
      return true;
    }
    return curve->name == "ellipse-curve" &&
           DrawArc(NumbersOf(curve->values), edge.isReversed, *start, end.value_or(*start));
  }

  // Of an ellipse by its centre, its normal, its longer axis and the ratio of the other one.
  bool DrawArc(const std::vector<double>& ellipse, bool isReversed, const Vertex& start, const Vertex& end) {
    if (ellipse.size() < 10) return false;
    const Vertex centre = VertexAt(ellipse, 0), normal = VertexAt(ellipse, 3), major = VertexAt(ellipse, 6);
    if (!(Length(normal) > 0) || !(Length(major) > 0) || !(ellipse[9] > 0)) return false;
    const double turn = isReversed ? -1 : 1;
    const Vertex minor = (turn * ellipse[9] / Length(normal)) * Cross(normal, major);
    const auto parameter = [&](const Vertex& at) {
      const Vertex arm = at - centre;
      return std::atan2(Dot(arm, minor) / Dot(minor, minor), Dot(arm, major) / Dot(major, major));
    };
    constexpr double kNone = 1e-9;
    const double from = parameter(start);
    double sweep = std::remainder(parameter(end) - from, kTurn);
    if (sweep < kNone) sweep += kTurn;
    NoteCurve(context_, AppendEllipse(piece_, centre, major, minor, from, sweep, context_.source.tolerance));
    if (piece_.empty()) return false;
    piece_.front() = start;
    piece_.back() = end;
    return true;
  }

  // A transform holds for all that the data describes: three rows, a shift and a scale.
  void Move() {
    const auto found =
        std::find_if(records_.begin(), records_.end(), [](const Record& r) { return r.name == "transform"; });
    if (found == records_.end()) return;
    const auto numbers = NumbersOf(found->values);
    constexpr std::size_t kNumbers = 13;
    if (numbers.size() < kNumbers) return;
    const std::size_t at = numbers.size() - kNumbers;
    const double scale = numbers[at + 12];
    for (Vertex& v : context_.chain) {
      v = scale * (v.x * VertexAt(numbers, at) + v.y * VertexAt(numbers, at + 3) + v.z * VertexAt(numbers, at + 6)) +
          VertexAt(numbers, at + 9);
    }
  }

  EntityContext& context_;
  std::vector<Record> records_;
  std::size_t steps_ = 0;  // from edge to edge, each of which is of one ring
  VertexChain piece_;      // of the edge at hand
};

// A letter stands for the one as far from the other end of ASCII; "^ " is the letter that begins codes.
void AppendDeciphered(std::string& text, std::string_view line) {
  constexpr int kBothEnds = 159;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const auto letter = static_cast<unsigned char>(line[i]);
    text += letter <= ' ' || letter > '~' ? ' ' : static_cast<char>(kBothEnds - letter);
    if (line[i] == '^' && i + 1 < line.size() && line[i + 1] == ' ') ++i;
  }
}

}  // namespace

void GatherRegion(EntityContext& context) {
  context.regionData.clear();
  GatherWith(context, [&](int code) {
    constexpr int kLine = 1, kRest = 3;
    if (code != kLine && code != kRest) return false;
    if (code == kLine) context.regionData += '\n';
    AppendDeciphered(context.regionData, context.source.scanner.Text());
    return true;
  });
}

bool MakeRegion(EntityContext& context, tEntity& element) {
  if (context.regionData.empty()) {
    context.source.report.Undelivered(context.type);
    return false;
  }
  if (!Boundary(context).Draw()) return Damaged(context, "has an edge that is neither straight nor elliptic");
  if (context.wires.IsEmpty()) return Damaged(context, "has no boundary that surrounds anything");
  return StoreRings(context, element, kAnyDepth);
}

}  // namespace tesselink
