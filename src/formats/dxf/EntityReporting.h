// SPDX-License-Identifier: MIT
// Telling of entities that are not delivered, or not as they are.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "formats/dxf/EntityContext.h"

namespace tesselink {

enum class WarningKind;

/// Of a name in a message.
inline constexpr std::size_t kLongestShownName = 100;

/// A type's name as it may be shown, whatever stands in the file.
std::string ShownType(std::string_view name);

/// Warns of something at a place of the drawing, with the entity's type.
void WarnAt(EntityContext& context, std::int64_t place, WarningKind kind, const std::string& what,
            std::string_view subject = {});
/// Warns of the entity, with its place and type.
void Warn(EntityContext& context, WarningKind kind, const std::string& what, std::string_view subject = {});
/// Notes that a curve was drawn, and warns where it was with fewer vertices than its tolerance takes.
void NoteCurve(EntityContext& context, bool enough);
/// Warns that the entity is skipped, and why. Always false, which is what a function says that makes no element.
bool Damaged(EntityContext& context, const std::string& what);

}  // namespace tesselink
