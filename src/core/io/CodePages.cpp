#include "core/io/CodePages.h"

#include <algorithm>

#include "core/io/Text.h"
#include "core/io/Utf8.h"

namespace tesselink {
namespace {

struct Page {
  std::string_view name;
  std::u16string_view letters;
};

constexpr Page kPages[] = {
#include "core/io/CodePages.inc"
};

static_assert(std::all_of(std::begin(kPages), std::end(kPages), [](const Page& p) { return p.letters.size() == 128; }));

}  // namespace

std::u16string_view UpperHalf(std::string_view codePage) {
  for (const Page& page : kPages) {
    if (EqualsIgnoringCase(page.name, codePage)) return page.letters;
  }
  return {};
}

void AppendDecoded(std::string& text, std::string_view bytes, std::u16string_view upperHalf) {
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 128) {
      text += c;
    } else {
      AppendUtf8(text, upperHalf[byte - 128U]);
    }
  }
}

}  // namespace tesselink
