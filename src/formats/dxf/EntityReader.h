// Drawing entities to elements: for each entity type one small function that makes an element of its groups.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/element/tEntity.h"
#include "formats/dxf/EntityContext.h"
#include "formats/dxf/ObjectCoordinates.h"

namespace tesselink {

/// Reads the entities of an ENTITIES section. What it cannot deliver it counts or warns of, with type and place.
class EntityReader {
 public:
  explicit EntityReader(EntitySource source);

  /// Reads the entity that begins at the scanner's group of code 0 and goes on to the next such group, or to the end of
  /// the file. False when the entity is no element, or is not delivered.
  bool Read(tEntity& element);
  /// Delivers the next wire of the mesh that was read last; false when there is none left.
  bool NextWire(tEntity& element);
  bool HasWires() const { return context_.wires.HasNext(); }
  /// Whether the file ended within or behind the entity read last.
  bool AtEnd() const { return context_.atEnd; }
  /// The place where the entity read last begins.
  std::int64_t Place() const { return context_.groups.Place(); }

 private:
  // How a type is read: its groups are gathered, then the element is made of them. `make` is false when they make none.
  struct Type {
    std::string_view name;
    void (EntityReader::*gather)();
    bool (EntityReader::*make)(tEntity&);
  };
  struct PolyVertex {
    Vertex at;
    double bulge = 0;
    std::int32_t flags = 0;
    std::array<std::int32_t, 4> corners{};
  };
  using Corners = EntityContext::Corners;

  static const Type* TypeOf(std::string_view name);

  // Gathering groups.
  void Gather();
  void GatherLwPolyline();
  void GatherPolyline();
  PolyVertex GatherVertex();

  // Making elements.
  bool MakeLwPolyline(tEntity& element);
  bool MakePolyline(tEntity& element);
  bool MakeNothing(tEntity& element);

  void AddVertex(const PolyVertex& vertex);
  void DropFrame();
  void DrawBulges(bool closed);
  bool MakeMesh(tEntity& element, std::int32_t flags);
  bool MakePolyface(tEntity& element);
  bool AddFace(const Corners& corners, const VertexChain& locations);

  void PassOver(std::string_view name);
  bool IsWanted();

  EntityContext context_;
  bool insertInPaper_ = false;
};

}  // namespace tesselink
