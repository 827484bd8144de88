// SPDX-License-Identifier: MIT
#include "ui/OptionsPane.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "core/io/Numbers.h"
#include "core/io/Text.h"
#include "ui/LayerChoice.h"
#include "ui/Named.h"
#include "ui/OptionCaptions.h"
#include "ui/OptionRow.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr const char* kApplication = "Window";

// The fields that a text names: itself, or those in braces.
QStringList FieldsNamed(const QString& text, OptionValue names) {
  if (names == OptionValue::FieldOrNumber && !std::isnan(NumberOrNone(text.toStdString()))) return {};
  if (!text.contains('{')) return {text};
  QStringList named;
  for (qsizetype begin = text.indexOf('{'); begin >= 0; begin = text.indexOf('{', begin)) {
    const qsizetype end = text.indexOf('}', begin);
    if (end < 0) break;
    named.append(text.mid(begin + 1, end - begin - 1).trimmed());
    begin = end;
  }
  return named;
}

}  // namespace

OptionsPane::OptionsPane(Settings& settings, QWidget* parent) : QWidget(parent), settings_(settings) {
  setObjectName("more");
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setAlignment(Qt::AlignTop);  // where it is opened it stays
  layout->addWidget(BuildHead());
  Open(false);
}

OptionsPane::~OptionsPane() = default;

QWidget* OptionsPane::BuildHead() {
  auto* head = Named(new QWidget, "moreHead");
  open_ = Named(new QToolButton, "cmdMoreOptions");
  open_->setCheckable(true);
  open_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  open_->setAutoRaise(true);
  open_->setFocusPolicy(Qt::StrongFocus);
  open_->setToolTip(tr("Further options of this conversion"));
  copy_ = Named(new QPushButton(tr("Cop&y as command")), "cmdCopyCommand");
  copy_->setToolTip(tr("Puts the command line that does the same on the clipboard"));
  copy_->setAutoDefault(true);
  connect(open_, &QToolButton::toggled, this, &OptionsPane::Open);
  connect(copy_, &QPushButton::clicked, this, &OptionsPane::copyWanted);
  auto* row = new QHBoxLayout(head);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(open_);
  row->addStretch();
  row->addWidget(copy_);
  return head;
}

void OptionsPane::Open(bool open) {
  open_->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
  if (body_ != nullptr) body_->setVisible(open);
  ShowTitle();
  if (open) QTimer::singleShot(0, this, &OptionsPane::ScrollHere);
}

// What was opened is to be seen.
void OptionsPane::ScrollHere() {
  for (QWidget* above = parentWidget(); above != nullptr; above = above->parentWidget()) {
    if (auto* const area = qobject_cast<QScrollArea*>(above)) {
      return area->verticalScrollBar()->setValue(mapTo(area->widget(), QPoint()).y());
    }
  }
}

// What is set counts whether it is seen or not, so the title tells of it.
void OptionsPane::ShowTitle() {
  QStringList set;
  const OptionValues values = Values();
  for (const OptionRow* row : rows_) {
    if (values.Has(row->Option().row.name)) set.append(OptionCaption(row->Option()));
  }
  open_->setText(set.isEmpty() ? tr("&More") : tr("&More (%1 set)").arg(set.size()));
  open_->setToolTip(set.isEmpty() ? tr("Further options of this conversion") : tr("Set: %1").arg(set.join(", ")));
}

void OptionsPane::SetPair(const InputFormat& input, const OutputFormat& output) {
  if (input_ == &input && output_ == &output) return;
  input_ = &input;
  output_ = &output;
  Rebuild();
  emit changed();
}

void OptionsPane::SetDialect(Dialect dialect) {
  dialect_ = dialect;
  ShowRests();
  emit changed();
}

void OptionsPane::SetDrawing(const QStringList& paths, const QStringList& fields) {
  fields_ = fields;
  for (OptionRow* row : rows_) row->SetFields(fields_);
  if (paths == paths_) return;
  paths_ = paths;
  layers_.clear();
  ofDrawing_ = {};
  for (OptionRow* row : rows_) {
    if (row->Option().ofOneDrawing) row->SetValue({});
    row->ShowProblem(ProblemOf(*row));
  }
  ShowRests();
  emit changed();
}

std::string OptionsPane::Section() const { return "More " + input_->key + " " + output_->key; }

void OptionsPane::Rebuild() {
  rows_.clear();
  options_ = OptionsOf(*input_, *output_);
  delete body_;
  body_ = Named(new QWidget, "moreOptions");
  body_->setAccessibleName(tr("Further options"));
  auto* grid = new QGridLayout(body_);
  grid->setContentsMargins(fontMetrics().averageCharWidth(), 0, 0, 0);
  grid->setColumnStretch(1, 1);
  for (std::size_t i = 0; i < options_.size(); ++i) {
    if (i == 0 || options_[i].group != options_[i - 1].group) {
      auto* heading = new QLabel("<b>" + GroupCaption(options_[i].group).toHtmlEscaped() + "</b>");
      if (i > 0) heading->setContentsMargins(0, fontMetrics().lineSpacing() / 2, 0, 0);
      grid->addWidget(heading, grid->rowCount(), 0, 1, 3);
    }
    AddRow(options_[i], *grid);
  }
  body_->setVisible(open_->isChecked());
  layout()->addWidget(body_);
  ShowRests();
}

