// SPDX-License-Identifier: MIT
// What came of a run: a headline, the files that were written, and what was lost.
#pragma once

#include <QWidget>

#include "app/SummaryText.h"

class QLabel;
class QTextBrowser;
class QUrl;

namespace tesselink {

class ResultPage final : public QWidget {
  Q_OBJECT
 public:
  explicit ResultPage(QWidget* parent = nullptr);

  /// Shows the account of a run; the folders of its files are left out of sentences.
  void Show(RunOutcome outcome, const RunAccount& account, const QStringList& folders);
  /// All of it, for the clipboard.
  QString Text() const;

 private:
  void ShowHeadline(RunOutcome outcome, bool isEmpty);
  QString FilesHtml(const std::vector<std::string>& files) const;
  QString LossesHtml(RunOutcome outcome, const RunAccount& account) const;

  QLabel *icon_, *headline_;
  QTextBrowser* summary_;
  QStringList folders_;
};

}  // namespace tesselink
