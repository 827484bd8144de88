// Entities that are points: POINT, and INSERT as the place of its block.
#pragma once

namespace tesselink {

class tEntity;
struct EntityContext;

bool MakePoint(EntityContext& context, tEntity& element);

}  // namespace tesselink
