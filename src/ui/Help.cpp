// SPDX-License-Identifier: MIT
#include "ui/Help.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "ui/Named.h"

// Resources of a static library are taken in where they are named, outside of every namespace.
static void TakeInPages() { Q_INIT_RESOURCE(help); }

namespace tesselink {
namespace {

QDialogButtonBox* CloseButton(QDialog& dialog) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  buttons->button(QDialogButtonBox::Close)->setText(QApplication::translate("tesselink::HelpWindow", "&Close"));
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  return buttons;
}

QString Licence() {
  QFile file(":/help/LICENSE");
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent) {
  TakeInPages();
  setObjectName("helpWindow");
  setWindowTitle(tr("Using Tesselink"));
  auto* pages = Named(new QTextBrowser, "helpPages");
  pages->setAccessibleName(tr("Manual"));
  pages->setOpenExternalLinks(true);
  pages->setSource(QUrl("qrc:/help/window.md"));
  auto* back = Named(new QPushButton(tr("&Back")), "helpBack");
  back->setEnabled(false);
  connect(pages, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
  connect(back, &QPushButton::clicked, pages, &QTextBrowser::backward);
  QDialogButtonBox* buttons = CloseButton(*this);
  buttons->addButton(back, QDialogButtonBox::ActionRole);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(pages);
  layout->addWidget(buttons);
  resize(fontMetrics().averageCharWidth() * 100, fontMetrics().lineSpacing() * 32);
}

AboutBox::AboutBox(QWidget* parent) : QDialog(parent) {
  TakeInPages();
  setObjectName("aboutBox");
  setWindowTitle(tr("About Tesselink"));
  auto* icon = new QLabel;
  icon->setPixmap(QApplication::windowIcon().pixmap(QSize(48, 48), devicePixelRatioF()));
  auto* text = Named(new QLabel, "aboutText");
  text->setTextFormat(Qt::RichText);
  text->setWordWrap(true);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text->setText(
      "<h3>Tesselink " TESSELINK_VERSION "</h3><p>" +
      tr("Converts drawings between the formats of mapping packages.").toHtmlEscaped() + "</p><p>" +
      tr("Built on Qt %1 (LGPL), PROJ (coordinate systems), GEOS (areas), SQLite (GeoPackages) and SimpleIni.")
          .arg(QString(qVersion()))
          .toHtmlEscaped() +
      "</p>");
  auto* licence = Named(new QPlainTextEdit(Licence()), "aboutLicence");
  licence->setAccessibleName(tr("Licence"));
  licence->setReadOnly(true);
  licence->setTabChangesFocus(true);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(icon, 0, Qt::AlignHCenter);
  layout->addWidget(text);
  layout->addWidget(licence, 1);
  layout->addWidget(CloseButton(*this));
  resize(fontMetrics().averageCharWidth() * 96, fontMetrics().lineSpacing() * 24);
}

}  // namespace tesselink
