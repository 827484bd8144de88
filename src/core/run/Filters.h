// SPDX-License-Identifier: MIT
// The contracts of readers and writers. The run knows no format: it reaches every reader and writer by these members
// only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/element/CoordinateSystem.h"
#include "core/element/Extents.h"
#include "core/element/LayerState.h"
#include "core/element/LineType.h"
#include "core/element/tEntity.h"
#include "core/run/ClipWindow.h"
#include "core/run/Dialect.h"
#include "core/run/LayerCodes.h"
#include "core/run/Losses.h"
#include "core/run/Options.h"
#include "core/run/Reduction.h"
#include "core/run/SystemChoice.h"

namespace tesselink {

class AttributeTable;
class FieldSelection;
class FilesRead;
class Interaction;
class Report;
class Settings;

/// What a person chose for the filters of a run.
struct FilterOptions {
  bool layersWanted = true;  ///< false: nobody will match layers, so readers need not look through a file for them
  bool lookAhead = true;     ///< false: begin at once, without what a file tells only behind its elements
  std::string programFolder = {};  ///< where the data files lie that come with the program
  std::string moduleFolder = {};   ///< where its modules lie; see core/io/Module.h
  Dialect dialect = Dialect::Classic;
  OptionValues own = {};                 ///< of the options that formats bring along
  std::optional<double> tolerance = {};  ///< greatest distance of a curve from its chain, in drawing units
  bool attributes = true;                ///< those of inputs go along, where the output holds them

  SystemChoice systems = {};
  std::vector<std::string> layers = {}, withoutLayers = {};  ///< for LayerSelection
  std::optional<ClipBox> clip = {};                          ///< only what touches it is taken
  bool buildAreas = false;                                   ///< make areas of lines; see AreaBuilding
  double snap = 0;                                           ///< how far lines that are to meet may miss each other
  std::vector<std::string> labelLayers = {};  ///< those whose texts label the areas, as of LayerSelection

  /// What holds of curves: the given tolerance, else that of the dialect.
  CurveTolerance Curves() const {
    if (tolerance) return CurveTolerance::Within(*tolerance);
    return dialect == Dialect::Standard ? CurveTolerance::Standard() : CurveTolerance::Classic();
  }
};

/// What a filter is handed when it is created; nothing reaches for a global.
struct FilterContext {
  Interaction& interaction;
  Settings& settings;
  Report& report;
  FilterOptions options = {};
  FilesRead* filesRead = nullptr;  ///< notes what filters find and read besides their input; none: nobody writes
};

/// How a reader delivers layers and texts.
struct TextEncoding {
  bool isUtf8 = false;                ///< else their bytes are those of the file, whatever its code page
  std::u16string_view codePage = {};  ///< of UTF-8: the upper half of the code page that the file names; empty: none
};

/// What the elements of a file are, as far as it can be said ahead.
struct ElementForm {
  /// Where the format has one kind of them.
  enum class Shape : std::uint8_t { Unknown, Points, PointGroups, Chains, Areas } shape = Shape::Unknown;
  bool heights = false, measures = false;  ///< each vertex has a z, an m
  bool isDrawing = false;  ///< they have layers, colours and texts of their own, whatever the attributes are
  bool lineTypes = false;  ///< they may have line types
  bool blocks = false;     ///< they may have handles and stand for blocks
};

/// A reader: delivers the elements of a file one at a time.
class InputFilter {
 public:
  explicit InputFilter(const FilterContext& context) : context_(context) {}
  virtual ~InputFilter() = default;
  InputFilter(const InputFilter&) = delete;
  InputFilter& operator=(const InputFilter&) = delete;

  /// A switch that the run sets false where layers are of no use: no layers are reported, and a shapefile does not ask
  /// for its attribute fields.
  bool Layered = true;
  /// A switch that the run sets true where records of a table arrive whole: what stands for one record is one element,
  /// with the attributes of all, and texts that only repeat them are left out.
  bool WholeRecords = false;

