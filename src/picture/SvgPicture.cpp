// SPDX-License-Identifier: MIT
#include "picture/SvgPicture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

#include "core/element/ColourNames.h"
#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "picture/LinePattern.h"
#include "picture/PictureColours.h"
#include "picture/PictureView.h"

namespace tesselink {
namespace {

constexpr double kLongerSide = 1000;
constexpr double kLeastSide = 100;
constexpr double kMargin = 20;
constexpr double kMarginOfTexts = 90;  // their places alone are known, not how far they reach
constexpr double kTolerance = 0.05;
constexpr double kLineWidth = 1;
constexpr double kPointWidth = 5;
constexpr double kLeastText = 1.5;
constexpr double kMostText = 1e5;
constexpr std::int32_t kPaper = 0xFFFFFF;

// A text within XML, without what XML has no way to hold.
std::string Escaped(const std::string& text) {
  std::string escaped;
  const std::string shown = AsUtf8(text);
  for (std::string_view rest = shown; !rest.empty();) {
    const std::string_view letter = rest.substr(0, Utf8Length(rest));
    rest.remove_prefix(letter.size());
    const bool isXml = letter >= " " && letter != "\xEF\xBF\xBE" && letter != "\xEF\xBF\xBF";
    escaped += letter == "&"    ? "&amp;"
               : letter == "<"  ? "&lt;"
               : letter == ">"  ? "&gt;"
               : letter == "\"" ? "&quot;"
               : isXml          ? letter
                                : " ";
  }
  return escaped;
}

std::string Hex(std::int32_t colour) {
  const auto text = HexOfColour(colour);
  return {text.begin(), text.end()};
}

// As high as the drawing is beside its width, within reason.
PictureView ViewOf(const Extents& box, double margin) {
  const double width = box.maxX / 2 - box.minX / 2, height = box.maxY / 2 - box.minY / 2;
  const double room = kLongerSide - 2 * margin, longer = std::max(width, height);
  double across = kLongerSide, down = kLongerSide;
  if (!box.Empty() && longer > 0) {
    across = std::max(std::round(room * (width / longer)) + 2 * margin, kLeastSide);
    down = std::max(std::round(room * (height / longer)) + 2 * margin, kLeastSide);
  }
  return PictureView::Fit(box, across, down, margin);
}

class SvgWriter {
 public:
  SvgWriter(const Picture& picture, const std::string& path)
      : picture_(picture),
        box_(picture.View()),
        view_(ViewOf(box_, picture.Texts().empty() ? kMargin : kMarginOfTexts)),
        tracer_(view_, kTolerance, kMargin),
        file_(path) {
    // By layer and look, each in the order of the drawing.
    order_.resize(picture.MarkCount());
    std::iota(order_.begin(), order_.end(), std::size_t{0});
    std::stable_sort(order_.begin(), order_.end(), [&](std::size_t a, std::size_t b) {
      return std::tuple(LayerOf(a), picture.Mark(a).style) < std::tuple(LayerOf(b), picture.Mark(b).style);
    });
  }

  void Write(const std::string& title) {
    Head(title);
    for (std::size_t layer = 0; layer < picture_.Layers().size(); ++layer) Layer(layer);
    file_.Write("</svg>\n");
    file_.Close();
  }

 private:
  void Head(const std::string& title);
  void Layer(std::size_t layer);
  void Areas();
  void EndArea();
  void Chains();
  void Dots();
  void TextDots(std::size_t layer);
  void Text(const PictureText& text);
  double Height(const PictureText& text) const { return TextHeight(text, box_) * view_.scale; }
  bool IsLegible(const PictureText& text) const {
    const double height = Height(text);
    return !text.text.empty() && height >= kLeastText && height <= kMostText && std::isfinite(text.angle);
  }

  std::size_t LayerOf(std::size_t mark) const { return picture_.Styles().LayerOf(picture_.Mark(mark).style); }
  std::size_t LayerOf(const PictureText& text) const { return picture_.Styles().LayerOf(text.style); }
  std::string StyleColour() const { return Hex(Legible(picture_.Styles().ColourOf(style_), kPaper)); }

  // Hands over the vertices of those marks of the look at hand that are wanted.
  template <typename Wanted, typename Use>
  void ForMarks(Wanted&& wanted, Use&& use) {
    for (std::size_t i = next_; i < end_; ++i) {
      const auto vertices = picture_.Vertices(order_[i]);
      if (wanted(picture_.Mark(order_[i]), vertices.size())) use(vertices);
    }
  }

