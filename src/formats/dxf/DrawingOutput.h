// SPDX-License-Identifier: MIT
// What drawings of every release have in common while they are written.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/element/Extents.h"
#include "core/io/Files.h"
#include "core/run/Filters.h"
#include "formats/dxf/DrawingNames.h"
#include "formats/dxf/GroupWriter.h"
#include "formats/dxf/RecordsOut.h"
#include "formats/dxf/cColourTab.h"

namespace tesselink {

/// All that releases and dialects decide differently.
struct DrawingConventions {
  bool originIsMissing;        ///< a vertex at (0, 0, 0) is left out
  bool chainsAsStored;         ///< polylines without flags; else with what they are: closed, flat, in space
  bool placementAsByte;        ///< group 73 of a text is 0, 16, 32 or 48; else 0 to 3
  bool arcsSkipped;            ///< else written as ARC
  bool bulges;                 ///< polylines have them
  bool degenerateKept;         ///< a chain of one vertex, a circle without radius; else a POINT
  bool heightsInFull;          ///< z with 15 digits; else with 7
  bool layerColourIsPosition;  ///< in the table; else the first colour that an element of the layer has
  bool fullTables;             ///< every line type, layer 0 and a text style; else a single line type and no style
  bool coloursAsGiven;         ///< else a number that is no colour is "by layer", and an RGB colour gets the nearest
  bool trueColours;            ///< stand beside the number that comes nearest
  bool textsAsGiven;           ///< byte by byte; else as the header says
  DrawingNames::Rule layerNames, lineTypeNames;
  NameSigns nameSigns;  ///< of names that are not as given
};

/// Streams the elements into a temporary file, since the header lists layers and extents that are known only at the
/// end; Release writes the header into a second one and joins the two. Nothing reaches the output path before.
class DrawingOutput : public OutputFilter {
 public:
  void SourceOpened(InputFilter& source) override;
  Carrying CarriesAttributes() const override { return conventions_.fullTables ? Carrying::Yes : Carrying::InStandard; }
  /// Writes the sections before the entities into the header file. This and Merge throw Error when no file is open.
  void WriteHead();
  /// Builds the output from the bytes of the header file and of the entity file, and appends the closing lines.
  void Merge(const std::string& headerPath, const std::string& entityPath);
  std::int64_t Size() const override { return header_.Size() + entities_.Size(); }

 protected:
  DrawingOutput(const FilterContext& context, const DrawingConventions& conventions);

  void Create(const std::string& path) override;
  WriteResult Write(tEntity& entity) override;
  void Complete() override;
  void Drop() noexcept override;

  /// The sections before the entities, and what follows those.
  virtual void WriteSections() = 0;
  virtual void WriteEnd(FileWriter& output) = 0;
  virtual void WritePoints(const tEntity& entity, tEntity::Index last) = 0;
  virtual void WriteLines(const tEntity& entity, tEntity::Index last) = 0;
  virtual void WritePolyline(const tEntity& entity, tEntity::Index last) = 0;
  virtual void WriteText(const tEntity& entity) = 0;
  virtual void WriteCircle(const tEntity& entity) = 0;
  virtual void WriteArc(const tEntity& entity) = 0;
  /// Told of each layer and line type once.
  virtual void NoteNewName(const DrawingNames::Entry&) {}
  /// Appends what was written of the entities.
  virtual void AppendEntities(FileWriter& output, const std::string& path) { output.Append(path); }
  /// A value of extended data as it stands among the entities until they are appended; valid until the next call.
  virtual std::string_view InterimValue(std::string_view value) { return value; }
  /// A name as it stands among the entities until they are appended; valid until the next call.
  virtual std::string_view Interim(const std::string& name) { return name; }
  /// Tells of a layer or a line type that has another name in the drawing.
  void TellOfName(const DrawingNames::Entry& entry, const char* what, std::string_view why);

  /// Takes from an element what the header needs, before it is written.
  void Note(tEntity& entity);
  WriteResult WriteForm(tEntity& entity);

