// SPDX-License-Identifier: MIT
// Which fields of an attribute table carry layer and text: the state and the rules behind the field dialog.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/run/AttributeTable.h"

namespace tesselink {

/// How labels look, and shapes with them: for height and angle a number or the name of a field, for the colour of both
/// a field. What is empty stays as it is without.
struct LabelLook {
  std::string height = {}, angle = {}, colour = {};
};

/// What a person chose of the fields; an empty text chooses none.
struct FieldChoice {
  std::string layer = {}, text = {};
  LabelLook look = {};
};

/// Two questions in a row: first the field of the layer, with a look at its values, then the field of the text. The
/// answers are names, so they serve further tables with the same fields.
class FieldSelection {
 public:
  enum class Step { LayerField, TextField, Done };
  /// How the fields are offered: every one by its name in the table, or as `PreparedNames` has them, for files that
  /// have their fields in common.
  enum class Names { AsStored, Prepared };

  /// What becomes of layers when no field is chosen for them: the layer "Unassociated", the layer "0", or, as long as
  /// no field is chosen for anything else, the layers of the drawing that the table tells of.
  enum class WithoutField { Unassociated, Zero, OfDrawing };

  /// The entry of the text list that stands for no text.
  static constexpr std::string_view kNone = "(None)";

  explicit FieldSelection(Names offered = Names::AsStored) : offered_(offered) {}

  /// The names of a table's fields in capitals, without blanks around them, each once.
  static std::vector<std::string> PreparedNames(const AttributeTable& table);

  /// Offers a table's fields. Before the questions were answered they begin anew; afterwards the answers stay and only
  /// the values are those of the new table. The table must outlive the use of Entries.
  void Create(AttributeTable& table);
  /// Whether Create has been called.
  bool Created() const { return table_ != nullptr; }
  Step CurrentStep() const { return step_; }

  /// Where everything goes when no field is chosen for the layer; the reader knows.
  void LayerWithoutField(WithoutField place) { withoutField_ = place; }
  WithoutField LayerWithoutField() const { return withoutField_; }
  /// The names offered, in field order; in the second step followed by "(None)".
  std::vector<std::string> Choices() const;

  /// Chooses the field of the current step, or for the text a template; see LabelText. Empty chooses none.
  void Choose(std::string_view field);
  /// Chooses how labels look, which nobody is asked for.
  void Choose(LabelLook look) { look_ = std::move(look); }
  /// Answers both questions at once.
  void Answer(const FieldChoice& choice);
  /// What was chosen.
  FieldChoice Chosen() const { return {layerField_, textField_, look_}; }
  /// Why what was chosen cannot be had of the table; empty where it can.
  std::string Problem() const;
  /// The field whose values help to choose: that of the current step, and the layer's once all is chosen; empty for
  /// none.
  std::string EntriesField() const;
  /// The distinct values of that field, in order of first appearance; `progress` is called with the number of each
  /// record and may throw to stop.
  std::vector<std::string> Entries(const std::function<void(std::int64_t record)>& progress = {}) const;
  /// The number of the table's records. Throws Error when the table cannot tell.
  std::int64_t Records() const { return table_ == nullptr ? 0 : table_->NumRecs(); }
  /// The continue button: to the next step.
  void Continue();
  /// Only the continue button ends the questions; the close box does not.
  bool MayClose() const { return step_ == Step::Done; }

  const std::string& LayerField() const { return layerField_; }
  const std::string& TextField() const { return textField_; }
  const LabelLook& Look() const { return look_; }
  /// Whether a text field is chosen, neither empty nor "(None)".
  bool TextWanted() const { return !textField_.empty() && textField_ != kNone; }
  /// Whether nothing at all is chosen.
  bool ChoosesNothing() const { return layerField_.empty() && !TextWanted() && look_.colour.empty(); }

 private:
  Names offered_;
  AttributeTable* table_ = nullptr;
  std::vector<std::string> names_;
  Step step_ = Step::LayerField;
  WithoutField withoutField_ = WithoutField::Unassociated;
  std::string layerField_, textField_;
  LabelLook look_;
};

}  // namespace tesselink
