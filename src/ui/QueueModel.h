// SPDX-License-Identifier: MIT
// The files of a batch, with what has come of each.
#pragma once

#include <QAbstractTableModel>
#include <QHash>
#include <QJsonObject>
#include <QList>
#include <QSet>
#include <QStringList>
#include <initializer_list>

#include "app/SummaryText.h"

namespace tesselink {

/// The last ones want a person's eyes most.
enum class QueueState { DoneBefore, Done, Waiting, Converting, LeftOut, Incomplete, Failed };

struct QueueRow {
  QString input, output;
  QueueState state = QueueState::Waiting;
  RunAccount account = {};
};

/// Filled by the plan and the lines of a batch's report; files are known by their input.
class QueueModel final : public QAbstractTableModel {
  Q_OBJECT
 public:
  enum Column { kFile, kState, kLosses, kResult, kColumns };

  using QAbstractTableModel::QAbstractTableModel;

  /// Files of which nothing is known yet.
  void Show(const QStringList& inputs);
  /// Takes files out.
  void Remove(const QSet<QString>& inputs);
  /// The files of a plan, behind those that cannot be read; what has come of those that it still has stays. What
  /// something stands against is left out, and says why.
  void TakePlan(const QJsonObject& plan, const QStringList& unreadable);
  /// What has failed waits again.
  void BeginRun();
  void TakeBegun(const QString& input);
  void TakeResult(const QJsonObject& line);
  /// What was begun and has no result waits again.
  void EndRun();

  const QList<QueueRow>& Rows() const { return rows_; }
  int Count(QueueState state) const;
  /// Everything that there is to say of a file, a line each.
  QString Details(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  /// By state what went wrong comes first, by losses what lost most.
  void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

 private:
  void Replace(QList<QueueRow> rows);
  void Order();
  void WaitAgain(std::initializer_list<QueueState> states);
  void Change(int row);
  QString StateText(QueueState state) const;
  QString LossesText(const QueueRow& row) const;
  QString ResultText(const QueueRow& row) const;
  QString Near(const std::string& text) const;

  QList<QueueRow> rows_;
  QHash<QString, int> byInput_;
  QString folder_;     // that all lie in
  int sortedBy_ = -1;  // a column, or none
  Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
};

}  // namespace tesselink
