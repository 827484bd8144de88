// SPDX-License-Identifier: MIT
#include "ui/Language.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace tesselink {
namespace {

// The texts as they stand in the source.
bool IsSourceLanguage(const QString& name) { return QLocale(name).language() == QLocale::English; }

}  // namespace

Language::Language(const QLocale& locale, const QString& folder) {
  for (const QString& name : locale.uiLanguages()) {
    if (IsSourceLanguage(name)) return;
    const QLocale wanted(name);
    if (!own_.load(wanted, "tesselink", "_", folder)) continue;
    QCoreApplication::installTranslator(&own_);
    const QString toolkits = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (toolkit_.load(wanted, "qtbase", "_", toolkits)) QCoreApplication::installTranslator(&toolkit_);
    return;
  }
}

}  // namespace tesselink
