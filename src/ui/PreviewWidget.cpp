// SPDX-License-Identifier: MIT
#include "ui/PreviewWidget.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPainter>
#include <QPixmap>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

#include "core/io/Numbers.h"
#include "core/io/Paths.h"
#include "picture/PictureColours.h"
#include "ui/PreviewCanvas.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr std::chrono::milliseconds kSlice{12};
constexpr int kOpenAfter = 150;   // milliseconds without a further letter
constexpr int kShowEvery = 250;   // milliseconds
constexpr int kShowFirst = 50;    // milliseconds
constexpr int kBreathEvery = 30;  // milliseconds
constexpr int kListWidth = 140;
constexpr int kSwatch = 12;
constexpr int kNotes = 2;  // the rest as a tool tip

QColor SwatchColour(const QWidget& widget, std::int32_t colour) {
  const QColor paper = widget.palette().color(QPalette::Base);
  const std::int32_t legible = Legible(colour, paper.red() | paper.green() << 8 | paper.blue() << 16);
  return {legible & 0xFF, legible >> 8 & 0xFF, legible >> 16 & 0xFF};
}

QPixmap Swatch(const QWidget& widget, const QColor& colour) {
  const qreal ratio = widget.devicePixelRatioF();
  QPixmap pixmap(QSize(kSwatch, kSwatch) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(colour);
  return pixmap;
}

std::vector<std::string> LayerNames(const Picture& picture) {
  std::vector<std::string> names;
  for (const PictureLayer& layer : picture.Layers()) {
    if (!layer.others) names.push_back(layer.name);
  }
  return names;
}

QString Range(double low, double high) {
  return QString::fromStdString(NumberText(low)) + QStringLiteral(" to ") + QString::fromStdString(NumberText(high));
}

}  // namespace

PreviewWidget::PreviewWidget(const FormatTable& formats, Settings& settings, const FilterOptions& options,
                             QWidget* parent)
    : QWidget(parent), formats_(formats), settings_(settings), options_(options) {
  setObjectName(QStringLiteral("preview"));
  canvas_ = new PreviewCanvas;
  canvas_->setObjectName(QStringLiteral("previewCanvas"));
  canvas_->setAccessibleName(tr("Preview of the input"));
  canvas_->setToolTip(tr("Wheel or + and -: zoom. Drag or arrows: move. Double click or F: show all."));
  status_ = new QLabel;
  status_->setObjectName(QStringLiteral("previewStatus"));
  status_->setAccessibleName(tr("About the input"));
  status_->setWordWrap(true);
  status_->setTextFormat(Qt::PlainText);
  status_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  status_->setMinimumHeight(status_->fontMetrics().lineSpacing() * 2);
  status_->setAlignment(Qt::AlignLeft | Qt::AlignTop);

  auto* splitter = new QSplitter(Qt::Horizontal);
  splitter->setChildrenCollapsible(false);
  splitter->addWidget(canvas_);
  splitter->addWidget(BuildLayers());
  splitter->setStretchFactor(0, 1);
  splitter->setStretchFactor(1, 0);
  splitter->setSizes({5 * kListWidth, kListWidth});
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(splitter, 1);
  layout->addWidget(status_);

  opening_.setSingleShot(true);
  connect(&opening_, &QTimer::timeout, this, &PreviewWidget::OpenInput);
  connect(&slices_, &QTimer::timeout, this, &PreviewWidget::ReadSlice);
  OpenInput();
}

PreviewWidget::~PreviewWidget() = default;

