// SPDX-License-Identifier: MIT
// MLINE: parallel lines.
#pragma once

namespace tesselink {

class tEntity;
struct EntityContext;

void GatherMultiline(EntityContext& context);
/// A polyline for each of the lines, through the points that the drawing stores.
bool MakeMultiline(EntityContext& context, tEntity& element);

}  // namespace tesselink
