// SPDX-License-Identifier: MIT
#include "ui/frmLayers.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QCompleter>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolButton>
#include <algorithm>

#include "core/io/Utf8.h"
#include "formats/cdf/LayerMatching.h"
#include "ui/ElidedLabel.h"
#include "ui/Named.h"
#include "ui/TextListModel.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr int kRowsToBeginWith = 12;
constexpr int kFewestRows = 4;
constexpr int kListLength = 30;  // characters

class BusyPointer {
 public:
  BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
};

QString Indexed(const char* name, std::size_t index) { return name + QString::number(index); }

// Typing shows the descriptions that contain what was typed. Only a list that is used needs this, and the popup.
void MakeUsable(QComboBox& list) {
  if (list.completer() != nullptr) return;
  auto* view = new QListView(&list);
  view->setUniformItemSizes(true);
  list.setView(view);
  auto* completer = new QCompleter(list.model(), &list);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  completer->setFilterMode(Qt::MatchContains);
  completer->setMaxVisibleItems(12);
  list.setCompleter(completer);
}

}  // namespace

frmLayers::frmLayers(LayerMatching& matching, QWidget* parent)
    : QDialog(parent),
      matching_(matching),
      types_(new TextListModel(this)),
      frame_(Named(new QScrollArea, "frame")),
      count_(Named(new QLabel, "lblCount")) {
  setObjectName("frmLayers");
  setWindowTitle("Layer Name Matching");
  types_->Set(matching.Types());
  for (int row = types_->rowCount() - 1; row >= 0; --row) rowOfType_[Shown(types_->Texts()[std::size_t(row)])] = row;
  setLayout(Contents());
  FitFrame();
  ShowTypes();
  if (!lists_.empty()) lists_.front()->setFocus();
}

QLayout* frmLayers::Contents() {
  auto* title = Named(new QLabel("Layer Name Matching"), "lblTitle");
  QFont font = title->font();
  font.setBold(true);
  font.setPointSizeF(font.pointSizeF() * 1.2);
  title->setFont(font);
  frame_->setWidgetResizable(true);
  frame_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  frame_->setFocusPolicy(Qt::NoFocus);
  frame_->setWidget(Rows());

  auto* table = new QGridLayout;
  table->addLayout(Headings(), 0, 0);
  table->addWidget(frame_, 1, 0);
  table->addWidget(Spin(), 1, 1, Qt::AlignTop);
  auto* contents = new QVBoxLayout;
  contents->addWidget(title, 0, Qt::AlignHCenter);
  contents->addLayout(table, 1);
  contents->addWidget(count_);
  contents->addLayout(Buttons());
  contents->addStretch();
  return contents;
}

QLayout* frmLayers::Headings() {
  auto* layers = Named(new ElidedLabel(Shown(matching_.Heading())), "lblDXFName");
  auto* types = Named(new ElidedLabel("CDF Entity Type"), "lblCDFName");
  auto* headings = new QHBoxLayout;
  headings->addWidget(layers, 1);
  headings->addWidget(types, 1);
  // Beside the rows stand the scroll bar and the spin buttons.
  headings->addSpacing(3 * style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  return headings;
}

QWidget* frmLayers::Rows() {
  auto* rows = new QWidget;
  auto* grid = new QGridLayout(rows);
  for (const int column : {0, 1}) {
    grid->setColumnStretch(column, 1);
    grid->setColumnMinimumWidth(column, fontMetrics().averageCharWidth() * 34);
  }
  for (std::size_t i = 0; i < matching_.Rows().size(); ++i) {
    auto* label = new ElidedLabel(Shown(AsUtf8(matching_.Rows()[i].layer)));
    label->setObjectName(Indexed("LblLyrName", i));
    lists_.push_back(NewList(i));
    lists_.back()->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    grid->addWidget(label, static_cast<int>(i), 0);
    grid->addWidget(lists_.back(), static_cast<int>(i), 1);
  }
  return rows;
}

QComboBox* frmLayers::NewList(std::size_t row) {
  auto* list = new QComboBox;
  list->setObjectName(Indexed("cboCode", row));
  list->setAccessibleName("Entity type of " + Shown(AsUtf8(matching_.Rows()[row].layer)));
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list->setMinimumContentsLength(kListLength);
  list->setInsertPolicy(QComboBox::NoInsert);
  list->setEditable(true);
  list->setCompleter(nullptr);
  list->setModel(types_);
  list->installEventFilter(this);
  connect(list, &QComboBox::editTextChanged, this, [this, row](const QString& text) { Choose(row, text); });
  return list;
}

QWidget* frmLayers::Spin() {
  auto* spin = Named(new QWidget, "Spin");
  auto* layout = new QVBoxLayout(spin);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  const auto add = [&](const char* name, const char* purpose, Qt::ArrowType arrow, int rows) {
    auto* button = Named(new QToolButton, name);
    button->setAccessibleName(purpose);
    button->setToolTip(purpose);
    button->setArrowType(arrow);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);
    connect(button, &QToolButton::clicked, this, [this, rows] { Scroll(rows); });
    layout->addWidget(button);
  };
  add("SpinUp", "One row up", Qt::UpArrow, -1);
  add("SpinDown", "One row down", Qt::DownArrow, 1);
  return spin;
}

