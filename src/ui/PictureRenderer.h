// SPDX-License-Identifier: MIT
// Draws a picture into an image a little at a time.
#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QString>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "picture/Picture.h"
#include "picture/PictureView.h"

class QPainter;

namespace tesselink {

/// What an image shows, and how.
struct RenderRequest {
  PictureView view;
  double pixelRatio = 1;           ///< device pixels to a pixel of the view
  QColor paper;                    ///< the background, against which colours are made legible
  std::vector<bool> hiddenLayers;  ///< by number; those behind the last are shown

  bool operator==(const RenderRequest&) const = default;
};

class PictureRenderer {
 public:
  PictureRenderer();
  ~PictureRenderer();
  PictureRenderer(const PictureRenderer&) = delete;
  PictureRenderer& operator=(const PictureRenderer&) = delete;

  /// Begins anew with an empty image.
  void Begin(const Picture& picture, const RenderRequest& request);
  /// Makes the image one of no picture.
  void Forget() { generation_ = -1; }
  /// Draws on until the time is over; true when everything is drawn that the picture holds by now. More of it is added
  /// to the image by further calls, as long as `Fits` says so.
  bool Draw(const Picture& picture, std::chrono::milliseconds time);
  /// Whether the image is of this request and of marks that are still what they were.
  bool Fits(const Picture& picture, const RenderRequest& request) const {
    return request_ == request && generation_ == picture.Generation();
  }
  bool Complete(const Picture& picture) const {
    return nextMark_ == picture.MarkCount() && nextText_ == picture.Texts().size();
  }

  const QImage& Image() const { return image_; }
  const PictureView& View() const { return request_.view; }

 private:
  struct Lettering;

  bool IsHidden(std::size_t layer) const {
    return layer < request_.hiddenLayers.size() && request_.hiddenLayers[layer];
  }
  QColor ColourOf(const Picture& picture, std::size_t layer);
  void DrawSome(const Picture& picture, QPainter& painter);
  void DrawMark(const Picture& picture, QPainter& painter);
  void DrawDot(QPainter& painter, PicturePoint place, double width, const QColor& colour);
  void DrawText(const Picture& picture, QPainter& painter);

  RenderRequest request_;
  Extents box_;  // of the picture, when the image was begun
  std::int64_t generation_ = -1;
  std::size_t nextMark_ = 0, nextVertex_ = 0, nextText_ = 0;
  double cell_ = 0;   // in pixels
  bool fine_ = true;  // few enough to be drawn with smooth edges
  QImage image_;
  ChainTracer tracer_;
  std::vector<QColor> colours_;
  std::vector<QPointF> places_;
  std::unique_ptr<Lettering> lettering_;
};

}  // namespace tesselink
