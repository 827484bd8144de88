// SPDX-License-Identifier: MIT
#include "core/run/ConversionRun.h"

#include <algorithm>
#include <optional>

#include "core/io/Errors.h"
#include "core/io/Module.h"
#include "core/io/NameNumbers.h"
#include "core/io/Numbers.h"
#include "core/io/OutputPlace.h"
#include "core/io/Paths.h"
#include "core/io/System.h"
#include "core/io/Text.h"
#include "core/run/AreaBuilding.h"
#include "core/run/FilesRead.h"
#include "core/run/LayerSelection.h"
#include "core/run/Pump.h"
#include "core/run/Translatable.h"
#include "core/run/WrittenFiles.h"

namespace tesselink {
namespace {

constexpr const char* kApplication = "Tesselink";
constexpr std::int64_t kAmpleOutput = std::int64_t{1} << 30, kAmpleFactor = 200;

// Notes each layer once; most elements have that of the one before.
class LayerNotes {
 public:
  explicit LayerNotes(std::vector<std::string>& layers) : layers_(layers) {}
  void Note(const std::string& layer) {
    if (numbers_.Of(layer) == layers_.size()) layers_.push_back(layer);
  }

 private:
  std::vector<std::string>& layers_;
  NameNumbers numbers_;
};

// Raised where the reason has been shown already.
struct ToldFailure {};

}  // namespace

struct ConversionRun::State {
  explicit State(const ConversionRequest& r)
      : request(r),
        infile(r.inputs.empty() ? std::string() : r.inputs[0]),
        layerNotes(summary.layers),
        selection(r.options.layers, r.options.withoutLayers),
        pump(r.options.dialect) {
    if (r.options.clip) window.emplace(*r.options.clip, r.options.Curves());
  }

