// SPDX-License-Identifier: MIT
// What the toolkit and the rest of the program must understand alike: names of files, and settings that earlier
// versions kept by the toolkit's own class.
#include <gtest/gtest.h>

#include <QSettings>

#include "app/SettingsFiles.h"
#include "support/Support.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

QString Encoded(const std::string& text) {
  return QString::fromLatin1(QByteArray::fromStdString(text).toPercentEncoding());
}

TEST(SharedTexts, EveryEncodingIsShownAndItsFileFoundAgain) {
  const Folder folder;
  const std::string latin = folder.Put("caf\xe9.asc", ""), utf8 = folder.Put("caf\xc3\xa9s.asc", "");
  EXPECT_TRUE(Shown(latin).endsWith(QStringLiteral("caf\u00e9.asc")));
  EXPECT_TRUE(Shown(utf8).endsWith(QStringLiteral("caf\u00e9s.asc")));
  for (const std::string& path : {latin, utf8}) EXPECT_EQ(PathOf(Shown(path)), path);
  EXPECT_EQ(PathOf(QStringLiteral("new caf\u00e9.asc")), "new caf\xc3\xa9.asc");
  EXPECT_EQ(Shown("one\r\n\r\ntwo"), QStringLiteral("one\n\ntwo"));
}

// Every byte that a layer's name may hold, as a key and as a value, in either direction.
TEST(SharedTexts, SettingsAreThoseOfTheToolkit) {
  const Folder folder;
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QString::fromStdString(folder.Path("")));
  SettingsFiles settings(folder.Path("Tesselink"));
  std::map<std::string, std::string> pairs, fromToolkit;
  for (int byte = 1; byte < 256; ++byte) {
    const std::string text{static_cast<char>(byte)};
    pairs["k" + text + "1"] = fromToolkit["k" + text + "1"] = text;
    pairs["k" + text + "2"] = text + " " + text;
  }
  {
    QSettings store(QSettings::IniFormat, QSettings::UserScope, "Tesselink", "Tesselink");
    for (const auto& [key, value] : fromToolkit) store.setValue("XRef/" + Encoded(key), Encoded(value));
  }
  EXPECT_EQ(settings.All("Tesselink", "XRef"), fromToolkit);
  settings.SetAll("Tesselink", "XRef", {pairs.begin(), pairs.end()});
  EXPECT_EQ(settings.Problem(), "");
  EXPECT_EQ(settings.All("Tesselink", "XRef"), pairs);
  QSettings store(QSettings::IniFormat, QSettings::UserScope, "Tesselink", "Tesselink");
  EXPECT_EQ(static_cast<std::size_t>(store.allKeys().size()), pairs.size());
  for (const auto& [key, value] : pairs) EXPECT_EQ(store.value("XRef/" + Encoded(key)).toString(), Encoded(value));
}

}  // namespace
}  // namespace tesselink
