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
#include <span>
#include <vector>

#include "picture/Picture.h"
#include "picture/PictureView.h"

class QPainter;
class QPen;

namespace tesselink {

/// Kinds of element, or of what they look like, that an output may not hold; bits.
enum LostKind : std::uint32_t {
  kLosesLines = 1,
  kLosesPoints = 2,
  kLosesTexts = 4,
  kLosesAreas = 8,       ///< they become lines
  kLosesLineTypes = 16,  ///< they become solid
  kLosesColours = 32,    ///< those that elements have beside their layer's
};

/// What an image shows, and how.
struct RenderRequest {
  PictureView view;
  double pixelRatio = 1;           ///< device pixels to a pixel of the view
  QColor paper;                    ///< the background, against which colours are made legible
  std::vector<bool> hiddenLayers;  ///< by number; those behind the last are shown
  std::uint32_t lost = 0;          ///< of LostKind; they are marked

  bool operator==(const RenderRequest&) const = default;
};

/// The colour of what marks a lost kind.
QColor LostColour();

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

  /// How elements of one look are drawn.
  struct Look {
    QColor colour;
    bool hidden = false;
    std::vector<double> dashes;  // pixels; none: a solid line
    std::uint32_t lost = 0;      // of what this look has
  };

  const Look& LookOf(const Picture& picture, std::size_t style);
  QPen PenOf(const Look& look) const;
  void DrawSome(const Picture& picture, QPainter& painter);
  void DrawMark(const Picture& picture, QPainter& painter);
  bool DrawArea(const Picture& picture, QPainter& painter);
  void DrawChain(std::span<const PicturePoint> some, const Look& look, bool isLost, QPainter& painter);
  void DrawDot(QPainter& painter, PicturePoint place, double width, const QColor& colour);
  void DrawHalo(QPainter& painter, PicturePoint place);
  void DrawText(const Picture& picture, QPainter& painter);
  void DrawLetters(const PictureText& text, ScreenPoint at, double letters, const QColor& colour, bool isLost,
                   QPainter& painter);

  RenderRequest request_;
  Extents box_;  // of the picture, when the image was begun
  std::int64_t generation_ = -1;
  std::size_t nextMark_ = 0, nextVertex_ = 0, nextText_ = 0;
  std::size_t filledTo_ = 0;  // the mark behind the rings of the areas that are filled
  double cell_ = 0;           // in pixels
  bool fine_ = true;          // few enough to be drawn with smooth edges
  QImage image_;
  ChainTracer tracer_;
  std::vector<Look> looks_;
  std::vector<QPointF> places_;
  std::unique_ptr<Lettering> lettering_;
};

}  // namespace tesselink