  const ConversionRequest& request;
  std::string infile;
  const InputFormat* inFormat = nullptr;
  RunSummary summary;
  LayerNotes layerNotes;
  FieldSelection fields{FieldSelection::Names::Prepared};
  std::optional<FilterContext> context;  // of both filters
  std::unique_ptr<InputFilter> reader;
  std::unique_ptr<OutputFilter> writer;
  std::optional<Reduction> reduction;  // to what the writer holds
  std::optional<TraitLosses> traits;
  std::optional<Coordinates> coordinates;  // none where nobody asks for systems
  LayerSelection selection;
  std::optional<ClipWindow> window;
  std::optional<AreaBuilding> areas;
  Pump pump;
  FilesRead filesRead;
  std::optional<OutputPlace> place;  // where the writer writes; none for one that makes no file
  std::int64_t maxOutput = 0;        // bytes
  bool writing = false;              // the writer is at work: an error is its own, and a question that is declined
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
  } catch (const LimitReached& error) {
    EndAtLimit(state, error.what());
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

void ConversionRun::Refuse(State& state, const std::string& text, const std::string& file, const std::string& reason) {
  state.summary.subject = file;
  state.summary.reason = reason;
  state.summary.outcome = RunOutcome::Refused;
  state.summary.error = text;
  interaction_.ShowMessage(
      {Topic::RunFailed, text, TRANSLATABLE("Messages", "Error"), MessageIcon::Critical, MessageButtons::Ok, reason});
}

void ConversionRun::Fail(State& state, const std::string& text) {
  state.summary.outcome = RunOutcome::Failed;
  state.summary.error = state.place ? state.place->Named(text) : text;
  interaction_.ShowMessage({Topic::RunFailed, state.summary.error, "Error", MessageIcon::Critical});
}

bool ConversionRun::Validate(State& state) {
  const ConversionRequest& request = state.request;
  state.inFormat = &formats_.Input(request.InFormat);
  if (const std::string reason = WhyNotReadable(state.infile); !reason.empty()) {
    Refuse(state, TRANSLATABLE("Messages", "You must specify a valid input file"), state.infile,
           state.infile.empty() ? "" : reason);
  } else if (request.OutFile.empty()) {
    Refuse(state, TRANSLATABLE("Messages", "You must select an output file"), "");
  } else if (const std::string file = OutputThatIsRead(state); !file.empty()) {
    Refuse(state, TRANSLATABLE("Messages", "Input and Output files can not be the same"), file);
  }
  return state.summary.outcome != RunOutcome::Refused;
}

// The output, or a file written beside it, that the run reads; empty when there is none.
std::string ConversionRun::OutputThatIsRead(State& state) const {
  const ConversionRequest& request = state.request;
  const OutputFormat& outFormat = formats_.Output(request.OutFormat);
  for (const std::string& input : request.inputs) state.filesRead.Add(input, state.inFormat->companions);
  for (const std::string& file : request.alsoRead) state.filesRead.Add(file);
  for (const std::string& file : SystemFiles(request.options.systems)) state.filesRead.Add(file);
  const auto addOptions = [&](const auto& row) {
    for (const FormatOption& option : row.options) {
      if (option.kind == FormatOption::Kind::File) state.filesRead.Add(request.options.own.Text(option.name));
    }
  };
  for (const InputFormat& row : formats_.Inputs()) addOptions(row);
  addOptions(outFormat);
  const auto written = WrittenFiles(request.OutFile, outFormat, request.options);
  const auto isRead = [&](const std::string& file) { return state.filesRead.Holds(file); };
  const auto file = std::find_if(written.begin(), written.end(), isRead);
  return file == written.end() ? std::string() : *file;
}

void ConversionRun::CreateFilters(State& state) {
  const FilterContext& context = state.context.emplace(
      FilterContext{interaction_, settings_, state.summary.report, state.request.options, &state.filesRead});
  const OutputFormat& outFormat = formats_.Output(state.request.OutFormat);
  state.reader = state.inFormat->create(context);
  state.writer = outFormat.create(context);
  const Holding holding = state.writer->Holds();
  state.reduction.emplace(holding, state.writer->losses(), context.options.Curves());
  state.traits.emplace(holding.lacks, holding.keeps, state.writer->losses());
  state.writer->losses().Locate([&state] { return state.reader->Where(); });
  if (context.options.buildAreas) CreateAreas(state, outFormat.PlaceOfAreas(context.options.own));
  if (context.options.systems.IsGiven() || state.writer->WishesSystem() != SystemWish::None) {
    state.coordinates.emplace(context, holding);
  }
  const bool withoutAttributes = state.inFormat->hasAttributes && !state.request.useAttributes;
  if (state.inFormat->severalFiles || outFormat.ignoresLayers || withoutAttributes) state.reader->Layered = false;
  state.reader->WholeRecords = state.request.options.attributes && state.writer->WritesRecords();
  std::string path = state.request.OutFile;
  if (!outFormat.makesNoFile) {
    OutputOptions options{.overwrite = state.request.overwrite, .sync = state.request.sync};
    options.leftovers = state.request.leftovers;
    for (const Companion* companion : WrittenCompanions(outFormat, state.request.options)) {
      options.companions.push_back(LowerCase(companion->extension));
    }
    if (outFormat.parts) options.parts = outFormat.parts(state.request.options.own);
    path = state.place.emplace(path, std::move(options)).Path();
  }
  state.writer->filename(path);
  state.maxOutput = state.request.maxOutput > 0 ? state.request.maxOutput
                                                : std::max(kAmpleOutput, kAmpleFactor * state.filesRead.Size());
}

void ConversionRun::ConvertFiles(State& state) {
  const std::vector<std::string>& inputs = state.request.inputs;
  for (std::size_t index = 0;;) {
    OpenInput(state, index == 0);
    PumpElements(state);
    if (state.summary.outcome != RunOutcome::Done) return;
    if (!state.inFormat->severalFiles || ++index >= inputs.size()) break;
    state.infile = inputs[index];
    if (const std::string reason = WhyNotReadable(state.infile); !reason.empty()) throw Error(reason);
  }
  if (state.areas) WriteAreas(state);
  if (state.summary.outcome != RunOutcome::Done) return;
  TellUnfoundLayers(state);
  RefuseToReplaceByNothing(state);
  if (state.inFormat->severalFiles) state.reader->Layered = false;
  for (int i = 0; i < 3; ++i) interaction_.Beep();
}

void ConversionRun::OpenInput(State& state, bool first) {
  state.reader->filename(state.infile);
  if (state.reader->filename().empty()) throw ToldFailure();
  if (state.inFormat->severalFiles && state.request.useAttributes) state.reader->SetDBFObj(state.fields);
  if (first && !state.reader->Layers().empty()) MatchLayers(state);
  if (state.coordinates) {
    state.coordinates->Open(*state.reader, *state.writer);
    state.summary.systems = state.coordinates->Used();
  }
  TellWhatIsNotCarried(state);
  std::vector<LayerState> states = state.reader->LayerStates();
  state.summary.layerStates.insert(state.summary.layerStates.end(), states.begin(), states.end());
  state.selection.Heed(std::move(states));
  state.writer->SourceOpened(*state.reader);
}

void ConversionRun::TellUnfoundLayers(State& state) {
  const auto tell = [&](const std::vector<std::string>& patterns, const char* what) {
    for (const std::string& pattern : patterns) {
      state.summary.report.Warn(WarningKind::UnknownLayer,
                                state.request.inputs[0] + ": no " + what + " lies on a layer \"" + pattern + "\"",
                                pattern);
    }
  };
  tell(state.selection.Unfound(), "element");
  if (state.areas) tell(state.areas->UnfoundLayers(), "text");
}

void ConversionRun::TellWhatIsNotCarried(State& state) {
  const auto tell = [&](WarningKind kind, Carrying carrying, const std::string& path, const std::string& what,
                        const char* verb) {
    if (path.empty() || carrying == Carrying::Yes) return;
    std::string text = path + ": " + what + verb + " not carried into " + state.request.OutFile;
    if (carrying == Carrying::InStandard) {
      text += "; the standard dialect (" + interaction_.Naming("dialect", "standard") + ") carries them along";
    }
    state.summary.report.Warn(kind, text);
  };
  const bool mayTake = state.reader->Layered && !state.reader->Form().isDrawing;
  const std::string taken(mayTake ? "layer and text" : state.writer->TakesFromAttributes());
  if (state.request.options.attributes) {
    tell(WarningKind::AttributesNotCarried, state.writer->CarriesAttributes(), state.reader->AttributesPath(),
         "its attributes" + (taken.empty() ? "" : ", but for " + taken + ","), " are");
  }
  const CoordinateSystem& system = state.summary.systems.to;
  if (system.IsKnown() && state.writer->CarriesSource() != Carrying::Yes && !state.writer->NamesSystem()) {
    state.summary.report.Warn(WarningKind::ProjectionNotCarried,
                              state.request.OutFile + ": does not say that its coordinates are in " + system.name);
  } else if (!system.IsKnown()) {
    tell(WarningKind::ProjectionNotCarried, state.writer->CarriesSource(), state.reader->ProjectionPath(),
         "the coordinate system that it names", " is");
  }
}

void ConversionRun::MatchLayers(State& state) {
  const std::vector<std::string>& layers = state.reader->Layers();
  const bool codesMatter = (state.writer->Holds().lacks & kHasUnmatchedLayer) != 0;
  auto codes =
      interaction_.MatchLayers({layers, state.inFormat->Name() + " Layer", kApplication, *state.context, codesMatter});
  if (codes) state.reader->AssignCodes(layers, std::move(*codes));
}

// Whether the run goes no further, though there is more.
inline bool ConversionRun::HasEnded(State& state) {
  const bool isFull = state.writer->Size() > state.maxOutput;
  if (!isFull && !interaction_.CancelRequested()) return false;
  isFull ? EndAtSize(state) : static_cast<void>(state.summary.outcome = RunOutcome::Cancelled);
  return true;
}

// Until the end of the file, or until the run ends with another outcome.
void ConversionRun::PumpElements(State& state) {
  while (state.pump.Next(*state.reader)) {
    const bool delivered = state.pump.Delivered() && IsWanted(state);
    if (delivered) state.reader->UpdateExtents(state.pump.Element(), state.summary.extents);
    interaction_.ShowRunProgress({*state.reader, state.infile, state.summary.extents, state.pump.Elements()});
    interaction_.Yield();
    if (delivered) ConvertElement(state);
    if (HasEnded(state)) return;
  }
}

// Counts an element that the person does not want.
bool ConversionRun::IsWanted(State& state) {
  const tEntity& entity = state.pump.Element();
  const bool isOfLayer = state.selection.Takes(entity.Layer);
  if (isOfLayer && (!state.window || state.window->Touches(entity))) return true;
  state.summary.read.Add(entity);
  (isOfLayer ? state.summary.clipped : state.summary.leftOut).Add(entity);
  return false;
}

// A small drawing may say so much by repetition that the output fills a disk.
void ConversionRun::EndAtSize(State& state) {
  EndAtLimit(state, state.request.OutFile + ": has grown beyond the " + std::to_string(state.maxOutput) +
                        " bytes that this run may write; " + interaction_.Naming("max-output", "SIZE") +
                        " allows more");
}

void ConversionRun::EndAtLimit(State& state, const std::string& reason) {
  RunSummary& summary = state.summary;
  summary.outcome = RunOutcome::Limited;
  summary.error = reason;
  interaction_.ShowMessage({Topic::RunFailed, summary.error, "Error", MessageIcon::Warning});
}

void ConversionRun::ConvertElement(State& state) {
  RunSummary& summary = state.summary;
  tEntity& entity = state.pump.Element();
  const std::int16_t kind = entity.bType;
  summary.read.Add(kind);
  const bool isFilled = fillLayer_ && !entity.CDFCode.empty() && entity.Layer.empty();
  if (isFilled) fillLayer_(entity, *state.context, state.reader->Encoding());
  const bool isNull = entity.IsNull();
  if (entity.PointCount() == -1 && !(isNull && state.writer->Holds().nulls)) {
    if (isNull) state.writer->losses().Add(WarningKind::NullShapes);
    summary.skipped.Add(kind);
    return;
  }
  state.layerNotes.Note(entity.Layer);
  if (state.areas && state.areas->Takes(entity, state.reduction->Fits(entity))) return;
  WriteElement(state, entity, isFilled);
}

void ConversionRun::WriteElement(State& state, tEntity& entity, bool isFilled) {
  RunSummary& summary = state.summary;
  const std::int16_t kind = entity.bType;
  TraitSet lost = state.traits->Of(entity);             // before the writer changes it
  if (isFilled) lost &= ~TraitSet{kHasUnmatchedLayer};  // its layer is but the name of its code
  const auto placed = state.coordinates ? state.coordinates->Place(entity, *state.reader) : Coordinates::Placed::Whole;
  if (placed == Coordinates::Placed::Nowhere) {
    state.writer->losses().Add(WarningKind::NotTransformed);
    summary.skipped.Add(kind);
    return;
  }
  state.writing = true;
  WriteResult result =
      state.reduction->Fits(entity) ? state.writer->WriteEntity(entity) : HandOverReduced(state, entity);
  state.writing = false;
  if (result != WriteResult::Skipped) {
    state.traits->Count(lost);
    if (placed == Coordinates::Placed::Drawn) {
      state.coordinates->CountDrawn(state.writer->losses());
      result = WriteResult::Converted;
    }
  }
  (result == WriteResult::Written     ? summary.written
   : result == WriteResult::Converted ? summary.converted
                                      : summary.skipped)
      .Add(kind);
}

// To the writer, as what it holds.
WriteResult ConversionRun::HandOverReduced(State& state, tEntity& entity) {
  WriteResult result = WriteResult::Converted;
  state.reduction->Reduce(entity, [&](tEntity& reduced) {
    const bool skipped = state.writer->WriteEntity(reduced) == WriteResult::Skipped;
    if (skipped) result = WriteResult::Skipped;
    return !skipped;
  });
  return result;
}

void ConversionRun::CreateAreas(State& state, AreaPlace place) {
  if (place == AreaPlace::None) throw Error(state.request.OutFile + ": holds no areas that lines bound");
  std::unique_ptr<Linework> linework(CreateByModule<Linework>(state.request.options.moduleFolder, "linework"));
  state.areas.emplace(std::move(linework), state.request.options, place, state.writer->losses());
}

// Areas come at the end of all that was read, since any line may bound them.
void ConversionRun::WriteAreas(State& state) {
  RunSummary& summary = state.summary;
  state.writer->losses().Locate([&state] { return state.areas->Where(); });
  const auto cancelled = [this] {
    interaction_.Yield();
    return interaction_.CancelRequested();
  };
  bool isBuilt = false;
  try {
    isBuilt = state.areas->Build(cancelled);
  } catch (const Error& error) {
    throw Error(state.infile + ": " + error.what());
  }
  if (!isBuilt) {
    summary.outcome = RunOutcome::Cancelled;
    return;
  }
  tEntity area;
  while (state.areas->Next(area)) {
    interaction_.Yield();
    WriteElement(state, area, false);
    ++summary.areasBuilt;
    if (HasEnded(state)) return;
  }
  if (summary.areasBuilt > 0 && !state.reader->AttributesPath().empty()) {
    summary.report.Warn(WarningKind::AttributesNotCarried,
                        state.infile + ": its attributes are not carried into the areas that its lines bound");
  }
}

// An input in which nothing of its format was found makes an output that holds nothing, but takes nobody's place.
void ConversionRun::RefuseToReplaceByNothing(const State& state) const {
  if (!state.place || !state.place->Replaces() || state.summary.read.Total() > 0) return;
  sys::Status input;
  const bool isEmpty = sys::StatusOf(state.infile, input) && input.size == 0;
  const Warning* nothing = state.summary.report.Of(WarningKind::NoRecords);
  if (!isEmpty && nothing == nullptr) return;
  throw Error((isEmpty ? state.infile + ": has no bytes" : nothing->text) + " (the output that is there was kept)");
}

// Releases the filters. A writer that failed, or that has written nothing when the run ends early, delivers nothing; in
// every other case the output holds what was converted.
void ConversionRun::Finish(State& state) {
  RunSummary& summary = state.summary;
  if (summary.outcome == RunOutcome::Cancelled && state.reader) interaction_.HoldRunProgress();
  if (!state.writer) return;
  state.writer->losses().Locate(nullptr);
  if (state.areas) state.areas->Account(summary.intoAreas, summary.skipped);
  summary.skippedHint = state.writer->HintOfSkipped();
  if (state.coordinates) {
    state.coordinates->CountAtEnd(state.writer->losses());
    summary.systems = state.coordinates->Used();
  }
  const bool failed = summary.outcome == RunOutcome::Failed;
  const std::int64_t inOutput = summary.written.Total() + summary.converted.Total();
  const bool endedBeforeAll = summary.outcome != RunOutcome::Done && inOutput == 0;
  const bool isUnwanted = summary.outcome == RunOutcome::Cancelled && !interaction_.WantsPart();
  if (endedBeforeAll || isUnwanted || state.writing) {
    state.writer->Abandon();
  } else {
    try {
      state.writer->Release();
      if (!state.writer->filename().empty()) Deliver(state);
    } catch (const OperationCanceled&) {
      summary.outcome = RunOutcome::Cancelled;
      interaction_.HoldRunProgress();
    } catch (const std::exception& error) {
      if (!failed) Fail(state, error.what());
    }
  }
  state.writer.reset();
  state.reader.reset();
  if (!state.place) return;
  summary.report.Reword([&](const std::string& text) { return state.place->Named(text); });
  for (const std::string& note : state.place->Notes()) summary.report.Warn(WarningKind::Output, note);
}

// Moves what was written over the target. Where the run failed an old output stays, and the new one lies beside it.
void ConversionRun::Deliver(State& state) {
  RunSummary& summary = state.summary;
  if (!state.place) {
    summary.outputs = state.writer->Outputs();
    return;
  }
  const ConversionRequest& request = state.request;
  const OutputFormat& format = formats_.Output(request.OutFormat);
  for (const std::string& file : WrittenFiles(request.OutFile, format, request.options)) {
    if (state.filesRead.Holds(file)) throw Error("Input and Output files can not be the same: " + file);
  }
  summary.oldKept = summary.outcome == RunOutcome::Failed && state.place->Replaces();
  const Delivery delivery = summary.oldKept ? state.place->Keep("incomplete") : state.place->Deliver();
  summary.outputs = InOrder(delivery.files, format);
  for (const std::string& file : delivery.untouched) TellOlder(summary.report, format, file);
}

std::string ExtentLabel(double value) { return NumberText(value).substr(0, 10); }

}  // namespace tesselink
