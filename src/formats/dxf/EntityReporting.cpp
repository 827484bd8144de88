#include "formats/dxf/EntityReporting.h"

#include <algorithm>

#include "core/io/Utf8.h"
#include "core/run/Report.h"
#include "formats/dxf/Drawing.h"
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

void WarnUnless(EntityContext& context, bool enough) {
  if (enough) return;
  Warn(context, WarningKind::CoarseCurves,
       "departs from its chain by more than the tolerance, which takes more vertices than a curve may have");
}

bool Damaged(EntityContext& context, const std::string& what) {
  Warn(context, WarningKind::Damaged, what + "; it was skipped", context.type);
  return false;
}

void TellBlockNotDrawn(EntityContext& context, std::string_view name) {
  const std::int64_t drawn = context.source.drawing.Blocks().DrawnBy(context.groups.Name());
  if (drawn == 0) return;
  // Only the first text is kept, and there may be as many inserts as entities.
  std::string text;
  if (!context.blocksTold) {
    constexpr std::size_t kLongest = 100;
    text = context.source.scanner.PlaceText(context.groups.Place()) + ": block " +
           std::string(CutUtf8(name, kLongest)) + " draws " +
           (drawn == 1 ? "1 entity that is" : std::to_string(drawn) + " entities that are") +
           " not converted; inserts come as points";
    context.blocksTold = true;
  }
  context.source.report.Warn(WarningKind::BlocksNotDrawn, text);
}

}  // namespace tesselink
