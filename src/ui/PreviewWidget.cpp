// SPDX-License-Identifier: MIT
#include "ui/PreviewWidget.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "picture/PicturePick.h"
#include "ui/ElementPanel.h"
#include "ui/ElidedLabel.h"
#include "ui/Named.h"
#include "ui/Pace.h"
#include "ui/PreviewLayers.h"
#include "ui/PreviewLegend.h"
#include "ui/PreviewStatus.h"
#include "ui/UiNumbers.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr int kOpenAfter = 150;  // milliseconds without a further letter
constexpr PictureBudget kOutputBudget{250'000, 25'000};

QLabel* TitleOf(PreviewPane& pane, const char* name) {
  auto* title = Named(new ElidedLabel({}), name);
  title->setTextFormat(Qt::PlainText);
  title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  title->hide();
  static_cast<QVBoxLayout*>(pane.layout())->insertWidget(0, title);
  return title;
}

std::vector<std::string> LayerNames(const Picture& picture) {
  std::vector<std::string> names;
  for (const PictureLayer& layer : picture.Layers()) {
    if (!layer.others) names.push_back(layer.name);
  }
  return names;
}

QString WithUnit(const QString& number, const std::string& unit) {
  return unit.empty() ? number : number + u' ' + Shown(unit);
}

}  // namespace

PreviewWidget::PreviewWidget(const FormatTable& formats, Settings& settings, const FilterOptions& options,
                             QWidget* parent)
    : QWidget(parent), formats_(formats), settings_(settings), options_(options) {
  setObjectName(QStringLiteral("preview"));
  input_ = new PreviewPane(formats_, settings_, {}, QStringLiteral("previewCanvas"));
  input_->Canvas().setAccessibleName(tr("Preview of the input"));
  output_ = new PreviewPane(formats_, settings_, kOutputBudget, QStringLiteral("previewOutputCanvas"));
  output_->Canvas().setAccessibleName(tr("Preview of the output"));
  inputTitle_ = TitleOf(*input_, "previewInputTitle");
  outputTitle_ = TitleOf(*output_, "previewOutputTitle");
  output_->hide();
  measured_ = Named(new QLabel, "previewMeasured");
  measured_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  measured_->setWordWrap(true);
  measured_->hide();
  legend_ = new PreviewLegend;
  status_ = new PreviewStatus;

  panes_ = Named(new QSplitter(Qt::Horizontal), "previewPanes");
  panes_->setChildrenCollapsible(false);
  for (QWidget* part : {static_cast<QWidget*>(input_), static_cast<QWidget*>(output_), BuildSide()}) {
    panes_->addWidget(part);
  }
  panes_->setStretchFactor(0, 1);
  panes_->setStretchFactor(1, 1);
  panes_->setStretchFactor(2, 0);
  const int side = layers_->minimumWidth();
  panes_->setSizes({5 * side, 5 * side, side});
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(BuildTools());
  layout->addWidget(panes_, 1);
  for (QLabel* line : {measured_, static_cast<QLabel*>(legend_), static_cast<QLabel*>(status_)})
    layout->addWidget(line);
  Connect();
  OpenInput();
}

PreviewWidget::~PreviewWidget() = default;

QWidget* PreviewWidget::BuildSide() {
  side_ = new QWidget;
  layers_ = new PreviewLayers;
  element_ = new ElementPanel;
  element_->hide();
  auto* parts = Named(new QSplitter(Qt::Vertical), "previewSide");
  parts->setChildrenCollapsible(false);
  parts->addWidget(layers_);
  parts->addWidget(element_);
  auto* layout = new QVBoxLayout(side_);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(parts);
  layers_->setMinimumWidth(fontMetrics().averageCharWidth() * 24);
  return side_;
}

QWidget* PreviewWidget::BuildTools() {
  tools_ = Named(new QWidget, "previewTools");
  auto* row = new QHBoxLayout(tools_);
  row->setContentsMargins(0, 0, 0, 0);
  PreviewCanvas* canvas = &input_->Canvas();
  const auto add = [&](const QString& text, const char* name, const QString& what, void (PreviewCanvas::*does)()) {
    connect(AddTool(text, name, what), &QToolButton::clicked, canvas, does);
  };
  add(QStringLiteral("+"), "previewZoomIn", tr("Zoom in"), &PreviewCanvas::ZoomIn);
  add(QStringLiteral("\u2212"), "previewZoomOut", tr("Zoom out"), &PreviewCanvas::ZoomOut);
  add(tr("Fit"), "previewFit", tr("Show the whole drawing"), &PreviewCanvas::Fit);
  measure_ = AddTool(tr("Measure"), "previewMeasure", tr("Measure distances (M)"));
  measure_->setCheckable(true);
  closeOutput_ = AddTool(tr("Close the output"), "previewCloseOutput", tr("Show the input alone"));
  closeOutput_->hide();
  row->addStretch();
  place_ = Named(new QLabel, "previewPlace");
  place_->setAccessibleName(tr("Place under the pointer"));
  row->addWidget(place_);
  return tools_;
}

