// SPDX-License-Identifier: MIT
// The command line as data. Parsing touches no file, so that every option can be tested by itself.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/run/ClipWindow.h"
#include "core/run/Dialect.h"
#include "core/run/FieldSelection.h"
#include "core/run/Options.h"
#include "core/run/SystemChoice.h"

namespace CLI {
class App;
}

namespace tesselink {

enum class LineEndsChoice { Keep, Replace, Copy };

/// What concerns reading, for every command that reads a drawing.
struct ReadingOptions {
  std::string from;        ///< a format key; empty: by the extension
  std::string layerField;  ///< of a shapefile's table
  std::string textField;   ///< or a template
  LabelLook look;
  LineEndsChoice lineEnds = LineEndsChoice::Keep;
  std::string lineEndsCopy;                        ///< where LineEndsChoice::Copy writes
  std::string layerCodes;                          ///< a CSV file with the entity codes of layers
  bool smartAssign = false;                        ///< guess the codes that nobody gave
  std::vector<std::string> layers, withoutLayers;  ///< names and patterns; see LayerSelection
  std::optional<ClipBox> clip;                     ///< only what touches it is read
  OptionValues own;                                ///< of the options that formats bring along
  SystemChoice systems;
  Dialect dialect = Dialect::Classic;
  std::optional<double> tolerance;  ///< greatest distance between a curve and its chain, in drawing units
  bool attributes = true;           ///< those of inputs go along, where the output holds them
  bool quiet = false;               ///< nothing but errors is told beside what the command is for
};

enum class ProgressChoice { WhenTerminal, Always, Never };

struct ConvertCommand {
  std::vector<std::string> inputs;
  std::string output;
  ReadingOptions reading;
  std::string to;                        ///< a format key; empty: by the extension
  bool buildAreas = false;               ///< make areas of lines
  double snap = 0;                       ///< how far their ends may miss each other, in drawing units
  std::vector<std::string> labelLayers;  ///< names and patterns of those whose texts label the areas
  bool overwrite = false;
  bool sync = false;
  std::uint64_t maxOutput = 0;  ///< bytes; 0: what the run takes for ample
  bool json = false;
  bool showSettings = false;  ///< tells the settings that hold, and converts nothing; files may be missing then
  ProgressChoice progress = ProgressChoice::WhenTerminal;
  bool nothingLeft = false;         ///< by killed runs to this output, as a batch has seen for all
  int batch = 0;                    ///< the process of the batch that this is a part of
  std::uint64_t memoryOfBatch = 0;  ///< bytes that it gives this part; 0: no limit
};

/// Many conversions, each in a process of its own.
struct BatchCommand {
  std::vector<std::string> inputs;   ///< files, folders and patterns
  std::vector<std::string> exclude;  ///< files that are not taken from them
  std::string into;                  ///< the folder of the outputs
  ConvertCommand conversion;         ///< how each is converted; its inputs and output are those of one file at a time
  std::vector<std::string> options;  ///< of the conversion, as each is given them
  unsigned jobs = 0;                 ///< at a time; 0: one a core
  double timeout = 0;                ///< seconds for each; 0: no limit
  std::uint64_t memory = 0;          ///< bytes for each; 0: no limit
  std::string report;                ///< where a line is written for each file
  bool resume = false;
  bool dryRun = false;
};

struct InfoCommand {
  std::string input;
  ReadingOptions reading;
  bool json = false;
};

struct CatCommand {
  std::string input;
  ReadingOptions reading;
};

struct LayersCommand {
  std::string input;
  ReadingOptions reading;
};

struct PreviewCommand {
  std::string input;
  std::string picture;
  ReadingOptions reading;
  bool overwrite = false;
};

struct TableCommand {
  std::string file;
  ReadingOptions reading;  ///< of which the dialect and the encoding count
};

struct FormatsCommand {
  bool json = false;
};

/// Parsing ended here: a text for the person, and the exit code.
struct ParsingEnded {
  std::string text;
  int exitCode = 0;
  std::string advice = {};  ///< where help is, if the text says what is wrong
};

using Command = std::variant<ParsingEnded, ConvertCommand, BatchCommand, InfoCommand, CatCommand, LayersCommand,
                             PreviewCommand, TableCommand, FormatsCommand>;

/// An option of the command that was asked for.
struct CommandOption {
  std::string name;  ///< its long one, without the dashes
  bool isFlag = false;
  std::vector<std::string> given;  ///< values, or one that says nothing of a flag; none: it was not given
};

/// The command that the arguments, without the program's name, ask for; help, version and wrong usage as ParsingEnded.
/// `options` become those that the command has.
Command ParseArguments(const std::vector<std::string>& arguments, std::vector<CommandOption>* options = nullptr);

/// Shows the program with all its commands and options, for who describes them elsewhere.
void ShowCommands(const std::function<void(const CLI::App& program)>& look);

}  // namespace tesselink
