// SPDX-License-Identifier: MIT
// Entities that are points: POINT and SHAPE.
#pragma once

namespace tesselink {

class tEntity;
struct EntityContext;

bool MakePoint(EntityContext& context, tEntity& element);
/// A point with a symbol, which is named, turned and has a size as TextSize.
bool MakeShape(EntityContext& context, tEntity& element);

}  // namespace tesselink