QToolButton* PreviewWidget::AddTool(const QString& text, const char* name, const QString& what) {
  auto* button = Named(new QToolButton, name);
  button->setText(text);
  button->setAccessibleName(what);
  button->setToolTip(what);
  button->setFocusPolicy(Qt::StrongFocus);
  tools_->layout()->addWidget(button);
  return button;
}

void PreviewWidget::Connect() {
  opening_.setSingleShot(true);
  connect(&opening_, &QTimer::timeout, this, &PreviewWidget::OpenInput);
  connect(&lookups_, &QTimer::timeout, this, &PreviewWidget::LookOn);
  connect(input_, &PreviewPane::Advanced, this, &PreviewWidget::ShowState);
  connect(output_, &PreviewPane::Advanced, this, &PreviewWidget::ShowTitles);
  connect(layers_, &PreviewLayers::HiddenChanged, this, &PreviewWidget::HideLayers);
  connect(element_, &ElementPanel::Closed, this, &PreviewWidget::EndLookup);
  connect(closeOutput_, &QToolButton::clicked, this, &PreviewWidget::HideOutput);
  connect(measure_, &QToolButton::clicked, this, [this](bool on) {
    input_->Canvas().SetMode(on ? PreviewCanvas::Mode::Measure : PreviewCanvas::Mode::Look);
    if (on) input_->Canvas().setFocus();
  });
  ConnectPane(*input_);
  ConnectPane(*output_);
  connect(&input_->Canvas(), &PreviewCanvas::ViewMoved, this, [this] { LinkViews(*input_, *output_); });
  connect(&output_->Canvas(), &PreviewCanvas::ViewMoved, this, [this] { LinkViews(*output_, *input_); });
}

void PreviewWidget::ConnectPane(PreviewPane& pane) {
  PreviewCanvas& canvas = pane.Canvas();
  const QString tip =
      tr("Wheel or + and -: zoom. Drag or arrows: move. Double click or F: show all. Click or Return: what is there.");
  canvas.setToolTip(tip);
  connect(&canvas, &PreviewCanvas::Pointed, this, [&](const auto& at) { ShowPlace(pane, at); });
  connect(&canvas, &PreviewCanvas::PlaceChosen, this, [&](PicturePoint at, double reach) { LookUp(pane, at, reach); });
  connect(&canvas, &PreviewCanvas::Measured, this, &PreviewWidget::ShowMeasure);
  connect(&canvas, &PreviewCanvas::ModeChanged, this, &PreviewWidget::ShowMeasure);
  connect(&canvas, &PreviewCanvas::ClipChosen, this, &PreviewWidget::ClipChosen);
  connect(&canvas, &PreviewCanvas::ModeChanged, this, [this, &canvas, tip] {
    canvas.setToolTip(canvas.CurrentMode() == PreviewCanvas::Mode::Look ? tip : QString());  // else it hides the places
    emit ChoosingClip(canvas.CurrentMode() == PreviewCanvas::Mode::Clip);
  });
}

void PreviewWidget::ShowInputs(const QStringList& paths, const QString& formatEntry) {
  paths_ = paths;
  formatEntry_ = formatEntry;
  opening_.start(kOpenAfter);
}

void PreviewWidget::SetOptions(const FilterOptions& options, const std::optional<FieldChoice>& fields) {
  options_ = options;
  fields_ = fields;
  input_->Canvas().SetClip(options.clip);
  opening_.start(kOpenAfter);
}

void PreviewWidget::OpenInput() {
  // A reading that is opening a file draws the window meanwhile, which may come here.
  if (paused_ || input_->IsBusy() || output_->IsBusy()) {
    opening_.start(kOpenAfter);
    return;
  }
  EndLookup();
  // Read anew by other options, an input still goes with its output.
  if (openedPaths_ != paths_) HideOutput();
  openedPaths_ = paths_;
  layers_->Clear();
  input_->Show(paths_, formatEntry_, options_, fields_);
}

