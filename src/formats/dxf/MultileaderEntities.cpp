// SPDX-License-Identifier: MIT
#include "formats/dxf/MultileaderEntities.h"

#include <algorithm>
#include <cmath>

#include "core/element/VertexAlgebra.h"
#include "core/run/Report.h"
#include "formats/dxf/BlockEntities.h"
#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"

namespace tesselink {
namespace {

enum LineType : std::int32_t { kInvisible = 0, kStraight = 1, kSpline = 2 };

// The groups of a multileader, whose meaning depends on the braces that they stand in.
class Parts {
 public:
  explicit Parts(EntityContext& context) : context_(context), note_(context.multileader), points_(context.scratch) {
    note_.Clear();
    points_.clear();
  }

  // Whether the group is one of them.
  bool Take(int code) {
    switch (within_) {
      case Within::Entity:
        return TakeOfEntity(code);
      case Within::Context:
        TakeOfContext(code);
        break;
      case Within::Leader:
        TakeOfLeader(code);
        break;
      case Within::Line:
        TakeOfLine(code);
        break;
    }
    return true;
  }
  // To be called once more at the end: braces may be missing.
  void End() {
    if (within_ == Within::Line) note_.lines.push_back(points_.size());
    if (!note_.leaders.empty()) note_.leaders.back().lines = note_.lines.size();
  }

 private:
  enum class Within { Entity, Context, Leader, Line };

  bool IsSet() const { return context_.source.scanner.Integer().value_or(0) != 0; }
  void Set(double& value) {
    const double number = NumberHere(context_);
    if (std::isfinite(number)) value = number;
  }
  void Set(Vertex& v, int code) { TakeCoordinate(context_, v, code); }

  bool TakeOfEntity(int code) {
    if (code == 300) {
      within_ = Within::Context;
    } else if (code == 170) {
      note_.type = context_.source.scanner.Integer().value_or(kStraight);
    } else if (code == 291) {
      note_.showsLanding = IsSet();
    } else if (code == 302) {
      note_.attributes += context_.source.scanner.Keyword().empty() ? 0 : 1;
    }
    return code >= 10 && code < 60;
  }

  void TakeOfContext(int code) {
    const GroupScanner& scanner = context_.source.scanner;
    if (code == 301) {
      within_ = Within::Entity;
    } else if (code == 302) {
      End();
      within_ = Within::Leader;
      note_.leaders.emplace_back();
    } else if (code == 290) {
      note_.hasText = IsSet();
    } else if (code == 296) {
      note_.hasBlock = IsSet();
    } else if (code == 304) {
      note_.text = scanner.Text();
    } else if (code >= 10 && code < 40) {
      TakePoint(code);
    } else if (code == 40) {
      Set(scale_);
    } else if (code == 41) {
      Set(note_.place.size);
    } else if (code == 43) {
      Set(note_.place.width);
      note_.place.width *= scale_;
    } else if (code == 45) {
      Set(note_.place.spacing);
    } else if (code == 46) {
      Set(note_.blockRotation);
    } else if (code == 171) {
      note_.place.across = std::clamp(scanner.Integer().value_or(1), 1, 3) - 1;
    } else if (code == 341) {
      note_.record = HandleOf(scanner.Keyword());
    }
  }

  void TakePoint(int code) {
    switch (code % 10) {
      case 1:
        return Set(note_.place.normal, code);
      case 2:
        return Set(note_.place.place, code);
      case 3:
        return Set(note_.along, code);
      case 4:
        return Set(note_.blockNormal, code);
      case 5:
        return Set(note_.blockPlace, code);
      case 6:
        return Set(note_.blockScale, code);
      default:
        return;
    }
  }

  void TakeOfLeader(int code) {
    Multileader::Leader& leader = note_.leaders.back();
    if (code == 303) {
      End();
      within_ = Within::Context;
    } else if (code == 304) {
      within_ = Within::Line;
    } else if (code == 291) {
      leader.hasLanding = IsSet();
    } else if (code == 271) {
      leader.isVertical = IsSet();
    } else if (code == 10 || code == 20 || code == 30) {
      Set(leader.end, code);
    } else if (code == 11 || code == 21 || code == 31) {
      Set(leader.landing, code);
    } else if (code == 40) {
      Set(leader.length);
    }
  }

  void TakeOfLine(int code) {
    if (code == 305) {
      End();
      within_ = Within::Leader;
    } else if (code == 10 || code == 20 || code == 30) {
      if (code == 10) points_.emplace_back();
      if (points_.size() > (note_.lines.empty() ? 0 : note_.lines.back())) Set(points_.back(), code);
    }
  }

