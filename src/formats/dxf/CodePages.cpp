#include "formats/dxf/CodePages.h"

#include <algorithm>

#include "core/Text.h"

namespace tesselink {
namespace {

struct Page {
  std::string_view name;
  std::u16string_view letters;
};

constexpr Page kPages[] = {
#include "formats/dxf/CodePages.inc"
};

static_assert(std::all_of(std::begin(kPages), std::end(kPages), [](const Page& p) { return p.letters.size() == 128; }));

}  // namespace

std::u16string_view UpperHalf(std::string_view codePage) {
  for (const Page& page : kPages) {
    if (EqualsIgnoringCase(page.name, codePage)) return page.letters;
  }
  return {};
}

}  // namespace tesselink
