// The table of warnings and the page that documents it.
#include "core/run/Warnings.h"

#include <gtest/gtest.h>

#include <set>

#include "core/run/Report.h"
#include "support/Support.h"

namespace tesselink {
namespace {

TEST(Warnings, AreEachDocumentedUnderAnotherName) {
  const std::string page = Folder::Get(TESSELINK_SOURCE "/docs/warnings.md");
  std::set<std::string_view> names;
  for (const WarningEntry& entry : kWarnings) {
    EXPECT_TRUE(names.insert(entry.name).second) << entry.name;
    EXPECT_NE(page.find("\n| `" + std::string(entry.name) + "` | "), std::string::npos) << entry.name;
  }
}

TEST(Warnings, OfAKindCountTogetherUnlessTheirSubjectsDiffer) {
  Report report;
  report.Warn(WarningKind::Damaged, "first", "LINE");
  report.Warn(WarningKind::Damaged, "second", "LINE");
  report.Warn(WarningKind::Damaged, "third", "3DLINE");
  report.Warn(WarningKind::Damaged, "fourth");
  ASSERT_EQ(report.Warnings().size(), 3U);
  EXPECT_EQ(report.Warnings()[0].kind + report.Warnings()[0].text, "damaged LINEfirst");
  EXPECT_EQ(report.Warnings()[0].count, 2);
  EXPECT_EQ(report.Warnings()[1].kind, "damaged 3DLINE");
  EXPECT_EQ(report.Warnings()[2].kind, "damaged");
}

}  // namespace
}  // namespace tesselink
