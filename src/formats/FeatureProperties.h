// SPDX-License-Identifier: MIT
// What features say besides where they are, for formats with columns or members of several types.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/run/CarriedFields.h"
#include "core/run/Filters.h"
#include "formats/FeatureGeometry.h"

namespace tesselink {

enum class PropertyType { Text, Integer, Real, Boolean, Date };

/// Nothing, or a value; dates are texts as "2004-01-31". Texts are UTF-8 and hold until the next element.
using PropertyValue = std::variant<std::monostate, bool, std::int64_t, double, std::string_view>;

struct Property {
  std::string name;
  PropertyType type = PropertyType::Text;
};

/// What a format wishes of the properties of its features.
struct PropertyRules {
  std::vector<std::string> reserved = {};  ///< names that no property may have, letter case aside
  std::size_t most = 100'000;              ///< properties
  bool isStrict = false;                   ///< a column of whole numbers takes no others
  /// Kinds lie apart: a property stands for its kind alone, and a label has the attributes of its record, which it
  /// leaves to the shape where both lie together.
  bool areKindsApart = false;
};

/// The attributes of inputs with a table, those of the first one; behind them what the drawing itself says of an
/// element, where layers and texts were asked for or there are no attributes. Values that fit no column of their type
/// are left out and counted as cut values.
class FeatureProperties {
 public:
  FeatureProperties(Report& report, const FilterOptions& options, Losses& losses, PropertyRules rules);

  /// Turns to an input, null for none; the first one makes the properties. `kind` matters where kinds lie apart.
  void Turn(InputFilter* source, FeatureKind kind = FeatureKind::Points);
  /// Forgets all inputs.
  void Reset();
  const std::vector<Property>& All() const { return all_; }
  /// How many of them come from attributes; the drawing's own stand behind.
  std::size_t Carried() const { return carriedCount_; }
  /// The values of an element, one for each property.
  const std::vector<PropertyValue>& Of(const tEntity& entity);

 private:
  struct Own;
  static const std::vector<Own>& Owns();
  void Declare(InputFilter* source, FeatureKind kind);
  AttributeTable* TableOf(InputFilter* source) const;
  PropertyValue Typed(std::string_view text, PropertyType type, std::string& scratch);
  PropertyValue Number(std::string_view text, bool isInteger);

  const FilterOptions& options_;
  Losses& losses_;
  const PropertyRules rules_;
  CarriedFields carried_;
  bool isDeclared_ = false;
  std::vector<Property> all_;
  std::size_t carriedCount_ = 0;
  std::vector<const Own*> own_;
  std::vector<std::string_view> texts_;
  std::vector<std::string> scratch_;  // a text for each property, where it is not the element's own
  std::vector<PropertyValue> values_;
};

}  // namespace tesselink
