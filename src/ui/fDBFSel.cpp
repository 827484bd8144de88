// SPDX-License-Identifier: MIT
#include "ui/fDBFSel.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalBlocker>
#include <QToolButton>
#include <algorithm>

#include "core/io/Errors.h"
#include "core/run/FieldSelection.h"
#include "ui/FieldMemory.h"
#include "ui/Named.h"
#include "ui/QuestionButtons.h"
#include "ui/TextListModel.h"
#include "ui/UiText.h"
#include "ui/frmDBFScan.h"

namespace tesselink {
namespace {

constexpr qint64 kYieldMilliseconds = 15;
constexpr qint64 kPatienceMilliseconds = 150;  // what takes no longer is loaded without a progress window

// Another choice was made while the values of a field were loaded.
struct Superseded {};

void Fill(QComboBox& list, const std::vector<std::string>& choices) {
  const QSignalBlocker blocker(list);
  list.clear();
  for (const std::string& choice : choices) list.addItem(Shown(choice));
  list.setCurrentIndex(-1);
}

// A field that is chosen from the list is named in braces, so that it is none but a field; what is typed stands as it
// is.
std::string FieldOrTyped(const QComboBox& list, const std::vector<std::string>& fields) {
  const int row = list.currentIndex();
  const bool isTyped = row < 0 || list.itemText(row) != list.currentText();
  if (isTyped) return list.currentText().trimmed().toStdString();
  return "{" + fields[static_cast<std::size_t>(row)] + "}";
}

}  // namespace

fDBFSel::fDBFSel(FieldSelection& selection, QWidget* parent)
    : QDialog(parent),
      selection_(selection),
      entries_(new TextListModel(this)),
      stat_(Named(new QLabel, "Stat")),
      fieldLabel_(Named(new QLabel, "lblField")),
      note_(Named(new QLabel, "lblNote")),
      problem_(Named(new QLabel, "lblProblem")),
      layerFields_(Named(new QComboBox, "cboLayer")),
      textFields_(Named(new QComboBox, "cbotxtfield")),
      entriesView_(Named(new QListView, "lstEntries")),
      more_(Named(new QToolButton, "cmdMore")),
      last_(Named(new QPushButton, "cmdLast")),
      template_(Named(new QLineEdit, "txtTemplate")),
      height_(Named(new QComboBox, "cboHeight")),
      angle_(Named(new QComboBox, "cboAngle")),
      colour_(Named(new QComboBox, "cboColour")),
      details_(Details()) {
  setObjectName("fDBFSel");
  setWindowTitle(tr("DBF Fields"));
  setLayout(Contents());
  resize(fontMetrics().averageCharWidth() * 60, fontMetrics().lineSpacing() * 20);
  connect(layerFields_, &QComboBox::currentIndexChanged, this, [this] { Choose(*layerFields_); });
  connect(textFields_, &QComboBox::currentIndexChanged, this, [this] { Choose(*textFields_); });
  ShowStep();
}

QLayout* fDBFSel::Contents() {
  stat_->setWordWrap(true);
  note_->setWordWrap(true);
  problem_->setWordWrap(true);
  problem_->setTextFormat(Qt::PlainText);
  entriesView_->setAccessibleName(tr("Values of the field"));
  entriesView_->setModel(entries_);
  entriesView_->setUniformItemSizes(true);
  entriesView_->setMinimumHeight(5 * fontMetrics().lineSpacing());
  entriesView_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  auto* proceed = Named(new QPushButton(tr("Continue")), "cmdCont");
  proceed->setDefault(true);
  connect(proceed, &QPushButton::clicked, this, &fDBFSel::Continue);
  auto* cancel = QuestionButtons::Cancel();
  connect(cancel, &QPushButton::clicked, this, &fDBFSel::Cancel);

  more_->setText(tr("&More…"));
  more_->setToolTip(tr("What the texts look like, and the colour of shapes and texts"));
  more_->setCheckable(true);
  more_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  more_->setAutoRaise(true);
  more_->setFocusPolicy(Qt::StrongFocus);
  connect(more_, &QToolButton::toggled, this, &fDBFSel::ShowMore);

  auto* field = new QHBoxLayout;
  field->addWidget(fieldLabel_);
  field->addWidget(layerFields_, 1);
  field->addWidget(textFields_, 1);
  last_->hide();
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(last_);
  buttons->addStretch();
  buttons->addWidget(proceed);
  buttons->addWidget(cancel);
  auto* contents = new QVBoxLayout;
  contents->addWidget(stat_);
  contents->addLayout(field);
  contents->addWidget(note_);
  contents->addWidget(entriesView_, 1);
  contents->addWidget(more_);
  contents->addWidget(details_);
  contents->addWidget(problem_);
  contents->addStretch();
  contents->addLayout(buttons);
  return contents;
}

// Nobody is asked for these; what stays empty is as it always was.
QWidget* fDBFSel::Details() {
  template_->setPlaceholderText("{NAME} ({DEPTH} ft)");
  template_->setToolTip(tr("Text made of several fields, each named in braces; it takes the place of the text field"));
  height_->setToolTip(tr("A number, or the field that holds the height of each text"));
  angle_->setToolTip(tr("Degrees, or the field that holds the angle of each text"));
  colour_->setToolTip(tr("The field that holds the colour of each shape and its text: a number, a name or #rrggbb"));
  for (QComboBox* list : {height_, angle_}) list->setEditable(true);
  auto* details = Named(new QWidget, "details");
  auto* form = new QFormLayout(details);
  form->addRow(tr("Tem&plate:"), template_);
  form->addRow(tr("&Height:"), height_);
  form->addRow(tr("&Angle:"), angle_);
  form->addRow(tr("Colo&ur Field:"), colour_);
  return details;
}

void fDBFSel::ShowMore() {
  const bool second = selection_.CurrentStep() == FieldSelection::Step::TextField;
  more_->setVisible(second);
  more_->setArrowType(more_->isChecked() ? Qt::DownArrow : Qt::RightArrow);
  details_->setVisible(second && more_->isChecked());
  GrowToFit();
  if (details_->isVisible()) template_->setFocus();
}

// Wrapped texts have their height by their width, which a dialog does not heed by itself.
void fDBFSel::GrowToFit() { resize(width(), std::max(height(), layout()->totalMinimumHeightForWidth(width()))); }

void fDBFSel::ShowStep() {
  const bool first = selection_.CurrentStep() == FieldSelection::Step::LayerField;
  QComboBox* list = first ? layerFields_ : textFields_;
  stat_->setText(first ? tr("Select the field in the DBF file that holds the layer names, then select continue.")
                       : tr("If there is a text field in the DBF file, select it now, otherwise select continue."));
  fieldLabel_->setText(first ? tr("&Layer Field Name:") : tr("&Text Field Name:"));
  fieldLabel_->setBuddy(list);
  if (!first) last_->hide();
  layerFields_->setVisible(first);
  textFields_->setVisible(!first);
  Fill(*list, selection_.Choices());
  for (QComboBox* look : {height_, angle_, colour_}) Fill(*look, selection_.Choices());
  for (QComboBox* look : {height_, angle_}) look->removeItem(look->count() - 1);  // without "(None)"
  ShowMore();
  list->setFocus();
  ShowEntries();
}

void fDBFSel::Choose(const QComboBox& list) {
  const std::vector<std::string> choices = selection_.Choices();
  const int row = list.currentIndex();
  selection_.Choose(row < 0 ? std::string() : choices[static_cast<std::size_t>(row)]);
  ShowEntries();
}

// False for what the table does not have, which is told.
bool fDBFSel::TakeDetails() {
  const std::vector<std::string> fields = selection_.Choices();
  if (const QString text = template_->text(); !text.trimmed().isEmpty()) {
    selection_.Choose(text.toStdString());
  } else {
    Choose(*textFields_);
  }
  const bool hasColour = colour_->currentIndex() >= 0 && colour_->currentIndex() + 1 < colour_->count();
  selection_.Choose(LabelLook{FieldOrTyped(*height_, fields), FieldOrTyped(*angle_, fields),
                              hasColour ? FieldOrTyped(*colour_, fields) : std::string()});
  problem_->setText(Shown(selection_.Problem()));
  problem_->setVisible(!problem_->text().isEmpty());
  return problem_->text().isEmpty();
}

void fDBFSel::Continue() {
  if (selection_.CurrentStep() == FieldSelection::Step::TextField && !TakeDetails()) return;
  selection_.Continue();
  if (selection_.MayClose()) return accept();
  ShowStep();
}

void fDBFSel::OfferLast(const FieldAnswers& last) {
  constexpr int kMostLetters = 30;
  const int room = fontMetrics().averageCharWidth() * kMostLetters;
  const QString words = fontMetrics().elidedText(last.Words(), Qt::ElideRight, room).replace('&', "&&");
  last_->setText(tr("As la&st time: %1").arg(words));
  last_->setToolTip("<qt>" + last.Words().toHtmlEscaped() + "</qt>");
  last_->show();
  connect(last_, &QPushButton::clicked, this, [this, last] { TakeLast(last); });
}

// What the table does not take after all is left to the person.
void fDBFSel::TakeLast(const FieldAnswers& last) {
  selection_.Choose(last.layer);
  selection_.Continue();
  selection_.Choose(last.text);
  selection_.Choose(last.look);
  if (!selection_.Problem().empty()) return ShowStep();
  selection_.Continue();
  accept();
}

// The field whose values are to be seen; empty for none, and once the questions are over.
std::string fDBFSel::FieldOfEntries() const {
  if (cancelled_ || selection_.CurrentStep() == FieldSelection::Step::Done) return {};
  const std::vector<std::string> fields = selection_.Choices();
  const std::string field = selection_.EntriesField();
  return std::find(fields.begin(), fields.end(), field) == fields.end() ? std::string() : field;
}

void fDBFSel::ShowEntries() {
  ShowNote();
  if (loading_) return;  // the loading that is under way notices the choice
  loading_ = true;
  while (!FieldOfEntries().empty() && FieldOfEntries() != loadedField_) LoadEntries();
  loading_ = false;
  const bool visible = !FieldOfEntries().empty();
  entriesView_->setVisible(visible && problem_->text().isEmpty());
  problem_->setVisible(visible && !problem_->text().isEmpty());
  GrowToFit();
}

// What it means that no layer field is chosen.
void fDBFSel::ShowNote() {
  switch (selection_.LayerWithoutField()) {
    case FieldSelection::WithoutField::Unassociated:
      note_->setText(tr("Without a layer field everything goes to the layer \"Unassociated\"."));
      break;
    case FieldSelection::WithoutField::Zero:
      note_->setText(tr("Without a layer field everything goes to the layer \"0\"."));
      break;
    case FieldSelection::WithoutField::OfDrawing:
      note_->setText(
          tr("This table tells of a drawing. Without any field chosen that drawing is read, with its layers."));
      break;
  }
  note_->setVisible(selection_.LayerField().empty());
}

// Loads the values of the chosen field, until another one is chosen. The person goes on choosing meanwhile.
void fDBFSel::LoadEntries() {
  const std::string field = FieldOfEntries();
  frmDBFScan scan(this);
  QElapsedTimer sinceStart, sinceYield;
  sinceStart.start();
  sinceYield.start();
  std::int64_t records = 0;
  const auto yield = [&](std::int64_t record) {
    if (record % 256 != 0 || sinceYield.elapsed() < kYieldMilliseconds) return;
    if (sinceStart.elapsed() > kPatienceMilliseconds) scan.ShowProgress(static_cast<int>(record * 100 / records));
    QCoreApplication::processEvents();
    sinceYield.restart();
    if (FieldOfEntries() != field) throw Superseded();
  };
  try {
    loadedField_.clear();
    entries_->Set({});
    records = selection_.Records();
    entries_->Set(selection_.Entries(yield));
    problem_->clear();
  } catch (const Superseded&) {
    return;
  } catch (const Error& error) {
    problem_->setText(Shown(error.what()));
  }
  loadedField_ = field;
}

void fDBFSel::Cancel() {
  if (!QuestionButtons::MayEndRun(this)) return;
  cancelled_ = true;
  done(Rejected);
}

void fDBFSel::keyPressEvent(QKeyEvent* event) {
  event->matches(QKeySequence::Cancel) ? Cancel() : QDialog::keyPressEvent(event);
}

}  // namespace tesselink
