// SPDX-License-Identifier: MIT
#include "ui/frmLayers.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QToolButton>
#include <algorithm>

#include "core/io/Errors.h"
#include "core/io/Utf8.h"
#include "formats/cdf/LayerMatching.h"
#include "ui/ElidedLabel.h"
#include "ui/Named.h"
#include "ui/QuestionButtons.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr int kMostRowsAtFirst = 12;
constexpr int kFewestRows = 4;
constexpr int kLayerColumn = 0, kTypeColumn = 1, kMarkColumn = 2;

class BusyPointer {
 public:
  BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
};

QString Indexed(const char* name, std::size_t index) { return name + QString::number(index); }

}  // namespace

frmLayers::frmLayers(LayerMatching& matching, QWidget* parent, bool codesMatter)
    : QDialog(parent),
      matching_(matching),
      types_(matching.Types()),
      typesAtFirst_(Types()),
      marks_(matching.Rows().size()),
      headings_(Named(new QWidget, "headings")),
      filter_(Named(new QLineEdit, "txtFilter")),
      onlyWithout_(Named(new QCheckBox(tr("Only layers &without a type")), "chkOnlyWithout")),
      frame_(Named(new QScrollArea, "frame")),
      count_(Named(new QLabel, "lblCount")),
      shown_(Named(new QLabel, "lblShown")),
      note_(Named(new QLabel, "lblNote")) {
  setObjectName("frmLayers");
  setWindowTitle(tr("Layer Name Matching"));
  setLayout(Contents(codesMatter));
  FitFrame();
  ShowTypes();
  if (!lists_.empty()) lists_.front()->setFocus();
}

QLayout* frmLayers::Contents(bool codesMatter) {
  auto* title = Named(new QLabel(tr("Layer Name Matching")), "lblTitle");
  QFont font = title->font();
  font.setBold(true);
  font.setPointSizeF(font.pointSizeF() * 1.2);
  title->setFont(font);
  auto* purpose = Named(new QLabel, "lblPurpose");
  purpose->setWordWrap(true);
  purpose->setText(tr("Entity types are codes for CDF drawings. For this output they may stay empty."));
  if (codesMatter) purpose->hide();
  QLayout* filter = Filter();  // before the rows, as the keys go
  frame_->setWidgetResizable(true);
  frame_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  frame_->setFocusPolicy(Qt::NoFocus);
  frame_->setWidget(Rows());
  frame_->widget()->installEventFilter(this);
  note_->setTextFormat(Qt::PlainText);
  note_->setWordWrap(true);
  note_->setMinimumHeight(2 * fontMetrics().lineSpacing());
  note_->setAlignment(Qt::AlignTop);

  auto* table = new QGridLayout;
  table->addWidget(Headings(), 0, 0, 1, 2);
  table->addWidget(frame_, 1, 0);
  table->addWidget(Spin(), 1, 1, Qt::AlignTop);
  auto* contents = new QVBoxLayout;
  contents->addWidget(title, 0, Qt::AlignHCenter);
  contents->addWidget(purpose);
  contents->addLayout(filter);
  contents->addLayout(table, 1);
  contents->addWidget(count_);
  contents->addWidget(note_);
  contents->addLayout(Buttons());
  contents->addStretch();
  return contents;
}

QLayout* frmLayers::Filter() {
  auto* label = Named(new QLabel(tr("&Find layer:")), "lblFilter");
  label->setBuddy(filter_);
  filter_->setPlaceholderText(tr("part of its name"));
  filter_->setClearButtonEnabled(true);
  connect(filter_, &QLineEdit::textChanged, this, &frmLayers::ShowRows);
  connect(onlyWithout_, &QCheckBox::toggled, this, &frmLayers::ShowRows);
  auto* row = new QHBoxLayout;
  row->addWidget(label);
  row->addWidget(filter_, 1);
  row->addWidget(onlyWithout_);
  row->addWidget(shown_);
  return row;
}

// Without a layout: each stands where its column begins.
QWidget* frmLayers::Headings() {
  auto* layers = Named(new ElidedLabel(Shown(matching_.Heading()), headings_), "lblDXFName");
  Named(new ElidedLabel(tr("CDF Entity Type"), headings_), "lblCDFName");
  headings_->setFixedHeight(layers->sizeHint().height());
  return headings_;
}

void frmLayers::PlaceHeadings() {
  const auto place = [&](const char* name, int column) {
    const QRect cell = grid_->cellRect(0, column);
    auto* heading = headings_->findChild<QLabel*>(name);
    const int left = frame_->widget()->mapTo(this, cell.topLeft()).x() - headings_->x();
    heading->setGeometry(left, 0, cell.width(), headings_->height());
  };
  place("lblDXFName", kLayerColumn);
  place("lblCDFName", kTypeColumn);
}

