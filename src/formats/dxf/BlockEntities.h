// SPDX-License-Identifier: MIT
// Entities that stand for a block: INSERT, and what carries a block that draws it; and ATTDEF, a text of blocks.
#pragma once

#include "formats/dxf/EntityContext.h"

namespace tesselink {

bool MakeInsert(EntityContext& context, tEntity& element);
/// DIMENSION and ARC_DIMENSION: their block has the coordinates of the drawing.
bool MakeDimension(EntityContext& context, tEntity& element);
/// Draws the block whose record has a handle.
void DrawBlockOfRecord(EntityContext& context, std::uint64_t record, const BlockPlace& at);
/// ACAD_TABLE: only what places its block is gathered, not what stands in its cells.
void GatherTable(EntityContext& context);
bool MakeTable(EntityContext& context, tEntity& element);
/// All but what it asks for when it is inserted.
void GatherAttributeDefinition(EntityContext& context);
/// Within a block its value, where it is constant; else that is the value of an ATTRIB. In the drawing itself its tag.
bool MakeAttributeDefinition(EntityContext& context, tEntity& element);

}  // namespace tesselink
