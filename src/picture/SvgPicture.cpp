// SPDX-License-Identifier: MIT
#include "picture/SvgPicture.h"

#include <array>
#include <cmath>

#include "core/element/ColourNames.h"
#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
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
        file_(path) {}

  void Write(const std::string& title) {
    Head(title);
    for (std::size_t layer = 0; layer < picture_.Layers().size(); ++layer) Layer(layer);
    file_.Write("</svg>\n");
    file_.Close();
  }

 private:
  void Head(const std::string& title);
  void Layer(std::size_t layer);
  void Chains(std::size_t layer);
  void Dots(std::size_t layer);
  void Text(const PictureText& text);
  double Height(const PictureText& text) const { return TextHeight(text, box_) * view_.scale; }
  bool IsLegible(const PictureText& text) const {
    return !text.text.empty() && Height(text) >= kLeastText && std::isfinite(text.angle);
  }

  // Thousandths of a unit are enough.
  void Number(double value) { file_.Number(std::round(value * 1000) / 1000); }
  void Place(char command, ScreenPoint at) {
    if (!inPath_) file_.Write("<path vector-effect=\"non-scaling-stroke\" d=\"");
    inPath_ = true;
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
  void EndPath(double width) {
    if (inPath_) {
      file_.Write("\" stroke-width=\"");
      Number(width);
      file_.Write("\"/>\n");
    }
    inPath_ = false;
    onLine_ = 0;
  }

  const Picture& picture_;
  Extents box_;
  PictureView view_;
  ChainTracer tracer_;
  FileWriter file_;
  bool inPath_ = false;
  int onLine_ = 0;  // places of the path
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
  Chains(layer);
  Dots(layer);
  for (const PictureText& text : picture_.Texts()) {
    if (text.layer == layer && IsLegible(text)) Text(text);
  }
  file_.Write("</g>\n");
}

void SvgWriter::Chains(std::size_t layer) {
  for (std::size_t i = 0; i < picture_.MarkCount(); ++i) {
    const PictureMark& mark = picture_.Mark(i);
    if (mark.layer != layer || mark.point || picture_.Vertices(i).size() == 1) continue;
    tracer_.Trace(picture_.Vertices(i), [this](std::span<const ScreenPoint> piece) {
      Place('M', piece[0]);
      for (const ScreenPoint at : piece.subspan(1)) Place('L', at);
    });
  }
  EndPath(kLineWidth);
}

// Chains that are smaller than a cell, and points. Neither is smaller than a cell, so that they cover what the drawing
// covers.
void SvgWriter::Dots(std::size_t layer) {
  const double cell = std::min(picture_.Cell() * view_.scale, kLongerSide);
  for (const bool points : {false, true}) {
    for (std::size_t i = 0; i < picture_.MarkCount(); ++i) {
      const PictureMark& mark = picture_.Mark(i);
      const auto vertices = picture_.Vertices(i);
      if (mark.layer == layer && mark.point == points && vertices.size() == 1) Dot(vertices[0]);
    }
    if (!points) EndPath(std::max(cell, kLineWidth));
  }
  for (const PictureText& text : picture_.Texts()) {
    if (text.layer == layer && !IsLegible(text)) Dot(text.at);
  }
  EndPath(std::max(cell, kPointWidth));
}

void SvgWriter::Text(const PictureText& text) {
  const ScreenPoint at = view_.ToScreen(text.at);
  if (!tracer_.Sees(at)) return;
  file_.Write("<text fill=\"").Write(Hex(Legible(picture_.Layers()[text.layer].colour, kPaper)));
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
