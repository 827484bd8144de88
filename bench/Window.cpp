// SPDX-License-Identifier: MIT
// How the window keeps up: window-bench FILE [PICTURE.png] tells when a preview of the file shows first and whole, the
// longest event meanwhile and the most memory. window-bench FILE OUTPUT times a conversion in the window with options
// that leave nothing to ask, to be held against `time tesselink convert --smart-assign --layer-field LAYER FILE
// OUTPUT`.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "formats/Formats.h"
#include "tests/support/MemorySettings.h"
#include "ui/MainWindow.h"
#include "ui/PreviewCanvas.h"
#include "ui/PreviewWidget.h"

namespace {

using namespace tesselink;

// Times each event from its delivery to its end, those within it included.
class Stopwatch final : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override {
    if (depth_ > 0) return QApplication::notify(receiver, event);
    const QEvent::Type type = event->type();
    QElapsedTimer timer;
    timer.start();
    ++depth_;
    const bool handled = QApplication::notify(receiver, event);
    --depth_;
    const double taken = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    if (taken > longest_) {
      longest_ = taken;
      kind_ = type;
    }
    return handled;
  }
  double Longest() const { return longest_; }
  QEvent::Type Kind() const { return kind_; }
  void Restart() { longest_ = 0; }

 private:
  int depth_ = 0;
  double longest_ = 0;
  QEvent::Type kind_ = QEvent::None;
};

double PeakMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) return std::stod(line.substr(6)) / 1024;
  }
  return 0;
}

bool ShowsSomething(const QImage& image) {
  for (int y = 0; y < image.height(); y += 3) {
    for (int x = 0; x < image.width(); x += 3) {
      if (image.pixel(x, y) != image.pixel(0, 0)) return true;
    }
  }
  return false;
}

int TimePreview(Stopwatch& application, MainWindow& window, const PreviewWidget& preview, const QString& picture) {
  QElapsedTimer timer;
  timer.start();
  double first = 0;
  while (!preview.IsDone() || timer.elapsed() < 300) {
    QApplication::processEvents();
    if (first == 0 && ShowsSomething(preview.Canvas().Shown())) first = static_cast<double>(timer.elapsed());
  }
  std::printf("first %.0f ms, whole %lld ms, longest event %.1f ms (type %d), peak memory %.1f MB\n", first,
              static_cast<long long>(timer.elapsed()), application.Longest(), application.Kind(), PeakMemory());
  return picture.isEmpty() || window.grab().save(picture) ? 0 : 1;
}

int TimeRun(MainWindow& window, const PreviewWidget& preview, const QString& output) {
  while (!preview.IsDone()) QApplication::processEvents();
  constexpr int kPatience = 180'000;
  QTimer::singleShot(kPatience, &window, [] {
    std::fputs("the run asks what nobody answers\n", stderr);
    std::_Exit(1);
  });
  window.findChild<QLineEdit*>("OutFile")->setText(output);
  auto* format = window.findChild<QComboBox*>("OutFormat");
  format->setCurrentIndex(format->findText("*." + output.section('.', -1), Qt::MatchContains));
  window.findChild<QToolButton*>("cmdMoreOptions")->setChecked(true);
  QApplication::processEvents();
  auto* field = window.findChild<QComboBox*>("option.layer-field");
  field->setEditText("LAYER");
  emit field->activated(-1);
  window.findChild<QCheckBox*>("option.smart-assign")->click();
  QElapsedTimer timer;
  timer.start();
  window.findChild<QPushButton*>("cmdApply")->click();
  std::printf("run %.3f s, peak memory %.1f MB\n", static_cast<double>(timer.elapsed()) / 1000, PeakMemory());
  return 0;
}

}  // namespace

int main(int count, char** values) {
  Stopwatch application(count, values);
  const QStringList words = QApplication::arguments();
  if (words.size() < 2) {
    std::fputs("usage: window-bench FILE [PICTURE.png | OUTPUT]\n", stderr);
    return 2;
  }
  MemorySettings settings;
  const FilterOptions options{.programFolder = TESSELINK_DATA_FOLDER};
  MainWindow window(AllFormats(), settings, options);
  auto* preview = new PreviewWidget(AllFormats(), settings, options);
  window.SetPreview(preview);
  QObject::connect(&window, &MainWindow::inputChanged, preview, &PreviewWidget::ShowInputs);
  QObject::connect(&window, &MainWindow::runningChanged, preview,
                   [preview](bool running) { running ? preview->Pause() : preview->Resume(); });
  window.show();
  QApplication::processEvents();
  application.Restart();
  window.TakeFiles({words[1]});
  const QString second = words.value(2);
  if (second.isEmpty() || second.endsWith(".png")) return TimePreview(application, window, *preview, second);
  return TimeRun(window, *preview, second);
}
