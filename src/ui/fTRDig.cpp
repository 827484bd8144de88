// SPDX-License-Identifier: MIT
#include "ui/fTRDig.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "formats/shape/DBFInFilter.h"
#include "ui/Named.h"
#include "ui/QuestionButtons.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

bool SameName(const QString& a, const QString& b) { return a.trimmed().compare(b.trimmed(), Qt::CaseInsensitive) == 0; }

}  // namespace

fTRDig::fTRDig(const std::string& suggestedTable, QWidget* parent)
    : QDialog(parent),
      path_(Named(new QLineEdit, "txtTable")),
      entries_{
          {NewEntry("Twp"),
           tr("&Township"),
           tr("Choose the field that holds the township."),
           {"TOWNSHIP", "TWP", "TWNSHP", "TOWN", "T"}},
          {NewEntry("Rge"), tr("&Range"), tr("Choose the field that holds the range."), {"RANGE", "RGE", "RNG", "R"}},
          {NewEntry("Sec"),
           tr("&Section"),
           tr("Choose the field that holds the section."),
           {"SECTION", "SEC", "SECT", "S"}}},
      problem_(Named(new QLabel, "lblProblem")) {
  setObjectName("fTRDig");
  setWindowTitle(tr("Locate Township and Range Fields"));
  setLayout(Contents());
  resize(fontMetrics().averageCharWidth() * 64, sizeHint().height());
  UseTable(suggestedTable);
}

QComboBox* fTRDig::NewEntry(const char* name) {
  auto* list = Named(new QComboBox, name);
  list->setEditable(true);
  list->setInsertPolicy(QComboBox::NoInsert);
  connect(list, &QComboBox::editTextChanged, this, &fTRDig::ShowProblem);
  return list;
}

QLayout* fTRDig::Contents() {
  path_->setReadOnly(true);
  problem_->setWordWrap(true);
  problem_->setTextFormat(Qt::PlainText);
  auto* browse = Named(new QPushButton(tr("Browse...")), "cmdTable");
  browse->setAutoDefault(false);
  connect(browse, &QPushButton::clicked, this, &fTRDig::Browse);
  auto* table = new QHBoxLayout;
  table->addWidget(path_, 1);
  table->addWidget(browse);

  auto* frame = Named(new QGroupBox(tr("Township and Range Fields")), "fraFields");
  auto* rows = new QFormLayout(frame);
  auto* tableLabel = Named(new QLabel(tr("Ta&ble")), "lblTable");
  tableLabel->setBuddy(browse);
  browse->setAccessibleName(tr("Choose the table"));
  path_->setAccessibleName(tr("Table"));
  rows->addRow(tableLabel, table);
  for (const Entry& entry : entries_) {
    auto* label = new QLabel(entry.caption);
    label->setBuddy(entry.list);
    label->setMinimumWidth(fontMetrics().horizontalAdvance(entry.caption + ' '));
    rows->addRow(label, entry.list);
  }

  auto* contents = new QVBoxLayout;
  contents->addWidget(frame);
  contents->addWidget(problem_);
  contents->addStretch();
  contents->addLayout(QuestionButtons::Row(*this, "cmdCont"));
  return contents;
}

void fTRDig::Browse() {
  QFileDialog dialog(this, tr("Browsing..."), Shown(FolderOf(table_)), tr("dBase Tables (*.dbf *.DBF);;All Files (*)"));
  dialog.setObjectName("Dialog");
  dialog.setFileMode(QFileDialog::ExistingFile);
  if (dialog.exec() == Accepted) UseTable(PathOf(dialog.selectedFiles().constFirst()));
}

void fTRDig::UseTable(const std::string& path) {
  table_ = path;
  path_->setText(Shown(path));
  path_->setToolTip(path_->text());
  ReadFieldNames();
  for (const Entry& entry : entries_) {
    const QString typed = entry.list->currentText();
    const QSignalBlocker blocker(entry.list);
    entry.list->clear();
    for (const std::string& name : fieldNames_) entry.list->addItem(Shown(name));
    entry.list->setCurrentIndex(-1);
    entry.list->setCurrentText(typed);
    if (FieldOf(entry) < 0) Guess(entry);
  }
  ShowProblem();
}

void fTRDig::ReadFieldNames() {
  fieldNames_.clear();
  tableProblem_.clear();
  if (table_.empty()) {
    tableProblem_ = tr("Choose the dBase table (.dbf) that holds the townships, ranges and sections.");
  } else if (!FileExists(table_)) {
    tableProblem_ = tr("%1 cannot be read. Choose another table.").arg(Shown(table_));
  } else {
    try {
      DBFInFilter table;
      table.filename(table_);
      table.NumRecs();
      for (int i = 0; i <= table.NumFields(); ++i) fieldNames_.push_back(table.GetFieldName(i));
      if (fieldNames_.empty()) tableProblem_ = tr("%1 has no fields. Choose another table.").arg(Shown(table_));
    } catch (const Error& error) {
      fieldNames_.clear();
      tableProblem_ = tr("%1. Choose another table.").arg(Shown(error.what()));
    }
  }
}

// The index of the field that an entry names, or -1.
int fTRDig::FieldOf(const Entry& entry) const {
  const QString typed = entry.list->currentText();
  for (std::size_t i = 0; i < fieldNames_.size(); ++i) {
    if (SameName(Shown(fieldNames_[i]), typed)) return static_cast<int>(i);
  }
  return -1;
}

// Presets a field that is called by a usual name, or whose name begins with one.
void fTRDig::Guess(const Entry& entry) {
  const auto preset = [&](const auto& fits) {
    for (const QString& usual : entry.usualNames) {
      for (const std::string& name : fieldNames_) {
        if (!fits(Shown(name).trimmed().toUpper(), usual)) continue;
        entry.list->setCurrentText(Shown(name));
        return true;
      }
    }
    return false;
  };
  if (preset([](const QString& name, const QString& usual) { return name == usual; })) return;
  preset([](const QString& name, const QString& usual) { return usual.size() > 2 && name.startsWith(usual); });
}

QString fTRDig::Problem() const {
  if (!tableProblem_.isEmpty()) return tableProblem_;
  for (const Entry& entry : entries_) {
    if (FieldOf(entry) >= 0) continue;
    const QString typed = entry.list->currentText().trimmed();
    return typed.isEmpty() ? entry.missing : tr("The table has no field \"%1\".").arg(typed) + ' ' + entry.missing;
  }
  return {};
}

void fTRDig::ShowProblem() { problem_->setText(Problem()); }

void fTRDig::accept() {
  if (Problem().isEmpty()) return QDialog::accept();
  QApplication::beep();
  if (!tableProblem_.isEmpty()) return findChild<QPushButton*>("cmdTable")->setFocus();
  for (const Entry& entry : entries_) {
    if (FieldOf(entry) < 0) return entry.list->setFocus();
  }
}

TableFields fTRDig::Fields() const {
  const auto name = [this](const Entry& entry) {
    const int field = FieldOf(entry);
    return field < 0 ? std::string() : fieldNames_[static_cast<std::size_t>(field)];
  };
  return {table_, {name(entries_[0]), name(entries_[1]), name(entries_[2])}};
}

}  // namespace tesselink
