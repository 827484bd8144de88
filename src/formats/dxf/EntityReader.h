// Drawing entities to elements: for each entity type one small function that makes an element of its groups.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/element/VertexChains.h"
#include "core/element/tEntity.h"
#include "formats/dxf/DrawingColours.h"
#include "formats/dxf/EntityGroups.h"
#include "formats/dxf/ObjectCoordinates.h"

namespace tesselink {

class Drawing;
class GroupScanner;
class Report;
enum class WarningKind;

/// What the reader of entities works with. The scanner, the drawing and the report outlive it.
struct EntitySource {
  GroupScanner& scanner;
  Drawing& drawing;
  Report& report;
  std::string programFolder;  ///< where the colour table lies
  bool paperSpace = false;    ///< deliver paper space too
  bool baselines = false;     ///< a text on its baseline has the placement 0; else 16, as one on its bottom has
};

/// Reads the entities of an ENTITIES section. What it cannot deliver it counts or warns of, with type and place.
class EntityReader {
 public:
  explicit EntityReader(EntitySource source);

  /// Reads the entity that begins at the scanner's group of code 0 and goes on to the next such group, or to the end of
  /// the file. False when the entity is no element, or is not delivered.
  bool Read(tEntity& element);
  /// Delivers the next wire of the mesh that was read last; false when there is none left.
  bool NextWire(tEntity& element);
  bool HasWires() const { return nextWire_ < wires_.size(); }
  /// Whether the file ended within or behind the entity read last.
  bool AtEnd() const { return atEnd_; }
  /// The place where the entity read last begins.
  std::int64_t Place() const { return groups_.Place(); }

 private:
  // How a type is read: its groups are gathered, then the element is made of them. `make` is false when they make none.
  struct Type {
    std::string_view name;
    void (EntityReader::*gather)();
    bool (EntityReader::*make)(tEntity&);
  };
  struct Wire {
    std::size_t end = 0;  // of its vertices in `chain_`
    bool closed = false;
  };
  struct PolyVertex {
    Vertex at;
    double bulge = 0;
    std::int32_t flags = 0;
    std::array<std::int32_t, 4> corners{};
  };
  using Corners = std::array<std::int32_t, 4>;

  static const Type* TypeOf(std::string_view name);

  // Gathering groups.
  bool NextGroup();
  template <typename Own>
  void GatherWith(const Own& own);
  void Gather();
  void GatherSpline();
  void GatherLwPolyline();
  void GatherPolyline();
  PolyVertex GatherVertex();
  double Number() { return groups_.NumberOf(source_.scanner); }

  // Making elements.
  bool MakePoint(tEntity& element);
  bool MakeInsert(tEntity& element);
  bool MakeLine(tEntity& element);
  bool MakeCircle(tEntity& element);
  bool MakeArc(tEntity& element);
  bool MakeEllipse(tEntity& element);
  bool MakeSpline(tEntity& element);
  bool MakeFace(tEntity& element);
  bool MakeSolid(tEntity& element);
  bool MakeLwPolyline(tEntity& element);
  bool MakePolyline(tEntity& element);
  bool MakeText(tEntity& element);
  bool MakeAttrib(tEntity& element);
  bool MakeMText(tEntity& element);
  bool MakeNothing(tEntity& element);

  bool MakeOutline(tEntity& element, const std::array<int, 4>& order, const ObjectCoordinates& plane);
  bool MakePlacedText(tEntity& element, std::int32_t vertical);
  void FinishText(tEntity& element);
  void AddVertex(const PolyVertex& vertex);
  void DropFrame();
  void DrawBulges(bool closed);
  void ToWorld(const ObjectCoordinates& plane);
  bool MakeMesh(tEntity& element, std::int32_t flags);
  bool MakePolyface(tEntity& element);
  bool AddFace(const Corners& corners, const VertexChain& locations);
  void EndWire(bool closed);

  // Storing what was made.
  bool StoreChain(tEntity& element, std::int16_t kind, std::size_t begin, std::size_t end);
  bool StoreChain(tEntity& element, std::int16_t kind) { return StoreChain(element, kind, 0, chain_.size()); }
  bool StorePoint(tEntity& element, std::int16_t kind, const Vertex& at);
  bool StoreRadius(tEntity& element, double radius);
  void SetAttributes(tEntity& element);

  // Reporting what is not delivered.
  void PassOver(std::string_view name);
  bool IsWanted();
  bool Damaged(const std::string& what);
  void Warn(WarningKind kind, std::int64_t place, const std::string& what, std::string_view subject = {});

  EntitySource source_;
  std::string_view type_;
  std::string passedOver_;
  EntityGroups groups_;
  bool insertInPaper_ = false;
  bool atEnd_ = false;

  VertexChain chain_, scratch_;
  std::vector<double> bulges_;       // of the first vertices of the chain; the others have none
  std::vector<std::int32_t> flags_;  // likewise
  std::vector<Corners> faces_;
  std::vector<Wire> wires_;
  std::size_t nextWire_ = 0;
  SplineCurve spline_;

  DrawingColours colours_;
};

}  // namespace tesselink
