// SPDX-License-Identifier: MIT
#include "picture/ElementLookup.h"

#include "core/io/Errors.h"
#include "core/run/AttributeTable.h"

namespace tesselink {
namespace {

void TakeAttributes(InputFilter& reader, ElementFacts& facts) {
  AttributeTable* const table = facts.record > 0 ? reader.Attributes() : nullptr;
  if (table == nullptr || facts.record > table->NumRecs()) return;
  for (int field = 0; field <= table->NumFields(); ++field) {
    facts.attributes.emplace_back(table->GetFieldName(field), table->GetFieldData(field, facts.record - 1));
  }
}

}  // namespace

void ElementLookup::Take(InputFilter& reader, const tEntity& entity, std::uint32_t number) {
  if (number != number_) return;
  ElementFacts facts;
  facts.where = reader.Where();
  facts.kind = entity.bType;
  facts.isArea = entity.IsArea || (entity.Lost & kLostArea) != 0;
  facts.isClosed = entity.Closed;
  facts.layer = entity.Layer;
  facts.lineType = entity.LineStyle;
  facts.text = entity.Text;
  facts.code = entity.CDFCode;
  facts.coloured = entity.RGB != 0 || entity.IsBlack;
  facts.colour = entity.RGB & 0xFFFFFF;
  facts.size = IsCurve(entity.bType) ? entity.Curve().radius : entity.TextSize;
  facts.vertices = entity.PointCount() + 1;
  facts.record = entity.Record;
  TakeAttributes(reader, facts);
  found_ = std::move(facts);
  End();
}

}  // namespace tesselink
