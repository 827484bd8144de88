// SPDX-License-Identifier: MIT
#include "ui/FieldMemory.h"

#include <QStringList>

#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr const char* kApplication = "Window";
constexpr const char* kSection = "Fields";
constexpr qsizetype kAnswers = 5;

}  // namespace

QString FieldAnswers::Words() const {
  QStringList words;
  for (const std::string* field : {&layer, &text}) {
    if (!field->empty() && *field != FieldSelection::kNone) words += Shown(*field);
  }
  return words.join(", ");
}

FieldMemory::FieldMemory(Settings& settings, const FieldSelection& selection) : settings_(settings) {
  for (const std::string& name : selection.Choices()) key_ += (key_.empty() ? "" : ",") + name;
}

std::optional<FieldAnswers> FieldMemory::Last() const {
  const QStringList lines = QString::fromStdString(settings_.Get(kApplication, kSection, key_, "")).split('\n');
  if (lines.size() != kAnswers) return std::nullopt;
  return FieldAnswers{lines[0].toStdString(),
                      lines[1].toStdString(),
                      {lines[2].toStdString(), lines[3].toStdString(), lines[4].toStdString()}};
}

void FieldMemory::Keep(const FieldSelection& answered) {
  if (answered.ChoosesNothing()) return;
  const LabelLook& look = answered.Look();
  settings_.Set(kApplication, kSection, key_,
                answered.LayerField() + '\n' + answered.TextField() + '\n' + look.height + '\n' + look.angle + '\n' +
                    look.colour);
}

}  // namespace tesselink