void PreviewWidget::ShowOutput(const QStringList& paths, const QString& formatEntry) {
  const std::string entry = formatEntry.toStdString();
  const auto& rows = formats_.Inputs();
  const auto row = std::find_if(rows.begin(), rows.end(), [&](const InputFormat& one) { return one.entry == entry; });
  if (row == rows.end() || output_->IsBusy()) return;
  QStringList drawings;
  for (const QString& path : paths) {
    if (LowerCase(ExtensionOf(PathOf(path))) == row->Extension()) drawings.append(path);
  }
  if (drawings.isEmpty()) return;
  output_->Show(drawings, formatEntry, options_);
  output_->SetPaused(paused_);
  output_->show();
  closeOutput_->show();
  inputTitle_->show();
  outputTitle_->show();
  input_->Canvas().Fit();
  ShowTitles();
}

void PreviewWidget::HideOutput() {
  if (output_->isHidden() || output_->IsBusy()) return;
  if (lookedIn_ == output_) EndLookup();
  output_->hide();
  output_->Show({}, {}, options_);
  closeOutput_->hide();
  inputTitle_->hide();
  outputTitle_->hide();
}

bool PreviewWidget::IsDone() const {
  const bool outputDone = output_->isHidden() || output_->IsDone();
  return !opening_.isActive() && !lookup_ && input_->IsDone() && outputDone;
}

void PreviewWidget::Pause() {
  paused_ = true;
  EndLookup();
  tools_->setEnabled(false);
  side_->setEnabled(false);  // what it changes would be drawn only when the run is over
  input_->SetPaused(true);
  output_->SetPaused(true);
}

void PreviewWidget::Resume() {
  paused_ = false;
  tools_->setEnabled(true);
  side_->setEnabled(true);
  input_->SetPaused(false);
  output_->SetPaused(false);
}

void PreviewWidget::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange && input_->Drawn() != nullptr) layers_->List(input_->Drawn()->Layers());
  QWidget::changeEvent(event);
}

void PreviewWidget::ShowState() {
  const PreviewReading* reading = input_->Reading();
  input_->Canvas().SetEmptyText(reading == nullptr ? tr("Choose a file, or drop one here")
                                : reading->Ended() ? tr("Nothing to show")
                                                   : tr("Reading\u2026"));
  if (reading != nullptr) layers_->List(reading->Drawn().Layers());
  side_->setVisible(reading != nullptr && !reading->Drawn().Layers().empty());
  status_->Tell(input_->Title(), reading);
  ShowTitles();
  ShowLegend();
  emit Counted(reading != nullptr ? reading->Drawn().Counts() : PictureCounts(),
               reading == nullptr || reading->Ended());
  if (reading == nullptr) return;
  TellHindrance(*reading);
  emit Known(reading->Facts(), LayerNames(reading->Drawn()));
}

// Where nothing could be read, the gravest note is the reason.
void PreviewWidget::TellHindrance(const PreviewReading& reading) {
  const bool isEmpty = reading.Drawn().Elements() == 0 && reading.Ended();
  const std::vector<ReadingNote> notes = reading.Notes();
  const bool hinders = !notes.empty() && (isEmpty || !reading.Problem().empty());
  emit Hindered(hinders ? PreviewStatus::Line(notes[0]) : QString());
}

void PreviewWidget::ShowTitles() {
  const auto tell = [](QLabel& label, const QString& form, const PreviewPane& pane) {
    if (pane.Reading() == nullptr) return label.clear();
    label.setText(form.arg(pane.Title(), Grouped(pane.Drawn()->Elements())));
    label.setToolTip(label.text());
  };
  tell(*inputTitle_, tr("Input: %1, elements: %2"), *input_);
  tell(*outputTitle_, tr("Output: %1, elements: %2"), *output_);
  if (output_->Reading() != nullptr && output_->Reading()->Ended()) {
    output_->Canvas().SetEmptyText(tr("Nothing to show"));
    HideLayers(layers_->Hidden());
  }
}

void PreviewWidget::SetLost(std::uint32_t kinds) {
  if (kinds == lost_) return;
  lost_ = kinds;
  input_->Canvas().SetLost(kinds);
  ShowLegend();
}

void PreviewWidget::ShowLegend() { legend_->Tell(lost_, input_->Drawn()); }

void PreviewWidget::ChooseClip(bool wanted) {
  PreviewCanvas& canvas = input_->Canvas();
  if (wanted) canvas.setFocus();
  if (wanted || canvas.CurrentMode() == PreviewCanvas::Mode::Clip) {
    canvas.SetMode(wanted ? PreviewCanvas::Mode::Clip : PreviewCanvas::Mode::Look);
  }
}