QWidget* PreviewWidget::BuildLayers() {
  layerBox_ = new QWidget;
  allLayers_ = new QCheckBox(tr("All layers"));
  allLayers_->setObjectName(QStringLiteral("previewAllLayers"));
  layers_ = new QListWidget;
  layers_->setObjectName(QStringLiteral("previewLayers"));
  layers_->setAccessibleName(tr("Layers of the input"));
  layers_->setUniformItemSizes(true);
  layers_->setIconSize(QSize(kSwatch, kSwatch));
  layers_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  layers_->setMinimumWidth(fontMetrics().averageCharWidth() * 24);
  auto* layout = new QVBoxLayout(layerBox_);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(BuildButtons());
  layout->addWidget(allLayers_);
  layout->addWidget(layers_, 1);
  connect(layers_, &QListWidget::itemChanged, this, &PreviewWidget::LayerChanged);
  connect(allLayers_, &QCheckBox::clicked, this, &PreviewWidget::AllLayersClicked);
  return layerBox_;
}

QWidget* PreviewWidget::BuildButtons() {
  auto* box = new QWidget;
  auto* layout = new QHBoxLayout(box);
  layout->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const QString& text, const QString& name, const QString& what, void (PreviewCanvas::*does)()) {
    auto* button = new QToolButton;
    button->setText(text);
    button->setObjectName(name);
    button->setAccessibleName(what);
    button->setToolTip(what);
    button->setFocusPolicy(Qt::StrongFocus);
    connect(button, &QToolButton::clicked, canvas_, does);
    layout->addWidget(button);
  };
  add(QStringLiteral("+"), QStringLiteral("previewZoomIn"), tr("Zoom in"), &PreviewCanvas::ZoomIn);
  add(QStringLiteral("\u2212"), QStringLiteral("previewZoomOut"), tr("Zoom out"), &PreviewCanvas::ZoomOut);
  add(tr("Fit"), QStringLiteral("previewFit"), tr("Show the whole drawing"), &PreviewCanvas::Fit);
  layout->addStretch(1);
  return box;
}

void PreviewWidget::ShowInputs(const QStringList& paths, const QString& formatEntry) {
  paths_ = paths;
  formatEntry_ = formatEntry;
  opening_.start(kOpenAfter);
}

void PreviewWidget::SetReading(const FilterOptions& options, const std::optional<FieldChoice>& fields) {
  options_ = options;
  fields_ = fields;
  opening_.start(kOpenAfter);
}

void PreviewWidget::OpenInput() {
  if (paused_ || inSlice_) {
    opening_.start(kOpenAfter);
    return;
  }
  slices_.stop();
  canvas_->SetPicture(nullptr);
  reading_.reset();
  layers_->clear();
  allLayers_->setCheckState(Qt::Checked);
  std::vector<std::string> paths;
  for (const QString& path : paths_) paths.push_back(PathOf(path));
  if (!paths.empty() && FileExists(paths[0])) {
    title_ = Shown(FileNameOf(paths[0]));
    if (paths.size() > 1) title_ += tr(" and %1 more").arg(paths.size() - 1);
    reading_ = std::make_unique<PreviewReading>(
        PreviewInput{formats_.Input(formatEntry_.toStdString()), std::move(paths), options_, fields_}, settings_,
        [this] { Breathe(); });
    canvas_->SetPicture(&reading_->Drawn());
    slices_.start(0);
  }
  sinceShown_.start();
  ShowState();
}

void PreviewWidget::ReadSlice() {
  if (inSlice_) return;
  inSlice_ = true;
  sinceBreath_.start();
  const bool more = reading_->Slice(kSlice);
  inSlice_ = false;
  if (!more) slices_.stop();
  if (more && sinceShown_.elapsed() < (canvas_->Shown().isNull() ? kShowFirst : kShowEvery)) return;
  sinceShown_.start();
  ShowState();
}

// While a file is being opened, which may take a while for some, the window draws itself. What the person does waits.
void PreviewWidget::Breathe() {
  if (sinceBreath_.elapsed() < kBreathEvery) return;
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  sinceBreath_.start();
}

bool PreviewWidget::IsDone() const {
  return !opening_.isActive() && (!reading_ || reading_->Ended()) && canvas_->IsCurrent();
}

void PreviewWidget::Pause() {
  paused_ = true;
  slices_.stop();
  canvas_->SetPaused(true);
}

void PreviewWidget::Resume() {
  paused_ = false;
  canvas_->SetPaused(false);
  if (reading_ && !reading_->Ended()) slices_.start(0);
}

