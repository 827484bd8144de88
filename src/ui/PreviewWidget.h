// SPDX-License-Identifier: MIT
// The preview: the input, its layers and what there is to know of it, and beside it what a run has made of it.
#pragma once

#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <optional>

#include "core/run/Filters.h"
#include "core/run/FormatTable.h"
#include "core/run/Settings.h"
#include "picture/ElementLookup.h"
#include "ui/PreviewCanvas.h"
#include "ui/PreviewPane.h"

class QLabel;
class QSplitter;
class QToolButton;

namespace tesselink {

class ElementPanel;
class PreviewLayers;
class PreviewLegend;
class PreviewStatus;

/// Reads in slices while the window has nothing else to do.
class PreviewWidget final : public QWidget {
  Q_OBJECT
 public:
  /// The format table and the settings must outlive the widget.
  PreviewWidget(const FormatTable& formats, Settings& settings, const FilterOptions& options = {},
                QWidget* parent = nullptr);
  ~PreviewWidget() override;

  const PreviewCanvas& Canvas() const { return input_->Canvas(); }
  /// Whether everything has been read and is on the screen.
  bool IsDone() const;

 public slots:
  /// Shows a file, or those of a run over several, of a format, given by its drop-down text, a moment later: a path
  /// that is being typed is not opened at each letter. A path that names no file shows an invitation to choose one.
  void ShowInputs(const QStringList& paths, const QString& formatEntry);
  /// Reads the input anew, by these options; an attribute table is used where its fields are chosen.
  void SetOptions(const FilterOptions& options, const std::optional<FieldChoice>& fields = {});
  /// Shows what a run has written beside the input, until another input is shown; a format, given by its drop-down
  /// text, that is not read shows nothing.
  void ShowOutput(const QStringList& paths, const QString& formatEntry);
  void HideOutput();
  /// Marks the kinds that the output will not hold; bits of LostKind.
  void SetLost(std::uint32_t kinds);
  /// Lets the person drag a window to clip by, or no longer; Escape gives it up.
  void ChooseClip(bool wanted);
  /// Shows a window to clip by, or none.
  void SetClip(const std::optional<ClipBox>& clip);
  /// Stands still until Resume, as long as a run needs the machine.
  void Pause();
  void Resume();

 signals:
  /// Why no more of the input can be read; empty where nothing hinders.
  void Hindered(const QString& reason);
  /// What has been counted of the input so far, and once more when everything has been read; nothing of no input.
  void Counted(const PictureCounts& counts, bool ended);
  /// The same moments: what is known of what a conversion would read, and its layers.
  void Known(const DrawingFacts& drawing, const std::vector<std::string>& layers);
  /// The person has dragged a window to clip by.
  void ClipChosen(const ClipBox& box);
  /// The preview waits for such a window, or no longer.
  void ChoosingClip(bool waits);

 private:
  QWidget* BuildTools();
  QToolButton* AddTool(const QString& text, const char* name, const QString& what);
  QWidget* BuildSide();
  void Connect();
  void ConnectPane(PreviewPane& pane);
  void changeEvent(QEvent* event) override;
  void OpenInput();
  void ShowState();
  void TellHindrance(const PreviewReading& reading);
  void ShowTitles();
  void ShowLegend();
  void ShowPlace(const PreviewPane& pane, const std::optional<PicturePoint>& at);
  void ShowMeasure();
  void LinkViews(PreviewPane& from, PreviewPane& to);
  void HideLayers(const std::vector<bool>& hidden);
  void LookUp(PreviewPane& pane, PicturePoint at, double reach);
  void LookOn();
  void EndLookup();

  const FormatTable& formats_;
  Settings& settings_;
  FilterOptions options_;
  std::optional<FieldChoice> fields_;

  PreviewPane *input_, *output_;
  QSplitter* panes_;
  QWidget *tools_, *side_;
  QLabel *inputTitle_, *outputTitle_;
  QToolButton *measure_, *closeOutput_;
  PreviewLayers* layers_;
  ElementPanel* element_;
  QLabel *place_, *measured_;
  PreviewLegend* legend_;
  PreviewStatus* status_;

  QStringList paths_, openedPaths_;
  QString formatEntry_;
  QTimer opening_, lookups_;
  std::unique_ptr<ElementLookup> lookup_;
  const PreviewPane* lookedIn_ = nullptr;
  std::uint32_t lost_ = 0;
  bool paused_ = false;
};

}  // namespace tesselink