  EntityContext& context_;
  Multileader& note_;
  VertexChain& points_;
  Within within_ = Within::Entity;
  double scale_ = 1;
};

Vertex LandingOf(const Multileader::Leader& leader) {
  const double length = Length(leader.landing);
  if (!leader.hasLanding || !(length > 0)) return {leader.length, 0, 0};
  return (leader.length / length) * leader.landing;
}

// The vertices of a line, from `begin` to the end of the chain, as the spline through them.
void DrawSpline(EntityContext& context, std::size_t begin, const Vertex& landing, bool isVertical) {
  VertexChain& chain = context.chain;
  SplineCurve& spline = context.spline;
  spline.Clear();
  spline.fit.assign(chain.begin() + static_cast<std::ptrdiff_t>(begin), chain.end());
  spline.startTangent = spline.fit[1] - spline.fit[0];
  spline.endTangent = isVertical ? spline.fit.back() - spline.fit[spline.fit.size() - 2] : landing;
  chain.resize(begin);
  NoteCurve(context, AppendSpline(chain, spline, context.source.tolerance));
}

void DrawLines(EntityContext& context) {
  const Multileader& note = context.multileader;
  VertexChain& chain = context.chain;
  std::size_t line = 0, point = 0;
  for (const Multileader::Leader& leader : note.leaders) {
    const Vertex landing = LandingOf(leader);
    for (; line < leader.lines; ++line) {
      const std::size_t begin = chain.size();
      for (; point < note.lines[line]; ++point) chain.push_back(context.scratch[point]);
      const bool isSpline = note.type == kSpline;
      if (leader.isVertical || (note.showsLanding && !isSpline)) chain.push_back(leader.end);
      if (!leader.isVertical) chain.push_back(leader.end + landing);
      if (chain.size() < begin + 2) {
        chain.resize(begin);
        continue;
      }
      if (isSpline) DrawSpline(context, begin, landing, leader.isVertical);
      context.wires.End(chain.size(), false);
    }
  }
}

void BeginText(EntityContext& context) {
  Multileader& note = context.multileader;
  context.lines.columns.Clear();
  if (context.source.drawing.Text().DecodeMText(note.text, context.lines.text, '\n', '\n'))
    context.lost |= kLostFormats;
  TextBlock& place = note.place;
  if (IsFinite(note.along)) place.angle = std::atan2(note.along.y, note.along.x) / kRadians;
  BeginLines(context, place);
}

void DrawBlock(EntityContext& context) {
  const Multileader& note = context.multileader;
  const auto scale = [](double factor) { return std::isfinite(factor) && factor != 0 ? factor : 1; };
  BlockPlace at;
  at.plane = ObjectCoordinates(note.blockNormal);
  at.place = at.plane.FromWorld(note.blockPlace);
  at.scale = {scale(note.blockScale.x), scale(note.blockScale.y), scale(note.blockScale.z)};
  at.rotation = note.blockRotation / kRadians;
  if (IsFinite(at.place)) DrawBlockOfRecord(context, note.record, at);
  if (note.attributes > 0) context.source.report.Undelivered("ATTRIB of a MULTILEADER", note.attributes);
}

}  // namespace

void Multileader::Clear() {
  leaders.clear();
  lines.clear();
  text.clear();
  hasText = hasBlock = false;
  place = {};
  place.size = 4;
  along = {1, 0, 0};
  record = 0;
  blockPlace = {};
  blockNormal = {0, 0, 1};
  blockScale = {1, 1, 1};
  blockRotation = 0;
  attributes = 0;
  type = kStraight;
  showsLanding = true;
}

void GatherMultileader(EntityContext& context) {
  Parts parts(context);
  GatherWith(context, [&](int code) { return parts.Take(code); });
  parts.End();
}

bool MakeMultileader(EntityContext& context, tEntity& element) {
  const Multileader& note = context.multileader;
  if (note.type != kInvisible) DrawLines(context);
  if (!context.wires.IsEmpty()) context.lost |= kLostArrow;
  if (note.hasText) BeginText(context);
  if (note.hasBlock) DrawBlock(context);
  if (context.wires.IsEmpty() && !note.hasText && !note.hasBlock)
    return Damaged(context, "holds nothing that is drawn");
  return StoreWire(context, element) || StoreTextLine(context, element);
}

}  // namespace tesselink
