// SPDX-License-Identifier: MIT
#include "ui/PictureRenderer.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <span>

#include "picture/LinePattern.h"
#include "picture/PictureColours.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr std::size_t kFewVertices = 20'000;
constexpr std::size_t kVerticesAtOnce = 4096;
constexpr int kLeastLetters = 5;
constexpr double kLargestFont = 400;
constexpr double kMostLetters = 20'000;
// A vertex of a dashed line takes as long as so many of a solid one.
constexpr std::size_t kCostOfDashes = 16;
constexpr double kHaloWidth = 6;
constexpr float kHaloOpacity = 0.45F;
constexpr double kTolerance = 0.5;
constexpr double kDrawnMargin = 4;

std::int32_t Rgb(const QColor& colour) { return colour.red() | colour.green() << 8 | colour.blue() << 16; }

}  // namespace

// Seen on light and dark paper, and by people who confuse red and green.
QColor LostColour() { return {230, 140, 0}; }

// Most texts of a drawing have one of a few sizes.
struct PictureRenderer::Lettering {
  int size = 0;
  QFont font;
  QFontMetricsF metrics{QFont()};

  void SetSize(int pixels) {
    if (size == pixels) return;
    size = pixels;
    font.setPixelSize(pixels);
    metrics = QFontMetricsF(font);
  }
};

PictureRenderer::PictureRenderer()
    : tracer_(PictureView(), kTolerance, kDrawnMargin), lettering_(std::make_unique<Lettering>()) {}

PictureRenderer::~PictureRenderer() = default;

void PictureRenderer::Begin(const Picture& picture, const RenderRequest& request) {
  request_ = request;
  box_ = picture.View();
  generation_ = picture.Generation();
  nextMark_ = nextVertex_ = nextText_ = filledTo_ = 0;
  cell_ = std::min(picture.Cell() * request.view.scale, request.view.width);
  fine_ = picture.VertexCount() <= kFewVertices;
  looks_.clear();
  tracer_ = ChainTracer(request.view, kTolerance, kDrawnMargin);
  const QSize size(static_cast<int>(std::ceil(request.view.width * request.pixelRatio)),
                   static_cast<int>(std::ceil(request.view.height * request.pixelRatio)));
  if (image_.size() != size) image_ = QImage(size, QImage::Format_RGB32);
  image_.setDevicePixelRatio(request.pixelRatio);
  image_.fill(request.paper);
}

bool PictureRenderer::Draw(const Picture& picture, std::chrono::milliseconds time) {
  const auto until = std::chrono::steady_clock::now() + time;
  QPainter painter(&image_);
  painter.setRenderHint(QPainter::Antialiasing, fine_);
  while (!Complete(picture) && std::chrono::steady_clock::now() < until) DrawSome(picture, painter);
  return Complete(picture);
}