void PreviewWidget::SetClip(const std::optional<ClipBox>& clip) { input_->Canvas().SetClip(clip); }

void PreviewWidget::ShowPlace(const PreviewPane& pane, const std::optional<PicturePoint>& at) {
  if (!at || pane.Reading() == nullptr) {
    place_->clear();
    return;
  }
  const int decimals = DecimalsFor(1 / pane.Canvas().View().scale);
  place_->setText(
      WithUnit(tr("x %1   y %2").arg(Grouped(at->x, decimals), Grouped(at->y, decimals)), pane.Reading()->Unit()));
}

void PreviewWidget::ShowMeasure() {
  const auto mode = input_->Canvas().CurrentMode();
  measure_->setChecked(mode == PreviewCanvas::Mode::Measure);
  measured_->setVisible(mode != PreviewCanvas::Mode::Look);
  const PreviewOverlay& overlay = input_->Canvas().Overlay();
  if (mode == PreviewCanvas::Mode::Clip) {
    measured_->setText(tr("Drag a window around what to take, or mark two corners with Return. Escape gives it up."));
  } else if (overlay.chain.empty()) {
    measured_->setText(
        tr("Click the places to measure between, or mark the middle with Return. Escape ends measuring."));
  } else if (input_->Reading() != nullptr) {
    const int decimals = DecimalsFor(1 / input_->Canvas().View().scale);
    const auto& unit = input_->Reading()->Unit();
    measured_->setText(tr("Total %1, last leg %2. Backspace takes the last place back.")
                           .arg(WithUnit(Grouped(overlay.Length(), decimals), unit),
                                WithUnit(Grouped(overlay.LastLeg(), decimals), unit)));
  }
}

// Both show the same place, unless the output lies somewhere else, as in another coordinate system.
void PreviewWidget::LinkViews(PreviewPane& from, PreviewPane& to) {
  if (output_->isHidden() || input_->Drawn() == nullptr || output_->Drawn() == nullptr) return;
  const Extents a = input_->Drawn()->View(), b = output_->Drawn()->View();
  const bool meet = a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
  if (meet) to.Canvas().Follow(from.Canvas().View());
}

// Layers of the output are those of the same name.
void PreviewWidget::HideLayers(const std::vector<bool>& hidden) {
  input_->Canvas().SetHiddenLayers(hidden);
  if (output_->isHidden() || input_->Drawn() == nullptr || output_->Drawn() == nullptr) return;
  const auto& inputs = input_->Drawn()->Layers();
  std::vector<bool> same;
  for (const PictureLayer& layer : output_->Drawn()->Layers()) {
    const auto isIt = [&](const PictureLayer& one) { return one.name == layer.name; };
    const auto place = static_cast<std::size_t>(std::find_if(inputs.begin(), inputs.end(), isIt) - inputs.begin());
    same.push_back(place < hidden.size() && hidden[place]);
  }
  output_->Canvas().SetHiddenLayers(same);
}

void PreviewWidget::LookUp(PreviewPane& pane, PicturePoint at, double reach) {
  if (paused_) return;
  EndLookup();
  const auto element = ElementAt(*pane.Drawn(), pane.Canvas().HiddenLayers(), at, reach);
  if (!element) return;
  pane.Canvas().SetChosen(*element);
  lookedIn_ = &pane;
  lookup_ = std::make_unique<ElementLookup>(pane.Reading()->Input(), settings_, *element);
  element_->ShowLooking(0);
  element_->show();
  lookups_.start(0);
}

void PreviewWidget::LookOn() {
  const bool more = lookup_->Slice(kSlice);
  if (more) return element_->ShowLooking(static_cast<int>(lookup_->Progress()));
  lookups_.stop();
  const PreviewReading* reading = lookedIn_->Reading();
  if (lookup_->Found()) {
    element_->ShowFacts(*lookup_->Found(), Shown(reading->Unit()), reading->Drawn().Cell() > 0);
  } else {
    element_->ShowReason(tr("It was not found again; the file may have changed since it was read."));
  }
  lookup_.reset();
}

void PreviewWidget::EndLookup() {
  lookups_.stop();
  lookup_.reset();
  lookedIn_ = nullptr;
  element_->hide();
  for (const PreviewPane* pane : {input_, output_}) pane->Canvas().SetChosen(0);
}

}  // namespace tesselink
