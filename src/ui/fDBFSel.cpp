// SPDX-License-Identifier: MIT
#include "ui/fDBFSel.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalBlocker>
#include <QToolButton>

#include "core/io/Errors.h"
#include "core/run/FieldSelection.h"
#include "ui/Named.h"
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
      problem_(Named(new QLabel, "lblProblem")),
      layerFields_(Named(new QComboBox, "cboLayer")),
      textFields_(Named(new QComboBox, "cbotxtfield")),
      entriesView_(Named(new QListView, "lstEntries")),
      more_(Named(new QToolButton, "cmdMore")),
      template_(Named(new QLineEdit, "txtTemplate")),
      height_(Named(new QComboBox, "cboHeight")),
      angle_(Named(new QComboBox, "cboAngle")),
      colour_(Named(new QComboBox, "cboColour")),
      details_(Details()) {
  setObjectName("fDBFSel");
  setWindowTitle("DBF Fields");
  setLayout(Contents());
  resize(fontMetrics().averageCharWidth() * 60, fontMetrics().lineSpacing() * 20);
  connect(layerFields_, &QComboBox::currentIndexChanged, this, [this] { Choose(*layerFields_); });
  connect(textFields_, &QComboBox::currentIndexChanged, this, [this] { Choose(*textFields_); });
  ShowStep();
}

QLayout* fDBFSel::Contents() {
  stat_->setWordWrap(true);
  problem_->setWordWrap(true);
  problem_->setTextFormat(Qt::PlainText);
  entriesView_->setAccessibleName("Values of the layer field");
  entriesView_->setModel(entries_);
  entriesView_->setUniformItemSizes(true);
  entriesView_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  auto* proceed = Named(new QPushButton("Continue"), "cmdCont");
  proceed->setDefault(true);
  connect(proceed, &QPushButton::clicked, this, &fDBFSel::Continue);

  more_->setText("&More…");
  more_->setToolTip("What the texts look like, and the colour of shapes and texts");
  more_->setCheckable(true);
  more_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  more_->setAutoRaise(true);
  more_->setFocusPolicy(Qt::StrongFocus);
  connect(more_, &QToolButton::toggled, this, &fDBFSel::ShowMore);

  auto* field = new QHBoxLayout;
  field->addWidget(fieldLabel_);
  field->addWidget(layerFields_, 1);
  field->addWidget(textFields_, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(proceed);
  auto* contents = new QVBoxLayout;
  contents->addWidget(stat_);
  contents->addLayout(field);
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
  template_->setToolTip("Text made of several fields, each named in braces; it takes the place of the text field");
  height_->setToolTip("A number, or the field that holds the height of each text");
  angle_->setToolTip("Degrees, or the field that holds the angle of each text");
  colour_->setToolTip("The field that holds the colour of each shape and its text: a number, a name or #rrggbb");
  for (QComboBox* list : {height_, angle_}) list->setEditable(true);
  auto* details = Named(new QWidget, "details");
  auto* form = new QFormLayout(details);
  form->addRow("Tem&plate:", template_);
  form->addRow("&Height:", height_);
  form->addRow("&Angle:", angle_);
  form->addRow("&Colour Field:", colour_);
  return details;
}

void fDBFSel::ShowMore() {
  const bool second = selection_.CurrentStep() == FieldSelection::Step::TextField;
  more_->setVisible(second);
  more_->setArrowType(more_->isChecked() ? Qt::DownArrow : Qt::RightArrow);
  details_->setVisible(second && more_->isChecked());
  if (details_->isVisible()) template_->setFocus();
}

void fDBFSel::ShowStep() {
  const bool first = selection_.CurrentStep() == FieldSelection::Step::LayerField;
  QComboBox* list = first ? layerFields_ : textFields_;
  stat_->setText(Shown(selection_.Stat()));
  fieldLabel_->setText(u'&' + Shown(selection_.FieldLabel()));
  fieldLabel_->setBuddy(list);
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

void fDBFSel::ShowEntries() {
  if (loading_) return;  // the loading that is under way notices the choice
  loading_ = true;
  while (selection_.EntriesVisible() && selection_.LayerField() != loadedField_) LoadEntries();
  loading_ = false;
  entriesView_->setVisible(selection_.EntriesVisible() && problem_->text().isEmpty());
  problem_->setVisible(selection_.EntriesVisible() && !problem_->text().isEmpty());
}

// Loads the values of the chosen field, until another one is chosen. The person goes on choosing meanwhile.
void fDBFSel::LoadEntries() {
  const std::string field = selection_.LayerField();
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
    if (!selection_.EntriesVisible() || selection_.LayerField() != field) throw Superseded();
  };
  try {
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

}  // namespace tesselink
