// SPDX-License-Identifier: MIT
// How the queue's window looks.
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

#include "ui/EngineCall.h"
#include "ui/Named.h"
#include "ui/QueueModel.h"
#include "ui/QueueWindow.h"
#include "ui/UiText.h"
#include "ui/WheelGuard.h"

namespace tesselink {
namespace {

QLabel* LabelFor(QWidget* control, const char* name, const QString& text) {
  auto* label = Named(new QLabel(text), name);
  label->setBuddy(control);
  return label;
}

}  // namespace

QueueWindow::QueueWindow(const FormatTable& formats, std::string program, QWidget* parent)
    : QWidget(parent, Qt::Window),
      formats_(formats),
      program_(std::move(program)),
      report_(folder_.filePath("batch.jsonl")),
      begun_(folder_.filePath("batch.jsonl.begun")),
      planning_(new EngineCall(this)),
      run_(new EngineCall(this)),
      model_(new QueueModel(this)) {
  setObjectName("QueueWindow");
  setWindowTitle(tr("Many Files"));
  setAcceptDrops(true);
  planSoon_.setSingleShot(true);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(BuildList(), 1);
  layout->addWidget(BuildOutput());
  notes_ = Named(new QLabel, "lblNotes");
  notes_->setWordWrap(true);
  notes_->setTextFormat(Qt::PlainText);
  gauge_ = Named(new QProgressBar, "BatchGauge");
  gauge_->setAccessibleName(tr("Part of the files that have ended"));
  progress_ = Named(new QLabel, "lblProgress");
  progress_->setWordWrap(true);
  progress_->setTextFormat(Qt::PlainText);
  gauge_->hide();
  progress_->hide();
  layout->addWidget(notes_);
  layout->addWidget(gauge_);
  layout->addWidget(progress_);
  layout->addWidget(BuildButtons());
  Connect();
  const int unit = fontMetrics().averageCharWidth();
  resize(QSize(120 * unit, 70 * unit).expandedTo(sizeHint()).boundedTo(screen()->availableSize() * 9 / 10));
  ShowState();
}

// Before the folder goes that they write to.
QueueWindow::~QueueWindow() {
  delete planning_;
  delete run_;
}

QPushButton* QueueWindow::Button(const char* name, const QString& text, void (QueueWindow::*pressed)()) {
  auto* button = Named(new QPushButton(text), name);
  connect(button, &QPushButton::clicked, this, pressed);
  button->setAutoDefault(true);
  return button;
}

QWidget* QueueWindow::BuildList() {
  list_ = Named(new QTableView, "List");
  list_->setAccessibleName(tr("Files"));
  list_->setModel(model_);
  list_->setSelectionBehavior(QAbstractItemView::SelectRows);
  list_->setTabKeyNavigation(false);
  list_->setWordWrap(false);
  list_->verticalHeader()->hide();
  list_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
  list_->horizontalHeader()->setStretchLastSection(true);
  list_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);  // as they were added, until somebody asks
  list_->setSortingEnabled(true);
  const int unit = fontMetrics().averageCharWidth();
  const int widths[] = {36 * unit, 18 * unit, 24 * unit};
  for (int column = 0; column < 3; ++column) list_->setColumnWidth(column, widths[column]);
  details_ = Named(new QPlainTextEdit, "Details");
  details_->setAccessibleName(tr("What there is to say of the chosen file"));
  details_->setReadOnly(true);
  details_->setTabChangesFocus(true);
  auto* both = Named(new QSplitter(Qt::Vertical), "ListSplitter");
  both->addWidget(list_);
  both->addWidget(details_);
  both->setStretchFactor(0, 3);
  both->setStretchFactor(1, 1);
  both->setChildrenCollapsible(false);
  addFiles_ = Button("cmdAddFiles", tr("Add &Files..."), &QueueWindow::AddFiles);
  addFolder_ = Button("cmdAddFolder", tr("Add Fol&der..."), &QueueWindow::AddFolder);
  remove_ = Button("cmdRemove", tr("&Remove"), &QueueWindow::Remove);
  join_ = Button("cmdJoin", tr("&Into One Output Instead..."), &QueueWindow::JoinToOne);
  auto* part = new QWidget;
  auto* row = new QHBoxLayout;
  for (QPushButton* button : {addFiles_, addFolder_, remove_}) row->addWidget(button);
  row->addStretch();
  row->addWidget(join_);
  auto* layout = new QVBoxLayout(part);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(row);
  layout->addWidget(both, 1);
  return part;
}

