// SPDX-License-Identifier: MIT
// Entities that are texts: TEXT, ATTRIB, ATTDEF and MTEXT.
#pragma once

namespace tesselink {

class tEntity;
struct EntityContext;

/// Notes what the letters of a TEXT, or a SHAPE, look like and its elements do not say.
void NoteLetters(EntityContext& context);
bool MakeText(EntityContext& context, tEntity& element);
void GatherAttrib(EntityContext& context);
/// Gathers an attribute or its definition, but for one code.
void GatherAttribute(EntityContext& context, int passed);
bool MakeAttrib(EntityContext& context, tEntity& element);
/// An attribute definition as what it is in the drawing itself: its tag.
bool MakeTag(EntityContext& context, tEntity& element);

void GatherMText(EntityContext& context);
/// Where the whole drawing is wanted, a text for each line, in place; the first is made at once.
bool MakeMText(EntityContext& context, tEntity& element);

}  // namespace tesselink
