// SPDX-License-Identifier: MIT
// The preview of the input: the drawing, its layers, and what there is to know of it.
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <memory>
#include <string>

#include "core/run/Filters.h"
#include "core/run/FormatTable.h"
#include "core/run/Settings.h"
#include "picture/PreviewReading.h"

class QCheckBox;
class QLabel;
class QListWidget;
class QListWidgetItem;

namespace tesselink {

class PreviewCanvas;

/// Reads in slices while the window has nothing else to do.
class PreviewWidget final : public QWidget {
  Q_OBJECT
 public:
  /// The format table and the settings must outlive the widget.
  PreviewWidget(const FormatTable& formats, Settings& settings, const FilterOptions& options = {},
                QWidget* parent = nullptr);
  ~PreviewWidget() override;

  const PreviewCanvas& Canvas() const { return *canvas_; }
  /// Whether everything has been read and is on the screen.
  bool IsDone() const;

 public slots:
  /// Reads by these options from now on, and uses an attribute table where its fields are chosen.
  void SetReading(const FilterOptions& options, const std::optional<FieldChoice>& fields);
  /// Shows a file, or those of a run over several, of a format, given by its drop-down text, a moment later: a path
  /// that is being typed is not opened at each letter. A path that names no file shows an invitation to choose one.
  void ShowInputs(const QStringList& paths, const QString& formatEntry);
  /// Stands still until Resume, as long as a run needs the machine.
  void Pause();
  void Resume();

 signals:
  /// What has been counted of the input so far, and once more when everything has been read; nothing of no input.
  void Counted(const PictureCounts& counts, bool ended);
  /// The same moments: what is known of what a conversion would read, and its layers.
  void Known(const DrawingFacts& drawing, const std::vector<std::string>& layers);

 private:
  QWidget* BuildLayers();
  QWidget* BuildButtons();
  void changeEvent(QEvent* event) override;
  void OpenInput();
  void ReadSlice();
  void Breathe();
  void ShowState();
  void ShowLayers();
  void ShowStatus();
  void LayerChanged();
  void AllLayersClicked();

  const FormatTable& formats_;
  Settings& settings_;
  FilterOptions options_;
  std::optional<FieldChoice> fields_;

  PreviewCanvas* canvas_;
  QWidget* layerBox_;
  QCheckBox* allLayers_;
  QListWidget* layers_;
  QLabel* status_;

  QStringList paths_;
  QString formatEntry_;
  QString title_;  // of what is being read; the paths may be the next ones already
  std::unique_ptr<PreviewReading> reading_;
  QTimer opening_, slices_;
  QElapsedTimer sinceShown_, sinceBreath_;
  bool paused_ = false;
  bool inSlice_ = false;
};

}  // namespace tesselink
