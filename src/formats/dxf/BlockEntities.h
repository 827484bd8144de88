// Entities that stand for a block: INSERT, and what carries a block that draws it; and ATTDEF, a text of blocks.
#pragma once

#include "formats/dxf/EntityContext.h"

namespace tesselink {

bool MakeInsert(EntityContext& context, tEntity& element);
/// DIMENSION and ARC_DIMENSION: their block has the coordinates of the drawing.
bool MakeDimension(EntityContext& context, tEntity& element);
/// ACAD_TABLE: only what places its block is gathered, not what stands in its cells.
void GatherTable(EntityContext& context);
bool MakeTable(EntityContext& context, tEntity& element);
/// Within a block, where it is constant; else its value is that of an ATTRIB.
bool MakeAttributeDefinition(EntityContext& context, tEntity& element);

}  // namespace tesselink
