// SPDX-License-Identifier: MIT
#include "ui/QueueModel.h"

#include <QApplication>
#include <QIcon>
#include <QJsonArray>
#include <QStyle>
#include <algorithm>
#include <tuple>

#include "core/io/Paths.h"
#include "ui/OptionNaming.h"
#include "ui/UiText.h"
#include "ui/UiWording.h"

namespace tesselink {
namespace {

// The folder that two paths have in common.
QString CommonFolder(const QString& one, const QString& other) {
  const auto [a, b] = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
  return one.left(one.left(a - one.begin()).lastIndexOf('/') + 1);
}

QString NameOf(const QString& path) { return Shown(FileNameOf(path.toStdString())); }

std::int64_t Sum(const QJsonObject& counts) {
  double sum = 0;
  for (const QJsonValue count : counts) sum += count.toDouble();
  return static_cast<std::int64_t>(sum);
}

RunAccount AccountIn(const QJsonObject& line) {
  RunAccount account;
  const QJsonObject summary = line["summary"].toObject();
  if (const QString reason = line["reason"].toString(); !reason.isEmpty()) {
    account.reasons.push_back(WithoutOptions(reason).toStdString());
  }
  if (const std::int64_t count = Sum(summary["skipped"].toObject()); count > 0) {
    account.gone.push_back(NotWrittenText(Elements(count, kUiWording), kUiWording));
  }
  const QJsonObject undelivered = summary["undelivered"].toObject();
  for (auto type = undelivered.begin(); type != undelivered.end(); ++type) {
    account.gone.push_back(
        UndeliveredText(type.key().toStdString(), static_cast<std::int64_t>(type->toDouble()), kUiWording));
  }
  for (const QJsonValue entry : summary["warnings"].toArray()) {
    const QJsonObject object = entry.toObject();
    const Warning warning{object["kind"].toString().toStdString(),
                          WithoutOptions(object["text"].toString()).toStdString(),
                          static_cast<std::int64_t>(object["count"].toDouble())};
    ListOf(account, warning.kind).push_back(InWords(warning.kind, WarningText(warning, kUiWording), kUiWording));
  }
  for (const QJsonValue file : line["outputs"].toArray()) account.files.push_back(file.toString().toStdString());
  return account;
}

}  // namespace

void QueueModel::Replace(QList<QueueRow> rows) {
  beginResetModel();
  rows_ = std::move(rows);
  Order();
  folder_ = rows_.isEmpty() ? QString() : rows_[0].input;
  for (const QueueRow& row : rows_) folder_ = CommonFolder(folder_, row.input);
  endResetModel();
}

// As the person wants them ordered, if at all.
void QueueModel::Order() {
  const auto key = [this](const QueueRow& row) -> std::tuple<std::int64_t, QString> {
    const auto gone = static_cast<std::int64_t>(row.account.gone.size());
    const auto changed = static_cast<std::int64_t>(row.account.changed.size());
    if (sortedBy_ == kState) return {-static_cast<std::int64_t>(row.state), {}};
    if (sortedBy_ == kLosses) return {-(gone << 32) - changed, {}};
    return {0, sortedBy_ == kFile ? row.input : ResultText(row)};
  };
  const auto isBefore = [&](const QueueRow& a, const QueueRow& b) {
    return sortOrder_ == Qt::AscendingOrder ? key(a) < key(b) : key(b) < key(a);
  };
  if (sortedBy_ >= 0) std::stable_sort(rows_.begin(), rows_.end(), isBefore);
  byInput_.clear();
  for (int i = 0; i < static_cast<int>(rows_.size()); ++i) byInput_.insert(rows_[i].input, i);
}

void QueueModel::sort(int column, Qt::SortOrder order) {
  sortedBy_ = column;
  sortOrder_ = order;
  const QModelIndexList before = persistentIndexList();
  QStringList inputs;
  for (const QModelIndex& index : before) inputs.append(rows_[index.row()].input);
  emit layoutAboutToBeChanged();
  Order();
  QModelIndexList after;
  for (qsizetype i = 0; i < before.size(); ++i) after.append(index(byInput_.value(inputs[i]), before[i].column()));
  changePersistentIndexList(before, after);
  emit layoutChanged();
}

void QueueModel::Show(const QStringList& inputs) {
  QList<QueueRow> rows;
  for (const QString& input : inputs) rows.append({input, {}});
  Replace(std::move(rows));
}

void QueueModel::Remove(const QSet<QString>& inputs) {
  QList<QueueRow> rows = rows_;
  rows.removeIf([&inputs](const QueueRow& row) { return inputs.contains(row.input); });
  Replace(std::move(rows));
}

void QueueModel::TakePlan(const QJsonObject& plan, const QStringList& unreadable) {
  QList<QueueRow> rows;
  const auto leftOut = [](QueueRow& row, const std::string& reason) {
    row.state = QueueState::LeftOut;
    row.account.reasons = {reason};
  };
  for (const QString& input : unreadable) {
    QueueRow row{input, {}};
    leftOut(row, WhyNotReadable(PathOf(input)));
    rows.append(std::move(row));
  }
  for (const QJsonValue value : plan["files"].toArray()) {
    const QJsonObject file = value.toObject();
    QueueRow row{file["input"].toString(), file["output"].toString()};
    const bool isDone = file["done"].toBool();
    if (isDone) row.state = QueueState::DoneBefore;
    if (const auto known = byInput_.find(row.input); known != byInput_.end()) {
      const QueueRow& before = rows_[*known];
      const bool wasDone = before.state == QueueState::Done || before.state == QueueState::DoneBefore;
      const bool wasLeftOut = before.state == QueueState::LeftOut;
      if (before.output == row.output && wasDone == isDone && !wasLeftOut) row = before;
    }
    if (const QString against = file["against"].toString(); !against.isEmpty()) leftOut(row, against.toStdString());
    rows.append(std::move(row));
  }
  Replace(std::move(rows));
}

void QueueModel::Change(int row) { emit dataChanged(index(row, 0), index(row, kColumns - 1)); }

void QueueModel::TakeBegun(const QString& input) {
  const int row = byInput_.value(input, -1);
  if (row < 0) return;
  rows_[row].state = QueueState::Converting;
  rows_[row].account = {};
  Change(row);
}

void QueueModel::TakeResult(const QJsonObject& line) {
  const int row = byInput_.value(line["input"].toString(), -1);
  if (row < 0) return;
  const QString result = line["result"].toString();
  rows_[row].state = result == "converted"    ? QueueState::Done
                     : result == "incomplete" ? QueueState::Incomplete
                                              : QueueState::Failed;
  rows_[row].account = AccountIn(line);
  Change(row);
}

void QueueModel::WaitAgain(std::initializer_list<QueueState> states) {
  for (int i = 0; i < static_cast<int>(rows_.size()); ++i) {
    if (std::count(states.begin(), states.end(), rows_[i].state) == 0) continue;
    rows_[i].state = QueueState::Waiting;
    rows_[i].account = {};
    Change(i);
  }
}

void QueueModel::BeginRun() { WaitAgain({QueueState::Failed, QueueState::Incomplete}); }

void QueueModel::EndRun() { WaitAgain({QueueState::Converting}); }

int QueueModel::Count(QueueState state) const {
  return static_cast<int>(
      std::count_if(rows_.begin(), rows_.end(), [&](const auto& row) { return row.state == state; }));
}

QString QueueModel::StateText(QueueState state) const {
  switch (state) {
    case QueueState::Waiting:
      return tr("Waiting");
    case QueueState::LeftOut:
      return tr("Left out");
    case QueueState::DoneBefore:
      return tr("Done before");
    case QueueState::Converting:
      return tr("Converting");
    case QueueState::Done:
      return tr("Done");
    case QueueState::Incomplete:
      return tr("Incomplete");
    case QueueState::Failed:
      break;
  }
  return tr("Failed");
}

QString QueueModel::LossesText(const QueueRow& row) const {
  QStringList counts;
  if (const auto n = row.account.gone.size(); n > 0) counts.append(tr("%1 gone").arg(n));
  if (const auto n = row.account.changed.size(); n > 0) counts.append(tr("%1 changed").arg(n));
  if (!counts.isEmpty()) return counts.join(", ");
  return row.state == QueueState::Done ? tr("none counted") : QString();
}

// A sentence without the folder that all inputs lie in.
QString QueueModel::Near(const std::string& text) const {
  return folder_.size() > 1 ? Shown(text).remove(folder_) : Shown(text);
}

QString QueueModel::ResultText(const QueueRow& row) const {
  if (!row.account.reasons.empty()) {
    const QString reason = Shown(row.account.reasons.front());
    return reason.startsWith(row.input + ": ") ? reason.mid(row.input.size() + 2) : Near(row.account.reasons.front());
  }
  return NameOf(row.output);
}

QString QueueModel::Details(int row) const {
  const QueueRow& file = rows_[row];
  QStringList lines{tr("%1: %2").arg(file.input, StateText(file.state))};
  const auto add = [&lines, this](const QString& heading, const std::vector<std::string>& texts) {
    for (const std::string& text : texts) lines.append(heading.arg(Near(text)));
  };
  add("%1", file.account.reasons);
  for (const std::string& path : file.account.files) lines.append(tr("Written: %1").arg(Shown(path)));
  add(tr("Gone: %1"), file.account.gone);
  add(tr("Changed: %1"), file.account.changed);
  add(tr("Remark: %1"), file.account.remarks);
  return lines.join('\n');
}

int QueueModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int QueueModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kColumns);
}

QVariant QueueModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const QueueRow& row = rows_[index.row()];
  if (role == Qt::ToolTipRole) return index.column() == kFile ? row.input : Details(index.row());
  if (role == Qt::DecorationRole && index.column() == kState) {
    const auto icon = [](QStyle::StandardPixmap pixmap) { return QApplication::style()->standardIcon(pixmap); };
    if (row.state == QueueState::Failed) return icon(QStyle::SP_MessageBoxCritical);
    if (row.state == QueueState::Incomplete || row.state == QueueState::LeftOut) {
      return icon(QStyle::SP_MessageBoxWarning);
    }
    if (row.state == QueueState::Done || row.state == QueueState::DoneBefore) return icon(QStyle::SP_DialogApplyButton);
    return {};
  }
  if (role != Qt::DisplayRole) return {};
  switch (index.column()) {
    case kFile:
      return row.input.mid(folder_.size());
    case kState:
      return StateText(row.state);
    case kLosses:
      return LossesText(row);
    default:
      return ResultText(row);
  }
}

QVariant QueueModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return QStringList{tr("File"), tr("State"), tr("Losses"), tr("Result")}.value(section);
}

}  // namespace tesselink
