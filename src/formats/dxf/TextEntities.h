// Entities that are texts: TEXT, ATTRIB and MTEXT.
#pragma once

namespace tesselink {

class tEntity;
struct EntityContext;

bool MakeText(EntityContext& context, tEntity& element);
bool MakeAttrib(EntityContext& context, tEntity& element);
bool MakeMText(EntityContext& context, tEntity& element);

}  // namespace tesselink