QWidget* frmLayers::Rows() {
  auto* rows = new QWidget;
  grid_ = new QGridLayout(rows);
  for (const int column : {kLayerColumn, kTypeColumn}) {
    grid_->setColumnStretch(column, 1);
    grid_->setColumnMinimumWidth(column, fontMetrics().averageCharWidth() * 34);
  }
  grid_->setColumnMinimumWidth(kMarkColumn, QFontMetrics(MarkFont()).horizontalAdvance(tr("no type")));
  for (std::size_t i = 0; i < matching_.Rows().size(); ++i) {
    names_.push_back(new ElidedLabel(Shown(AsUtf8(matching_.Rows()[i].layer))));
    names_.back()->setObjectName(Indexed("LblLyrName", i));
    lists_.push_back(NewList(i));
    grid_->addWidget(names_.back(), static_cast<int>(i), kLayerColumn);
    grid_->addWidget(lists_.back(), static_cast<int>(i), kTypeColumn);
  }
  grid_->setRowStretch(static_cast<int>(lists_.size()), 1);  // few rows stand at the top
  return rows;
}

TypeList* frmLayers::NewList(std::size_t row) {
  auto* list = new TypeList(types_);
  list->setObjectName(Indexed("cboCode", row));
  list->setAccessibleName(tr("Entity type of %1").arg(names_[row]->text()));
  list->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  connect(list, &QComboBox::editTextChanged, this, [this, row](const QString& text) { Choose(row, text); });
  connect(list, &TypeList::entered, this, [this, row](Qt::FocusReason reason) {
    ShowNote(row);
    // Under a mouse button nothing may move.
    if (reason != Qt::MouseFocusReason) frame_->ensureWidgetVisible(lists_[row]);
  });
  return list;
}

QWidget* frmLayers::Spin() {
  auto* spin = Named(new QWidget, "Spin");
  auto* layout = new QVBoxLayout(spin);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  const auto add = [&](const char* name, const QString& purpose, Qt::ArrowType arrow, int rows) {
    auto* button = Named(new QToolButton, name);
    button->setAccessibleName(purpose);
    button->setToolTip(purpose);
    button->setArrowType(arrow);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);
    connect(button, &QToolButton::clicked, this, [this, rows] { Scroll(rows); });
    layout->addWidget(button);
  };
  add("SpinUp", tr("One row up"), Qt::UpArrow, -1);
  add("SpinDown", tr("One row down"), Qt::DownArrow, 1);
  return spin;
}

QLayout* frmLayers::Buttons() {
  auto* buttons = new QHBoxLayout;
  const auto add = [&](QPushButton* button, const auto& action) {
    // Enter belongs to the rows.
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, action);
    buttons->addWidget(button);
  };
  add(Named(new QPushButton(tr("Assign Types")), "AssCodes"), [this] {
    matching_.AssignTypes();
    ShowTypes();
  });
  add(Named(new QPushButton(tr("Smart Assign")), "SmartAss"), [this] {
    const BusyPointer busy;
    matching_.SmartAssign();
    ShowTypes();
  });
  buttons->addStretch();
  add(Named(new QPushButton(tr("C&ontinue")), "cmdDone"), [this] { accept(); });
  add(QuestionButtons::Cancel(), [this] { reject(); });
  return buttons;
}

// The frame is as high as its rows, and no higher than the screen has room for.
void frmLayers::FitFrame() {
  if (lists_.empty()) return;
  const int listHeight = lists_.front()->sizeHint().height();
  grid_->setVerticalSpacing(listHeight / 6);
  pitch_ = listHeight + grid_->verticalSpacing();
  frame_->verticalScrollBar()->setSingleStep(pitch_);
  const QMargins margins = grid_->contentsMargins();
  const auto heightOf = [&](int rows) {
    return rows * pitch_ - grid_->verticalSpacing() + margins.top() + margins.bottom() + 2 * frame_->frameWidth();
  };
  const int rows = static_cast<int>(lists_.size());
  frame_->setMinimumWidth(grid_->minimumSize().width() + frame_->verticalScrollBar()->sizeHint().width() +
                          2 * frame_->frameWidth());
  frame_->setMaximumHeight(heightOf(rows));
  frame_->setMinimumHeight(heightOf(std::min(rows, kFewestRows)));
  const int beside = minimumSizeHint().height() - frame_->minimumHeight();
  const int room = screen()->availableGeometry().height() * 4 / 5 - beside;
  frame_->setMinimumHeight(heightOf(std::min({rows, kMostRowsAtFirst, std::max(room / pitch_, kFewestRows)})));
  adjustSize();
  frame_->setMinimumHeight(heightOf(std::min(rows, kFewestRows)));
}

