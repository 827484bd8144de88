// SPDX-License-Identifier: MIT
#include "ui/PictureRenderer.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <span>

#include "picture/PictureColours.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr std::size_t kFewVertices = 20'000;
constexpr std::size_t kVerticesAtOnce = 4096;
constexpr int kLeastLetters = 5;
constexpr int kMostLetters = 400;
constexpr double kTolerance = 0.5;
constexpr double kMargin = 4;
// Texts that begin outside may reach in.
constexpr double kMarginOfTexts = 400;

std::int32_t Rgb(const QColor& colour) { return colour.red() | colour.green() << 8 | colour.blue() << 16; }

}  // namespace

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
    : tracer_(PictureView(), kTolerance, kMargin), lettering_(std::make_unique<Lettering>()) {}

PictureRenderer::~PictureRenderer() = default;

void PictureRenderer::Begin(const Picture& picture, const RenderRequest& request) {
  request_ = request;
  box_ = picture.View();
  generation_ = picture.Generation();
  nextMark_ = nextVertex_ = nextText_ = 0;
  cell_ = std::min(picture.Cell() * request.view.scale, request.view.width);
  fine_ = picture.VertexCount() <= kFewVertices;
  colours_.clear();
  tracer_ = ChainTracer(request.view, kTolerance, kMargin);
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

QColor PictureRenderer::ColourOf(const Picture& picture, std::size_t layer) {
  while (colours_.size() <= layer) {
    const std::int32_t colour = Legible(picture.Layers()[colours_.size()].colour, Rgb(request_.paper));
    colours_.emplace_back(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
  }
  return colours_[layer];
}

// As much as is done between two looks at the clock.
void PictureRenderer::DrawSome(const Picture& picture, QPainter& painter) {
  constexpr int kTexts = 16;
  std::size_t vertices = 0;
  while (nextMark_ < picture.MarkCount() && vertices < kVerticesAtOnce) {
    vertices += std::min(picture.Vertices(nextMark_).size(), kVerticesAtOnce);
    DrawMark(picture, painter);
  }
  if (nextMark_ < picture.MarkCount()) return;
  for (int i = 0; i < kTexts && nextText_ < picture.Texts().size(); ++i) DrawText(picture, painter);
}

// Draws a mark, or the next piece of a long one.
void PictureRenderer::DrawMark(const Picture& picture, QPainter& painter) {
  const PictureMark& mark = picture.Mark(nextMark_);
  const auto all = picture.Vertices(nextMark_);
  if (IsHidden(mark.layer)) {
    ++nextMark_;
    nextVertex_ = 0;
    return;
  }
  const QColor colour = ColourOf(picture, mark.layer);
  if (all.size() == 1) {
    const double least = !mark.point ? 1 : fine_ ? 4 : 2;
    DrawDot(painter, all[0], std::max(cell_, least), colour);
    ++nextMark_;
    return;
  }
  if (painter.pen().color() != colour || nextVertex_ == 0) painter.setPen(QPen(colour, fine_ ? 1 : 0));
  const auto some = all.subspan(nextVertex_, std::min(all.size() - nextVertex_, kVerticesAtOnce + 1));
  tracer_.Trace(some, [&](std::span<const ScreenPoint> piece) {
    places_.clear();
    for (const ScreenPoint at : piece) places_.emplace_back(at.x, at.y);
    painter.drawPolyline(places_.data(), static_cast<int>(places_.size()));
  });
  nextVertex_ += kVerticesAtOnce;
  if (nextVertex_ + 1 < all.size()) return;
  nextVertex_ = 0;
  ++nextMark_;
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
  if (IsHidden(text.layer)) return;
  const PictureView& view = request_.view;
  const QColor colour = ColourOf(picture, text.layer);
  const double letters = TextHeight(text, box_) * view.scale * kEmPerTextHeight;
  if (!(letters >= kLeastLetters) || text.text.empty() || !std::isfinite(text.angle)) {
    DrawDot(painter, text.at, 2, colour);
    return;
  }
  const ScreenPoint at = view.ToScreen(text.at);
  const bool isFar = at.x < -kMarginOfTexts || at.x > view.width + kMarginOfTexts || at.y < -kMarginOfTexts ||
                     at.y > view.height + kMarginOfTexts;
  if (isFar) return;
  lettering_->SetSize(static_cast<int>(std::lround(std::min<double>(letters, kMostLetters))));
  const QString shown = Shown(text.text);
  const TextAnchor anchor = AnchorOf(text.justification);
  const QFontMetricsF& metrics = lettering_->metrics;
  painter.save();
  painter.setFont(lettering_->font);
  painter.setPen(colour);
  painter.translate(at.x, at.y);
  painter.rotate(-text.angle);
  painter.drawText(
      QPointF(-metrics.horizontalAdvance(shown) * anchor.across / 2.0, metrics.capHeight() * anchor.down / 2.0), shown);
  painter.restore();
}

}  // namespace tesselink
