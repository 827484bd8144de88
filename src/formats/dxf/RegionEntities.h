// SPDX-License-Identifier: MIT
// Regions: areas whose boundary is ACIS data.
#pragma once

namespace tesselink {

class tEntity;
struct EntityContext;

/// Gathers the data, which is text that is enciphered, line by line.
void GatherRegion(EntityContext& context);
/// A region as one area, its rings of straight and elliptic edges. One whose data lies elsewhere in the drawing, as
/// from AC1027 on, is counted as not read.
bool MakeRegion(EntityContext& context, tEntity& element);

}  // namespace tesselink
