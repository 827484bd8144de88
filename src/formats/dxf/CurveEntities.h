// SPDX-License-Identifier: MIT
// Entities that are curves: CIRCLE, ARC, ELLIPSE and SPLINE.
#pragma once

namespace tesselink {

class tEntity;
struct EntityContext;

bool MakeCircle(EntityContext& context, tEntity& element);
bool MakeArc(EntityContext& context, tEntity& element);
bool MakeEllipse(EntityContext& context, tEntity& element);

void GatherSpline(EntityContext& context);
bool MakeSpline(EntityContext& context, tEntity& element);

}  // namespace tesselink