  // Thousandths of a unit are enough.
  void Number(double value) { file_.Number(std::round(value * 1000) / 1000); }
  void Place(char command, ScreenPoint at) {
    if (!inPath_) file_.Write("<path vector-effect=\"non-scaling-stroke\" d=\"");
    inPath_ = true;
    Coordinates(command, at);
  }
  void Coordinates(char command, ScreenPoint at) {
    file_.Write(++onLine_ % 8 == 0 ? "\n" : "").Write({&command, 1});
    Number(at.x);
    file_.Write(" ");
    Number(at.y);
  }
  void Dot(PicturePoint place) {
    const ScreenPoint at = view_.ToScreen(place);
    if (!tracer_.Sees(at)) return;
    Place('M', at);
    file_.Write("h0");
  }
  // Ends the path, in the look at hand.
  void EndPath(double width, bool dashed = false) {
    if (inPath_) {
      file_.Write("\" stroke-width=\"");
      Number(width);
      const PictureStyle& style = picture_.Styles()[style_];
      const std::int32_t ofLayer = picture_.Layers()[style.layer].colour;
      if (style.coloured && style.colour != ofLayer) file_.Write("\" stroke=\"").Write(StyleColour());
      if (dashed) Dashes();
      file_.Write("\"/>\n");
    }
    inPath_ = false;
    onLine_ = 0;
  }
  void Dashes() {
    const char* before = "\" stroke-linecap=\"butt\" stroke-dasharray=\"";
    for (const double part : DashesOnScreen(picture_.Styles().LineTypeOf(style_), view_.scale)) {
      file_.Write(std::exchange(before, " "));
      Number(part);
    }
  }

