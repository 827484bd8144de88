// SPDX-License-Identifier: MIT
// One drawing of the preview, read in slices while the window has nothing else to do.
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <memory>

#include "core/run/FormatTable.h"
#include "core/run/Settings.h"
#include "picture/PreviewReading.h"

namespace tesselink {

class PreviewCanvas;

class PreviewPane final : public QWidget {
  Q_OBJECT
 public:
  /// The format table and the settings must outlive the pane. `budget` is what it may hold of a drawing.
  PreviewPane(const FormatTable& formats, Settings& settings, const PictureBudget& budget, const QString& canvasName,
              QWidget* parent = nullptr);
  ~PreviewPane() override;

  PreviewCanvas& Canvas() const { return *canvas_; }
  /// Null while there is no file.
  const PreviewReading* Reading() const { return reading_.get(); }
  const Picture* Drawn() const { return reading_ ? &reading_->Drawn() : nullptr; }
  /// The name of what is being read.
  const QString& Title() const { return title_; }
  bool IsDone() const;
  /// In the midst of a slice the reading stays; what would end it is to come later.
  bool IsBusy() const { return inSlice_; }

  /// Shows files of a format, or none where there is no such file.
  void Show(const QStringList& paths, const QString& formatEntry, const FilterOptions& options,
            const std::optional<FieldChoice>& fields = {});
  void SetPaused(bool paused);

 signals:
  /// There is more to see, or the reading has ended.
  void Advanced();

 private:
  void ReadSlice();
  void Breathe();
  void Tell();

  const FormatTable& formats_;
  Settings& settings_;
  PictureBudget budget_;
  PreviewCanvas* canvas_;
  QString title_;
  std::unique_ptr<PreviewReading> reading_;
  QTimer slices_;
  QElapsedTimer sinceTold_, sinceBreath_;
  bool inSlice_ = false;
};

}  // namespace tesselink