QLayout* frmLayers::Buttons() {
  auto* buttons = new QHBoxLayout;
  const auto add = [&](const char* name, const char* caption, const auto& action) {
    auto* button = Named(new QPushButton(caption), name);
    // Enter belongs to the rows.
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, action);
    buttons->addWidget(button);
  };
  add("AssCodes", "Assign Types", [this] {
    matching_.AssignTypes();
    ShowTypes();
  });
  add("SmartAss", "Smart Assign", [this] {
    const BusyPointer busy;
    matching_.SmartAssign();
    ShowTypes();
  });
  buttons->addStretch();
  add("cmdDone", "C&ontinue", [this] { accept(); });
  return buttons;
}

// The frame is as high as its rows, and no higher than a screen has room for.
void frmLayers::FitFrame() {
  if (lists_.empty()) return;
  auto* grid = static_cast<QGridLayout*>(frame_->widget()->layout());
  const int listHeight = lists_.front()->sizeHint().height();
  grid->setVerticalSpacing(listHeight / 6);
  pitch_ = listHeight + grid->verticalSpacing();
  frame_->verticalScrollBar()->setSingleStep(pitch_);
  const QMargins margins = grid->contentsMargins();
  const auto heightOf = [&](int rows) {
    return rows * pitch_ - grid->verticalSpacing() + margins.top() + margins.bottom() + 2 * frame_->frameWidth();
  };
  const int rows = static_cast<int>(lists_.size());
  frame_->setMinimumWidth(grid->minimumSize().width() + frame_->verticalScrollBar()->sizeHint().width() +
                          2 * frame_->frameWidth());
  frame_->setMaximumHeight(heightOf(rows));
  frame_->setMinimumHeight(heightOf(std::min(rows, kRowsToBeginWith)));
  adjustSize();
  frame_->setMinimumHeight(heightOf(std::min(rows, kFewestRows)));
}

void frmLayers::Choose(std::size_t row, const QString& text) {
  const auto known = rowOfType_.constFind(text);
  matching_.Choose(row, known == rowOfType_.cend() ? text.toStdString() : types_->Texts()[std::size_t(*known)]);
  ShowCount();
}

void frmLayers::ShowTypes() {
  for (std::size_t i = 0; i < lists_.size(); ++i) {
    const QSignalBlocker blocker(lists_[i]);
    const QString type = Shown(matching_.Rows()[i].type);
    lists_[i]->setCurrentIndex(rowOfType_.value(type, -1));
    lists_[i]->setEditText(type);
  }
  ShowCount();
}

void frmLayers::ShowCount() {
  const auto& rows = matching_.Rows();
  const auto matched =
      std::count_if(rows.begin(), rows.end(), [this](const auto& row) { return rowOfType_.contains(Shown(row.type)); });
  count_->setText(QString("%1 of %2 layers have an entity type").arg(matched).arg(rows.size()));
}

void frmLayers::Scroll(int rows) {
  QScrollBar* bar = frame_->verticalScrollBar();
  bar->setValue(bar->value() + rows * pitch_);
}

bool frmLayers::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Wheel) {
    // It scrolls the rows instead of changing what it passes.
    event->ignore();
    return true;
  }
  if (event->type() == QEvent::FocusIn) {
    auto* list = static_cast<QComboBox*>(watched);
    MakeUsable(*list);
    // Under a mouse button nothing may move.
    if (static_cast<QFocusEvent*>(event)->reason() != Qt::MouseFocusReason) frame_->ensureWidgetVisible(list);
  }
  return QDialog::eventFilter(watched, event);
}

void frmLayers::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) return QDialog::keyPressEvent(event);
  if (auto* button = qobject_cast<QPushButton*>(focusWidget())) {
    button->click();
  } else {
    focusNextChild();
  }
}

void frmLayers::closeEvent(QCloseEvent*) { accept(); }

std::vector<std::string> frmLayers::Match() {
  exec();
  return matching_.HandBack();
}

}  // namespace tesselink
