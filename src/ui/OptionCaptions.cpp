// SPDX-License-Identifier: MIT
#include "ui/OptionCaptions.h"

#include <QCoreApplication>
#include <algorithm>
#include <vector>

#include "ui/UiText.h"

namespace tesselink {
namespace {

struct Choice {
  const char *value, *caption;
};

struct Words {
  const char *name, *caption, *tip;
  const char* hint = "";  // what stands in the empty box
  std::vector<Choice> choices = {};
};

const std::vector<Words>& AllWords() {
  static const std::vector<Words> kWords{
      {"encoding", QT_TRANSLATE_NOOP("Options", "Encoding of texts"),
       QT_TRANSLATE_NOOP("Options", "Where the input names none, or a wrong one"),
       QT_TRANSLATE_NOOP("Options", "as in UTF-8, 1252, GBK")},
      {"paper-space", QT_TRANSLATE_NOOP("Options", "Read paper space too"),
       QT_TRANSLATE_NOOP("Options", "What the drawing has on its layout sheets")},
      {"blocks",
       QT_TRANSLATE_NOOP("Options", "Blocks"),
       QT_TRANSLATE_NOOP("Options", "How blocks come that the drawing inserts"),
       "",
       {{"points", QT_TRANSLATE_NOOP("Options", "As points at their places")},
        {"expand", QT_TRANSLATE_NOOP("Options", "As what they draw")},
        {"both", QT_TRANSLATE_NOOP("Options", "Both")}}},
      {"limit", QT_TRANSLATE_NOOP("Options", "Most elements from blocks"),
       QT_TRANSLATE_NOOP("Options", "The run ends there, with what was written"),
       QT_TRANSLATE_NOOP("Options", "usually 100000000")},
      {"cdf-map", QT_TRANSLATE_NOOP("Options", "List of entity types"),
       QT_TRANSLATE_NOOP("Options", "Where $CDF.MAP lies"), QT_TRANSLATE_NOOP("Options", "where it was found last")},
      {"lngsl", QT_TRANSLATE_NOOP("Options", "List of entity colours"),
       QT_TRANSLATE_NOOP("Options", "Where $LNGSL.DAT lies"), QT_TRANSLATE_NOOP("Options", "where it was found last")},
      {"shape-type",
       QT_TRANSLATE_NOOP("Options", "Shapes"),
       QT_TRANSLATE_NOOP("Options", "What the shapefile holds, which holds one kind"),
       "",
       {{"points", QT_TRANSLATE_NOOP("Options", "Points and texts")},
        {"polylines", QT_TRANSLATE_NOOP("Options", "Lines")},
        {"polygons", QT_TRANSLATE_NOOP("Options", "Areas")},
        {"multipoints", QT_TRANSLATE_NOOP("Options", "Groups of points")},
        {"each", QT_TRANSLATE_NOOP("Options", "A file for each kind")}}},
      {"release",
       QT_TRANSLATE_NOOP("Options", "Release of the drawing"),
       QT_TRANSLATE_NOOP("Options", "2007 holds areas, true colours, any letters, and names as given"),
       "",
       {{"r12", QT_TRANSLATE_NOOP("Options", "R12 (AC1009)")},
        {"2007", QT_TRANSLATE_NOOP("Options", "2007 (AC1021)")}}},
      {"units", QT_TRANSLATE_NOOP("Options", "Units in the header"),
       QT_TRANSLATE_NOOP("Options", "As the header of the file names them"), QT_TRANSLATE_NOOP("Options", "usually M")},
      {"map-scale", QT_TRANSLATE_NOOP("Options", "Map scale in the header"),
       QT_TRANSLATE_NOOP("Options", "A number, as 24000"), QT_TRANSLATE_NOOP("Options", "usually 1")},
      {"points",
       QT_TRANSLATE_NOOP("Options", "Points"),
       QT_TRANSLATE_NOOP("Options", "What becomes of points, which the drawing does not hold"),
       "",
       {{"second-file", QT_TRANSLATE_NOOP("Options", "Into a second file (.pts)")},
        {"ignore", QT_TRANSLATE_NOOP("Options", "Left out")}}},
      {"township", QT_TRANSLATE_NOOP("Options", "Field of the townships"),
       QT_TRANSLATE_NOOP("Options", "All three fields and the table, or the run asks")},
      {"range", QT_TRANSLATE_NOOP("Options", "Field of the ranges"),
       QT_TRANSLATE_NOOP("Options", "All three fields and the table, or the run asks")},
      {"section", QT_TRANSLATE_NOOP("Options", "Field of the sections"),
       QT_TRANSLATE_NOOP("Options", "All three fields and the table, or the run asks")},
      {"table", QT_TRANSLATE_NOOP("Options", "Table with these fields"),
       QT_TRANSLATE_NOOP("Options", "Without it, the shapefile's own")},
      {"line-ends",
       QT_TRANSLATE_NOOP("Options", "Bare line feeds"),
       QT_TRANSLATE_NOOP("Options", "What to do with a file that has such line ends"),
       "",
       {{"keep", QT_TRANSLATE_NOOP("Options", "Read the file as it is")},
        {"replace", QT_TRANSLATE_NOOP("Options", "Repair the file itself")}}},
      {"tolerance", QT_TRANSLATE_NOOP("Options", "Tolerance of curves"),
       QT_TRANSLATE_NOOP("Options", "Greatest distance between a curve and its chain, in units of the drawing")},
      {"layer-field", QT_TRANSLATE_NOOP("Options", "Layer field"),
       QT_TRANSLATE_NOOP("Options", "The field that names the layer of each shape")},
      {"text-field", QT_TRANSLATE_NOOP("Options", "Text field or template"),
       QT_TRANSLATE_NOOP("Options", "What is written at each shape: a field, or several in braces"),
       QT_TRANSLATE_NOOP("Options", "as in {NAME} ({DEPTH} ft)")},
      {"text-height", QT_TRANSLATE_NOOP("Options", "Height of texts"),
       QT_TRANSLATE_NOOP("Options", "A number, or the field that holds it")},
      {"text-angle", QT_TRANSLATE_NOOP("Options", "Angle of texts"),
       QT_TRANSLATE_NOOP("Options", "Degrees, or the field that holds them")},
      {"colour-field", QT_TRANSLATE_NOOP("Options", "Colour field"),
       QT_TRANSLATE_NOOP("Options", "The field with the colour of shapes and texts: a number, a name or #rrggbb")},
      {"attributes",
       QT_TRANSLATE_NOOP("Options", "Attributes"),
       QT_TRANSLATE_NOOP("Options", "Whether they go along, where the output holds them"),
       "",
       {{"keep", QT_TRANSLATE_NOOP("Options", "Go along")}, {"drop", QT_TRANSLATE_NOOP("Options", "Stay behind")}}},
      {"layers", QT_TRANSLATE_NOOP("Options", "Only these layers"),
       QT_TRANSLATE_NOOP("Options",
                         "Names with commas between them; * and ? stand for letters, :off, :frozen and :locked for "
                         "layers that are"),
       QT_TRANSLATE_NOOP("Options", "as in WELLS, ROAD*")},
      {"without-layers", QT_TRANSLATE_NOOP("Options", "Without these layers"),
       QT_TRANSLATE_NOOP("Options",
                         "Names with commas between them; * and ? stand for letters, :off, :frozen and :locked for "
                         "layers that are"),
       QT_TRANSLATE_NOOP("Options", "as in DEFPOINTS, :off")},
      {"clip", QT_TRANSLATE_NOOP("Options", "Only within"),
       QT_TRANSLATE_NOOP("Options", "Two opposite corners; what touches the window comes whole"), "X1, Y1, X2, Y2"},
      {"layer-codes", QT_TRANSLATE_NOOP("Options", "Codes of layers"),
       QT_TRANSLATE_NOOP("Options", "A list (CSV) with the columns layer and code, instead of the question")},
      {"smart-assign", QT_TRANSLATE_NOOP("Options", "Guess codes from the names of layers"),
       QT_TRANSLATE_NOOP("Options", "After remembered ones, instead of the question")},
      {"from-crs", QT_TRANSLATE_NOOP("Options", "System of the input"),
       QT_TRANSLATE_NOOP("Options", "A code, a .prj or WKT file, or a PROJ text; it counts before a .prj file beside"),
       QT_TRANSLATE_NOOP("Options", "as in EPSG:32039")},
      {"to-crs", QT_TRANSLATE_NOOP("Options", "Transform into"),
       QT_TRANSLATE_NOOP("Options", "The system of the output, given likewise"),
       QT_TRANSLATE_NOOP("Options", "as in EPSG:4326")},
      {"allow-ballpark", QT_TRANSLATE_NOOP("Options", "Go on without a missing grid"),
       QT_TRANSLATE_NOOP("Options", "With the next best way between the systems, however rough")},
      {"build-areas", QT_TRANSLATE_NOOP("Options", "Make areas of lines"),
       QT_TRANSLATE_NOOP("Options", "Of what lines surround")},
      {"snap", QT_TRANSLATE_NOOP("Options", "Close gaps up to"),
       QT_TRANSLATE_NOOP("Options", "How far lines may miss each other that are to meet, in units of the drawing")},
      {"label-layer", QT_TRANSLATE_NOOP("Options", "Label areas from layers"),
       QT_TRANSLATE_NOOP("Options", "Layers whose texts become the text of the area that they lie in")},
      {"max-output", QT_TRANSLATE_NOOP("Options", "Largest output"),
       QT_TRANSLATE_NOOP("Options", "The run ends there; without it, 1 GiB or 200 times the input"),
       QT_TRANSLATE_NOOP("Options", "as in 500M, 20G")},
      {"sync", QT_TRANSLATE_NOOP("Options", "Wait until it is on the disk"),
       QT_TRANSLATE_NOOP("Options", "Safe when the power fails; slower")},
  };
  return kWords;
}

const Words* WordsOf(const std::string& name) {
  const auto& all = AllWords();
  const auto found = std::find_if(all.begin(), all.end(), [&](const Words& words) { return words.name == name; });
  return found == all.end() ? nullptr : &*found;
}

const char* CaptionOf(const Words* words, const std::string& choice) {
  if (words == nullptr) return nullptr;
  const auto found = std::find_if(words->choices.begin(), words->choices.end(),
                                  [&](const Choice& one) { return one.value == choice; });
  return found == words->choices.end() ? nullptr : found->caption;
}

QString Translated(const char* text) { return QCoreApplication::translate("Options", text); }

}  // namespace

QString OptionCaption(const ConversionOption& option) {
  const Words* const words = WordsOf(option.row.name);
  return words == nullptr ? Shown(option.row.name) : Translated(words->caption);
}

QString OptionCaption(const std::string& name, const std::string& choice) {
  const Words* const words = WordsOf(name);
  if (words == nullptr) return {};
  const char* const chosen = CaptionOf(words, choice);
  return Translated(words->caption) + (chosen == nullptr ? QString() : ": " + Translated(chosen));
}

QString OptionTip(const ConversionOption& option) {
  const Words* const words = WordsOf(option.row.name);
  return words == nullptr ? Shown(option.row.help) : Translated(words->tip);
}

QString OptionHint(const ConversionOption& option) {
  const Words* const words = WordsOf(option.row.name);
  return words == nullptr ? Shown(option.row.value) : (*words->hint == '\0' ? QString() : Translated(words->hint));
}

QString ChoiceCaption(const ConversionOption& option, const std::string& choice) {
  const char* const caption = CaptionOf(WordsOf(option.row.name), choice);
  return caption == nullptr ? Shown(choice) : Translated(caption);
}

QString GroupCaption(OptionGroup group) {
  switch (group) {
    case OptionGroup::Input:
      return Translated(QT_TRANSLATE_NOOP("Options", "Reading"));
    case OptionGroup::Labels:
      return Translated(QT_TRANSLATE_NOOP("Options", "Attributes and labels"));
    case OptionGroup::Layers:
      return Translated(QT_TRANSLATE_NOOP("Options", "Layers and place"));
    case OptionGroup::Systems:
      return Translated(QT_TRANSLATE_NOOP("Options", "Coordinate systems"));
    case OptionGroup::Areas:
      return Translated(QT_TRANSLATE_NOOP("Options", "Areas"));
    case OptionGroup::Output:
      return Translated(QT_TRANSLATE_NOOP("Options", "Writing"));
  }
  return {};
}

QString RestText(OptionRest rest) {
  switch (rest) {
    case OptionRest::Counts:
      break;
    case OptionRest::NeedsStandard:
      return Translated(QT_TRANSLATE_NOOP("Options", "In the dialect Standard"));
    case OptionRest::NeedsAreas:
      return Translated(QT_TRANSLATE_NOOP("Options", "Where the output holds areas"));
    case OptionRest::NeedsBuildAreas:
      return Translated(QT_TRANSLATE_NOOP("Options", "Where areas are made of lines"));
    case OptionRest::NeedsText:
      return Translated(QT_TRANSLATE_NOOP("Options", "Where a text field is chosen"));
  }
  return {};
}

bool HasOptionWords(const ConversionOption& option) {
  const Words* const words = WordsOf(option.row.name);
  return words != nullptr && std::all_of(option.row.choices.begin(), option.row.choices.end(),
                                         [&](const auto& choice) { return CaptionOf(words, choice) != nullptr; });
}

}  // namespace tesselink
