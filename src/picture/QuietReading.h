// SPDX-License-Identifier: MIT
// Reads files a little at a time, for a window that has other things to do, and asks nobody.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/run/FieldSelection.h"
#include "core/run/Filters.h"
#include "core/run/FormatTable.h"
#include "core/run/LayerSelection.h"
#include "core/run/Pump.h"
#include "core/run/Report.h"
#include "core/run/Settings.h"

namespace tesselink {

/// What is read, and how.
struct PreviewInput {
  const InputFormat& format;
  std::vector<std::string> paths;          ///< one file, or those of a run over several
  FilterOptions options = {};              ///< `layersWanted` and `lookAhead` are taken as false
  std::optional<FieldChoice> fields = {};  ///< of an attribute table; none: it is not used
};

/// Something to know beside the elements.
struct ReadingNote {
  enum class About { Text, Warning, Unread };
  About about;
  std::string text;        ///< of what is unread, its type
  std::string kind = {};   ///< of a warning
  std::int64_t count = 1;  ///< how many there were, of which the text is the first
};

/// Files are read as they stand: bare line feeds are left alone, attribute tables are used where their fields are
/// chosen, and a question that only a person could answer ends the reading with a note.
class QuietReading {
 public:
  using Clock = std::function<std::chrono::steady_clock::time_point()>;
  /// Called now and then while a file is opened, which cannot be left half-way, so that the window can draw itself.
  using Breath = std::function<void()>;

  QuietReading(PreviewInput input, Settings& settings, Breath breath, Clock clock);
  virtual ~QuietReading();
  QuietReading(const QuietReading&) = delete;
  QuietReading& operator=(const QuietReading&) = delete;

  /// Reads on until the time is over or nothing is left; at least one step, as an element of whatever size. False once
  /// nothing is left: at the end of the last file, where a file repeats without end, and after an error.
  bool Slice(std::chrono::milliseconds time);

  bool Ended() const { return ended_; }
  /// The percentage read of the file at hand.
  double Progress() const;
  /// Why no more can be read; empty where nothing hinders.
  const std::string& Problem() const { return grave_; }
  /// The gravest first: an error, an endless file, messages, warnings, and what the files hold and is not shown.
  std::vector<ReadingNote> Notes() const;

 protected:
  virtual void Opened(InputFilter&) {}
  /// An element of a layer that was chosen, with its number among all that the files hold.
  virtual void Take(InputFilter& reader, const tEntity& entity, std::uint32_t number) = 0;
  /// Does a part of what has to be done before more is taken; false where there is nothing of the kind.
  virtual bool Digest() { return false; }
  /// Nothing more is wanted.
  void End() { ended_ = true; }
  const PreviewInput& Input() const { return input_; }
  /// What the files hold and was not delivered.
  const auto& Unread() const { return report_.UndeliveredTypes(); }

 private:
  class Silence;

  void ReadOn();
  void OpenNext();

  PreviewInput input_;
  Clock clock_;
  std::unique_ptr<Silence> person_;
  Report report_;
  FilterContext context_;
  std::unique_ptr<InputFilter> reader_;
  LayerSelection selection_;
  Pump pump_;
  std::optional<ClipWindow> clip_;
  std::size_t next_ = 0;  // of the paths
  bool open_ = false, ended_ = false;
  std::string grave_;
};

}  // namespace tesselink
