// SPDX-License-Identifier: MIT
// Entities with straight edges between points of their own: LINE, 3DLINE, 3DFACE, SOLID and TRACE.
#pragma once

namespace tesselink {

class tEntity;
struct EntityContext;

bool MakeLine(EntityContext& context, tEntity& element);
bool MakeFace(EntityContext& context, tEntity& element);
/// A SOLID or a TRACE.
bool MakeSolid(EntityContext& context, tEntity& element);

}  // namespace tesselink
