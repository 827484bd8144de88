// SPDX-License-Identifier: MIT
// The language of the window's texts.
#pragma once

#include <QLocale>
#include <QTranslator>

namespace tesselink {

/// Shows the window's texts in a person's language as long as it lives, where there is a translation; else in English.
/// The toolkit's own texts (buttons, file dialogs) follow where the system has them in that language.
class Language {
 public:
  /// An application must exist. Of the languages of the locale the first counts that is English or that there is a
  /// translation for in the folder.
  explicit Language(const QLocale& locale = QLocale::system(),
                    const QString& folder = QStringLiteral(":/translations"));

 private:
  QTranslator own_, toolkit_;
};

}  // namespace tesselink
