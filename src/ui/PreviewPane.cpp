// SPDX-License-Identifier: MIT
#include "ui/PreviewPane.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QVBoxLayout>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "core/io/Paths.h"
#include "ui/Pace.h"
#include "ui/PreviewCanvas.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr int kTellEvery = 250;   // milliseconds
constexpr int kTellFirst = 50;    // milliseconds
constexpr int kBreathEvery = 30;  // milliseconds

}  // namespace

PreviewPane::PreviewPane(const FormatTable& formats, Settings& settings, const PictureBudget& budget,
                         const QString& canvasName, QWidget* parent)
    : QWidget(parent), formats_(formats), settings_(settings), budget_(budget) {
  canvas_ = new PreviewCanvas;
  canvas_->setObjectName(canvasName);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(canvas_, 1);
  connect(&slices_, &QTimer::timeout, this, &PreviewPane::ReadSlice);
}

PreviewPane::~PreviewPane() = default;

void PreviewPane::Show(const QStringList& paths, const QString& formatEntry, const FilterOptions& options,
                       const std::optional<FieldChoice>& fields) {
  slices_.stop();
  canvas_->SetPicture(nullptr);
  reading_.reset();
  std::vector<std::string> files;
  for (const QString& path : paths) files.push_back(PathOf(path));
  if (!files.empty() && FileExists(files[0])) {
    title_ = Shown(FileNameOf(files[0]));
    if (files.size() > 1) title_ += tr(" and %1 more").arg(files.size() - 1);
    reading_ = std::make_unique<PreviewReading>(
        PreviewInput{formats_.Input(formatEntry.toStdString()), std::move(files), options, fields}, settings_,
        [this] { Breathe(); }, std::chrono::steady_clock::now, budget_);
    canvas_->SetPicture(&reading_->Drawn());
    slices_.start(0);
  }
  sinceTold_.start();
  Tell();
}

void PreviewPane::ReadSlice() {
  if (inSlice_) return;
  inSlice_ = true;
  sinceBreath_.start();
  const bool more = reading_->Slice(kSlice);
  inSlice_ = false;
  if (!more) slices_.stop();
  if (more && sinceTold_.elapsed() < (canvas_->Shown().isNull() ? kTellFirst : kTellEvery)) return;
  sinceTold_.start();
  Tell();
}

void PreviewPane::Tell() {
  canvas_->PictureGrew();
  emit Advanced();
}

// While a file is being opened, which may take a while for some, the window draws itself. What the person does waits.
void PreviewPane::Breathe() {
  if (sinceBreath_.elapsed() < kBreathEvery) return;
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  sinceBreath_.start();
}

bool PreviewPane::IsDone() const { return (!reading_ || reading_->Ended()) && canvas_->IsCurrent(); }

void PreviewPane::SetPaused(bool paused) {
  canvas_->SetPaused(paused);
  if (paused) {
    slices_.stop();
  } else if (reading_ && !reading_->Ended()) {
    slices_.start(0);
  }
}

}  // namespace tesselink
