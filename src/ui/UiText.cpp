// SPDX-License-Identifier: MIT
#include "ui/UiText.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>
#include <QUtf8StringView>
#include <algorithm>
#include <filesystem>

#include "core/io/Files.h"

namespace tesselink {
namespace {

bool Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

bool IsLatin1(const QString& text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 256; });
}

}  // namespace

QString Shown(const std::string& text) {
  const auto length = static_cast<qsizetype>(text.size());
  const bool utf8 = QUtf8StringView(text.data(), length).isValidUtf8();
  QString shown = utf8 ? QString::fromUtf8(text.data(), length) : QString::fromLatin1(text.data(), length);
  return shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

QString InWindowLanguage(const std::string& text, const std::string& subject) {
  const std::string pattern = subject.empty() ? text : Replaced(text, subject, "%1");
  const QString told = QCoreApplication::translate("Messages", pattern.c_str());
  if (told == QString::fromStdString(pattern)) return Shown(text);
  return Shown(told.toStdString()).replace("%1", Shown(subject));
}

std::string PathOf(const QString& shown) {
  std::string path = QFile::encodeName(shown).toStdString();
  if (Exists(path) || !IsLatin1(shown)) return path;
  const std::string bytes = shown.toLatin1().toStdString();
  return Exists(bytes) ? bytes : path;
}

}  // namespace tesselink
