// SPDX-License-Identifier: MIT
#include "ui/ResultPage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

#include "core/io/Paths.h"
#include "ui/Launcher.h"
#include "ui/Named.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

QString Html(const QString& text) { return text.toHtmlEscaped(); }

QString Linked(const std::string& path, const QString& shown) {
  if (!HasLauncher()) return Html(shown);
  return "<a href=\"" + UrlOf(path).toString(QUrl::FullyEncoded).toHtmlEscaped() + "\">" + Html(shown) + "</a>";
}

// A heading and a list below it; nothing where the list is empty.
QString Section(const QString& heading, const QStringList& items) {
  if (items.isEmpty()) return {};
  QString html = "<p style='margin-top:8px;margin-bottom:2px'><b>" + Html(heading) +
                 "</b></p><ul style='margin-top:0px;margin-bottom:0px'>";
  for (const QString& item : items) html += "<li>" + item + "</li>";
  return html + "</ul>";
}

}  // namespace

ResultPage::ResultPage(QWidget* parent) : QWidget(parent) {
  icon_ = Named(new QLabel, "HeadlineIcon");
  headline_ = Named(new QLabel, "Headline");
  QFont font = headline_->font();
  font.setPointSizeF(font.pointSizeF() * 1.5);
  font.setBold(true);
  headline_->setFont(font);
  summary_ = Named(new QTextBrowser, "Summary");
  summary_->setAccessibleName(tr("Summary"));
  summary_->setOpenLinks(false);
  summary_->document()->setIndentWidth(fontMetrics().height());
  connect(summary_, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) { OpenUrl(url, window()); });
  auto* top = new QHBoxLayout;
  top->addWidget(icon_);
  top->addWidget(headline_, 1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(top);
  layout->addWidget(summary_, 1);
}

void ResultPage::ShowHeadline(RunOutcome outcome, bool isEmpty) {
  QStyle::StandardPixmap icon = QStyle::SP_MessageBoxCritical;
  QString text = tr("Failed");
  if (outcome == RunOutcome::Done) {
    icon = isEmpty ? QStyle::SP_MessageBoxWarning : QStyle::SP_DialogApplyButton;
    text = tr("Done");
  } else if (outcome == RunOutcome::Cancelled) {
    icon = QStyle::SP_DialogCancelButton;
    text = tr("Cancelled");
  } else if (outcome == RunOutcome::Limited) {
    icon = QStyle::SP_MessageBoxWarning;
    text = tr("Ended early");
  }
  const int size = style()->pixelMetric(QStyle::PM_LargeIconSize);
  icon_->setPixmap(style()->standardIcon(icon).pixmap(size, size));
  headline_->setText(text);
}

void ResultPage::Show(RunOutcome outcome, const RunAccount& account, const QStringList& folders) {
  folders_ = folders;
  // A folder within another goes first.
  std::sort(folders_.begin(), folders_.end(), [](const QString& a, const QString& b) { return a.size() > b.size(); });
  ShowHeadline(outcome, account.isEmpty);
  QString html = "<p>" + Html(Shown(account.ending)) + "</p>";
  for (const std::string& reason : account.reasons) html += "<p>" + Html(Shown(reason)) + "</p>";
  QStringList counts;
  for (const std::string& line : account.counts) counts.append(Html(Shown(line)));
  html += FilesHtml(account.files) + LossesHtml(outcome, account) + Section(tr("Counts"), counts);
  summary_->setHtml(html);
}

QString ResultPage::FilesHtml(const std::vector<std::string>& files) const {
  QStringList names;
  for (const std::string& file : files) names.append(Linked(file, Shown(FileNameOf(file))));
  if (names.isEmpty()) return {};
  const QString folder = Shown(FolderOf(FullPath(files[0])));
  return Section(tr("Written to %1").arg(folder), names);
}

QString ResultPage::LossesHtml(RunOutcome outcome, const RunAccount& account) const {
  const auto shown = [this](const std::vector<std::string>& lines) {
    QStringList items;
    for (const std::string& line : lines) {
      QString item = Shown(line);
      for (const QString& folder : folders_) item.remove(folder);
      items.append(Html(item).replace('\n', QStringLiteral("<br>")));
    }
    return items;
  };
  if (outcome == RunOutcome::Done && account.gone.empty() && account.changed.empty() && !account.files.empty()) {
    return "<p>" + Html(tr("No losses were counted.")) + "</p>" + Section(tr("Remarks"), shown(account.remarks));
  }
  return Section(tr("Gone"), shown(account.gone)) + Section(tr("Changed"), shown(account.changed)) +
         Section(tr("Remarks"), shown(account.remarks));
}

QString ResultPage::Text() const { return headline_->text() + '\n' + summary_->toPlainText(); }

}  // namespace tesselink