void OptionsPane::AddRow(const ConversionOption& option, QGridLayout& grid) {
  auto* row = new OptionRow(option, *grid.parentWidget());
  row->AddTo(grid);
  row->SetFields(fields_);
  const std::string& name = option.row.name;
  row->SetValue(option.ofOneDrawing ? ofDrawing_.Text(name) : settings_.Get(kApplication, Section(), name, ""));
  connect(row, &OptionRow::changed, this, [this, row] { RowChanged(*row); });
  if (option.names == OptionValue::LayerList) {
    connect(row->Helper(), &QPushButton::clicked, this, [this, row] { ChooseLayers(*row); });
  }
  if (option.names == OptionValue::Box) {
    connect(row->Helper(), &QPushButton::toggled, this, &OptionsPane::clipWanted);
  }
  rows_.push_back(row);
  row->ShowProblem(ProblemOf(*row));
}

void OptionsPane::RowChanged(OptionRow& row) {
  const std::string& name = row.Option().row.name;
  const std::string value = row.Value();
  const std::string before =
      row.Option().ofOneDrawing ? ofDrawing_.Text(name) : settings_.Get(kApplication, Section(), name, "");
  row.ShowProblem(ProblemOf(row));
  if (value == before) return;
  if (row.Option().ofOneDrawing) {
    ofDrawing_.Set(name, value);
  } else {
    settings_.Set(kApplication, Section(), name, value);
  }
  ShowRests();
  emit changed();
}

void OptionsPane::ShowRests() {
  const OptionValues values = AllValues();
  for (OptionRow* row : rows_) {
    row->SetRest(RestOf(row->Option(), Situation(values)), dialect_);
    row->ShowProblem(ProblemOf(*row));
  }
  ShowTitle();
}

// What counts for nothing is not wrong.
QString OptionsPane::ProblemOf(const OptionRow& row) const {
  const ConversionOption& option = row.Option();
  const std::string value = row.Value();
  if (value.empty() || RestOf(option, Situation(AllValues())) != OptionRest::Counts) return {};
  if (const std::string wrong = WrongWith(option, value, dialect_); !wrong.empty()) return Shown(wrong);
  const bool namesFields = option.names == OptionValue::Field || option.names == OptionValue::FieldOrNumber ||
                           option.names == OptionValue::Template;
  if (!namesFields || fields_.isEmpty()) return {};
  for (const QString& field : FieldsNamed(Shown(value), option.names)) {
    if (!fields_.contains(field, Qt::CaseInsensitive)) return tr("The table has no field \"%1\".").arg(field);
  }
  return {};
}

OptionValues OptionsPane::AllValues() const {
  OptionValues values;
  for (const OptionRow* row : rows_) {
    if (const std::string value = row->Value(); !value.empty()) values.Set(row->Option().row.name, value);
  }
  return values;
}

// One that is wrong is passed over, until it is right or the person is stopped by it.
OptionValues OptionsPane::Values() const {
  OptionValues values;
  if (output_ == nullptr) return values;  // no pair of formats was chosen yet
  for (const OptionRow* row : rows_) {
    if (const std::string value = row->Value(); !value.empty() && ProblemOf(*row).isEmpty()) {
      values.Set(row->Option().row.name, value);
    }
  }
  return ValuesThatCount(options_, Situation(values));
}

void OptionsPane::ApplyTo(ConversionRequest& request) const { ApplyOptions(Values(), request); }

bool OptionsPane::Agrees() {
  ShowRests();
  const auto wrong =
      std::find_if(rows_.begin(), rows_.end(), [&](OptionRow* row) { return !ProblemOf(*row).isEmpty(); });
  if (wrong == rows_.end()) return true;
  OptionRow& row = **wrong;
  open_->setChecked(true);
  QMessageBox box(QMessageBox::Warning, window()->windowTitle(), OptionCaption(row.Option()) + ": " + ProblemOf(row),
                  QMessageBox::Ok, this);
  box.setTextFormat(Qt::PlainText);
  box.exec();
  row.SetFocus();
  return false;
}

OptionRow* OptionsPane::RowOf(const std::string& name) const {
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [&](const OptionRow* row) { return row->Option().row.name == name; });
  return found == rows_.end() ? nullptr : *found;
}

void OptionsPane::ChooseLayers(OptionRow& row) {
  LayerChoice choice(layers_, row.Value(), this);
  if (choice.exec() != QDialog::Accepted) return;
  row.SetValue(choice.Chosen());
  RowChanged(row);
}

void OptionsPane::ClipChosen(const ClipBox& box) {
  OptionRow* const row = RowOf("clip");
  if (row == nullptr) return;
  row->SetValue(NumberText(box.minX) + "," + NumberText(box.minY) + "," + NumberText(box.maxX) + "," +
                NumberText(box.maxY));
  SetChoosingClip(false);
  RowChanged(*row);
}

void OptionsPane::SetChoosingClip(bool waits) {
  if (OptionRow* const row = RowOf("clip"); row != nullptr) row->Helper()->setChecked(waits);
}

}  // namespace tesselink
