#include "formats/dxf/DXFOutFilter.h"

#include <filesystem>

#include "core/Errors.h"
#include "core/Paths.h"
#include "core/Report.h"
#include "core/Text.h"

namespace tesselink {
namespace {

namespace fs = std::filesystem;

bool IsMissing(const tEntity& entity, tEntity::Index i) {
  return entity.x(i) == 0 && entity.Y(i) == 0 && entity.Z(i) == 0;
}

}  // namespace

void DXFOutFilter::Create(const std::string& path) {
  const std::string folder = FolderOf(path);
  std::error_code error;
  if (!folder.empty() && !fs::is_directory(folder, error)) {
    throw Error(path + ": could not be created: " + folder + " is no folder that exists");
  }
  path_ = path;
  headerFile_ = TempFile("DXF");
  entityFile_ = TempFile("DXF");
  header_ = FileWriter(headerFile_.TakeHandle(), headerFile_.Path());
  entities_ = FileWriter(entityFile_.TakeHandle(), entityFile_.Path());
  layers_.clear();
  knownLayers_.clear();
  extents_ = {};
  missingVertices_ = 0;
}

WriteResult DXFOutFilter::Write(tEntity& entity) {
  if (entity.LineStyle.empty()) entity.LineStyle = "CONTINUOUS";
  NoteLayer(entity.Layer);
  const tEntity::Index last = entity.PointCount();
  NoteExtents(entity, last);
  switch (entity.bType) {
    case kPoint:
      WritePoints(entity, last);
      break;
    case kLine:
      WriteLines(entity, last);
      break;
    case kPolyline:
      WritePolyline(entity, last);
      break;
    case kText:
      WriteText(entity);
      break;
    case kCircle:
      WriteCircle(entity);
      break;
    default:
      return WriteResult::Skipped;
  }
  return WriteResult::Written;
}

void DXFOutFilter::NoteLayer(const std::string& layer) {
  if (!layers_.empty() && layer == lastLayer_) return;
  lastLayer_ = layer;
  if (knownLayers_.insert(layer).second) layers_.push_back(layer);
}

void DXFOutFilter::NoteExtents(const tEntity& entity, tEntity::Index last) {
  for (tEntity::Index i = 0; i <= last; ++i) {
    if (IsMissing(entity, i)) {
      ++missingVertices_;
    } else {
      extents_.Add(entity.x(i), entity.Y(i), static_cast<double>(entity.Z(i)));
    }
  }
}

// Values are lines of their own: a line end or another control character within one would shift everything behind it.
std::string_view DXFOutFilter::Printable(const std::string& value) {
  const std::string& clean = WithoutControls(value, printable_);
  if (&clean != &value) {
    report().Warn("control characters", path_ + ": control characters in a layer or a text became blanks");
  }
  return clean;
}

void DXFOutFilter::Text(std::string_view code, std::string_view value) { entities_.Line(code).Line(value); }

// The lines that most kinds begin with.
void DXFOutFilter::Open(std::string_view type, const tEntity& entity) {
  Text("  0", type);
  Text("  8", Printable(entity.Layer));
  Text("  6", Printable(entity.LineStyle));
  entities_.Line(" 62").Integer(entity.Colour).EndLine();
}

void DXFOutFilter::Vertex(const tEntity& entity, tEntity::Index index, bool second) {
  entities_.Write(second ? " 11\r\n" : " 10\r\n").Number(entity.x(index));
  entities_.Write(second ? "\r\n 21\r\n" : "\r\n 20\r\n").Number(entity.Y(index));
  entities_.Write(second ? "\r\n 31\r\n" : "\r\n 30\r\n").Single(entity.Z(index)).EndLine();
}

void DXFOutFilter::WritePoints(const tEntity& entity, tEntity::Index last) {
  for (tEntity::Index i = 0; i <= last; ++i) {
    if (IsMissing(entity, i)) continue;
    Open("POINT", entity);
    Vertex(entity, i);
  }
}

void DXFOutFilter::WriteLines(const tEntity& entity, tEntity::Index last) {
  for (tEntity::Index i = 0; i < last; ++i) {
    if (IsMissing(entity, i)) continue;
    Open("LINE", entity);
    Vertex(entity, i);
    Vertex(entity, i + 1, true);
  }
}

void DXFOutFilter::WritePolyline(const tEntity& entity, tEntity::Index last) {
  Open("POLYLINE", entity);
  vertexHead_.assign("  0\r\nVERTEX\r\n  8\r\n").append(Printable(entity.Layer)).append("\r\n");
  for (tEntity::Index i = 0; i <= last; ++i) {
    if (IsMissing(entity, i)) continue;
    entities_.Write(vertexHead_);
    Vertex(entity, i);
  }
  Text("  0", "SEQEND");
}

void DXFOutFilter::WriteText(const tEntity& entity) {
  Open("TEXT", entity);
  Vertex(entity, 0);
  Vertex(entity, 0, true);
  entities_.Line(" 40").Number(entity.TextSize).EndLine();
  Text("  1", Printable(entity.Text));
  entities_.Line(" 50").Number(entity.TextAng).EndLine();
  entities_.Line(" 72").Integer(entity.TextJust & 15).EndLine();
  entities_.Line(" 73").Integer(entity.TextJust & 240).EndLine();
}

void DXFOutFilter::WriteCircle(const tEntity& entity) {
  Text("  0", "CIRCLE");
  entities_.Line(" 62").Integer(entity.Colour).EndLine();
  Text("  8", Printable(entity.Layer));
  Vertex(entity, 0);
  entities_.Line(" 40").Number(static_cast<double>(entity.Rad)).EndLine();
  Text("  6", Printable(entity.LineStyle));
}

void DXFOutFilter::WriteHead() {
  constexpr std::string_view kBeforeExtents =
      "  0\r\nSECTION\r\n  2\r\nHEADER\r\n  9\r\n$ACADVER\r\n  1\r\nAC1009\r\n"
      "  9\r\n$INSBASE\r\n 10\r\n0\r\n 20\r\n0\r\n 30\r\n0\r\n";
  constexpr std::string_view kLineTypes =
      "  0\r\nENDSEC\r\n  0\r\nSECTION\r\n  2\r\nTABLES\r\n"
      "  0\r\nTABLE\r\n  2\r\nLTYPE\r\n 70\r\n1\r\n  0\r\nLTYPE\r\n  2\r\nCONTINUOUS\r\n 70\r\n64\r\n"
      "  3\r\nSolid Line\r\n 72\r\n65\r\n 73\r\n0\r\n 40\r\n0\r\n  0\r\nENDTAB\r\n";
  constexpr std::string_view kAfterLayers =
      "  0\r\nTABLE\r\n  2\r\nSTYLE\r\n 70\r\n0\r\n  0\r\nENDTAB\r\n  0\r\nENDSEC\r\n"
      "  0\r\nSECTION\r\n  2\r\nBLOCKS\r\n  0\r\nENDSEC\r\n"
      "  0\r\nSECTION\r\n  2\r\nENTITIES\r\n";
  const auto corner = [this](std::string_view name, double x, double y, double z) {
    header_.Line("  9").Line(name);
    header_.Line(" 10").Number(x).EndLine().Line(" 20").Number(y).EndLine();
    header_.Line(" 30").Single(static_cast<float>(z)).EndLine();
  };
  header_.Write(kBeforeExtents);
  corner("$EXTMIN", extents_.minX, extents_.minY, extents_.minZ);
  corner("$EXTMAX", extents_.maxX, extents_.maxY, extents_.maxZ);
  header_.Write(kLineTypes);
  WriteLayerTable();
  header_.Write(kAfterLayers);
}

// A layer's colour number is its position in the table.
void DXFOutFilter::WriteLayerTable() {
  header_.Write("  0\r\nTABLE\r\n  2\r\nLAYER\r\n 70\r\n").Integer(static_cast<std::int64_t>(layers_.size())).EndLine();
  std::int64_t position = 0;
  for (const std::string& layer : layers_) {
    header_.Write("  0\r\nLAYER\r\n  2\r\n").Write(Printable(layer)).Write("\r\n 70\r\n64\r\n 62\r\n");
    header_.Integer(++position).Write("\r\n  6\r\nCONTINUOUS\r\n");
  }
  header_.Write("  0\r\nENDTAB\r\n");
}

void DXFOutFilter::Merge(const std::string& headerPath, const std::string& entityPath) {
  RemoveFile(path_);
  FileWriter output(path_);
  try {
    output.Append(headerPath);
    output.Append(entityPath);
    output.Write("  0\r\nENDSEC\r\n  0\r\nEOF\r\n");
    output.Close();
  } catch (...) {
    output.Discard();
    RemoveWritten(path_);
    throw;
  }
}

void DXFOutFilter::Complete() {
  WriteHead();
  header_.Close();
  entities_.Close();
  Merge(headerFile_.Path(), entityFile_.Path());
  if (missingVertices_ > 0) {
    report().Warn("vertices at the origin", path_ + ": vertices at (0, 0, 0) count as missing and were left out: " +
                                                std::to_string(missingVertices_));
  }
  Drop();
}

void DXFOutFilter::Drop() noexcept {
  header_.Discard();
  entities_.Discard();
  headerFile_ = TempFile();
  entityFile_ = TempFile();
}

}  // namespace tesselink
