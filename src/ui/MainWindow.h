// SPDX-License-Identifier: MIT
// The main window: which file is converted into which.
#pragma once

#include <QStringList>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/LayerOptions.h"
#include "core/run/ConversionRun.h"
#include "core/run/DrawingFacts.h"
#include "core/run/FieldSelection.h"
#include "core/run/FormatTable.h"
#include "core/run/Settings.h"
#include "ui/WindowMemory.h"

class QPushButton;
class QSplitter;

namespace tesselink {

class DropHint;
class HelpWindow;
class InputPanel;
class OptionsLink;
class OptionsPane;
class OutputPanel;
class QtInteraction;
class QueueWindow;
struct PictureCounts;

class MainWindow final : public QWidget {
  Q_OBJECT
 public:
  /// The format table and the settings must outlive the window.
  MainWindow(const FormatTable& formats, Settings& settings, const FilterOptions& options = {});
  ~MainWindow() override;

  /// Puts a view of the input beside the controls; the window owns it from then on.
  void SetPreview(QWidget* preview);
  /// Takes files as if they were dropped on the window: one as the input, several as a list of shapefiles where that
  /// is chosen, else each for itself.
  void TakeFiles(const QStringList& paths);
  /// What reading the input has shown so far, for the line below its path.
  void SetCounts(const PictureCounts& counts, bool ended);
  void SetHindrance(const QString& reason);
  /// The input, or the first of several; empty when none is chosen.
  QString InputPath() const;
  /// The input, or all of several; none when none is chosen.
  QStringList InputPaths() const;
  /// What a preview of the input knows of it, and the rectangle that was drawn there.
  void TakeDrawing(const DrawingFacts& drawing, const std::vector<std::string>& layers);
  void TakeClip(const ClipBox& box);
  /// The preview waits for it, or no longer.
  void SetChoosingClip(bool waits);

 signals:
  /// The input's paths or their format have changed.
  void inputChanged(const QStringList& paths, const QString& formatEntry);
  /// A run has begun or ended.
  void runningChanged(bool running);
  /// How the input is to be read has changed.
  void readingChanged(const FilterOptions& options, const std::optional<FieldChoice>& fields);
  /// A rectangle is to be drawn in the preview, or no longer.
  void clipWanted(bool wanted);
  /// What the output will not hold has changed; bits of LostKind.
  void lostChanged(std::uint32_t kinds);
  /// A run has made files, of a format given by its drop-down text.
  void outputMade(const QStringList& paths, const QString& formatEntry);

 private:
  class Busy;

  QWidget* BuildControls();
  QWidget* BuildTitle();
  QWidget* BuildFrames();
  QWidget* BuildButtons();
  QPushButton* BuildHelp();
  void AddKey(const QKeySequence& key, const std::function<void()>& does);
  void Connect();

  std::vector<std::string> FilesOf(const ConversionRequest& request) const;
  ConversionRequest Request() const;
  bool IsRefused(const ConversionRequest& request) const;
  bool MayReplaceOutput(ConversionRequest& request, const std::vector<std::string>& own = {});
  void Apply();
  void ConvertAgain();
  void Run(const ConversionRequest& request, const OptionValues& given, const CodesByLayer& codes = {});
  void ShowHelp();
  void SetRunning(bool running);
  void ShowQueue(const QStringList& paths);

  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void KeepLook();
  void RestoreLook();

  const FormatTable& formats_;
  Settings& settings_;
  WindowMemory memory_;
  FilterOptions options_;
  std::unique_ptr<QtInteraction> interaction_;
  QSplitter* splitter_;
  QWidget* controls_;
  InputPanel* input_;
  OutputPanel* output_;
  QueueWindow* queue_ = nullptr;  // made when it is first wanted
  OptionsPane* more_;
  OptionsLink* link_;
  QPushButton *many_, *apply_, *cancel_;
  DropHint* dropHint_;
  HelpWindow* help_ = nullptr;
  // Of the last run, which may be run again in the standard dialect.
  ConversionRequest lastRequest_;
  OptionValues lastAnswers_;
  CodesByLayer lastCodes_;
  std::vector<std::string> lastOutputs_;
  bool running_ = false;
  bool closesAfterRun_ = false;
};

}  // namespace tesselink
