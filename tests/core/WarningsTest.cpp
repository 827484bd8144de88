// SPDX-License-Identifier: MIT
// The table of warnings and the page that documents it.
#include "core/run/Warnings.h"

#include <gtest/gtest.h>

#include <set>

#include "core/io/Files.h"
#include "core/run/Report.h"
#include "support/Support.h"

namespace tesselink {
namespace {

TEST(Warnings, AreEachDocumentedUnderAnotherName) {
  const std::string page = Folder::Get(TESSELINK_SOURCE "/docs/warnings.md");
  std::set<std::string_view> names;
  for (const WarningEntry& entry : kWarnings) {
    EXPECT_TRUE(names.insert(entry.name).second) << entry.name;
    const char* const gravity = entry.gravity == Gravity::Gone      ? "gone"
                                : entry.gravity == Gravity::Changed ? "changed"
                                                                    : "remark";
    const std::string meaning = Replaced(std::string(entry.words), "|", "\\|");
    EXPECT_TRUE(Holds(page, "\n| `" + std::string(entry.name) + "` | " + gravity + " | " + meaning + " |\n"))
        << entry.name;
    EXPECT_EQ(EntryNamed(entry.name), &entry);
    EXPECT_EQ(EntryNamed(std::string(entry.name) + " of B"), &entry);
  }
}

TEST(Warnings, OfAKindCountTogetherUnlessTheirSubjectsDiffer) {
  Report report;
  report.Warn(WarningKind::Damaged, "first", "LINE");
  report.Warn(WarningKind::Damaged, "second", "LINE");
  report.Warn(WarningKind::Damaged, "third", "3DLINE");
  report.Warn(WarningKind::Damaged, "fourth");
  std::string rows;
  for (const Warning& warning : report.Warnings()) rows += Row(warning.kind, warning.text, warning.count) + "; ";
  EXPECT_EQ(rows, "damaged LINE first 2; damaged 3DLINE third 1; damaged fourth 1; ");
}

}  // namespace
}  // namespace tesselink
