// SPDX-License-Identifier: MIT
#include "formats/dxf/LeaderEntities.h"

#include "core/element/VertexAlgebra.h"
#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"

namespace tesselink {
namespace {

constexpr std::int32_t kForText = 0;     // group 73
constexpr std::int32_t kSplinePath = 1;  // group 72

// The line goes on below a text that stands on it, by the text's width.
void AppendHook(EntityContext& context, const DimensionStyle& style, const Vertex& along) {
  const EntityGroups& groups = context.groups;
  VertexChain& chain = context.chain;
  const double width = groups.Number(41, 0);
  const bool hasHook = groups.Integer(73, 3) == kForText && groups.Integer(75, 1) != 0;
  if (chain.empty() || !hasHook || !style.isTextAbove || !(width > 0)) return;
  const double sign = groups.Integer(74, 1) == 1 ? -1 : 1;
  chain.push_back(chain.back() + (sign * (style.Scaled(style.gap) + width)) * along);
}

}  // namespace

bool StyleOverride::Take(int code, DimensionStyle& style) {
  constexpr int kText = 1000, kApplication = 1001, kBrace = 1002, kReal = 1040, kWhole = 1070;
  if (code < kText) return false;
  const GroupScanner& scanner = context_.source.scanner;
  if (code == kText || code == kApplication) isWithin_ = code == kText && scanner.Keyword() == "DSTYLE";
  if (!isWithin_ || code == kText || code == kBrace) {
    wanted_ = 0;
  } else if (wanted_ == 0) {
    wanted_ = code == kWhole ? scanner.Integer().value_or(0) : 0;
  } else {
    if (code == kWhole || code == kReal) style.Take(wanted_, scanner.Number());
    wanted_ = 0;
  }
  return true;
}

void GatherLeader(EntityContext& context) {
  VertexChain& chain = context.chain;
  DimensionStyle style;
  StyleOverride own(context);
  Vertex along{1, 0, 0};
  GatherWith(context, [&](int code) {
    const bool isPoint = code == 10 || code == 20 || code == 30;
    if (code == 10) chain.emplace_back();
    if (isPoint && !chain.empty()) {
      TakeCoordinate(context, chain.back(), code);
    } else if (code == 211 || code == 221 || code == 231) {
      (code < 220 ? along.x : code < 230 ? along.y : along.z) = NumberHere(context);
    } else if (code == 3) {
      style = context.source.drawing.Dimensions().Of(context.source.scanner.Keyword());
    } else {
      return isPoint || own.Take(code, style);
    }
    return true;
  });
  AppendHook(context, style, along);
}

bool MakeLeader(EntityContext& context, tEntity& element) {
  VertexChain& chain = context.chain;
  if (chain.size() < 2) return Damaged(context, "has fewer than two vertices");
  if (context.groups.Integer(71, 1) != 0) context.lost |= kLostArrow;
  if (context.groups.Integer(72, 0) == kSplinePath) {
    SplineCurve& spline = context.spline;
    spline.Clear();
    spline.fit.swap(chain);
    spline.startTangent = spline.fit[1] - spline.fit[0];
    spline.endTangent = spline.fit.back() - spline.fit[spline.fit.size() - 2];
    chain.clear();
    NoteCurve(context, AppendSpline(chain, spline, context.source.tolerance));
  }
  return StoreChain(context, element, kPolyline);
}

}  // namespace tesselink
