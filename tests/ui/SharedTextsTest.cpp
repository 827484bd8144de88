// What the toolkit and the rest of the program must understand alike: names of files, and settings that earlier
// versions kept by the toolkit's own class.
#include <gtest/gtest.h>

#include "support/Support.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

TEST(SharedTexts, EveryEncodingIsShownAndItsFileFoundAgain) {
  const Folder folder;
  const std::string latin = folder.Put("caf\xe9.asc", ""), utf8 = folder.Put("caf\xc3\xa9s.asc", "");
  EXPECT_TRUE(Shown(latin).endsWith(QStringLiteral("caf\u00e9.asc")));
  EXPECT_TRUE(Shown(utf8).endsWith(QStringLiteral("caf\u00e9s.asc")));
  for (const std::string& path : {latin, utf8}) EXPECT_EQ(PathOf(Shown(path)), path);
  EXPECT_EQ(PathOf(QStringLiteral("new caf\u00e9.asc")), "new caf\xc3\xa9.asc");
  EXPECT_EQ(Shown("one\r\n\r\ntwo"), QStringLiteral("one\n\ntwo"));
}

}  // namespace
}  // namespace tesselink
