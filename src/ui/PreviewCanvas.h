// SPDX-License-Identifier: MIT
// The place where a preview is drawn: fit, zoom and pan.
#pragma once

#include <QImage>
#include <QPointF>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <optional>
#include <vector>

#include "picture/Picture.h"
#include "picture/PictureView.h"
#include "ui/PictureRenderer.h"

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

  const PictureView& View() const { return view_; }
  /// Whether the image on the screen is whole and of the view as it is.
  bool IsCurrent() const;
  /// The drawing as it is on the screen.
  const QImage& Shown() const { return shown_; }

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
  void keyPressEvent(QKeyEvent* event) override;

  bool HasSomething() const { return picture_ != nullptr && (picture_->MarkCount() > 0 || !picture_->Texts().empty()); }
  RenderRequest Request() const;
  void Zoom(QPointF at, double factor);
  void Pan(double right, double down);
  void ViewChanged();
  void DrawSlice();

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
  std::optional<QPointF> dragged_;
};

}  // namespace tesselink
