// SPDX-License-Identifier: MIT
// The place where a preview is drawn: fit, zoom, pan, measure, and choose.
#pragma once

#include <QImage>
#include <QPointF>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <optional>
#include <vector>

#include "picture/Picture.h"
#include "picture/PictureView.h"
#include "ui/PictureRenderer.h"
#include "ui/PreviewOverlay.h"

namespace tesselink {

/// Draws in slices between other events, so that neither a large picture nor a growing one holds up the window. Until a
/// new image is whole, the one before is shown, moved and scaled.
class PreviewCanvas final : public QWidget {
  Q_OBJECT
 public:
  explicit PreviewCanvas(QWidget* parent = nullptr);

  /// Shows a picture, which must live until another one takes its place; nullptr for none.
  void SetPicture(const Picture* picture);
  /// The picture has grown. A view that shows the whole of it goes on doing so.
  void PictureGrew();
  void SetHiddenLayers(std::vector<bool> hidden);
  /// What is shown instead of a picture that is empty.
  void SetEmptyText(const QString& text);
  const QString& EmptyText() const { return emptyText_; }
  void SetPaused(bool paused);
  /// Which kinds are marked as lost; bits of LostKind.
  void SetLost(std::uint32_t kinds);

  /// What a click and a drag do.
  enum class Mode { Look, Measure, Clip };
  Mode CurrentMode() const { return mode_; }
  void SetMode(Mode mode);
  /// Shows an element as chosen, by its number in the picture; 0: none.
  void SetChosen(std::uint32_t element);
  /// Shows the window to clip by.
  void SetClip(const std::optional<ClipBox>& clip);
  /// Shows the same place as another canvas, at the same scale.
  void Follow(const PictureView& other);

  const PictureView& View() const { return view_; }
  /// Whether the image on the screen is whole and of the view as it is.
  bool IsCurrent() const;
  /// The drawing as it is on the screen.
  const QImage& Shown() const { return shown_; }
  const PreviewOverlay& Overlay() const { return overlay_; }
  const std::vector<bool>& HiddenLayers() const { return hidden_; }

 signals:
  /// The view has been fitted, moved or zoomed here.
  void ViewMoved(const PictureView& view);
  /// The place under the pointer, or in the middle while keys act; nothing once the pointer has left.
  void Pointed(const std::optional<PicturePoint>& at);
  /// A place was clicked to see what is there, to so many units around.
  void PlaceChosen(PicturePoint at, double reach);
  void Measured();
  void ClipChosen(const ClipBox& box);
  void ModeChanged();

 public slots:
  void Fit();
  void ZoomIn();
  void ZoomOut();

 private:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool KeyMoves(int key);
  bool KeyActs(int key);

  bool HasSomething() const { return picture_ != nullptr && (picture_->MarkCount() > 0 || !picture_->Texts().empty()); }
  RenderRequest Request() const;
  void Zoom(QPointF at, double factor);
  void Pan(double right, double down);
  void ViewChanged();
  void DrawSlice();
  void Point(QPointF at);
  void Act(QPointF at);
  void AddToChain(PicturePoint at);
  void DragClip(PicturePoint to);
  void EndClip();
  void Escape();

  const Picture* picture_ = nullptr;
  PictureView view_;
  bool fitted_ = true;  // shows the whole picture until the person chooses another view
  std::vector<bool> hidden_;
  QString emptyText_;
  PictureRenderer renderer_;
  QImage shown_;
  std::optional<RenderRequest> shownRequest_;
  QTimer drawing_;
  bool paused_ = false;
  std::uint32_t lost_ = 0;
  PreviewOverlay overlay_;
  Mode mode_ = Mode::Look;
  std::optional<QPointF> pressed_, dragged_;  // where the button went down; where the pointer was last
  bool dragging_ = false;                     // far enough to be no click
  std::optional<PicturePoint> clipBegin_;
  std::optional<ClipBox> clipBefore_;
};

}  // namespace tesselink
