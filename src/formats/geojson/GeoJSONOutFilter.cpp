// SPDX-License-Identifier: MIT
#include "formats/geojson/GeoJSONOutFilter.h"

#include <array>
#include <charconv>
#include <cmath>

namespace tesselink {

GeoJSONOutFilter::GeoJSONOutFilter(const FilterContext& context, GeoJSONLayout layout)
    : FeatureOutFilter(context), layout_(layout), properties_(report(), options(), losses(), {}) {}

void GeoJSONOutFilter::Create(const std::string& path) {
  file_ = FileWriter(path);
  isFirst_ = true;
  form_ = {};
  properties_.Reset();
  if (layout_ == GeoJSONLayout::Collection) file_.Write("{\"type\":\"FeatureCollection\",\"features\":[");
}

void GeoJSONOutFilter::SourceOpened(InputFilter& source) {
  form_ = source.Form();
  properties_.Turn(&source);
}

WriteResult GeoJSONOutFilter::Write(tEntity& entity) {
  if (!TakeGeometry(entity, FeatureKindOf(entity, form_))) return WriteResult::Skipped;
  if (layout_ == GeoJSONLayout::Collection) file_.Write(isFirst_ ? "\n" : ",\n");
  if (layout_ == GeoJSONLayout::Sequence) file_.Write("\x1E");
  isFirst_ = false;
  hasHeights_ = form_.heights || entity.HasHeight();
  file_.Write("{\"type\":\"Feature\",\"properties\":{");
  WriteProperties(entity);
  file_.Write("},\"geometry\":");
  WriteGeometry();
  file_.Write("}");
  if (layout_ != GeoJSONLayout::Collection) file_.Write("\n");
  return WriteResult::Written;
}

// What a drawing does not say of an element is left out; an attribute without a value is null.
void GeoJSONOutFilter::WriteProperties(const tEntity& entity) {
  const std::vector<PropertyValue>& values = properties_.Of(entity);
  const char* separator = "";
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i >= properties_.Carried() && values[i].index() == 0) continue;
    file_.Write(separator);
    separator = ",";
    WriteText(properties_.All()[i].name);
    file_.Write(":");
    WriteValue(values[i]);
  }
}

void GeoJSONOutFilter::WriteValue(const PropertyValue& value) {
  if (const auto* text = std::get_if<std::string_view>(&value)) {
    WriteText(*text);
  } else if (const auto* real = std::get_if<double>(&value)) {
    WriteReal(*real);
  } else if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    file_.Integer(*whole);
  } else if (const auto* truth = std::get_if<bool>(&value)) {
    file_.Write(*truth ? "true" : "false");
  } else {
    file_.Write("null");
  }
}

void GeoJSONOutFilter::WriteGeometry() {
  const auto chains = geometry_.Chains();
  if (chains.empty()) {
    file_.Write("null");
    return;
  }
  const auto begin = [this](std::string_view type) {
    file_.Write("{\"type\":\"").Write(type).Write("\",\"coordinates\":");
  };
  switch (geometry_.Kind()) {
    case FeatureKind::Points:
    case FeatureKind::Texts:
      begin(chains[0].Count() > 1 ? "MultiPoint" : "Point");
      chains[0].Count() > 1 ? WriteChain(chains[0]) : WritePosition(0);
      break;
    case FeatureKind::Lines:
      begin(chains.size() > 1 ? "MultiLineString" : "LineString");
      for (const FeatureChain& chain : chains) {
        if (chains.size() > 1) file_.Write(&chain == &chains.front() ? "[" : ",");
        WriteChain(chain);
      }
      if (chains.size() > 1) file_.Write("]");
      break;
    case FeatureKind::Areas:
      begin(geometry_.Polygons() > 1 ? "MultiPolygon" : "Polygon");
      WritePolygons();
  }
  file_.Write("}");
}

void GeoJSONOutFilter::WritePolygons() {
  const auto chains = geometry_.Chains();
  const bool areSeveral = geometry_.Polygons() > 1;
  if (areSeveral) file_.Write("[");
  for (const FeatureChain& ring : chains) {
    const bool isFirst = &ring == &chains.front();
    if (ring.beginsPolygon) file_.Write(isFirst ? "[" : "],[");
    if (!ring.beginsPolygon) file_.Write(",");
    WriteChain(ring);
  }
  file_.Write(areSeveral ? "]]" : "]");
}

void GeoJSONOutFilter::WriteChain(const FeatureChain& chain) {
  for (tEntity::Index i = 0; i < chain.Count(); ++i) {
    file_.Write(i == 0 ? "[" : ",");
    WritePosition(chain.At(i));
  }
  file_.Write("]");
}

void GeoJSONOutFilter::WritePosition(tEntity::Index at) {
  const tEntity& entity = geometry_.Element();
  file_.Write("[");
  WriteReal(entity.x(at));
  file_.Write(",");
  WriteReal(entity.Y(at));
  if (hasHeights_) {
    file_.Write(",");
    WriteReal(entity.Height(at));
  }
  file_.Write("]");
}

// With an exponent where it would be long without.
void GeoJSONOutFilter::WriteReal(double value) {
  constexpr double kLeastFixed = 1e-7, kMostFixed = 1e17;
  const double size = std::fabs(value);
  if (size == 0) {
    file_.Write("0");
    return;
  }
  std::array<char, 64> text;
  char* const end = text.data() + text.size();
  const bool isFixed = size >= kLeastFixed && size < kMostFixed;
  const auto written = isFixed ? std::to_chars(text.data(), end, value, std::chars_format::fixed)
                               : std::to_chars(text.data(), end, value, std::chars_format::scientific);
  file_.Write({text.data(), static_cast<std::size_t>(written.ptr - text.data())});
}

void GeoJSONOutFilter::WriteText(std::string_view text) {
  constexpr const char* kHex = "0123456789abcdef";
  file_.Write("\"");
  std::size_t from = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte >= ' ' && byte != '"' && byte != '\\') continue;
    file_.Write(text.substr(from, i - from));
    from = i + (byte < ' ' ? 1 : 0);
    const std::array<char, 6> code{'\\', 'u', '0', '0', kHex[byte >> 4], kHex[byte & 15]};
    file_.Write({code.data(), byte < ' ' ? code.size() : 1});
  }
  file_.Write(text.substr(from)).Write("\"");
}

void GeoJSONOutFilter::Complete() {
  if (layout_ == GeoJSONLayout::Collection) file_.Write("\n]}\n");
  file_.Close();
}

void GeoJSONOutFilter::Drop() noexcept {
  const std::string path = file_.Path();
  file_.Discard();
  RemoveWritten(path);
}

}  // namespace tesselink
