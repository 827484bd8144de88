// SPDX-License-Identifier: MIT
// Entities with a list of vertices: LWPOLYLINE, and POLYLINE, which may be a mesh or a polyface as well.
#pragma once

namespace tesselink {

class tEntity;
struct EntityContext;

void GatherLwPolyline(EntityContext& context);
bool MakeLwPolyline(EntityContext& context, tEntity& element);

void GatherPolyline(EntityContext& context);
bool MakePolyline(EntityContext& context, tEntity& element);

}  // namespace tesselink
