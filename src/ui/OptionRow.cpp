// SPDX-License-Identifier: MIT
#include "ui/OptionRow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <algorithm>

#include "core/io/Paths.h"
#include "ui/CommonDlg.h"
#include "ui/OptionCaptions.h"
#include "ui/UiText.h"
#include "ui/WheelGuard.h"

namespace tesselink {
namespace {

constexpr const char* kYes = "yes";

bool NamesFields(OptionValue names) {
  return names == OptionValue::Field || names == OptionValue::FieldOrNumber || names == OptionValue::Template;
}

}  // namespace

OptionRow::OptionRow(ConversionOption option, QWidget& parent) : QObject(&parent), option_(std::move(option)) {
  const QString name = Shown(option_.row.name);
  control_ = BuildControl(parent);
  control_->setObjectName("option." + name);
  control_->setToolTip(OptionTip(option_));
  control_->setAccessibleName(OptionCaption(option_));
  control_->setAccessibleDescription(OptionTip(option_));
  if (flag_ == nullptr) {
    label_ = new QLabel(OptionCaption(option_) + ':', &parent);
    label_->setObjectName("label." + name);
    label_->setBuddy(control_);
    label_->setToolTip(OptionTip(option_));
    label_->setWordWrap(true);
  }
  problem_ = new QLabel(&parent);
  problem_->setObjectName("problem." + name);
  problem_->setTextFormat(Qt::PlainText);
  problem_->setWordWrap(true);
  problem_->hide();
  BuildHelper(parent);
  if (list_ != nullptr) GuardFromWheel(*list_);
}

QWidget* OptionRow::BuildControl(QWidget& parent) {
  if (option_.row.kind == FormatOption::Kind::Flag) {
    flag_ = new QCheckBox(OptionCaption(option_), &parent);
    connect(flag_, &QCheckBox::clicked, this, &OptionRow::changed);
    return flag_;
  }
  if (option_.row.kind == FormatOption::Kind::Choice) return list_ = BuildChoices(parent);
  if (NamesFields(option_.names)) {
    list_ = new QComboBox(&parent);
    list_->setEditable(true);
    list_->setInsertPolicy(QComboBox::NoInsert);
    list_->lineEdit()->setPlaceholderText(OptionHint(option_));
    list_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    connect(list_, &QComboBox::activated, this, &OptionRow::changed);
    connect(list_->lineEdit(), &QLineEdit::editingFinished, this, &OptionRow::changed);
    return list_;
  }
  text_ = new QLineEdit(&parent);
  text_->setPlaceholderText(OptionHint(option_));
  text_->setAcceptDrops(false);  // files dropped here are for the window to take
  connect(text_, &QLineEdit::editingFinished, this, &OptionRow::changed);
  return text_;
}

// The first entry leaves everything as it is without the option.
QComboBox* OptionRow::BuildChoices(QWidget& parent) {
  auto* list = new QComboBox(&parent);
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list->addItem(tr("As usual"));
  for (const std::string& choice : option_.row.choices) list->addItem(ChoiceCaption(option_, choice), Shown(choice));
  connect(list, &QComboBox::activated, this, &OptionRow::changed);
  return list;
}

void OptionRow::BuildHelper(QWidget& parent) {
  const bool isFile = option_.row.kind == FormatOption::Kind::File || option_.names == OptionValue::System;
  const bool isLayers = option_.names == OptionValue::LayerList, isBox = option_.names == OptionValue::Box;
  if (!isFile && !isLayers && !isBox) return;
  helper_ = new QPushButton(isFile ? tr("Browse...") : isLayers ? tr("Choose...") : tr("Draw"), &parent);
  helper_->setObjectName("help." + Shown(option_.row.name));
  helper_->setAccessibleName(OptionCaption(option_) + ": " + helper_->text());
  helper_->setAutoDefault(true);
  if (isBox) helper_->setCheckable(true);
  if (isBox) helper_->setToolTip(tr("Draw a rectangle in the preview"));
  if (isFile) connect(helper_, &QPushButton::clicked, this, &OptionRow::Browse);
}

void OptionRow::AddTo(QGridLayout& grid) {
  const int row = grid.rowCount();
  if (label_ != nullptr) grid.addWidget(label_, row, 0);
  grid.addWidget(control_, row, label_ == nullptr ? 0 : 1, 1, label_ == nullptr ? 3 : helper_ == nullptr ? 2 : 1);
  if (helper_ != nullptr) grid.addWidget(helper_, row, 2);
  grid.addWidget(problem_, row + 1, 1, 1, 2);
}

std::string OptionRow::Value() const {
  if (flag_ != nullptr) return flag_->isChecked() ? kYes : "";
  if (list_ != nullptr && !list_->isEditable()) return list_->currentData().toString().toStdString();
  const QString text = (list_ != nullptr ? list_->currentText() : text_->text()).trimmed();
  const bool isPath = option_.row.kind == FormatOption::Kind::File || option_.names == OptionValue::System;
  if (option_.names != OptionValue::Box) return isPath ? PathOf(text) : text.toStdString();
  return QString(text).remove(' ').toStdString();
}

void OptionRow::SetValue(const std::string& value) {
  const QSignalBlocker quiet(control_);
  if (flag_ != nullptr) return flag_->setChecked(!value.empty());
  if (text_ != nullptr) return text_->setText(Shown(value));
  if (list_->isEditable()) return list_->setEditText(Shown(value));
  list_->setCurrentIndex(std::max(0, list_->findData(Shown(value))));
}

void OptionRow::SetRest(OptionRest rest, Dialect dialect) {
  const bool counts = rest == OptionRest::Counts;
  for (QWidget* widget : {static_cast<QWidget*>(label_), control_, static_cast<QWidget*>(helper_)}) {
    if (widget != nullptr) widget->setEnabled(counts);
  }
  control_->setToolTip(counts ? OptionTip(option_) : OptionTip(option_) + '\n' + RestText(rest));
  auto* const model = list_ == nullptr ? nullptr : qobject_cast<QStandardItemModel*>(list_->model());
  if (model == nullptr || list_->isEditable()) return;
  for (int i = 1; i < list_->count(); ++i) {
    const auto& standard = option_.row.standardChoices;
    const bool isStandard =
        std::find(standard.begin(), standard.end(), list_->itemData(i).toString().toStdString()) != standard.end();
    const bool offered = dialect == Dialect::Standard || !isStandard;
    model->item(i)->setEnabled(offered);
    model->item(i)->setToolTip(offered ? QString() : RestText(OptionRest::NeedsStandard));
  }
}

void OptionRow::SetFields(const QStringList& fields) {
  if (!NamesFields(option_.names)) return;
  const QSignalBlocker quiet(list_);
  const QString text = list_->currentText();
  list_->clear();
  list_->addItems(fields);
  list_->setEditText(text);
}

void OptionRow::ShowProblem(const QString& problem) {
  problem_->setText(problem.isEmpty() ? QString() : QString::fromUtf8("\u26a0 ") + problem);
  problem_->setVisible(!problem.isEmpty());
  control_->setAccessibleDescription(problem.isEmpty() ? OptionTip(option_) : problem);
}

QString OptionRow::Problem() const { return problem_->text().mid(2); }

void OptionRow::SetFocus() { control_->setFocus(Qt::OtherFocusReason); }

void OptionRow::Browse() {
  CommonDlg dialog(control_->window());
  dialog.DialogTitle = OptionCaption(option_);
  dialog.Filter = tr("All Files (*.*)") + "|*.*|";
  dialog.Flags = CommonDlg::kFileMustExist;
  dialog.InitDir(Shown(FolderOf(Value())));
  const QString path = dialog.ShowOpen();
  if (path.isEmpty()) return;
  text_->setText(path);
  emit changed();
}

}  // namespace tesselink
