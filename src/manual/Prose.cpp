// SPDX-License-Identifier: MIT
#include "manual/Prose.h"

#include <map>

namespace tesselink {

std::vector<std::string> DescriptionOf(const std::string& command) {
  static const std::map<std::string, std::vector<std::string>> kDescriptions{
      {"",
       {"Tesselink converts the vector drawings of oil-and-gas and land-survey mapping between file formats, element "
        "by element, and reports whatever it could not carry over. tesselink-formats(5) lists the formats.",
        "Files follow one of two dialects. The classic dialect, which holds without --dialect, writes and reads files "
        "as existing installations always have; --dialect standard follows the published layouts and writes what other "
        "programs of today expect."}},
      {"convert",
       {"Reads the INPUT element by element and writes the OUTPUT. The formats follow the extensions, unless --from "
        "and --to say otherwise. Several shapefiles become one output. A - stands for standard input or output.",
        "An existing output is kept unless --overwrite is given. It is the old one or the new one, never something "
        "between: a run that fails, is killed or is refused leaves the old one whole, and what it converted until then "
        "lies beside it, as NAME.incomplete.EXT.",
        "Everything that was read is accounted for. The summary on standard output counts what was written, became "
        "another kind or was skipped; every loss is a warning on standard error that names the file and the line or "
        "record where it first happened."}},
      {"batch",
       {"Converts every INPUT, each in a process of its own, so that one that is damaged, hangs or takes too much "
        "memory "
        "is a line of the account and harms no other. An INPUT is a file, a folder, which is searched with all folders "
        "below it, or a pattern in quotes. The tree below a folder is kept below the FOLDER of the outputs.",
        "What stands against a batch is told before anything runs: two inputs with one output, outputs that exist, an "
        "output that would replace an input. At the end stand how many were converted and which were not, with the "
        "reasons, and what was lost, by kind with the first file of each.",
        "Ctrl-C ends the conversions that run, of which nothing is left, and tells what is done; --resume goes on by "
        "the "
        "report, after a kill too."}},
      {"info",
       {"Reads the whole drawing and prints its format, how many elements of each kind it holds, its layers, extents "
        "and coordinate system, and for a shapefile the fields of its attribute table. Layers that a drawing has "
        "switched off, frozen or locked are marked so."}},
      {"cat",
       {"Prints each element as it was read, as one JSON object a line: its kind, layer, colour and text, and all of "
        "its vertices. It shows what a conversion would have handed to the writer of an output."}},
      {"layers",
       {"Prints a CSV list with the columns layer, code and description: every layer of the drawing, and the entity "
        "code that is remembered for it or, with --smart-assign, guessed from its name. Edited, the list is what "
        "--layer-codes of tesselink-convert(1) takes."}},
      {"preview",
       {"Reads the whole drawing and writes a picture of it as an SVG file, thinned to what a screen shows and "
        "coloured by layer."}},
      {"table",
       {"Prints the field names and then the rows of a dBase table as comma-separated values, each value as the table "
        "has it. With --dialect standard rows that are marked as deleted are left out, and memos and binary values are "
        "printed as their types say."}},
      {"formats", {"Prints the keys that --from and --to take, with the extension and the name of each format."}},
      {"help", {"Prints what COMMAND --help prints, and without a COMMAND what --help does."}},
  };
  const auto found = kDescriptions.find(command);
  return found == kDescriptions.end() ? std::vector<std::string>() : found->second;
}

const std::vector<TermText>& ExitCodeTexts() {
  static const std::vector<TermText> kTexts{
      {"0", "Done."},
      {"1", "Failed; the reason is on standard error."},
      {"2", "Wrong usage; no file was touched."},
      {"3", "Ended early: the output is incomplete, and the message says what it holds."},
      {"130", "Cancelled, as by Ctrl-C."},
  };
  return kTexts;
}

const std::vector<TermText>& EnvironmentTexts() {
  static const std::vector<TermText> kTexts{
      {"TESSELINK_DIALECT, TESSELINK_TOLERANCE ...",
       "Options for every run, by their names in capitals with _ for -; an option that is given wins. convert "
       "--show-settings tells which hold."},
      {"SOURCE_DATE_EPOCH", "The date that tables and GeoPackages bear, in seconds since 1970."},
      {"NO_COLOR",
       "Where it is set and not empty, messages have no colours. They have none in files and pipes either."},
      {"TERM", "On a terminal of the type dumb there is no progress bar, and messages have no colours."},
      {"TMPDIR", "The folder for a copy of what comes through a pipe."},
      {"XDG_CONFIG_HOME",
       "The folder below which tesselink/tesselink.conf lies and answers are remembered, as the codes of layers; "
       "~/.config without it."},
  };
  return kTexts;
}

const std::vector<TermText>& FileTexts() {
  static const std::vector<TermText> kTexts{
      {"~/.config/tesselink/tesselink.conf",
       "Options for every run, one to a line, as in: dialect = standard. The environment wins over it."},
      {"$CDF.MAP, $LNGSL.DAT", "Lists of entity types and of their colours; --cdf-map and --lngsl name others."},
      {"ACADTBL.TBL", "The colours of AutoCAD's palette."},
  };
  return kTexts;
}

}  // namespace tesselink