QWidget* QueueWindow::BuildOutput() {
  into_ = Named(new QLineEdit, "Into");
  browse_ = Button("BrowseInto", tr("&Browse..."), &QueueWindow::ChooseFolder);
  format_ = Named(new QComboBox, "BatchFormat");
  for (const OutputFormat& format : formats_.Outputs()) {
    if (!format.makesNoFile) format_->addItem(Shown(format.entry));
  }
  dialect_ = Named(new QComboBox, "BatchDialect");
  dialect_->addItems({tr("Classic"), tr("Standard")});
  for (QComboBox* list : {format_, dialect_}) GuardFromWheel(*list);
  replace_ = Named(new QCheckBox(tr("Re&place files that exist")), "chkReplace");
  auto* part = new QWidget;
  auto* grid = new QGridLayout(part);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(LabelFor(into_, "lblInto", tr("Fo&lder of the Outputs:")), 0, 0);
  grid->addWidget(into_, 0, 1, 1, 3);
  grid->addWidget(browse_, 0, 4);
  grid->addWidget(LabelFor(format_, "lblBatchFormat", tr("&Output Format:")), 1, 0);
  grid->addWidget(format_, 1, 1);
  grid->addWidget(LabelFor(dialect_, "lblBatchDialect", tr("Dialec&t:")), 1, 2);
  grid->addWidget(dialect_, 1, 3);
  grid->addWidget(replace_, 2, 1, 1, 3);
  grid->setColumnStretch(1, 1);
  return part;
}

QWidget* QueueWindow::BuildButtons() {
  copy_ = Button("cmdCopyCommand", tr("Cop&y as Command"), &QueueWindow::CopyCommand);
  save_ = Button("cmdSaveReport", tr("Sa&ve Report..."), &QueueWindow::SaveReport);
  openInto_ = Button("cmdOpenInto", tr("Ope&n Folder"), &QueueWindow::OpenInto);
  start_ = Button("cmdStart", tr("&Start"), &QueueWindow::Begin);
  cancel_ = Button("cmdCancelBatch", tr("&Cancel"), &QueueWindow::AskCancel);
  close_ = Named(new QPushButton(tr("Clos&e")), "cmdClose");
  connect(close_, &QPushButton::clicked, this, &QWidget::close);
  auto* part = new QWidget;
  auto* row = new QHBoxLayout(part);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(copy_);
  row->addWidget(save_);
  row->addWidget(openInto_);
  row->addStretch();
  row->addWidget(start_);
  row->addWidget(cancel_);
  row->addWidget(close_);
  return part;
}

void QueueWindow::Connect() {
  connect(&planSoon_, &QTimer::timeout, this, &QueueWindow::MakePlan);
  connect(into_, &QLineEdit::textChanged, this, &QueueWindow::PlanSoon);
  for (QComboBox* box : {format_, dialect_})
    connect(box, &QComboBox::currentIndexChanged, this, &QueueWindow::PlanSoon);
  connect(replace_, &QCheckBox::toggled, this, &QueueWindow::PlanSoon);
  connect(planning_, &EngineCall::ended, this, &QueueWindow::TakePlan);
  connect(run_, &EngineCall::ticked, this, &QueueWindow::Follow);
  connect(run_, &EngineCall::ended, this,
          [this](int exitCode, const QByteArray&, const QString& errors) { TakeEnd(exitCode, errors); });
  connect(list_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &QueueWindow::ShowDetails);
}

}  // namespace tesselink
