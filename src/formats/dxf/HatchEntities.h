// SPDX-License-Identifier: MIT
// Hatches: the areas that their boundaries surround.
#pragma once

namespace tesselink {

class tEntity;
struct EntityContext;

/// Gathers the boundary paths, each as a closed wire in the hatch's plane.
void GatherHatch(EntityContext& context);
/// A hatch as one area: its rings, and which of them are holes by the style that the hatch names. Patterns are lost.
bool MakeHatch(EntityContext& context, tEntity& element);

}  // namespace tesselink