  /// Opens a file, closing the one before, and reads what the format puts first.
  void filename(const std::string& path) { Open(path); }
  /// The path of the open file; empty after a file that could not be read.
  const std::string& filename() const { return filename_; }
  /// The system's handle of the open file; 0 when none is open.
  virtual int FileNumber() const = 0;
  /// The read position, in units of the format.
  virtual std::int64_t Loc() const = 0;
  /// The percentage consumed, 0 to 100.
  virtual double Progress() const = 0;
  /// Whether nothing further can be read.
  virtual bool Eof() const = 0;
  /// Whether the next call would deliver again without consuming input, so that the file never ends.
  virtual bool Stalled() const { return false; }
  /// Fills the entity with the next element. False when the call found none, as at the end of a file.
  bool GetNextEntity(tEntity& entity) { return Next(entity); }
  /// Widens the running extents by every vertex of the entity.
  void UpdateExtents(const tEntity& entity, Extents& running) const { running.Add(entity); }
  /// File and line or record of the element delivered last, as in "wells.asc, line 12".
  virtual std::string Where() const { return filename_; }

  /// How the open file's layers and texts are delivered.
  virtual TextEncoding Encoding() const { return {}; }
  /// The layer names found in the file, in order of first appearance; none while Layered is false.
  const std::vector<std::string>& Layers() const;
  /// The line types that the file defines; none for formats without.
  virtual const std::vector<LineType>& LineTypes() const;
  /// The layers that the file does not simply show.
  virtual std::vector<LayerState> LayerStates() const { return {}; }
  /// The codes that go with the layers, as far as they were matched.
  const std::vector<std::string>& Codes() const { return codes_.cLayerCodes(); }
  /// Takes the outcome of layer-name matching, for this file and those that follow.
  void AssignCodes(std::vector<std::string> names, std::vector<std::string> codes) {
    codes_.Assign(std::move(names), std::move(codes));
  }

  /// Hands over the field selection that several files share; only readers with attribute tables heed it.
  virtual void SetDBFObj(FieldSelection&) {}
  /// The table in whose rows the elements' `Record` counts, and its path; nothing for formats without one. It may know
  /// of no row but that of the element delivered last.
  virtual AttributeTable* Attributes() { return nullptr; }
  virtual std::string AttributesPath() const { return {}; }
  /// Whether the table says of its records all that an output need say: no layers or texts besides.
  virtual bool AttributesAreAll() const { return false; }
  /// What all elements of the open file are.
  virtual ElementForm Form() const { return {}; }
  /// How many records the open file has, the highest value of `Record`; 0 for formats without.
  virtual std::int64_t Records() const { return 0; }
  /// The file beside the input that names its coordinate system; nothing for formats without one.
  virtual std::string ProjectionPath() const { return {}; }

 protected:
  virtual void Open(const std::string& path) = 0;
  virtual bool Next(tEntity& entity) = 0;

  Interaction& interaction() const { return context_.interaction; }
  Report& report() const { return context_.report; }
  const FilterOptions& options() const { return context_.options; }
  /// Notes a file that is read besides the input, so that it is not written; an empty path is none.
  void NoteRead(const std::string& path) const;

  std::string filename_;
  std::vector<std::string> layers_;
  LayerCodes codes_;

 private:
  FilterContext context_;
};

/// What became of an element that a writer was handed.
enum class WriteResult {
  Written,
  Converted,  ///< written as something else, as a circle in a format without circles
  Skipped,    ///< the format cannot hold it
};

/// Whether a writer takes more from an input than its elements.
enum class Carrying { No, InStandard, Yes };

/// A writer. A file is complete only after Release.
class OutputFilter {
 public:
  explicit OutputFilter(const FilterContext& context) : context_(context) {}
  virtual ~OutputFilter() = default;
  OutputFilter(const OutputFilter&) = delete;
  OutputFilter& operator=(const OutputFilter&) = delete;

