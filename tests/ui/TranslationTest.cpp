// SPDX-License-Identifier: MIT
// The windows in each language: texts are translated, nothing is cut, and no two controls share an underlined letter.
#include <QAbstractButton>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QStyleFactory>
#include <QTest>
#include <QXmlStreamReader>
#include <map>

#include "ui/Gallery.h"
#include "ui/Language.h"
#include "ui/UiText.h"
#include "ui/UiWording.h"

namespace tesselink {
namespace {

QString TextOf(const QWidget& control) {
  if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) return button->text();
  const auto* label = qobject_cast<const QLabel*>(&control);
  return label == nullptr || label->textFormat() == Qt::RichText ? QString() : label->text();
}

// Texts that bear to be cut have a tip that holds them whole, or are broken into lines.
bool IsCut(const QWidget& control) {
  const QString first = TextOf(control).section('\n', 0, 0);
  if (first.isEmpty() || control.toolTip().contains(first)) return false;
  const auto* label = qobject_cast<const QLabel*>(&control);
  if (label != nullptr && label->wordWrap()) return control.height() < label->heightForWidth(control.width());
  return control.width() < control.minimumSizeHint().width() || control.height() < control.minimumSizeHint().height();
}

// Texts that have another form in a language; where a window shows one of them all the same, it does not ask for it.
QStringList Translated(const QString& language) {
  QFile file(QStringLiteral(TESSELINK_TRANSLATION_SOURCES "/tesselink_%1.ts").arg(language));
  QStringList texts;
  if (!file.open(QIODevice::ReadOnly)) return texts;
  QXmlStreamReader xml(&file);
  for (QString source; !xml.atEnd(); xml.readNext()) {
    if (xml.name() == QStringLiteral("source") && xml.isStartElement()) source = xml.readElementText();
    if (xml.name() != QStringLiteral("translation") || !xml.isStartElement()) continue;
    if (xml.readElementText() != source) texts += source;
  }
  return texts;
}

QChar Mnemonic(const QWidget& control) {
  const QString text = TextOf(control);
  const auto* label = qobject_cast<const QLabel*>(&control);
  if (label != nullptr && label->buddy() == nullptr) return {};
  for (qsizetype i = text.indexOf('&'); i >= 0 && i + 1 < text.size(); i = text.indexOf('&', i + 2)) {
    if (text[i + 1] != '&') return text[i + 1].toLower();
  }
  return {};
}

}  // namespace

class TranslationTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QVERIFY(QDir::setCurrent(TESSELINK_EXAMPLES));
  }

  void TheFirstLanguageThatIsThereCounts() {
    const QString source = "&Recent";
    const auto shown = [&] { return QCoreApplication::translate("tesselink::InputPanel", "&Recent"); };
    {
      const Language german(QLocale("de_AT"), TESSELINK_TRANSLATIONS);
      QVERIFY(shown() != source);
    }
    const Language none(QLocale("ja_JP"), TESSELINK_TRANSLATIONS);
    QCOMPARE(shown(), source);
  }

  void WhatIsToldFromElsewhereIsTranslated() {
    const std::string message = "Warning: \r\nCould not find file /tmp/b.dbf",
                      other = "caf\xe9: no message of the table";
    RunSummary summary;
    summary.report.Warn(WarningKind::Heights, "plat.asc: 2");
    const Language german(QLocale("de"), TESSELINK_TRANSLATIONS);
    QCOMPARE(InWindowLanguage(message, "/tmp/b.dbf"), "Warnung:\nDie Datei /tmp/b.dbf wurde nicht gefunden");
    QCOMPARE(InWindowLanguage(other), Shown(other));
    QCOMPARE(Shown(AccountOf(summary, kUiWording).gone.at(0)),
             "z-Werte, die die Ausgabe nicht halten kann, wurden ausgelassen.\nplat.asc: 2");
  }

  void TextsAreWholeAndLettersOfOneControl_data() {
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << "en";
    QTest::newRow("German") << "de";
  }
  void TextsAreWholeAndLettersOfOneControl() {
    QFETCH(QString, language);
    const Language texts(QLocale(language), TESSELINK_TRANSLATIONS);
    const QStringList otherwise = Translated(language);
    QCOMPARE(otherwise.isEmpty(), language == "en");
    QStringList faults;
    Gallery([&](const QString& name, QWidget& window, int milliseconds) {
      window.show();
      QTest::qWait(std::min(milliseconds, 100));
      std::map<QChar, QString> letters;
      for (const QWidget* control : window.findChildren<QWidget*>()) {
        if (!control->isVisible()) continue;
        if (IsCut(*control)) faults += name + ": cut: " + TextOf(*control);
        if (otherwise.contains(TextOf(*control))) faults += name + ": not translated: " + TextOf(*control);
        const QChar letter = Mnemonic(*control);
        if (letter.isNull()) continue;
        QString& other = letters[letter];
        if (!other.isEmpty()) faults += name + ": one letter: " + other + ", " + TextOf(*control);
        other = TextOf(*control);
      }
      window.hide();
    }).ShowAll();
    QVERIFY2(faults.isEmpty(), qPrintable('\n' + faults.join('\n')));
  }
};

}  // namespace tesselink

QTEST_MAIN(tesselink::TranslationTest)
#include "TranslationTest.moc"
