// The DXF writer: drawings of release "AC1009" as text, group code and value on alternate lines.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "core/Extents.h"
#include "core/Files.h"
#include "core/Filters.h"

namespace tesselink {

/// Streams the elements into a temporary file, since the header lists layers and extents that are known only at the
/// end; Release writes the header into a second one and joins the two. Nothing reaches the output path before.
///
/// By convention circles become "CIRCLE", arcs are not written, a closed chain is written through its stored vertices,
/// the vertical placement of a text stands in group 73 as 0, 16, 32 or 48, and a vertex at (0, 0, 0) counts as missing.
class DXFOutFilter final : public OutputFilter {
 public:
  explicit DXFOutFilter(const FilterContext& context) : OutputFilter(context) {}
  ~DXFOutFilter() override { ReleaseQuietly(); }

  /// Writes the sections before the entities into the header file.
  void WriteHead();
  /// Builds the output from the bytes of the header file and of the entity file, and appends the closing lines.
  void Merge(const std::string& headerPath, const std::string& entityPath);

 private:
  void Create(const std::string& path) override;
  WriteResult Write(tEntity& entity) override;
  void Complete() override;
  void Drop() noexcept override;

  void NoteLayer(const std::string& layer);
  void NoteExtents(const tEntity& entity, tEntity::Index last);
  void WritePoints(const tEntity& entity, tEntity::Index last);
  void WriteLines(const tEntity& entity, tEntity::Index last);
  void WritePolyline(const tEntity& entity, tEntity::Index last);
  void WriteText(const tEntity& entity);
  void WriteCircle(const tEntity& entity);
  void Open(std::string_view type, const tEntity& entity);
  void Vertex(const tEntity& entity, tEntity::Index index, bool second = false);
  void Text(std::string_view code, std::string_view value);
  void WriteLayerTable();
  std::string_view Printable(const std::string& value);

  std::string path_;
  TempFile headerFile_, entityFile_;
  FileWriter header_, entities_;
  std::vector<std::string> layers_;
  std::unordered_set<std::string> knownLayers_;
  std::string lastLayer_;
  Extents extents_;
  std::string printable_;
  std::string vertexHead_;
  std::int64_t missingVertices_ = 0;
};

}  // namespace tesselink
