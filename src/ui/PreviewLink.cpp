// SPDX-License-Identifier: MIT
#include "ui/PreviewLink.h"

#include "ui/MainWindow.h"
#include "ui/PreviewWidget.h"

namespace tesselink {

PreviewWidget* AddPreview(MainWindow& window, const FormatTable& formats, Settings& settings,
                          const FilterOptions& options) {
  auto* preview = new PreviewWidget(formats, settings, options);
  window.SetPreview(preview);
  QObject::connect(&window, &MainWindow::inputChanged, preview, &PreviewWidget::ShowInputs);
  QObject::connect(&window, &MainWindow::readingChanged, preview, &PreviewWidget::SetOptions);
  QObject::connect(&window, &MainWindow::lostChanged, preview, &PreviewWidget::SetLost);
  QObject::connect(&window, &MainWindow::outputMade, preview, &PreviewWidget::ShowOutput);
  QObject::connect(&window, &MainWindow::runningChanged, preview,
                   [preview](bool running) { running ? preview->Pause() : preview->Resume(); });
  QObject::connect(&window, &MainWindow::clipWanted, preview, &PreviewWidget::ChooseClip);
  QObject::connect(preview, &PreviewWidget::Counted, &window, &MainWindow::SetCounts);
  QObject::connect(preview, &PreviewWidget::Hindered, &window, &MainWindow::SetHindrance);
  QObject::connect(preview, &PreviewWidget::ClipChosen, &window, &MainWindow::TakeClip);
  QObject::connect(preview, &PreviewWidget::ChoosingClip, &window, &MainWindow::SetChoosingClip);
  QObject::connect(preview, &PreviewWidget::Known, &window, &MainWindow::TakeDrawing);
  return preview;
}

}  // namespace tesselink
