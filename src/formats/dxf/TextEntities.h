// Entities that are texts: TEXT, ATTRIB and MTEXT.
#pragma once

namespace tesselink {

class tEntity;
struct EntityContext;

/// Notes what the letters of a TEXT, or a SHAPE, look like and its elements do not say.
void NoteLetters(EntityContext& context);
bool MakeText(EntityContext& context, tEntity& element);
bool MakeAttrib(EntityContext& context, tEntity& element);
/// Where the whole drawing is wanted, a text for each line, in place; the first is made at once.
bool MakeMText(EntityContext& context, tEntity& element);
/// The next line of an MTEXT; false when there is none left.
bool StoreTextLine(EntityContext& context, tEntity& element);

}  // namespace tesselink