QFont frmLayers::MarkFont() const {
  QFont bold = font();
  bold.setBold(true);
  return bold;
}

std::vector<std::string> frmLayers::Types() const {
  std::vector<std::string> types;
  for (const auto& row : matching_.Rows()) types.push_back(row.type);
  return types;
}

void frmLayers::Choose(std::size_t row, const QString& text) {
  matching_.Choose(row, types_.TypeOf(text));
  Mark(row);
  ShowCount();
  ShowNote(row);
}

void frmLayers::ShowTypes() {
  for (std::size_t i = 0; i < lists_.size(); ++i) {
    const QSignalBlocker blocker(lists_[i]);
    lists_[i]->SetType(Shown(matching_.Rows()[i].type));
    Mark(i);
  }
  ShowCount();
  if (onlyWithout_->isChecked()) ShowRows();
}

// Says beside a text that it is no type; a type that is cut shows whole in the tip.
void frmLayers::Mark(std::size_t row) {
  lists_[row]->setToolTip(lists_[row]->currentText());
  const bool isUnknown = lists_[row]->IsUnknown();
  if (isUnknown && marks_[row] == nullptr) {
    marks_[row] = new QLabel(tr("no type"));
    marks_[row]->setFont(MarkFont());
    marks_[row]->setObjectName(Indexed("LblMark", row));
    grid_->addWidget(marks_[row], static_cast<int>(row), kMarkColumn);
  }
  if (marks_[row] != nullptr) marks_[row]->setVisible(isUnknown);
}

void frmLayers::ShowCount() {
  const auto& rows = matching_.Rows();
  const auto matched =
      std::count_if(rows.begin(), rows.end(), [this](const auto& row) { return types_.RowOf(Shown(row.type)) >= 0; });
  count_->setText(tr("%1 of %2 layers have an entity type").arg(matched).arg(rows.size()));
}

// About the text of the row that the person is at.
void frmLayers::ShowNote(std::size_t row) {
  const TypeList& list = *lists_[row];
  QString note;
  if (list.IsUnknown()) {
    const QString suggestion = list.Suggestion();
    note = tr("\"%1\" is no entity type, so this layer gets none.").arg(list.currentText());
    if (!suggestion.isEmpty()) note += ' ' + tr("Return takes \"%1\".").arg(suggestion);
  }
  note_->setText(note);
  lists_[row]->setAccessibleDescription(note);
}

// Those that the person looks for. A row stays while its type is being chosen.
void frmLayers::ShowRows() {
  const QString part = filter_->text().trimmed();
  std::size_t count = 0;
  grid_->setEnabled(false);  // or each row that comes back would place all rows anew
  frame_->widget()->setUpdatesEnabled(false);
  for (std::size_t i = 0; i < lists_.size(); ++i) {
    const bool isWithout = lists_[i]->currentText().isEmpty() || lists_[i]->IsUnknown();
    const bool isShown =
        names_[i]->text().contains(part, Qt::CaseInsensitive) && (isWithout || !onlyWithout_->isChecked());
    names_[i]->setVisible(isShown);
    lists_[i]->setVisible(isShown);
    if (marks_[i] != nullptr) marks_[i]->setVisible(isShown && lists_[i]->IsUnknown());
    count += isShown ? 1 : 0;
  }
  frame_->widget()->setUpdatesEnabled(true);
  grid_->setEnabled(true);
  grid_->invalidate();
  shown_->setText(count == lists_.size() ? QString() : tr("%1 shown").arg(count));
}

void frmLayers::Scroll(int rows) {
  QScrollBar* bar = frame_->verticalScrollBar();
  bar->setValue(bar->value() + rows * pitch_);
}

bool frmLayers::eventFilter(QObject* watched, QEvent* event) {
  if (watched == frame_->widget() && (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)) {
    PlaceHeadings();
  }
  return QDialog::eventFilter(watched, event);
}

void frmLayers::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) return QDialog::keyPressEvent(event);
  auto* list = qobject_cast<TypeList*>(focusWidget());
  if (auto* button = qobject_cast<QPushButton*>(focusWidget())) {
    button->click();
  } else if (focusWidget() == filter_) {
    const auto first = std::find_if(lists_.begin(), lists_.end(), [](const TypeList* l) { return l->isVisible(); });
    if (first != lists_.end()) (*first)->setFocus();
  } else if (list == nullptr || !list->TakeSuggestion()) {
    focusNextChild();
  }
}

void frmLayers::closeEvent(QCloseEvent*) { accept(); }

void frmLayers::reject() {
  if (Types() == typesAtFirst_ || QuestionButtons::MayEndRun(this)) QDialog::reject();
}

std::vector<std::string> frmLayers::Match() {
  if (exec() != Accepted) throw OperationCanceled();
  return matching_.HandBack();
}

}  // namespace tesselink
