// SPDX-License-Identifier: MIT
// TOLERANCE: the frame of a geometric tolerance, as a text.
#pragma once

namespace tesselink {

class tEntity;
struct EntityContext;

void GatherTolerance(EntityContext& context);
/// A text for each row of the frame, its fields parted by bars.
bool MakeTolerance(EntityContext& context, tEntity& element);

}  // namespace tesselink
