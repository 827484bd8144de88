// SPDX-License-Identifier: MIT
// What a batch will do: each input with its output, and why it must not.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/BatchInputs.h"
#include "core/io/System.h"
#include "core/run/Filters.h"
#include "core/run/FormatTable.h"

namespace tesselink {

/// What stands against the conversion of an input.
struct Obstacle {
  std::size_t input;
  std::string text;
};

class BatchPlan {
 public:
  /// Checks that the options go with every input. Throws UsageError or Error where they do not.
  BatchPlan(const BatchCommand& command, std::vector<BatchInput> inputs);

  std::size_t Size() const { return inputs_.size(); }
  const std::string& Input(std::size_t i) const { return inputs_[i].path; }
  std::string Output(std::size_t i) const;
  /// What the conversion of an input reads, as far as it is known before: the input with its companions, and what
  /// options name.
  std::vector<std::string> Read(std::size_t i) const;
  /// The files of an output that exist now.
  std::vector<std::string> Existing(std::size_t i) const;
  /// What a killed conversion has left of its output goes, and what it has half moved goes back.
  void TidyUp(std::size_t i) const noexcept;

  /// Outputs that differ in the case of letters alone, for the person to know.
  std::vector<std::string> AlikeOutputs() const;
  /// Inputs that would write the output of one before them. An input that was named twice is dropped before.
  std::vector<Obstacle> Collisions();
  /// Outputs that exist and must not be replaced: each that is an input of the batch or is read with one,
  /// and each that `mayReplace` does not allow, by the number of the input and the file.
  using MayReplace = std::function<bool(std::size_t, const std::string&)>;
  std::vector<Obstacle> Protected(const std::string& report, const MayReplace& mayReplace);
  /// After that: whether killed runs have left something in the folders of the outputs. If not, conversions need not
  /// look: among ten thousand outputs that takes longer than to convert a small drawing.
  bool HasLeftovers() const { return hasLeftovers_; }

 private:
  void CheckOptions() const;
  ConvertCommand ConversionOf(std::size_t i) const;
  std::vector<std::size_t> ByOutput(const std::function<std::string(const std::string&)>& key) const;
  std::vector<std::pair<std::size_t, std::string>> AllExisting();

  const BatchCommand& command_;
  std::vector<BatchInput> inputs_;
  const OutputFormat& format_;
  FilterOptions options_;
  std::string into_;  // ends with a "/", or is empty
  bool hasLeftovers_ = false;
  std::vector<std::string> optionFiles_;  // that every conversion reads
};

}  // namespace tesselink
