// What a run or a filter may ask or tell a person. The console, the window and the tests' script each answer in their
// way.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
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
  Notice,          ///< something to know; goes on in any case
  UnhandledShape,  ///< a record of a shape type that is not read; one message a record
  RunFailed,       ///< the run has ended with this error
  LineEnds,        ///< what to do with a file of bare line feeds
};

struct Message {
  Topic topic = Topic::Notice;
  std::string text;
  std::string title;
  MessageIcon icon = MessageIcon::Information;
  MessageButtons buttons = MessageButtons::Ok;
};

struct SaveFileQuestion {
  std::string title;
  std::string filter;  ///< pairs of a description and a pattern, each followed by "|"
  std::string folder;  ///< where to begin
};

/// Which kind of element a shapefile holds; it can hold only one.
enum class ShapeKind { PointsOrText, Polyline };

/// An input box.
struct TextQuestion {
  std::string title;
  std::string prompt;
  std::string subject;  ///< what the answer is about, for faces without an input box, as in "$CDF.MAP"
};

/// What becomes of the points of a drawing whose output cannot hold them.
enum class PointChoice { SecondFile, Ignore };

/// Where the townships, ranges and sections of a T/R Digitizer file come from.
struct GridFields {
  std::string table;                     ///< path of a dBase table
  std::string township, range, section;  ///< names of its fields
};

struct LayerMatchingQuestion {
  const std::vector<std::string>& layers;  ///< in source order
  std::string heading;                     ///< of the layer column
  std::string application;                 ///< under which pairs are remembered
  const FilterContext& context;            ///< of the run: where lists and remembered pairs are found
};

/// Where a run stands after an element.
struct RunProgress {
  const InputFilter& reader;
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

  /// Asked at the first element; what that element is may serve as the answer.
  virtual ShapeKind ChooseShapeKind(ShapeKind ofFirstElement) = 0;

  /// What the person typed; empty when the box was cancelled. A face without an input box throws Error and names what
  /// answers the question there.
  virtual std::string AskText(const TextQuestion& question) = 0;
  /// Asked at the first point of an output that cannot hold points.
  virtual PointChoice ChoosePoints() = 0;
  /// Asked once for a T/R Digitizer file; `suggestedTable` is the input's own table, or empty.
  virtual GridFields LocateGridFields(const std::string& suggestedTable) = 0;

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
  /// Handles what the person did meanwhile.
  virtual void Yield() = 0;
};

}  // namespace tesselink
