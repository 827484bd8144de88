// SPDX-License-Identifier: MIT
#include "ui/OptionsLink.h"

#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QMessageBox>
#include <QToolTip>

#include "app/FieldValues.h"
#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "ui/DialectLine.h"
#include "ui/FileChoice.h"
#include "ui/InputPanel.h"
#include "ui/LostKinds.h"
#include "ui/OptionsPane.h"
#include "ui/OutputPanel.h"
#include "ui/UiText.h"

namespace tesselink {

OptionsLink::OptionsLink(const FormatTable& formats, InputPanel& input, OutputPanel& output, OptionsPane& pane,
                         Settings& settings, Request request)
    : QObject(&pane),
      formats_(formats),
      input_(input),
      output_(output),
      pane_(pane),
      settings_(settings),
      request_(std::move(request)) {
  connect(&input_, &InputPanel::inputChanged, this, &OptionsLink::InputChanged);
  connect(&output_, &OutputPanel::formatChanged, this, &OptionsLink::FormatsChanged);
  connect(&output_, &OutputPanel::dialectChanged, this, &OptionsLink::DialectChanged);
  connect(&pane_, &OptionsPane::changed, this, &OptionsLink::ValuesChanged);
  connect(&pane_, &OptionsPane::copyWanted, this, &OptionsLink::Copy);
  connect(&pane_, &OptionsPane::clipWanted, this, [this](bool wanted) {
    choosesClip_ = wanted;
    ValuesChanged();
    emit clipWanted(wanted);
  });
  pane_.SetDialect(output_.ChosenDialect());
  InputChanged();
}

void OptionsLink::InputChanged() {
  answers_ = {};
  drawing_ = {};
  FormatsChanged();
  pane_.SetDrawing(input_.Paths(), Fields());
  TellReading();
}

void OptionsLink::FormatsChanged() {
  pane_.SetPair(formats_.Input(input_.Format().toStdString()), formats_.Output(output_.Format().toStdString()));
  TellDialect();
  TellLost();
}

void OptionsLink::DialectChanged() {
  pane_.SetDrawing(input_.Paths(), Fields());
  pane_.SetDialect(output_.ChosenDialect());
  TellLost();
}

void OptionsLink::ValuesChanged() {
  TellDialect();
  TellLost();
  OptionValues known = Known();
  known.Set("dialect", output_.ChosenDialect() == Dialect::Standard ? "standard" : "classic");
  if (choosesClip_) known.Set("clip", "");
  if (known.All() == told_.All()) return;
  told_ = known;
  TellReading();
}

void OptionsLink::TellReading() {
  ConversionRequest request = request_();
  if (choosesClip_) request.options.clip.reset();
  const FieldChoice fields = FieldsOf(Known());
  const bool chosen = !fields.layer.empty() || !fields.text.empty() || !fields.look.colour.empty();
  emit readingChanged(request.options, chosen ? std::optional(fields) : std::nullopt);
}

void OptionsLink::TellDialect() {
  const Dialect dialect = output_.ChosenDialect();
  output_.Line().Tell(
      dialect, DialectSentences(formats_.Input(input_.Format().toStdString()),
                                formats_.Output(output_.Format().toStdString()), dialect, pane_.Values(), drawing_));
}

void OptionsLink::TellLost() {
  const ConversionRequest request = request_();
  emit lostChanged(LostKindsOf(formats_.Output(request.OutFormat), request.options, Known(), settings_));
}

// The fields that there are to choose from; none where the table cannot be read, which the run tells.
QStringList OptionsLink::Fields() const {
  const QString path = input_.Path();
  if (path.isEmpty() || !formats_.Input(input_.Format().toStdString()).hasAttributes) return {};
  try {
    const std::string table = PartnerFile(PathOf(path), "DBF");
    return table.empty() ? QStringList() : FieldNames(table, output_.ChosenDialect());
  } catch (const std::exception&) {
    return {};
  }
}

// What the pane says counts before what was answered.
OptionValues OptionsLink::Known() const {
  OptionValues known = answers_;
  const OptionValues given = pane_.Values();
  for (const auto& [name, value] : given.All()) known.Set(name, value);
  return known;
}

void OptionsLink::TakeAnswers(const OptionValues& answers) {
  answers_ = answers;
  ValuesChanged();
}

void OptionsLink::TakeDrawing(const DrawingFacts& drawing, const std::vector<std::string>& layers) {
  drawing_ = drawing;
  pane_.SetLayers(layers);
  TellDialect();
}

void OptionsLink::Copy() {
  const ConversionRequest request = request_();
  if (request.inputs.empty() || request.OutFile.empty()) {
    QMessageBox::information(&pane_, pane_.window()->windowTitle(), tr("Choose the input and the output file first."));
    return;
  }
  if (!pane_.Agrees()) return;
  std::vector<Setting> settings;
  try {
    settings = ReadSettings();
  } catch (const Error&) {  // which the command will tell
  }
  QApplication::clipboard()->setText(QString::fromStdString(CommandText(formats_, request, Known(), settings)));
  const auto options = OptionsOf(formats_.Input(request.InFormat), formats_.Output(request.OutFormat));
  const bool asksCodes =
      std::any_of(options.begin(), options.end(), [](const auto& option) { return option.row.name == "layer-codes"; });
  QString copied = tr("Copied: paste it into a terminal.");
  if (asksCodes && !Known().Has("layer-codes") && !Known().Has("smart-assign")) {
    copied += ' ' + tr("It asks for no entity types of layers, and gives none.");
  }
  QToolTip::showText(QCursor::pos(), copied, &pane_);
}

}  // namespace tesselink
