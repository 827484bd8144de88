// SPDX-License-Identifier: MIT
#include "ui/NoteLine.h"

#include <QHBoxLayout>
#include <QStyle>
#include <QToolButton>

#include "ui/Named.h"

namespace tesselink {

NoteLine::NoteLine(const char* name, const QString& meaning, QWidget* parent) : QWidget(parent), meaning_(meaning) {
  setObjectName(name);
  const int side = fontMetrics().height();
  sign_ = new QLabel;
  sign_->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(QSize(side, side), devicePixelRatioF()));
  sign_->setFixedWidth(side);
  text_ = new QLabel;
  text_->setObjectName(QString(name) + "Text");
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  text_->setMinimumHeight(side);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  text_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  action_ = new QToolButton;
  action_->setObjectName(QString(name) + "Action");
  action_->setFocusPolicy(Qt::StrongFocus);
  connect(action_, &QToolButton::clicked, this, &NoteLine::acted);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(sign_, 0, Qt::AlignTop);
  row->addWidget(text_, 1);
  row->addWidget(action_, 0, Qt::AlignTop);
  Show({});
}

void NoteLine::Show(const Note& note) {
  note_ = note;
  text_->setText(note.text);
  text_->setAccessibleName(meaning_ + ": " + note.text);
  sign_->setVisible(note.isProblem);
  action_->setText(note.action);
  action_->setAccessibleName(note.action);
  action_->setVisible(!note.action.isEmpty());
}

}  // namespace tesselink