  const Picture& picture_;
  Extents box_;
  PictureView view_;
  ChainTracer tracer_;
  FileWriter file_;
  bool inPath_ = false;
  int onLine_ = 0;                  // places of the path
  std::vector<std::size_t> order_;  // of the marks
  std::size_t next_ = 0, end_ = 0;  // in that order, the marks of one look
  std::size_t style_ = 0;           // that look
};

void SvgWriter::Head(const std::string& title) {
  file_.Write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"");
  file_.Number(view_.width).Write("\" height=\"").Number(view_.height).Write("\" viewBox=\"0 0 ");
  file_.Number(view_.width).Write(" ").Number(view_.height);
  file_.Write("\" role=\"img\" aria-labelledby=\"title desc\">\n<title id=\"title\">").Write(Escaped(title));
  file_.Write("</title>\n<desc id=\"desc\">").Write(Counted(picture_.Elements(), "element"));
  if (const Extents& box = picture_.Bounds(); !box.Empty()) {
    file_.Write("; x ").Number(box.minX).Write(" to ").Number(box.maxX);
    file_.Write(", y ").Number(box.minY).Write(" to ").Number(box.maxY);
  }
  file_.Write("</desc>\n<rect width=\"100%\" height=\"100%\" fill=\"").Write(Hex(kPaper)).Write("\"/>\n");
}

void SvgWriter::Layer(std::size_t layer) {
  const PictureLayer& own = picture_.Layers()[layer];
  const std::string name = own.name.empty() ? "(no name)" : Escaped(own.name);
  file_.Write("<g id=\"layer-").Integer(static_cast<std::int64_t>(layer) + 1).Write("\" aria-label=\"").Write(name);
  file_.Write("\" fill=\"none\" stroke=\"").Write(Hex(Legible(own.colour, kPaper)));
  file_.Write("\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n<title>").Write(name);
  file_.Write(" (").Write(Counted(own.elements, "element")).Write(")</title>\n");
  for (; next_ < order_.size() && LayerOf(order_[next_]) == layer; next_ = end_) {
    style_ = picture_.Mark(order_[next_]).style;
    end_ = next_;
    while (end_ < order_.size() && picture_.Mark(order_[end_]).style == style_) ++end_;
    Areas();
    Chains();
    Dots();
  }
  TextDots(layer);
  for (const PictureText& text : picture_.Texts()) {
    if (LayerOf(text) == layer && IsLegible(text)) Text(text);
  }
  file_.Write("</g>\n");
}

// Each area by itself, so that what lies over another darkens it.
void SvgWriter::Areas() {
  for (std::size_t i = next_; i < end_;) {
    const std::uint32_t element = picture_.Mark(order_[i]).element;
    bool begun = false;
    for (; i < end_ && picture_.Mark(order_[i]).element == element; ++i) {
      if (picture_.Mark(order_[i]).kind != MarkKind::Ring) continue;
      const auto ring = tracer_.Ring(picture_.Vertices(order_[i]));
      for (std::size_t v = 0; v < ring.size(); ++v) {
        if (!std::exchange(begun, true)) file_.Write("<path d=\"");
        Coordinates(v == 0 ? 'M' : 'L', ring[v]);
      }
      if (!ring.empty()) file_.Write("Z");
    }
    if (begun) EndArea();
  }
}

void SvgWriter::EndArea() {
  file_.Write("\" stroke=\"none\" fill-rule=\"evenodd\" fill=\"").Write(StyleColour());
  file_.Write("\" fill-opacity=\"");
  Number(kAreaOpacity);
  file_.Write("\"/>\n");
  onLine_ = 0;
}

void SvgWriter::Chains() {
  ForMarks([](const PictureMark& mark, std::size_t vertices) { return mark.kind != MarkKind::Point && vertices > 1; },
           [this](std::span<const PicturePoint> chain) {
             tracer_.Trace(chain, [this](std::span<const ScreenPoint> piece) {
               Place('M', piece[0]);
               for (const ScreenPoint at : piece.subspan(1)) Place('L', at);
             });
           });
  EndPath(kLineWidth, true);
}

// Chains that are smaller than a cell, and points. Neither is smaller than a cell, so that they cover what the drawing
// covers.
void SvgWriter::Dots() {
  const double cell = std::min(picture_.Cell() * view_.scale, kLongerSide);
  for (const bool points : {false, true}) {
    const auto wanted = [points](const PictureMark& mark, std::size_t vertices) {
      return (mark.kind == MarkKind::Point) == points && vertices == 1;
    };
    ForMarks(wanted, [this](std::span<const PicturePoint> places) { Dot(places[0]); });
    EndPath(std::max(cell, points ? kPointWidth : kLineWidth));
  }
}

// Texts that are too small to be read.
void SvgWriter::TextDots(std::size_t layer) {
  const double cell = std::min(picture_.Cell() * view_.scale, kLongerSide);
  std::vector<const PictureText*> small;
  for (const PictureText& text : picture_.Texts()) {
    if (LayerOf(text) == layer && !IsLegible(text)) small.push_back(&text);
  }
  std::stable_sort(small.begin(), small.end(),
                   [](const PictureText* a, const PictureText* b) { return a->style < b->style; });
  for (std::size_t i = 0; i < small.size(); ++i) {
    style_ = small[i]->style;
    Dot(small[i]->at);
    if (i + 1 == small.size() || small[i + 1]->style != style_) EndPath(std::max(cell, kPointWidth));
  }
}

void SvgWriter::Text(const PictureText& text) {
  const ScreenPoint at = view_.ToScreen(text.at);
  if (!tracer_.Sees(at)) return;
  style_ = text.style;
  file_.Write("<text fill=\"").Write(StyleColour());
  file_.Write("\" stroke=\"none\" font-family=\"sans-serif\" font-size=\"");
  Number(Height(text) * kEmPerTextHeight);
  const TextAnchor anchor = AnchorOf(text.justification);
  constexpr std::array<std::string_view, 3> kAnchors{"start", "middle", "end"};
  file_.Write("\" text-anchor=\"").Write(kAnchors[static_cast<std::size_t>(anchor.across)]);
  file_.Write("\" dy=\"");
  Number(anchor.down / 2.0 / kEmPerTextHeight);
  file_.Write("em\" transform=\"translate(");
  Number(at.x);
  file_.Write(" ");
  Number(at.y);
  file_.Write(") rotate(");
  Number(-text.angle);
  file_.Write(")\">").Write(Escaped(text.text)).Write("</text>\n");
}

}  // namespace

void WriteSvg(const Picture& picture, const std::string& title, const std::string& path) {
  try {
    SvgWriter(picture, path).Write(title);
  } catch (const Error&) {
    RemoveWritten(path);
    throw;
  }
}

}  // namespace tesselink
