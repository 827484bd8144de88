// SPDX-License-Identifier: MIT
#include "ui/OptionNaming.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include "ui/OptionCaptions.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

class OptionNaming {
  Q_DECLARE_TR_FUNCTIONS(OptionNaming)
 public:
  static QString Of(const QString& option, const QString& value) {
    if (option == "text-height") return tr("Height in the dialog \"DBF Fields\"");
    if (option == "dialect") return value == "standard" ? tr("Dialect: Standard") : tr("Dialect: Classic");
    const QString control = OptionCaption(option.toStdString(), value.toStdString());
    return control.isEmpty() ? tr("a setting of the command line") : tr("\"%1\" under More").arg(control);
  }
};

}  // namespace

QString OptionInWords(std::string_view option, std::string_view value) {
  return OptionNaming::Of(Shown(std::string(option)), Shown(std::string(value)));
}

// A value is one of those that texts name, or stands for one, in capitals.
QString WithoutOptions(const QString& text) {
  static const QRegularExpression option(
      "(?<![\\w-])--([a-z][a-z-]*)(?: (standard|classic|each|expand|both|drop|2007|[A-Z][A-Z0-9]*)\\b)?");
  QString words;
  qsizetype end = 0;
  for (auto matches = option.globalMatch(text); matches.hasNext();) {
    const QRegularExpressionMatch match = matches.next();
    words += text.mid(end, match.capturedStart() - end) + OptionNaming::Of(match.captured(1), match.captured(2));
    end = match.capturedEnd();
  }
  return words + text.mid(end);
}

}  // namespace tesselink
