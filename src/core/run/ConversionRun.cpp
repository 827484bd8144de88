#include "core/run/ConversionRun.h"

#include <algorithm>

#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Paths.h"

namespace tesselink {
namespace {

constexpr const char* kApplication = "Tesselink";

// Notes each layer once; most elements have that of the one before.
class LayerNotes {
 public:
  explicit LayerNotes(std::vector<std::string>& layers) : layers_(layers) {}
  void Note(const std::string& layer) {
    if (!layers_.empty() && layer == last_) return;
    last_ = layer;
    if (seen_.insert(layer).second) layers_.push_back(layer);
  }

 private:
  std::vector<std::string>& layers_;
  std::unordered_set<std::string> seen_;
  std::string last_;
};

// Raised where the reason has been shown already.
struct ToldFailure {};

}  // namespace

struct ConversionRun::State {
  explicit State(const ConversionRequest& r) : request(r), infile(r.Infile), layerNotes(summary.layers) {
    entity.CountOrigin(r.options.dialect == Dialect::Standard);
  }

  const ConversionRequest& request;
  std::string infile;
  const InputFormat* inFormat = nullptr;
  RunSummary summary;
  LayerNotes layerNotes;
  FieldSelection fields;
  std::unique_ptr<InputFilter> reader;
  std::unique_ptr<OutputFilter> writer;
  tEntity entity;
  std::int64_t elements = 0;
  bool writing = false;  // the writer is at work, so an error is its own
};

ConversionRun::ConversionRun(const FormatTable& formats, Interaction& interaction, Settings& settings,
                             LayerFiller fillLayer)
    : formats_(formats), interaction_(interaction), settings_(settings), fillLayer_(std::move(fillLayer)) {}

RunSummary ConversionRun::Run(const ConversionRequest& request) {
  State state(request);
  interaction_.RunStarted();
  try {
    if (Validate(state)) {
      CreateFilters(state);
      ConvertFiles(state);
    }
  } catch (const OperationCanceled&) {
    state.summary.outcome = RunOutcome::Cancelled;
  } catch (const ToldFailure&) {
    state.summary.outcome = RunOutcome::Failed;
  } catch (const FileFull& error) {
    state.writing = false;
    Fail(state, error.what());
  } catch (const std::bad_alloc&) {
    Fail(state, state.infile + ": not enough memory for this file");
  } catch (const std::exception& error) {
    Fail(state, error.what());
  }
  Finish(state);
  interaction_.RunEnded();
  return std::move(state.summary);
}

void ConversionRun::Refuse(State& state, const std::string& text, const std::string& file) {
  state.summary.subject = file;
  state.summary.outcome = RunOutcome::Refused;
  state.summary.error = text;
  interaction_.ShowMessage({Topic::RunFailed, text, "Error", MessageIcon::Critical});
}

void ConversionRun::Fail(State& state, const std::string& text) {
  state.summary.outcome = RunOutcome::Failed;
  state.summary.error = text;
  interaction_.ShowMessage({Topic::RunFailed, text, "Error", MessageIcon::Critical});
}

bool ConversionRun::Validate(State& state) {
  const ConversionRequest& request = state.request;
  state.inFormat = &formats_.Input(request.InFormat);
  if (state.inFormat->severalFiles && request.chosenFiles.size() > 1) {
    state.infile = JoinPath(request.chosenFiles[0], request.chosenFiles[1]);
  }
  if (state.infile.empty() || !FileExists(state.infile)) {
    Refuse(state, "You must specify a valid input file", state.infile);
  } else if (request.OutFile.empty()) {
    Refuse(state, "You must select an output file", "");
  } else if (const std::string file = OutputThatIsRead(state); !file.empty()) {
    Refuse(state, "Input and Output files can not be the same", file);
  }
  return state.summary.outcome != RunOutcome::Refused;
}

// The output, or a file written beside it, that the run reads: an input, however it is spelt, or a partner of one.
// Empty when there is none.
std::string ConversionRun::OutputThatIsRead(const State& state) const {
  const ConversionRequest& request = state.request;
  std::vector<std::string> inputs{state.infile};
  if (state.inFormat->severalFiles) {
    for (std::size_t i = 2; i < request.chosenFiles.size(); ++i) {
      inputs.push_back(JoinPath(request.chosenFiles[0], request.chosenFiles[i]));
    }
  }
  if (std::find(inputs.begin(), inputs.end(), request.OutFile) != inputs.end()) return request.OutFile;
  const auto withPartners = [](const std::vector<std::string>& paths, const std::vector<std::string>& extensions) {
    std::vector<std::string> all = paths;
    for (const std::string& path : paths) {
      for (const std::string& extension : extensions) all.push_back(PartnerFile(path, extension));
    }
    return all;
  };
  const auto read = withPartners(inputs, state.inFormat->partners);
  const auto written = withPartners({request.OutFile}, formats_.Output(request.OutFormat).partners);
  const auto isRead = [&](const std::string& out) {
    return std::any_of(read.begin(), read.end(), [&](const std::string& in) { return SameFile(in, out); });
  };
  const auto file = std::find_if(written.begin(), written.end(), isRead);
  return file == written.end() ? std::string() : *file;
}

FilterContext ConversionRun::ContextOf(State& state) const {
  return {interaction_, settings_, state.summary.report, state.request.options};
}

void ConversionRun::CreateFilters(State& state) {
  const FilterContext context = ContextOf(state);
  const OutputFormat& outFormat = formats_.Output(state.request.OutFormat);
  state.reader = state.inFormat->create(context);
  state.writer = outFormat.create(context);
  const bool withoutAttributes = state.inFormat->hasAttributes && !state.request.useAttributes;
  if (state.inFormat->severalFiles || outFormat.ignoresLayers || withoutAttributes) state.reader->Layered = false;
  state.writer->filename(state.request.OutFile);
}

void ConversionRun::ConvertFiles(State& state) {
  const std::vector<std::string>& chosen = state.request.chosenFiles;
  for (std::size_t index = 1;; ++index) {
    OpenInput(state, index == 1);
    if (!PumpElements(state)) {
      state.summary.outcome = RunOutcome::Cancelled;
      return;
    }
    if (!state.inFormat->severalFiles || index + 1 >= chosen.size()) break;
    state.infile = JoinPath(chosen[0], chosen[index + 1]);
    if (!FileExists(state.infile)) throw Error(state.infile + ": this chosen file could not be opened for reading");
  }
  if (state.inFormat->severalFiles) state.reader->Layered = false;
  for (int i = 0; i < 3; ++i) interaction_.Beep();
}

void ConversionRun::OpenInput(State& state, bool first) {
  state.reader->filename(state.infile);
  if (state.reader->filename().empty()) throw ToldFailure();
  if (state.inFormat->severalFiles && state.request.useAttributes) state.reader->SetDBFObj(state.fields);
  if (first && !state.reader->Layers().empty()) MatchLayers(state);
  state.writer->SourceOpened(*state.reader);
}

void ConversionRun::MatchLayers(State& state) {
  const std::vector<std::string>& layers = state.reader->Layers();
  const FilterContext context = ContextOf(state);
  auto codes = interaction_.MatchLayers({layers, state.inFormat->Name() + " Layer", kApplication, context});
  if (codes) state.reader->AssignCodes(layers, std::move(*codes));
}

// Returns false when a cancel was confirmed.
bool ConversionRun::PumpElements(State& state) {
  while (!state.reader->Eof()) {
    const bool delivered = state.reader->GetNextEntity(state.entity);
    if (delivered) ++state.elements;
    if (delivered) state.reader->UpdateExtents(state.entity, state.summary.extents);
    interaction_.ShowRunProgress({*state.reader, state.summary.extents, state.elements});
    interaction_.Yield();
    if (delivered) ConvertElement(state);
    if (interaction_.CancelRequested()) return false;
    state.entity.Clear();
  }
  return true;
}

void ConversionRun::ConvertElement(State& state) {
  RunSummary& summary = state.summary;
  tEntity& entity = state.entity;
  const std::int16_t kind = entity.bType;
  summary.read.Add(kind);
  if (fillLayer_ && !entity.CDFCode.empty() && entity.Layer.empty()) {
    fillLayer_(entity, ContextOf(state));
  }
  if (entity.PointCount() == -1) {
    summary.skipped.Add(kind);
    return;
  }
  state.layerNotes.Note(entity.Layer);
  state.writing = true;
  const WriteResult result = state.writer->WriteEntity(entity);
  state.writing = false;
  (result == WriteResult::Written     ? summary.written
   : result == WriteResult::Converted ? summary.converted
                                      : summary.skipped)
      .Add(kind);
}

// Releases the filters. A writer that failed, or that has written nothing when the run ends early, leaves no file that
// looks whole; in every other case the output holds what was converted.
void ConversionRun::Finish(State& state) {
  RunSummary& summary = state.summary;
  if (summary.outcome == RunOutcome::Cancelled && state.reader) interaction_.HoldRunProgress();
  if (!state.writer) return;
  const bool failed = summary.outcome == RunOutcome::Failed;
  const std::int64_t inOutput = summary.written.Total() + summary.converted.Total();
  const bool endedBeforeAll = summary.outcome != RunOutcome::Done && inOutput == 0;
  if (endedBeforeAll || (failed && state.writing)) {
    state.writer->Abandon();
  } else {
    try {
      state.writer->Release();
      if (!state.writer->filename().empty()) summary.outputs = state.writer->Outputs();
    } catch (const std::exception& error) {
      if (!failed) Fail(state, error.what());
    }
  }
  state.writer.reset();
  state.reader.reset();
}

std::string ExtentLabel(double value) { return NumberText(value).substr(0, 10); }

}  // namespace tesselink
