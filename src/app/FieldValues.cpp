// SPDX-License-Identifier: MIT
#include "app/FieldValues.h"

namespace tesselink {

FieldChoice FieldsOf(const OptionValues& values) {
  return {values.Text("layer-field"),
          values.Text("text-field"),
          {values.Text("text-height"), values.Text("text-angle"), values.Text("colour-field")}};
}

void NoteFields(const FieldChoice& choice, OptionValues& values) {
  const auto note = [&](const char* name, const std::string& value) {
    if (!value.empty()) values.Set(name, value);
  };
  note("layer-field", choice.layer);
  note("colour-field", choice.look.colour);
  if (choice.text.empty() || choice.text == FieldSelection::kNone) {
    if (choice.layer.empty() && choice.look.colour.empty())
      values.Set("text-field", std::string(FieldSelection::kNone));
    return;
  }
  note("text-field", choice.text);
  note("text-height", choice.look.height);
  note("text-angle", choice.look.angle);
}

}  // namespace tesselink
