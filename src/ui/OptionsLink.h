// SPDX-License-Identifier: MIT
// What ties the pane "More" and the line below the dialect to the formats, the drawing and the preview.
#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/run/ConversionRun.h"
#include "core/run/DrawingFacts.h"
#include "core/run/FieldSelection.h"
#include "core/run/Settings.h"

namespace tesselink {

class InputPanel;
class OptionsPane;
class OutputPanel;

class OptionsLink final : public QObject {
  Q_OBJECT
 public:
  /// Asks for a conversion as the window has it, whether it can be run or not.
  using Request = std::function<ConversionRequest()>;

  /// All of them must outlive the link.
  OptionsLink(const FormatTable& formats, InputPanel& input, OutputPanel& output, OptionsPane& pane, Settings& settings,
              Request request);

  /// The answers of a run over the input at hand, as values of options.
  void TakeAnswers(const OptionValues& answers);
  /// What the preview knows of the input.
  void TakeDrawing(const DrawingFacts& drawing, const std::vector<std::string>& layers);

 signals:
  /// How the input is to be read has changed.
  void readingChanged(const FilterOptions& options, const std::optional<FieldChoice>& fields);
  /// A rectangle is to be drawn in the preview, or no longer.
  void clipWanted(bool wanted);
  /// What the output will not hold has changed; bits of LostKind.
  void lostChanged(std::uint32_t kinds);

 private:
  void InputChanged();
  void FormatsChanged();
  void DialectChanged();
  void ValuesChanged();
  void TellReading();
  void TellDialect();
  void TellLost();
  void Copy();
  QStringList Fields() const;
  OptionValues Known() const;

  const FormatTable& formats_;
  InputPanel& input_;
  OutputPanel& output_;
  OptionsPane& pane_;
  Settings& settings_;
  Request request_;
  OptionValues answers_;
  DrawingFacts drawing_;
  OptionValues told_;         // to the preview
  bool choosesClip_ = false;  // whole drawings are shown to choose from
};

}  // namespace tesselink
