#include "app/QtSettings.h"

#include <gtest/gtest.h>

#include <QSettings>

#include "support/Support.h"

namespace tesselink {
namespace {

TEST(QtSettings, KeysAreLayerNamesOfAnyBytes) {
  const Folder folder;
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QString::fromStdString(folder.Path("")));
  const std::map<std::string, std::string> pairs{{"ROAD", "RD00001"},
                                                 {"a/b\\c", "1"},
                                                 {"100% [x]=;", ""},
                                                 {"Stra\xDF"
                                                  "e",
                                                  "\xE4 b"},
                                                 {"road", "2"}};
  QtSettings settings;
  for (const auto& [key, value] : pairs) settings.Set("Tesselink", "XRef", key, value);
  settings.Set("Tesselink", "Other", "ROAD", "x");
  settings.Set("CDFMAP", "Locations", "$CDF.MAP", "/maps/$CDF.MAP");
  QtSettings later;
  EXPECT_EQ(later.All("Tesselink", "XRef"), pairs);
  EXPECT_EQ(later.Get("CDFMAP", "Locations", "$CDF.MAP", "?"), "/maps/$CDF.MAP");
  EXPECT_EQ(later.Get("CDFMAP", "Locations", "none", "?"), "?");
  EXPECT_EQ(later.Get("Tesselink", "XRef", "100% [x]=;", "?"), "") << "an empty value is not an absent one";
}

}  // namespace
}  // namespace tesselink
