// SPDX-License-Identifier: MIT
// The pane "More": every further option of a conversion from one format into another.
#pragma once

#include <QStringList>
#include <QWidget>
#include <string>
#include <vector>

#include "app/ConversionOptions.h"
#include "core/run/ClipWindow.h"
#include "core/run/Settings.h"

class QGridLayout;
class QPushButton;
class QToolButton;

namespace tesselink {

class OptionRow;

/// What a person gives is kept for each pair of formats, but for what concerns one drawing alone, which goes with it.
class OptionsPane final : public QWidget {
  Q_OBJECT
 public:
  /// The settings must outlive the pane.
  explicit OptionsPane(Settings& settings, QWidget* parent = nullptr);
  ~OptionsPane() override;

  /// Offers the options of a pair of formats, whose rows must outlive the pane.
  void SetPair(const InputFormat& input, const OutputFormat& output);
  void SetDialect(Dialect dialect);
  /// Another drawing: its files, and the fields of its attribute table.
  void SetDrawing(const QStringList& paths, const QStringList& fields);
  /// The layers to choose from.
  void SetLayers(std::vector<std::string> layers) { layers_ = std::move(layers); }

  /// The values that count.
  OptionValues Values() const;
  /// Puts them into what a run is asked for.
  void ApplyTo(ConversionRequest& request) const;
  /// Whether every value is good. One that is not is shown, and told in a message.
  bool Agrees();

 public slots:
  /// A rectangle was drawn in the preview.
  void ClipChosen(const ClipBox& box);
  /// The preview waits for it, or no longer.
  void SetChoosingClip(bool waits);

 signals:
  /// A value has changed.
  void changed();
  /// A rectangle is to be drawn in the preview, or no longer.
  void clipWanted(bool wanted);
  void copyWanted();

 private:
  QWidget* BuildHead();
  void Rebuild();
  void AddRow(const ConversionOption& option, QGridLayout& grid);
  void Open(bool open);
  void ScrollHere();
  void RowChanged(OptionRow& row);
  void ShowRests();
  void ShowTitle();
  QString ProblemOf(const OptionRow& row) const;
  void ChooseLayers(OptionRow& row);
  OptionRow* RowOf(const std::string& name) const;
  OptionValues AllValues() const;
  std::string Section() const;
  OptionSituation Situation(const OptionValues& values) const { return {*output_, dialect_, values}; }

  Settings& settings_;
  const InputFormat* input_ = nullptr;
  const OutputFormat* output_ = nullptr;
  Dialect dialect_ = Dialect::Classic;
  QStringList paths_, fields_;
  std::vector<std::string> layers_;
  OptionValues ofDrawing_;
  std::vector<ConversionOption> options_;
  std::vector<OptionRow*> rows_;
  QToolButton* open_;
  QPushButton* copy_;
  QWidget* body_ = nullptr;
};

}  // namespace tesselink
