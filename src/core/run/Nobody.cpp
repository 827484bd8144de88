// SPDX-License-Identifier: MIT
#include "core/run/Nobody.h"

#include "core/io/Errors.h"
#include "core/run/FieldSelection.h"

namespace tesselink {

Answer Nobody::ShowMessage(const Message& message) {
  return message.buttons == MessageButtons::Ok ? Answer::Ok : Answer::No;
}

void Nobody::SelectFields(FieldSelection& selection) {
  while (selection.CurrentStep() != FieldSelection::Step::Done) selection.Continue();
}

std::string Nobody::AskText(const TextQuestion& question) {
  throw Error(question.subject + ": was not found, and nobody is there to tell its place");
}

std::string Nobody::Naming(std::string_view option, std::string_view value) const {
  return std::string(option) + (value.empty() ? "" : " ") + std::string(value);
}

}  // namespace tesselink