  bool IsMissing(const tEntity& entity, tEntity::Index i) const {
    return mayMiss_ && entity.x(i) == 0 && entity.Y(i) == 0 && entity.Z(i) == 0;
  }
  /// The last vertex that is written of a closed chain within the element: the one that closes it goes without saying.
  static tEntity::Index LastStored(const tEntity& entity, tEntity::Index first, tEntity::Index last);
  /// The number that stands for the element's colour.
  std::int32_t ColourNumber(const tEntity& entity);
  FileWriter& Height(FileWriter& file, double value) const {
    return conventions_.heightsInFull ? file.Number(value) : file.Single(static_cast<float>(value));
  }
  void Vertex(const tEntity& entity, tEntity::Index index, bool second = false);
  /// An end beyond 360 degrees counts from 0 again, unless the arc is a whole turn.
  static double ArcEnd(const CurveNumbers& arc);
  void Text(std::string_view code, std::string_view value);
  const std::string& Printable(const std::string& value);
  /// A text as the drawing holds it, until the next call.
  std::string_view Encoded(const std::string& text);
  /// The lines that name layer and line type, behind those before them, and the code of the colour; they serve further
  /// elements of the layer, unless something in them is to be told of each.
  const std::string& Head(std::string_view before);
  /// The attributes of the element's record, at the end of an entity; nothing for one without.
  void Record(const tEntity& entity) {
    if (records_.Any() && records_.Take(entity)) WriteRecord();
  }
  /// What layer 0 tells of the attributes' tables.
  void Schema(GroupWriter& groups);
  /// The same of each text, for the encoding.
  const RecordsOut& Records() const { return records_; }
  virtual std::string_view SchemaText(const std::string& text) { return text; }
  /// $EXTMIN and $EXTMAX.
  void WriteCorners();
  /// What is known of the pattern of a line type; without, it is a solid line.
  const LineType& PatternOf(const DrawingNames::Entry& lineType) const;
  /// What group 70 of a layer says of its state; that it is off, its colour says.
  static int FlagsOf(const LayerState& state) { return (state.isFrozen ? 1 : 0) + (state.isLocked ? 4 : 0); }
  static double LengthOf(const LineType& lineType);

  static const std::string kContinuous;

  std::string path_;
  FileWriter header_, entities_;
  const DrawingConventions& conventions_;
  DrawingNames layers_, lineTypes_;
  DrawingNames::Entry* layer_ = nullptr;   // of the element at hand
  const std::string* lineType_ = nullptr;  // likewise, as the drawing holds it
  std::int32_t trueColour_ = kNoColour;    // likewise, where no number has it
  bool mayMiss_ = false;                   // a vertex of it may be one that is left out
  Extents extents_;
  std::string encoded_;

 private:
  void RequireOpen(const char* member) const;
  void WriteRecord();
  template <bool isSecond>
  void WriteVertex(const tEntity& entity, tEntity::Index index);
  bool IsDegenerate(const tEntity& entity, tEntity::Index last) const;
  void NumberColour(tEntity& entity);
  void NoteNames(const tEntity& entity);
  void NoteState(const tEntity& entity, DrawingNames::Entry& layer);
  void NoteLineType(const tEntity& entity, DrawingNames::Entry& layer);
  DrawingNames::Entry& NameIn(DrawingNames& names, const std::string& name, const char* what);
  void NoteExtents(const tEntity& entity, tEntity::Index last);

  TempFile headerFile_, entityFile_;
  RecordsOut records_;
  cColourTab colours_;
  std::unordered_map<std::string, LineType> patterns_;  // of line types, by their names in capitals
  std::vector<LayerState> states_;                      // of the input's layers
  std::int64_t source_ = 0;                             // number of the input
  bool byLayer_ = false;                                // the element has the layer's colour by layer
  std::string printable_, head_;
};

/// Whether a name says that a line type is that of the layer or of the block; no table of line types holds it.
bool IsInheritedLineType(const std::string& lineType);

}  // namespace tesselink
