// SPDX-License-Identifier: MIT
#include "ui/TypeList.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QWheelEvent>
#include <algorithm>

#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr int kListLength = 30;  // characters
constexpr int kMostSuggested = 12;

bool IsReturn(const QEvent& event) {
  if (event.type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent&>(event).key();
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

TypesShown::TypesShown(const std::vector<std::string>& types) {
  model_.Set(types);
  for (int row = model_.rowCount() - 1; row >= 0; --row) rows_[Shown(types[static_cast<std::size_t>(row)])] = row;
}

std::string TypesShown::TypeOf(const QString& text) const {
  const int row = RowOf(text);
  return row < 0 ? text.toStdString() : model_.Texts()[static_cast<std::size_t>(row)];
}

QString TypesShown::FirstWith(const QString& text) const {
  const auto& types = model_.Texts();
  const auto found = std::find_if(types.begin(), types.end(), [&](const std::string& type) {
    return Shown(type).contains(text, Qt::CaseInsensitive);
  });
  return found == types.end() ? QString() : Shown(*found);
}

int TypesShown::Width(const QFontMetrics& metrics) const {
  int width = 0;
  for (const std::string& type : model_.Texts()) width = std::max(width, metrics.horizontalAdvance(Shown(type)));
  return width;
}

TypeList::TypeList(TypesShown& types, QWidget* parent) : QComboBox(parent), types_(types) {
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(kListLength);
  setInsertPolicy(NoInsert);
  setEditable(true);
  setCompleter(nullptr);
  setModel(types_.Model());
}

void TypeList::SetType(const QString& type) {
  setCurrentIndex(types_.RowOf(type));
  setEditText(type);
  lineEdit()->setCursorPosition(0);  // the beginning tells more than the end
}

bool TypeList::TakeSuggestion() {
  const QString type = Suggestion();
  if (type.isEmpty()) return false;
  SetType(type);
  // What is typed next takes its place.
  lineEdit()->end(false);
  lineEdit()->home(true);
  return true;
}

// Typing shows the types that contain what was typed. Only a list that is used needs this, and the popup.
void TypeList::MakeUsable() {
  if (completer() != nullptr) return;
  auto* view = new QListView(this);
  view->setUniformItemSizes(true);
  setView(view);
  auto* found = new QCompleter(model(), this);
  found->setCaseSensitivity(Qt::CaseInsensitive);
  found->setFilterMode(Qt::MatchContains);
  found->setMaxVisibleItems(kMostSuggested);
  setCompleter(found);
  found->popup()->installEventFilter(this);
  const int whole = types_.Width(fontMetrics()) + 4 * style()->pixelMetric(QStyle::PM_FocusFrameHMargin) +
                    style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  for (QAbstractItemView* popup : {static_cast<QAbstractItemView*>(view), found->popup()})
    popup->setMinimumWidth(whole);
}

void TypeList::focusInEvent(QFocusEvent* event) {
  MakeUsable();
  QComboBox::focusInEvent(event);
  emit entered(event->reason());
}

void TypeList::wheelEvent(QWheelEvent* event) { event->ignore(); }

// Return in the suggestions takes the first where none was moved to.
bool TypeList::eventFilter(QObject* watched, QEvent* event) {
  auto* popup = completer() == nullptr ? nullptr : completer()->popup();
  if (popup != nullptr && watched == popup && IsReturn(*event) && !popup->currentIndex().isValid() &&
      TakeSuggestion()) {
    popup->hide();
    return true;
  }
  return QComboBox::eventFilter(watched, event);
}

}  // namespace tesselink
