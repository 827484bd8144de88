// SPDX-License-Identifier: MIT
#include "picture/QuietReading.h"

#include <algorithm>
#include <new>

#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "core/run/Nobody.h"

namespace tesselink {

// Nobody: questions are answered so that nothing happens to any file, messages are kept.
class QuietReading::Silence final : public Nobody {
 public:
  Silence(const Clock& clock, Breath breath, std::optional<FieldChoice> fields)
      : clock_(clock), breath_(std::move(breath)), fields_(std::move(fields)) {}

  void StepBegins() { until_ = clock_() + kPatience; }
  const std::vector<std::string>& Messages() const { return messages_; }

  Answer ShowMessage(const Message& message) override {
    if (message.topic == Topic::LineEnds) return Answer::No;
    constexpr std::size_t kMostMessages = 20;
    const bool known = std::find(messages_.begin(), messages_.end(), message.text) != messages_.end();
    if (!known && messages_.size() < kMostMessages) messages_.push_back(message.text);
    return Answer::Ok;
  }
  void SelectFields(FieldSelection& selection) override {
    if (!fields_) throw OperationCanceled();
    selection.Answer(*fields_);
  }
  std::string AskText(const TextQuestion& question) override {
    throw Error(question.subject + ": was not found; the preview does without");
  }
  std::string Naming(std::string_view option, std::string_view value) const override {
    return "--" + Nobody::Naming(option, value);
  }
  bool CancelRequested() override { return clock_() > until_; }
  void Yield() override {
    if (breath_) breath_();
  }

 private:
  static constexpr std::chrono::seconds kPatience{2};

  const Clock& clock_;
  Breath breath_;
  std::optional<FieldChoice> fields_;
  std::chrono::steady_clock::time_point until_ = std::chrono::steady_clock::time_point::max();
  std::vector<std::string> messages_;
};

QuietReading::QuietReading(PreviewInput input, Settings& settings, Breath breath, Clock clock)
    : input_(std::move(input)),
      clock_(std::move(clock)),
      person_(std::make_unique<Silence>(clock_, std::move(breath), input_.fields)),
      context_{*person_, settings, report_, input_.options},
      selection_(input_.options.layers, input_.options.withoutLayers),
      pump_(input_.options.dialect) {
  if (input_.options.clip) clip_.emplace(*input_.options.clip, input_.options.Curves());
  context_.options.layersWanted = context_.options.lookAhead = false;
}

QuietReading::~QuietReading() = default;

bool QuietReading::Slice(std::chrono::milliseconds time) {
  const auto until = clock_() + time;
  person_->StepBegins();
  try {
    while (!ended_) {
      if (!Digest()) ReadOn();
      if (clock_() >= until) break;
    }
  } catch (const OperationCanceled&) {
    grave_ = input_.paths[next_ - 1] + (pump_.Elements() == 0
                                            ? ": so much stands before its first element that it has no preview"
                                            : ": so much stands behind what is shown that the preview ends there");
  } catch (const std::bad_alloc&) {
    grave_ = input_.paths[next_ - 1] + ": not enough memory for a preview";
  } catch (const std::exception& error) {
    grave_ = error.what();
  }
  if (!grave_.empty()) ended_ = true;
  if (ended_) reader_.reset();
  return !ended_;
}

// One step: a file is opened, or an element read.
void QuietReading::ReadOn() {
  if (!open_) {
    OpenNext();
    return;
  }
  open_ = pump_.Next(*reader_);
  if (pump_.Delivered() && selection_.Takes(pump_.Element().Layer) && (!clip_ || clip_->Touches(pump_.Element()))) {
    Take(*reader_, pump_.Element(), static_cast<std::uint32_t>(pump_.Elements()));
  }
  if (reader_->Stalled()) grave_ = reader_->Where() + ": repeats without end; the preview ends here";
  if (!grave_.empty()) ended_ = true;
}

void QuietReading::OpenNext() {
  if (next_ == input_.paths.size()) {
    ended_ = true;
    return;
  }
  const std::string& path = input_.paths[next_++];
  if (const std::string reason = WhyNotReadable(path); !reason.empty()) throw Error(reason);
  if (!reader_) {
    reader_ = input_.format.create(context_);
    if (input_.format.hasAttributes && !input_.fields) reader_->Layered = false;
  }
  person_->StepBegins();
  reader_->filename(path);
  open_ = !reader_->filename().empty();
  ended_ = !open_;
  if (!open_) return;
  selection_.Heed(reader_->LayerStates());
  Opened(*reader_);
}

double QuietReading::Progress() const { return reader_ ? reader_->Progress() : 0; }

std::vector<ReadingNote> QuietReading::Notes() const {
  using About = ReadingNote::About;
  std::vector<ReadingNote> notes;
  if (!grave_.empty()) notes.push_back({About::Text, grave_});
  for (const std::string& message : person_->Messages()) notes.push_back({About::Text, message});
  for (const Warning& warning : report_.Warnings()) {
    notes.push_back({About::Warning, warning.text, warning.kind, warning.count});
  }
  for (const auto& [type, count] : report_.UndeliveredTypes()) notes.push_back({About::Unread, type, {}, count});
  return notes;
}

}  // namespace tesselink
