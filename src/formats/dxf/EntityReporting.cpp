// SPDX-License-Identifier: MIT
#include "formats/dxf/EntityReporting.h"

#include <algorithm>

#include "core/run/Report.h"
#include "formats/dxf/GroupScanner.h"

namespace tesselink {

std::string ShownType(std::string_view name) {
  constexpr std::size_t kLongest = 40;
  const bool plain = !name.empty() && name.size() <= kLongest &&
                     std::all_of(name.begin(), name.end(), [](char c) { return c > ' ' && c <= '~'; });
  return plain ? std::string(name) : "unknown";
}

void WarnAt(EntityContext& context, std::int64_t place, WarningKind kind, const std::string& what,
            std::string_view subject) {
  context.source.report.Warn(kind, context.source.scanner.PlaceText(place) + ": " + context.type + ": " + what,
                             subject);
}

void Warn(EntityContext& context, WarningKind kind, const std::string& what, std::string_view subject) {
  WarnAt(context, context.groups.Place(), kind, what, subject);
}

void NoteCurve(EntityContext& context, bool enough) {
  context.curved = true;
  context.lost |= kLostCurve;
  if (enough) return;
  Warn(context, WarningKind::CoarseCurves,
       "departs from its chain by more than the tolerance, which takes more vertices than a curve may have");
}

bool Damaged(EntityContext& context, const std::string& what) {
  Warn(context, WarningKind::Damaged, what + "; it was skipped", context.type);
  return false;
}

}  // namespace tesselink
