// SPDX-License-Identifier: MIT
// Images by what bounds them: IMAGE and WIPEOUT.
#pragma once

namespace tesselink {

class tEntity;
struct EntityContext;

void GatherImage(EntityContext& context);
/// The outline of what is seen of an image.
bool MakeImage(EntityContext& context, tEntity& element);
/// The area that a wipeout hides.
bool MakeWipeout(EntityContext& context, tEntity& element);

}  // namespace tesselink
