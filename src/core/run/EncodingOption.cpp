// SPDX-License-Identifier: MIT
#include "core/run/EncodingOption.h"

namespace tesselink {

FormatOption EncodingOption() {
  return {.name = "encoding",
          .help =
              "Encoding of the input's texts, where it tells none or a\nwrong one, as UTF-8, 1252, ISO-8859-2, GBK "
              "or\nShift_JIS (standard dialect)",
          .value = "NAME",
          .check =
              [](const std::string& name) {
                return CodePage::Named(name) != nullptr
                           ? std::string()
                           : "\"" + name +
                                 "\" is no encoding that is known; examples are UTF-8, 1252, ANSI_1251, DOS866, "
                                 "ISO-8859-2, KOI8-R, GBK, Big5, Shift_JIS, EUC-KR";
              },
          .standardOnly = true};
}

const CodePage* ChosenPage(const FilterOptions& options) {
  const std::string name = options.own.Text("encoding");
  return name.empty() ? nullptr : CodePage::Named(name);
}

}  // namespace tesselink
