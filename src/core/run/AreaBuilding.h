// SPDX-License-Identifier: MIT
// Areas made of the lines of a drawing.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <tuple>
#include <vector>

#include "core/element/VertexChains.h"
#include "core/element/tEntity.h"
#include "core/run/FormatTable.h"
#include "core/run/LayerSelection.h"
#include "core/run/Linework.h"

namespace tesselink {

class KindCounts;
class Losses;

/// Takes the lines and labels of a whole run and then delivers the areas that the lines bound. An area has the layer
/// that bounds most of its outer ring, all else from the longest line of that layer there, and as its `Text` the labels
/// in it, joined by blanks as one reads them. All lines are held in memory.
class AreaBuilding {
 public:
  /// The losses outlive this. `linework` does the work.
  AreaBuilding(std::unique_ptr<Linework> linework, const FilterOptions& options, AreaPlace place, Losses& losses);

  /// Notes an element that bounds areas or labels them. `curvesHeld`: the writer does not count its curves as lost.
  /// Whether the output gets nothing else of it.
  bool Takes(const tEntity& entity, bool curvesHeld);
  /// Finds the areas when all has been read, and counts what bounds none. False when that was cancelled.
  bool Build(const std::function<bool()>& cancelled);
  /// The next area; false when there are no more.
  bool Next(tEntity& area);
  /// Where the area lies that was delivered last, as in "2083.5, 1410.25"; while they are being found, where what is
  /// counted lies.
  std::string Where() const;
  /// Counts the elements that the output gets nothing else of: those that are part of an area now, and the rest.
  void Account(KindCounts& intoAreas, KindCounts& skipped) const;
  /// Names and patterns of label layers that no text lies on.
  std::vector<std::string> UnfoundLayers() const { return labelLayers_.Unfound(); }

 private:
  struct Element {
    std::size_t style;
    std::int16_t kind;
    bool used = false;
  };
  struct Label {
    double x, y, angle, size;
    std::string text;
    std::size_t face;
  };
  using StyleKey =
      std::tuple<std::string, std::string, std::string, std::int32_t, std::int32_t, bool, StyleSource, StyleSource>;

  bool TakeLabel(const tEntity& text);
  bool TakeCurve(const tEntity& circleOrArc);
  bool TakeChain(const tEntity& chain);
  void AddChain();
  std::size_t StyleOf(const tEntity& entity);
  void PlaceLabels();
  void Tell(WarningKind kind, const LooseLines& lines);
  const EntityAttributes& StyleOfFace();
  void StoreFace(tEntity& area);
  void StoreLabels(std::size_t face, tEntity& area);
  static void SortForReading(std::span<Label> labels);

  std::unique_ptr<Linework> linework_;
  CurveTolerance tolerance_;
  bool alone_;
  Losses& losses_;
  LayerSelection labelLayers_;
  bool hasLabels_;
  double snap_;

  std::map<StyleKey, std::size_t> styleNumbers_;
  std::vector<EntityAttributes> styles_;
  std::vector<Element> elements_;
  std::vector<std::size_t> chains_;  // the element that each is of
  std::vector<Label> labels_;        // in the end by their area
  std::size_t nextFace_ = 0, nextLabel_ = 0;
  Vertex place_;

  LineworkFace face_;
  VertexChain chain_;
  tEntity drawn_;
};

}  // namespace tesselink