  /// Creates a file, or where nothing of the format reaches its file yet finds out that it can, and releases the one
  /// before. After an Error none is open.
  void filename(const std::string& path);
  /// The path of the file set last; empty after one that could not be created.
  const std::string& filename() const { return filename_; }
  /// What the writer wishes of coordinate systems; the run fulfils it, or fails.
  virtual SystemWish WishesSystem() const { return SystemWish::None; }
  /// Told, before SourceOpened, of the system that an input's coordinates are in when they arrive here; of one that is
  /// not known where none is.
  virtual void SourceSystem(const CoordinateSystem&) {}
  /// Whether what it writes names that system, or has but one.
  virtual bool NamesSystem() const { return WishesSystem() != SystemWish::None; }
  /// Told of each input once it is open, before its first element, for writers that take more from it than elements.
  virtual void SourceOpened(InputFilter&) {}
  /// Writes one element and may change it on the way. Throws Error when no file is open or the writing fails.
  WriteResult WriteEntity(tEntity& entity);
  /// Completes and closes the file. Throws Error when that fails; calling it again does nothing.
  void Release();
  /// Closes without completing: nothing that was begun stays behind as if it were whole.
  void Abandon() noexcept;
  /// The files that this writer has made.
  virtual std::vector<std::string> Outputs() const { return {filename_}; }
  /// Bytes that have been written so far, to all its files together; 0 for a writer that makes none.
  virtual std::int64_t Size() const { return 0; }
  /// What its elements may hold; the run hands it no others.
  virtual Holding Holds() const { return {}; }
  /// Where the run counts what it gives up on the way to this writer.
  Losses& losses() { return *counted_; }
  /// Counts in those of another writer, which is made of this one and tells them.
  void CountIn(Losses& losses) { counted_ = &losses; }
  /// Whether the attributes of an input and the name of its coordinate system go along. What does not is told.
  virtual Carrying CarriesSource() const { return Carrying::No; }
  /// The same for attributes alone.
  virtual Carrying CarriesAttributes() const { return CarriesSource(); }
  /// Whether each of its elements is a record of a table, so that it wants records whole.
  virtual bool WritesRecords() const { return CarriesSource() == Carrying::Yes; }
  /// How to write the elements that it skipped too, as in "--shape-type each writes a file for each kind"; empty where
  /// it skipped none, or there is no such way.
  virtual std::string HintOfSkipped() const { return {}; }
  /// What it takes of an input's attributes all the same, as in "township, range and section".
  virtual std::string_view TakesFromAttributes() const { return {}; }

 protected:
  virtual void Create(const std::string& path) = 0;
  virtual WriteResult Write(tEntity& entity) = 0;
  virtual void Complete() = 0;
  virtual void Drop() noexcept = 0;
  /// Notes what other programs miss in the file by the classic conventions; told in one line when the file is complete.
  /// The words must outlive the writer.
  void NoteMissed(std::string_view what);
  /// Counts what is given up; told by kind when the file is complete.
  void Lost(WarningKind kind, std::int64_t count = 1) { counted_->Add(kind, count); }
  /// Whether its losses are told by another writer.
  bool CountsInAnother() const { return counted_ != &losses_; }
  /// The source of the error that is raised when no file is open.
  virtual const char* NoFileSource() const { return "WriteEntity"; }
  /// What every writer's destructor does: release, and ignore what goes wrong.
  void ReleaseQuietly() noexcept;

  Interaction& interaction() const { return context_.interaction; }
  Report& report() const { return context_.report; }
  const FilterOptions& options() const { return context_.options; }

 private:
  std::string filename_;
  FilterContext context_;
  bool open_ = false;
  std::vector<std::string_view> missed_;
  Losses losses_;
  Losses* counted_ = &losses_;
};

}  // namespace tesselink
