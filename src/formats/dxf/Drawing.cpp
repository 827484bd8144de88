// SPDX-License-Identifier: MIT
#include "formats/dxf/Drawing.h"

#include <cmath>
#include <cstdlib>

#include "core/element/tEntity.h"
#include "core/io/Text.h"
#include "core/run/Report.h"
#include "formats/dxf/GroupScanner.h"

namespace tesselink {

void Drawing::TakeHeaderGroup(const GroupScanner& scanner) {
  if (scanner.Code() == 9) {
    variable_ = scanner.Keyword();
  } else if (variable_ == "$ACADVER" && scanner.Code() == 1) {
    text_.Release(scanner.Keyword());
  } else if (variable_ == "$DWGCODEPAGE" && scanner.Code() == 3) {
    if (!text_.CodePage(scanner.Keyword())) {
      report_.Warn(WarningKind::CodePage, scanner.PlaceText(scanner.Place()) + ": the code page " +
                                              std::string(scanner.Keyword().substr(0, 40)) +
                                              " is not known; its letters are read as UTF-8 or ANSI_1252");
    }
  } else if (variable_ == "$ANGBASE" && scanner.Code() == 50) {
    const double angle = scanner.Number();
    if (!std::isnan(angle)) angleBase_ = angle;
  } else if (variable_ == "$ANGDIR" && scanner.Code() == 70) {
    clockwise_ = scanner.Integer() == 1;
  }
}

void Drawing::TakeTableGroup(const GroupScanner& scanner) {
  if (scanner.Code() == 0) {
    EndEntry();
    table_ = scanner.Keyword() == "LAYER"      ? Table::Layers
             : scanner.Keyword() == "LTYPE"    ? Table::LineTypes
             : scanner.Keyword() == "STYLE"    ? Table::Styles
             : scanner.Keyword() == "DIMSTYLE" ? Table::DimensionStyles
                                               : Table::Other;
    return;
  }
  if (table_ == Table::LineTypes) TakeLineTypeGroup(scanner);
  if (table_ == Table::Styles) TakeStyleGroup(scanner);
  if (table_ == Table::DimensionStyles) dimensions_.TakeGroup(scanner);
  if (table_ != Table::Layers) return;
  switch (scanner.Code()) {
    case 2:
      layerBytes_ = scanner.Text();
      break;
    case 6:
      text_.DecodeName(scanner.Keyword(), read_.lineType);
      break;
    case 62:
      if (const auto colour = scanner.Integer(); colour && *colour >= -255 && *colour <= 255 && *colour != 0) {
        read_.colour = std::abs(*colour);
        read_.isOff = *colour < 0;
      }
      break;
    case 70:
      read_.isFrozen = (scanner.Integer().value_or(0) & 1) != 0;
      read_.isLocked = (scanner.Integer().value_or(0) & 4) != 0;
      break;
    case 370:
      read_.weight = scanner.Integer().value_or(0);
      break;
    case 420:
      read_.trueColour = scanner.Integer();
      break;
    default:
      if (scanner.Code() >= 1000) readData_.Take(scanner);
      break;
  }
}

void Drawing::TakeLineTypeGroup(const GroupScanner& scanner) {
  if (scanner.Code() == 2) text_.DecodeName(scanner.Keyword(), lineType_.name);
  if (scanner.Code() == 3) text_.DecodeName(scanner.Text(), lineType_.description);
  if (const double length = scanner.Number(); scanner.Code() == 49 && std::isfinite(length)) {
    lineType_.dashes.push_back(length);
  }
}

// The font of a drawing that names none is txt, which is also that of the drawings that are written.
void Drawing::TakeStyleGroup(const GroupScanner& scanner) {
  const std::string_view text = scanner.Keyword();
  const double number = scanner.Number();
  if (scanner.Code() == 2) styleName_ = LowerCase(text);
  if (scanner.Code() == 3 && !text.empty() && !EqualsIgnoringCase(text, "txt") &&
      !EqualsIgnoringCase(text, "txt.shx")) {
    styleLost_ |= kLostFont;
  }
  if (scanner.Code() == 41 && number > 0 && number != 1) styleLost_ |= kLostLetterWidth;
  if (scanner.Code() == 50 && std::isfinite(number) && number != 0) styleLost_ |= kLostSlant;
}

std::uint32_t Drawing::LostByStyle(std::string_view name) const {
  if (styles_.empty()) return 0;
  const auto found = styles_.find(LowerCase(name.empty() ? "standard" : name));
  return found == styles_.end() ? 0 : found->second;
}

void Drawing::EndEntry() {
  if (table_ == Table::Styles) styles_.emplace(std::exchange(styleName_, {}), std::exchange(styleLost_, 0U));
  if (table_ == Table::LineTypes && !lineType_.dashes.empty()) lineTypes_.push_back(std::move(lineType_));
  lineType_ = {};
  if (table_ == Table::DimensionStyles) dimensions_.EndEntry();
  if (table_ == Table::Layers && !layerBytes_.empty() && byBytes_.find(layerBytes_) == byBytes_.end()) {
    text_.DecodeName(layerBytes_, read_.name);
    Add(layerBytes_, read_);
  }
  if (table_ == Table::Layers && layerBytes_ == "0" && schema_.empty()) {
    schema_.assign(readData_.Texts().begin(), readData_.Texts().end());
  }
  readData_.Begin();
  table_ = Table::Other;
  layerBytes_.clear();
  read_ = {};
}

const DrawingLayer& Drawing::Add(std::string_view bytes, DrawingLayer layer) {
  layers_.push_back(std::move(layer));
  const DrawingLayer& added = layers_.back();
  byBytes_.emplace(bytes, &added);
  byFoldedName_.emplace(LowerCase(added.name), &added);
  return added;
}

const DrawingLayer& Drawing::LayerOf(std::string_view bytes) {
  if (last_ != nullptr && bytes == lastBytes_) return *last_;
  auto known = byBytes_.find(bytes);
  if (known == byBytes_.end()) {
    text_.DecodeName(bytes, name_);
    const auto folded = byFoldedName_.find(LowerCase(name_));
    if (folded != byFoldedName_.end()) {
      known = byBytes_.emplace(bytes, folded->second).first;
    } else {
      DrawingLayer layer;
      layer.name = name_;
      Add(bytes, std::move(layer));
      known = byBytes_.find(bytes);
    }
  }
  last_ = known->second;
  lastBytes_ = bytes;
  return *last_;
}

std::vector<std::string> Drawing::LayerNames() const {
  std::vector<std::string> names;
  for (const DrawingLayer& layer : layers_) names.push_back(layer.name);
  return names;
}

std::vector<LayerState> Drawing::LayerStates() const {
  std::vector<LayerState> states;
  for (const DrawingLayer& layer : layers_) {
    if (layer.IsHidden() || layer.isLocked) states.push_back(layer);
  }
  return states;
}

}  // namespace tesselink