const PictureRenderer::Look& PictureRenderer::LookOf(const Picture& picture, std::size_t style) {
  while (looks_.size() <= style) {
    const PictureStyle& own = picture.Styles()[looks_.size()];
    const std::int32_t colour = Legible(picture.Styles().ColourOf(looks_.size()), Rgb(request_.paper));
    Look look;
    look.colour = QColor(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
    look.hidden = own.layer < request_.hiddenLayers.size() && request_.hiddenLayers[own.layer];
    look.dashes = DashesOnScreen(picture.Styles().LineTypeOf(looks_.size()), request_.view.scale);
    const bool ownColour = own.coloured && own.colour != picture.Layers()[own.layer].colour;
    look.lost = request_.lost & ((look.dashes.empty() ? 0U : kLosesLineTypes) | (ownColour ? kLosesColours : 0U));
    looks_.push_back(std::move(look));
  }
  return looks_[style];
}

QPen PictureRenderer::PenOf(const Look& look) const {
  QPen pen(look.colour, fine_ ? 1 : 0);
  if (look.dashes.empty()) return pen;
  pen.setCapStyle(Qt::FlatCap);
  pen.setDashPattern(QList<qreal>(look.dashes.begin(), look.dashes.end()));
  return pen;
}

// As much as is done between two looks at the clock.
void PictureRenderer::DrawSome(const Picture& picture, QPainter& painter) {
  constexpr int kTexts = 16;
  std::size_t vertices = 0;
  while (nextMark_ < picture.MarkCount() && vertices < kVerticesAtOnce) {
    const std::size_t mark = nextMark_;
    const bool dashed = !LookOf(picture, picture.Mark(mark).style).dashes.empty();
    vertices += std::min(picture.Vertices(mark).size(), kVerticesAtOnce) * (dashed ? kCostOfDashes : 1);
    if (nextMark_ >= filledTo_ && picture.Mark(mark).kind == MarkKind::Ring && DrawArea(picture, painter)) return;
    DrawMark(picture, painter);
  }
  if (nextMark_ < picture.MarkCount()) return;
  for (int i = 0; i < kTexts && nextText_ < picture.Texts().size(); ++i) DrawText(picture, painter);
}

// Fills what the next rings, those of one area, bound; their lines come behind. Whether that was much.
bool PictureRenderer::DrawArea(const Picture& picture, QPainter& painter) {
  const PictureMark& first = picture.Mark(nextMark_);
  const Look& look = LookOf(picture, first.style);
  QPainterPath path;
  std::size_t vertices = 0;
  for (filledTo_ = nextMark_; filledTo_ < picture.MarkCount(); ++filledTo_) {
    const PictureMark& mark = picture.Mark(filledTo_);
    if (mark.element != first.element || mark.kind == MarkKind::Point) break;
    if (mark.kind != MarkKind::Ring || look.hidden) continue;
    vertices += picture.Vertices(filledTo_).size();
    const auto ring = tracer_.Ring(picture.Vertices(filledTo_));
    if (ring.size() < 3) continue;
    QPolygonF polygon;
    polygon.reserve(static_cast<qsizetype>(ring.size()));
    for (const ScreenPoint at : ring) polygon.append(QPointF(at.x, at.y));
    path.addPolygon(polygon);
    path.closeSubpath();
  }
  if (path.isEmpty()) return vertices >= kVerticesAtOnce;
  QColor colour = (request_.lost & kLosesAreas) != 0 ? LostColour() : look.colour;
  colour.setAlphaF(static_cast<float>(kAreaOpacity));
  path.setFillRule(Qt::OddEvenFill);
  painter.fillPath(path, colour);
  return vertices >= kVerticesAtOnce;
}

// Draws a mark, or the next piece of a long one.
void PictureRenderer::DrawMark(const Picture& picture, QPainter& painter) {
  const PictureMark& mark = picture.Mark(nextMark_);
  const auto all = picture.Vertices(nextMark_);
  const Look& look = LookOf(picture, mark.style);
  const bool isPoint = mark.kind == MarkKind::Point;
  const bool isLost = look.lost != 0 || (request_.lost & (isPoint ? kLosesPoints : kLosesLines)) != 0;
  if (all.size() == 1 && !look.hidden) {
    if (isLost) DrawHalo(painter, all[0]);
    const double least = !isPoint ? 1 : fine_ ? 4 : 2;
    DrawDot(painter, all[0], std::max(cell_, least), look.colour);
  }
  if (all.size() == 1 || look.hidden) {
    ++nextMark_;
    nextVertex_ = 0;
    return;
  }
  const std::size_t most = look.dashes.empty() ? kVerticesAtOnce : kVerticesAtOnce / kCostOfDashes;
  DrawChain(all.subspan(nextVertex_, std::min(all.size() - nextVertex_, most + 1)), look, isLost, painter);
  nextVertex_ += most;
  if (nextVertex_ + 1 < all.size()) return;
  nextVertex_ = 0;
  ++nextMark_;
}

void PictureRenderer::DrawChain(std::span<const PicturePoint> some, const Look& look, bool isLost, QPainter& painter) {
  tracer_.Trace(some, [&](std::span<const ScreenPoint> piece) {
    places_.clear();
    for (const ScreenPoint at : piece) places_.emplace_back(at.x, at.y);
    const int count = static_cast<int>(places_.size());
    if (isLost) {
      QColor colour = LostColour();
      colour.setAlphaF(kHaloOpacity);
      painter.setPen(QPen(colour, kHaloWidth, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
      painter.drawPolyline(places_.data(), count);
    }
    if (isLost || !look.dashes.empty() || painter.pen().style() != Qt::SolidLine ||
        painter.pen().color() != look.colour) {
      painter.setPen(PenOf(look));
    }
    painter.drawPolyline(places_.data(), count);
  });
}

void PictureRenderer::DrawHalo(QPainter& painter, PicturePoint place) {
  QColor colour = LostColour();
  colour.setAlphaF(kHaloOpacity);
  DrawDot(painter, place, std::max(cell_, 4.0) + kHaloWidth, colour);
}

void PictureRenderer::DrawDot(QPainter& painter, PicturePoint place, double width, const QColor& colour) {
  const ScreenPoint at = request_.view.ToScreen(place);
  if (!tracer_.Sees(at)) return;
  if (fine_) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(QPointF(at.x, at.y), width / 2, width / 2);
  } else {
    painter.fillRect(QRectF(at.x - width / 2, at.y - width / 2, width, width), colour);
  }
}

void PictureRenderer::DrawText(const Picture& picture, QPainter& painter) {
  const PictureText& text = picture.Texts()[nextText_++];
  const Look& look = LookOf(picture, text.style);
  if (look.hidden) return;
  const bool isLost = (request_.lost & kLosesTexts) != 0 || (look.lost & kLosesColours) != 0;
  const PictureView& view = request_.view;
  const double letters = TextHeight(text, box_) * view.scale * kEmPerTextHeight;
  const bool isLegible = letters >= kLeastLetters && letters <= kMostLetters;
  if (!isLegible || text.text.empty() || !std::isfinite(text.angle)) {
    if (isLost) DrawHalo(painter, text.at);
    DrawDot(painter, text.at, 2, look.colour);
    return;
  }
  const ScreenPoint at = view.ToScreen(text.at);
  const double reach = letters * static_cast<double>(text.text.size() + 1);
  const bool isFar = at.x < -reach || at.x > view.width + reach || at.y < -reach || at.y > view.height + reach;
  if (!isFar) DrawLetters(text, at, letters, look.colour, isLost, painter);
}

// Beyond a size that is drawn well, letters are drawn smaller and stretched.
void PictureRenderer::DrawLetters(const PictureText& text, ScreenPoint at, double letters, const QColor& colour,
                                  bool isLost, QPainter& painter) {
  lettering_->SetSize(static_cast<int>(std::lround(std::min<double>(letters, kLargestFont))));
  const double stretched = letters / kLargestFont;
  const QString shown = Shown(text.text);
  const TextAnchor anchor = AnchorOf(text.justification);
  const QFontMetricsF& metrics = lettering_->metrics;
  const double width = metrics.horizontalAdvance(shown), height = metrics.capHeight();
  painter.save();
  painter.setFont(lettering_->font);
  painter.setPen(colour);
  painter.translate(at.x, at.y);
  painter.rotate(-text.angle);
  if (stretched > 1) painter.scale(stretched, stretched);
  const QPointF begin(-width * anchor.across / 2.0, height * anchor.down / 2.0);
  if (isLost) {
    QColor halo = LostColour();
    halo.setAlphaF(kHaloOpacity);
    painter.fillRect(QRectF(begin.x() - 2, begin.y() - height - 2, width + 4, height + 4), halo);
  }
  painter.drawText(begin, shown);
  painter.restore();
}

}  // namespace tesselink
