// The DXF writer: drawings of release "AC1009" as text, group code and value on alternate lines.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "core/element/Extents.h"
#include "core/io/Files.h"
#include "core/run/Filters.h"
#include "formats/dxf/DrawingNames.h"
#include "formats/dxf/cColourTab.h"

namespace tesselink {

/// Streams the elements into a temporary file, since the header lists layers and extents that are known only at the
/// end; Release writes the header into a second one and joins the two. Nothing reaches the output path before.
///
/// By convention circles become "CIRCLE", arcs are not written, a closed chain is written through its stored vertices,
/// the vertical placement of a text stands in group 73 as 0, 16, 32 or 48, and a vertex at (0, 0, 0) counts as missing.
/// The standard dialect departs from that as `Conventions` tells.
class DXFOutFilter final : public OutputFilter {
 public:
  explicit DXFOutFilter(const FilterContext& context);
  ~DXFOutFilter() override { ReleaseQuietly(); }

  void SourceOpened(InputFilter& source) override;
  /// Writes the sections before the entities into the header file. This and Merge throw Error when no file is open.
  void WriteHead();
  /// Builds the output from the bytes of the header file and of the entity file, and appends the closing lines.
  void Merge(const std::string& headerPath, const std::string& entityPath);
  std::int64_t Size() const override { return header_.Size() + entities_.Size(); }
  Holding Holds() const override {
    return {.bulges = conventions_.bulges, .lacks = kHasSymbol | kHasEntityCode | kHasSeveralPoints, .curves = true};
  }

 private:
  // All that the dialects decide differently.
  struct Conventions {
    bool originIsMissing;        // a vertex at (0, 0, 0) is left out
    bool chainsAsStored;         // polylines without flags; else with what they are: closed, flat, in space
    bool placementAsByte;        // group 73 of a text is 0, 16, 32 or 48; else 0 to 3
    bool arcsSkipped;            // else written as ARC
    bool bulges;                 // polylines have them
    bool degenerateKept;         // a chain of one vertex, a circle without radius; else a POINT
    bool heightsInFull;          // z with 15 digits; else with 7
    bool layerColourIsPosition;  // in the table; else the first colour that an element of the layer has
    bool fullTables;             // every line type, layer 0 and a text style; else a single line type and no style
    bool coloursAsGiven;  // else a number that is no colour is "by layer", and an RGB colour gets the nearest number
    bool textsAsGiven;    // byte by byte; else in the code page that the header names
    DrawingNames::Rule layerNames, lineTypeNames;
  };
  static const Conventions kClassic, kStandard;

  void Create(const std::string& path) override;
  WriteResult Write(tEntity& entity) override;
  void Complete() override;
  void Drop() noexcept override;

  void RequireOpen(const char* member) const;
  bool IsMissing(const tEntity& entity, tEntity::Index i) const;
  bool IsDegenerate(const tEntity& entity, tEntity::Index last) const;
  void NumberColour(tEntity& entity);
  void NoteNames(const tEntity& entity);
  void NoteLineType(const tEntity& entity, DrawingNames::Entry& layer);
  void NoteMisread(const tEntity& entity);
  void NoteHeights(const tEntity& entity);
  void NoteRefusedName(const std::string& name);
  DrawingNames::Entry& NameIn(DrawingNames& names, const std::string& name, const char* what);
  void NoteExtents(const tEntity& entity, tEntity::Index last);
  void WritePoints(const tEntity& entity, tEntity::Index last);
  void WriteLines(const tEntity& entity, tEntity::Index last);
  void WritePolyline(const tEntity& entity, tEntity::Index last);
  void WritePolylineForm(const tEntity& entity, bool inSpace);
  void WriteText(const tEntity& entity);
  void WriteCircle(const tEntity& entity);
  void WriteArc(const tEntity& entity);
  void Open(std::string_view type, const tEntity& entity);
  void BuildHead();
  void Vertex(const tEntity& entity, tEntity::Index index, bool second = false);
  void Bulge(const tEntity& entity, std::size_t segment);
  FileWriter& Height(FileWriter& file, double value) const;
  void Text(std::string_view code, std::string_view value);
  void Colour(const tEntity& entity);
  void WriteLineTypeTable();
  void WriteLayerTable();
  const std::string& Printable(const std::string& value);
  std::string_view Encoded(const std::string& text);

  std::string path_;
  TempFile headerFile_, entityFile_;
  FileWriter header_, entities_;
  const Conventions& conventions_;
  cColourTab colours_;
  DrawingNames layers_, lineTypes_;
  std::unordered_map<std::string, LineType> patterns_;  // of line types, by their names in capitals
  const std::string* layer_ = nullptr;                  // of the element at hand, as the drawing holds it
  const std::string* lineType_ = nullptr;               // likewise
  bool byLayer_ = false;                                // the element has the layer's colour by layer
  Extents extents_;
  std::string printable_, encoded_;
  std::string vertexHead_, head_;
  const std::string* headLayer_ = nullptr;  // that the head names; null when it serves no further element
  std::string headLineType_;
};

}  // namespace tesselink