void PreviewWidget::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) ShowLayers();
  QWidget::changeEvent(event);
}

void PreviewWidget::ShowState() {
  canvas_->SetEmptyText(!reading_           ? tr("Choose a file, or drop one here")
                        : reading_->Ended() ? tr("Nothing to show")
                                            : tr("Reading\u2026"));
  canvas_->PictureGrew();
  ShowLayers();
  ShowStatus();
  if (reading_) emit Known(reading_->Facts(), LayerNames(reading_->Drawn()));
  emit Counted(reading_ ? reading_->Drawn().Counts() : PictureCounts(), !reading_ || reading_->Ended());
}

void PreviewWidget::ShowLayers() {
  const QSignalBlocker quiet(layers_);
  static const std::vector<PictureLayer> kNone;
  const std::vector<PictureLayer>& all = reading_ ? reading_->Drawn().Layers() : kNone;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const int row = static_cast<int>(i);
    const QString name = all[i].name.empty() ? tr("(no name)") : Shown(all[i].name).simplified();
    const QString text = name + QStringLiteral("  ") + QLocale().toString(static_cast<qlonglong>(all[i].elements));
    QListWidgetItem* item = layers_->item(row);
    if (item == nullptr) {
      item = new QListWidgetItem(layers_);
      item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
      item->setCheckState(Qt::Checked);
    }
    const QRgb swatch = SwatchColour(*this, all[i].colour).rgb();
    if (item->data(Qt::UserRole) != swatch) item->setIcon(Swatch(*this, swatch));
    item->setData(Qt::UserRole, swatch);
    if (item->text() != text) item->setText(text);
  }
  layerBox_->setVisible(!all.empty());
}

void PreviewWidget::ShowStatus() {
  if (!reading_) {
    status_->clear();
    status_->setToolTip({});
    return;
  }
  const Picture& picture = reading_->Drawn();
  QStringList parts{title_};
  parts += QLocale().toString(static_cast<qlonglong>(picture.Elements())) +
           (picture.Elements() == 1 ? tr(" element") : tr(" elements"));
  if (const Extents& box = picture.Bounds(); !box.Empty()) {
    parts += QStringLiteral("x ") + Range(box.minX, box.maxX);
    parts += QStringLiteral("y ") + Range(box.minY, box.maxY);
  }
  QStringList notes;
  for (const std::string& note : reading_->Notes()) notes += Shown(note);
  if (picture.LeavesOutOfView()) notes += tr("A few vertices lie far away from all others; zoom out to see them.");
  if (!reading_->Ended()) parts += tr("reading, %1%").arg(static_cast<int>(reading_->Progress()));
  status_->setText(parts.join(QStringLiteral("  \u00b7  ")) +
                   (notes.isEmpty() ? QString() : u'\n' + notes.mid(0, kNotes).join(u'\n')));
  status_->setToolTip(notes.join(u'\n'));
}

void PreviewWidget::LayerChanged() {
  std::vector<bool> hidden;
  for (int row = 0; row < layers_->count(); ++row) hidden.push_back(layers_->item(row)->checkState() == Qt::Unchecked);
  const auto count = static_cast<std::size_t>(std::count(hidden.begin(), hidden.end(), true));
  const QSignalBlocker quiet(allLayers_);
  allLayers_->setCheckState(count == 0 ? Qt::Checked : count == hidden.size() ? Qt::Unchecked : Qt::PartiallyChecked);
  canvas_->SetHiddenLayers(std::move(hidden));
}

void PreviewWidget::AllLayersClicked() {
  // From a part of them to all; a person does not ask for a part.
  const Qt::CheckState state = allLayers_->checkState() == Qt::Unchecked ? Qt::Unchecked : Qt::Checked;
  {
    const QSignalBlocker quiet(layers_);
    for (int row = 0; row < layers_->count(); ++row) layers_->item(row)->setCheckState(state);
  }
  LayerChanged();
}

}  // namespace tesselink
