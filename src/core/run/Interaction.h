// SPDX-License-Identifier: MIT
// What a run or a filter may ask or tell a person. The console, the window and the tests' script each answer in their
// way.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tesselink {

class FieldSelection;
class InputFilter;
struct Extents;
struct FilterContext;

enum class MessageIcon { None, Information, Question, Warning, Critical };
enum class MessageButtons { Ok, YesNo, YesNoCancel };
enum class Answer { Ok, Yes, No, Cancel };

/// What a message is about, for faces that answer without showing it.
enum class Topic {
  Notice,     ///< something to know; goes on in any case
  Unread,     ///< a record of a type that is not read; one message a record
  RunFailed,  ///< the run has ended with this error
  LineEnds,   ///< what to do with a file of bare line feeds
};

struct Message {
  Topic topic = Topic::Notice;
  std::string text;
  std::string title;
  MessageIcon icon = MessageIcon::Information;
  MessageButtons buttons = MessageButtons::Ok;
  std::string details = {};  ///< below the text, in smaller letters; empty for none
  std::string subject = {};  ///< a name within the text, where translations have %1
};

struct SaveFileQuestion {
  std::string title;
  std::string filter;  ///< pairs of a description and a pattern, each followed by "|"
  std::string folder;  ///< where to begin
};

/// An input box.
struct TextQuestion {
  std::string title;
  std::string prompt;
  std::string subject;  ///< what the answer is about, for faces without an input box, as in "$CDF.MAP"
  /// Why what was looked for, and named last, is no good, a line each; for faces that say so beside the prompt.
  std::string reasons = {};
};

/// A question with a few answers, of which one holds for the rest of the run.
struct ChoiceQuestion {
  std::string_view option;                ///< whose values are the answers, as in "shape-type"
  std::vector<std::string_view> answers;  ///< in the order in which they are offered
  std::size_t preset = 0;                 ///< of the answers
};

/// Which fields of which attribute table hold something that the output needs.
struct TableFieldsQuestion {
  std::string_view what;                 ///< as in "a table of townships, ranges and sections"
  std::vector<std::string_view> fields;  ///< what they hold; options of these names answer, as in "township"
  std::string suggestedTable;            ///< the input's own table, or empty
};
struct TableFields {
  std::string table;                ///< path of a dBase table
  std::vector<std::string> fields;  ///< names of its fields, in the order of the question
};

struct LayerMatchingQuestion {
  const std::vector<std::string>& layers;  ///< in source order
  std::string heading;                     ///< of the layer column
  std::string application;                 ///< under which pairs are remembered
  const FilterContext& context;            ///< of the run: where lists and remembered pairs are found
  bool codesMatter = true;                 ///< the output tells layers by their codes; else they may stay empty
};

/// Where a run stands after an element.
struct RunProgress {
  const InputFilter& reader;
  const std::string& input;   ///< the path that is being read
  const Extents& extents;     ///< of what has been read so far
  std::int64_t elements = 0;  ///< read so far
};

class Interaction {
 public:
  virtual ~Interaction() = default;

  virtual Answer ShowMessage(const Message& message) = 0;
  /// The chosen path, or an empty text when the person cancelled.
  virtual std::string SaveFileName(const SaveFileQuestion& question) = 0;
  /// Lets the person step through the selection until it is done.
  virtual void SelectFields(FieldSelection& selection) = 0;
  /// One code a layer, in the order of the layers; nothing when no matching takes place.
  virtual std::optional<std::vector<std::string>> MatchLayers(const LayerMatchingQuestion& question) = 0;

  /// The position of the answer.
  virtual std::size_t Choose(const ChoiceQuestion& question) = 0;

  /// What the person typed; empty when the box was cancelled. A face without an input box throws Error and names what
  /// answers the question there.
  virtual std::string AskText(const TextQuestion& question) = 0;
  virtual TableFields LocateFields(const TableFieldsQuestion& question) = 0;

  /// How an option is called where this person looks for it, with a value: "--dialect standard" on the command line,
  /// the control and its entry in a window.
  virtual std::string Naming(std::string_view option, std::string_view value) const = 0;

  /// A long scan before the first element; position and size in one unit. The text is what the progress window shows.
  virtual void ShowScan(const std::string& text, std::int64_t position, std::int64_t size) = 0;
  virtual void HideScan() = 0;

  /// The face blocks its controls and shows that it is busy, until RunEnded.
  virtual void RunStarted() = 0;
  virtual void RunEnded() = 0;
  virtual void ShowRunProgress(const RunProgress& progress) = 0;
  /// After a confirmed cancel: shows the progress until the person closes it.
  virtual void HoldRunProgress() = 0;
  virtual void Beep() = 0;
  /// Whether the person has confirmed a cancel.
  virtual bool CancelRequested() = 0;
  /// Whether the person wants what a cancelled run had converted before.
  virtual bool WantsPart() = 0;
  /// Handles what the person did meanwhile.
  virtual void Yield() = 0;
};

}  // namespace tesselink
