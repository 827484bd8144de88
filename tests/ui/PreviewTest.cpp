// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>
#include <QWheelEvent>
#include <chrono>
#include <cmath>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/io/Errors.h"
#include "core/run/Interaction.h"
#include "formats/Formats.h"
#include "picture/PreviewReading.h"
#include "support/MemorySettings.h"
#include "ui/MainWindow.h"
#include "ui/PreviewCanvas.h"
#include "ui/PreviewLink.h"
#include "ui/PreviewWidget.h"

namespace tesselink {
namespace {

constexpr const char* kLandmark = "Landmark ASCII File (*.asc)";
constexpr const char* kDxf = "AutoCAD DXF File (*.dxf)";
constexpr const char* kShape = "ESRI Shapefile (*.shp)";

using Time = std::chrono::steady_clock::time_point;

std::string Example(const std::string& name) { return TESSELINK_EXAMPLES "/" + name; }

// Moves on by a millisecond each time that it is read.
struct TickingClock {
  Time now{};
  Time operator()() { return now += std::chrono::milliseconds(1); }
};

// A format whose reader does what a test says.
class ScriptedReader final : public InputFilter {
 public:
  using Script = std::function<bool(tEntity&)>;
  ScriptedReader(const FilterContext& context, Script next, std::function<void(Interaction&)> open)
      : InputFilter(context), next_(std::move(next)), open_(std::move(open)) {}
  int FileNumber() const override { return 0; }
  std::int64_t Loc() const override { return 0; }
  double Progress() const override { return 0; }
  bool Eof() const override { return false; }

 private:
  void Open(const std::string& path) override {
    open_(interaction());
    filename_ = path;
  }
  bool Next(tEntity& entity) override { return next_(entity); }
  Script next_;
  std::function<void(Interaction&)> open_;
};

InputFormat Scripted(
    const ScriptedReader::Script& next, const std::function<void(Interaction&)>& open = [](auto&) {}) {
  return {{.entry = "Some File (*.asc)", .key = "some"},
          [=](const FilterContext& context) { return std::make_unique<ScriptedReader>(context, next, open); }};
}

bool APoint(tEntity& entity) {
  entity.bType = kPoint;
  entity.x(0, 1);
  return true;
}

class PreviewTest final : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir folder_;
  MemorySettings settings_;

  // The main window with its preview, and an example as the input.
  std::unique_ptr<MainWindow> WindowWith(const std::string& example) {
    const FilterOptions options{.programFolder = TESSELINK_DATA_FOLDER};
    auto window = std::make_unique<MainWindow>(AllFormats(), settings_, options);
    AddPreview(*window, AllFormats(), settings_, options);
    window->show();
    window->TakeFiles({QString::fromStdString(Example(example))});
    return window;
  }
  std::string Put(const QString& name, const QByteArray& bytes) {
    QFile file(folder_.filePath(name));
    if (!file.open(QIODevice::WriteOnly)) return {};
    file.write(bytes);
    return file.fileName().toStdString();
  }
  static QByteArray Get(const std::string& path) {
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  std::string NotesOf(const InputFormat& format, const std::string& path) {
    PreviewReading reading({format, {path}}, settings_, {}, TickingClock());
    for (int i = 0; i < 10'000 && reading.Slice(std::chrono::milliseconds(10)); ++i) {
    }
    std::string all = reading.Ended() ? "" : "not ended";
    for (const ReadingNote& note : reading.Notes()) all += note.text + "|";
    return all;
  }
  static bool Differs(const QImage& image, const QColor& paper) {
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, y) != paper) return true;
      }
    }
    return false;
  }
  Picture PictureOf(const char* format, const std::string& name) {
    PreviewReading reading({AllFormats().Input(format), {Example(name)}}, settings_);
    while (reading.Slice(std::chrono::milliseconds(100))) {
    }
    return reading.Drawn();
  }
  static QColor Paper(const QWidget& widget) { return widget.palette().color(QPalette::Base); }

 private slots:
  void initTestCase() { qputenv("XDG_CONFIG_HOME", folder_.path().toUtf8()); }

  void aSliceKeepsToItsTime() {
    PreviewReading reading({AllFormats().Input(kLandmark), {Example("quarter-section.asc")}}, settings_, {},
                           TickingClock());
    int slices = 1;
    std::int64_t before = 0, most = 0;
    for (; reading.Slice(std::chrono::milliseconds(5)); ++slices) {
      most = std::max(most, reading.Drawn().Elements() - before);
      before = reading.Drawn().Elements();
    }
    QCOMPARE(reading.Drawn().Elements(), 43);
    QVERIFY2(most <= 5, "no more elements than ticks of the clock");
    QVERIFY(slices >= 9);
    QVERIFY(reading.Notes().empty());
    QVERIFY(!reading.Slice(std::chrono::milliseconds(5)));
  }

  void nothingIsAskedAndNoFileIsTouched() {
    const QByteArray unixText = Get(Example("quarter-section.asc")).replace("\r\n", "\n");
    const std::string path = Put("unix.asc", unixText);
    QCOMPARE(NotesOf(AllFormats().Input(kLandmark), path), std::string());
    QCOMPARE(Get(path), unixText);
    QCOMPARE(QDir(folder_.path()).entryList({"*.asc"}).size(), 1);
    const auto asking = Scripted(&APoint, [](Interaction& person) { person.AskText({"Title", "Where?", "$CDF.MAP"}); });
    QCOMPARE(NotesOf(asking, path), std::string("$CDF.MAP: was not found; the preview does without|"));
  }

  void whatEndsAReadingIsTold() {
    const std::string path = Put("some.asc", "x");
    QVERIFY(NotesOf(AllFormats().Input(kLandmark), Put("endless.asc", "VECTOR,1,2,3,4,RED\r\nXY,1,1\r\n"))
                .find("repeats without end") != std::string::npos);
    QVERIFY(NotesOf(AllFormats().Input("WinPICS Map Overlay (*.mol)"), Example("overlay.mol")).find("not decoded") !=
            std::string::npos);
    QVERIFY(NotesOf(AllFormats().Input(kShape), path).find("a shapefile begins with") != std::string::npos);
    QVERIFY(NotesOf(AllFormats().Input(kShape), path + "x").find("does not exist") != std::string::npos);
    const auto failing = Scripted([](tEntity&) -> bool { throw Error("some.asc, line 7: is wrong"); });
    QCOMPARE(NotesOf(failing, path), std::string("some.asc, line 7: is wrong|"));
    const auto greedy = Scripted([](tEntity&) -> bool { throw std::bad_alloc(); });
    QVERIFY(NotesOf(greedy, path).find("not enough memory") != std::string::npos);
  }

  void anOpeningThatTakesTooLongIsGivenUp() {
    int breaths = 0;
    const auto slow = Scripted(&APoint, [&](Interaction& person) {
      for (int i = 0; i < 100'000; ++i) {
        person.Yield();
        if (person.CancelRequested()) throw OperationCanceled();
      }
    });
    const std::string path = Put("slow.asc", "x");
    PreviewReading reading(
        {slow, {path}}, settings_, [&breaths] { ++breaths; }, TickingClock());
    QVERIFY(!reading.Slice(std::chrono::milliseconds(5)));
    QVERIFY(breaths > 100 && breaths < 10'000);
    QVERIFY(reading.Notes().at(0).text.find("so much stands before its first element") != std::string::npos);
  }

  void aReadingMayTakeLongAsAWhole() {
    Interaction* asked = nullptr;
    int left = 5000;
    const auto patient = Scripted(
        [&](tEntity& entity) {
          if (asked->CancelRequested()) throw OperationCanceled();
          if (--left == 0) throw Error("all is read");
          return APoint(entity);
        },
        [&asked](Interaction& person) { asked = &person; });
    QCOMPARE(QString::fromStdString(NotesOf(patient, Put("long.asc", "x"))), QString("all is read|"));
  }

  void aDrawingIsShownWithItsLayers() {
    PreviewWidget preview(AllFormats(), settings_);
    preview.resize(700, 500);
    preview.show();
    const auto* status = preview.findChild<QLabel*>("previewStatus");
    auto* layers = preview.findChild<QListWidget*>("previewLayers");
    auto* all = preview.findChild<QCheckBox*>("previewAllLayers");
    QVERIFY(layers->isHidden() || !layers->isVisible());
    PictureCounts counted;
    bool ended = true;
    connect(&preview, &PreviewWidget::Counted, this, [&](const PictureCounts& counts, bool isAll) {
      counted = counts;
      ended = isAll;
    });
    preview.ShowInputs({QString::fromStdString(Example("quarter-section.asc"))}, kLandmark);
    QTRY_VERIFY(preview.IsDone());
    QVERIFY(ended && counted.layers == 11 && counted.texts == 23);
    QVERIFY(status->text().startsWith("quarter-section.asc"));
    QVERIFY(status->text().contains("43 elements"));
    QVERIFY(status->text().contains("x 1,845,802.88 to 1,851,962.61"));
    QCOMPARE(layers->count(), 11);
    QCOMPARE(layers->item(10)->text(), QString("RED  7"));

    const QImage whole = preview.Canvas().Shown();
    QVERIFY(Differs(whole, Paper(preview)));
    layers->item(10)->setCheckState(Qt::Unchecked);
    QTRY_VERIFY(preview.IsDone());
    QVERIFY(preview.Canvas().Shown() != whole);
    QCOMPARE(all->checkState(), Qt::PartiallyChecked);
    QTest::mouseClick(all, Qt::LeftButton, {}, QPoint(8, all->height() / 2));
    QTRY_VERIFY(preview.IsDone());
    QCOMPARE(preview.Canvas().Shown(), whole);
    QTest::mouseClick(all, Qt::LeftButton, {}, QPoint(8, all->height() / 2));
    QTRY_VERIFY(preview.IsDone());
    QVERIFY2(!Differs(preview.Canvas().Shown(), Paper(preview)), "with every layer hidden the paper is blank");
  }

  void zoomPanAndFit() {
    PreviewWidget preview(AllFormats(), settings_);
    preview.resize(700, 500);
    preview.show();
    preview.ShowInputs({QString::fromStdString(Example("quarter-section.asc"))}, kLandmark);
    QTRY_VERIFY(preview.IsDone());
    auto* canvas = preview.findChild<PreviewCanvas*>("previewCanvas");
    const PictureView whole = canvas->View();
    const PicturePoint under = whole.ToDrawing({100, 120});
    QWheelEvent wheel(QPointF(100, 120), canvas->mapToGlobal(QPointF(100, 120)), {}, QPoint(0, 240), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(canvas, &wheel);
    QVERIFY(canvas->View().scale > whole.scale * 1.5);
    QVERIFY(std::abs(canvas->View().ToScreen(under).x - 100) < 1e-6);
    QTest::mousePress(canvas, Qt::LeftButton, {}, QPoint(100, 120));
    QTest::mouseMove(canvas, QPoint(130, 110));
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, QPoint(130, 110));
    QVERIFY(std::abs(canvas->View().ToScreen(under).x - 130) < 1e-6);
    QVERIFY(std::abs(canvas->View().ToScreen(under).y - 110) < 1e-6);
    QTRY_VERIFY(preview.IsDone());
    QTest::keyClick(canvas, Qt::Key_F);
    QVERIFY(canvas->View() == whole);
    for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Right, Qt::Key_Up, Qt::Key_Minus, Qt::Key_Left, Qt::Key_Down}) {
      const PictureView before = canvas->View();
      QTest::keyClick(canvas, key);
      QVERIFY(!(canvas->View() == before));
    }
    QVERIFY(std::abs(canvas->View().scale - whole.scale) < whole.scale * 1e-9);
    const PicturePoint centre = canvas->View().centre;
    QTest::keyClick(canvas, Qt::Key_Right);
    QTest::keyClick(canvas, Qt::Key_Up);
    QVERIFY2(canvas->View().centre.x > centre.x && canvas->View().centre.y > centre.y, "where the arrows point");
    preview.findChild<QToolButton*>("previewZoomIn")->click();
    QTest::mouseDClick(canvas, Qt::LeftButton);
    QVERIFY(canvas->View() == whole);
    preview.resize(900, 400);
    QVERIFY2(canvas->View().scale < whole.scale, "a view of the whole stays one");
    QTRY_VERIFY(preview.IsDone());
  }

  static QPoint At(const PreviewCanvas& canvas, PicturePoint place) {
    const ScreenPoint at = canvas.View().ToScreen(place);
    return {static_cast<int>(std::lround(at.x)), static_cast<int>(std::lround(at.y))};
  }

  void aClickTellsOfTheElement() {
    PreviewWidget preview(AllFormats(), settings_);
    preview.resize(900, 600);
    preview.show();
    preview.ShowInputs({QString::fromStdString(Example("wells.shp"))}, kShape);
    QTRY_VERIFY(preview.IsDone());
    auto* canvas = preview.findChild<PreviewCanvas*>("previewCanvas");
    PicturePoint third;
    for (std::size_t i = 0; i < 3; ++i) third = PictureOf(kShape, "wells.shp").Vertices(i)[0];
    QTest::mouseClick(canvas, Qt::LeftButton, {}, At(*canvas, third));
    QTRY_VERIFY(preview.IsDone());
    const auto* rows = preview.findChild<QTreeWidget*>("previewElement");
    QVERIFY(rows->isVisible());
    QString all;
    for (int i = 0; i < rows->topLevelItemCount(); ++i) {
      all += rows->topLevelItem(i)->text(0) + "=" + rows->topLevelItem(i)->text(1) + ";";
    }
    QVERIFY2(all.contains("Kind=point;") && all.contains("Record=3;") && all.contains("LABEL="), qPrintable(all));
    QCOMPARE(canvas->Overlay().element, 3U);
    preview.findChild<QToolButton*>("previewElementClose")->click();
    QVERIFY(!rows->isVisible() && canvas->Overlay().element == 0);
  }

  void placesAreToldAndDistancesMeasured() {
    PreviewWidget preview(AllFormats(), settings_);
    preview.resize(900, 600);
    preview.show();
    preview.ShowInputs({QString::fromStdString(Example("quarter-section.asc"))}, kLandmark);
    QTRY_VERIFY(preview.IsDone());
    auto* canvas = preview.findChild<PreviewCanvas*>("previewCanvas");
    const PicturePoint middle = canvas->View().centre;
    const auto* place = preview.findChild<QLabel*>("previewPlace");
    QTest::mouseMove(canvas, At(*canvas, middle));
    QTRY_VERIFY(place->text().startsWith("x 1,84"));

    const auto* told = preview.findChild<QLabel*>("previewMeasured");
    QVERIFY(!told->isVisible());
    canvas->setFocus();
    QTest::keyClick(canvas, Qt::Key_M);
    QVERIFY(preview.findChild<QToolButton*>("previewMeasure")->isChecked() && told->isVisible());
    QTest::keyClick(canvas, Qt::Key_Return);
    QTest::keyClick(canvas, Qt::Key_Right);
    QTest::keyClick(canvas, Qt::Key_Right);
    QTest::keyClick(canvas, Qt::Key_Return);
    QTest::keyClick(canvas, Qt::Key_Up);
    QTest::keyClick(canvas, Qt::Key_Return);
    const double step = 40 / canvas->View().scale;
    QVERIFY(std::abs(canvas->Overlay().Length() - 3 * step) < step * 1e-6);
    QVERIFY(std::abs(canvas->Overlay().LastLeg() - step) < step * 1e-6);
    QVERIFY(told->text().startsWith("Total "));
    QTest::keyClick(canvas, Qt::Key_Backspace);
    QCOMPARE(canvas->Overlay().chain.size(), std::size_t{2});
    QTest::keyClick(canvas, Qt::Key_Escape);
    QVERIFY(canvas->Overlay().chain.empty() && canvas->CurrentMode() == PreviewCanvas::Mode::Measure);
    QTest::keyClick(canvas, Qt::Key_Escape);
    QVERIFY(canvas->CurrentMode() == PreviewCanvas::Mode::Look && !told->isVisible());

    std::optional<ClipBox> chosen;
    connect(&preview, &PreviewWidget::ClipChosen, this, [&](const ClipBox& box) { chosen = box; });
    preview.ChooseClip(true);
    const PictureView view = canvas->View();
    QTest::mousePress(canvas, Qt::LeftButton, {}, QPoint(200, 50));
    QTest::mouseMove(canvas, QPoint(120, 150));
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, QPoint(100, 150));
    QVERIFY(chosen && canvas->View() == view);
    QVERIFY(std::abs(chosen->minX - view.ToDrawing({100, 0}).x) < 1e-6);
    QVERIFY(std::abs(chosen->maxY - view.ToDrawing({0, 50}).y) < 1e-6);
    QVERIFY(canvas->CurrentMode() == PreviewCanvas::Mode::Look);
  }

  void theOutputStandsBesideTheInput() {
    PreviewWidget preview(AllFormats(), settings_);
    preview.resize(1000, 500);
    preview.show();
    preview.ShowInputs({QString::fromStdString(Example("quarter-section.asc"))}, kLandmark);
    QTRY_VERIFY(preview.IsDone());
    auto* input = preview.findChild<PreviewCanvas*>("previewCanvas");
    auto* output = preview.findChild<PreviewCanvas*>("previewOutputCanvas");
    preview.ShowOutput({"unread.grd"}, "T/R Digitizer Format (*.grd)");
    QVERIFY2(!output->isVisible(), "what is not read is not shown");
    preview.ShowOutput({QString::fromStdString(Example("quarter-section.cdf"))}, "Geographix CDF File (*.cdf)");
    QVERIFY(output->isVisible());
    QTRY_VERIFY(preview.IsDone());
    QTest::keyClick(input, Qt::Key_Plus);
    QTest::keyClick(output, Qt::Key_Left);
    QVERIFY(output->View().scale == input->View().scale && output->View().centre == input->View().centre);
    QVERIFY(preview.findChild<QLabel*>("previewOutputTitle")->text().contains("quarter-section.cdf"));
    preview.findChild<QToolButton*>("previewCloseOutput")->click();
    QVERIFY(!output->isVisible());
  }

  void lostKindsAreMarkedAndNamed() {
    PreviewWidget preview(AllFormats(), settings_);
    preview.resize(700, 500);
    preview.show();
    preview.ShowInputs({QString::fromStdString(Example("quarter-section.asc"))}, kLandmark);
    QTRY_VERIFY(preview.IsDone());
    const QImage before = preview.Canvas().Shown();
    const auto* legend = preview.findChild<QLabel*>("previewLegend");
    preview.SetLost(kLosesPoints);
    QTRY_VERIFY(preview.IsDone());
    QVERIFY2(!legend->isVisible() && preview.Canvas().Shown() == before, "it has no points");
    preview.SetLost(kLosesPoints | kLosesTexts);
    QTRY_VERIFY(preview.IsDone());
    QVERIFY(legend->isVisible() && legend->text().contains("texts") && !legend->text().contains("points"));
    QVERIFY(preview.Canvas().Shown() != before);
  }

  void lostKindsAreThoseOfTheOutput() {
    const auto window = WindowWith("all-entities.dxf");
    const auto* preview = window->findChild<PreviewWidget*>();
    const auto* legend = window->findChild<QLabel*>("previewLegend");
    auto* formats = window->findChild<QComboBox*>("OutFormat");
    const std::pair<const char*, const char*> lost[] = {{kLandmark, "points"},
                                                        {"T/R Digitizer Format (*.grd)", "texts"}};
    for (const auto& [format, kind] : lost) {
      formats->setCurrentText(format);
      QTRY_VERIFY(preview->IsDone() && legend->text().contains(kind));
      formats->setCurrentText(kDxf);
      QTRY_VERIFY(preview->IsDone() && !legend->text().contains(kind));
    }
  }

  void drawingAWindowEndsWithItsButton() {
    const auto window = WindowWith("all-entities.dxf");
    const auto* preview = window->findChild<PreviewWidget*>();
    window->findChild<QToolButton*>("cmdMoreOptions")->setChecked(true);
    QTRY_VERIFY(preview->IsDone());
    auto* canvas = window->findChild<PreviewCanvas*>("previewCanvas");
    auto* draw = window->findChild<QPushButton*>("help.clip");
    QVERIFY(draw != nullptr);
    draw->click();
    QVERIFY(canvas->CurrentMode() == PreviewCanvas::Mode::Clip);
    QTest::keyClick(canvas, Qt::Key_Escape);
    QVERIFY(!draw->isChecked());
    draw->click();
    draw->click();
    QVERIFY(canvas->CurrentMode() == PreviewCanvas::Mode::Look);
  }

  void whatCannotBeShownInvites() {
    PreviewWidget preview(AllFormats(), settings_);
    preview.resize(500, 300);
    preview.show();
    const auto* status = preview.findChild<QLabel*>("previewStatus");
    for (const QString& path : {QString(), QString("nowhere.shp"), folder_.path()}) {
      preview.ShowInputs({path}, kShape);
      QTRY_VERIFY(preview.IsDone());
      QCOMPARE(preview.Canvas().EmptyText(), QString("Choose a file, or drop one here"));
      QVERIFY(status->text().isEmpty());
    }
    preview.ShowInputs({QString::fromStdString(Put("bad.dxf", "nothing"))}, kDxf);
    QTRY_VERIFY(preview.IsDone());
    QVERIFY(status->text().contains("bad.dxf"));
    QCOMPARE(preview.Canvas().EmptyText(), QString("Nothing to show"));
  }

  void anEndlessFileStaysAnswerable() {
    const InputFormat endless = Scripted(&APoint);
    const FormatTable table({endless}, {});
    PreviewWidget preview(table, settings_);
    preview.resize(500, 300);
    preview.show();
    preview.ShowInputs({QString::fromStdString(Put("some.asc", "x"))}, "Some File (*.asc)");
    QTRY_VERIFY(Differs(preview.Canvas().Shown(), Paper(preview)));
    QVERIFY(!preview.IsDone());
    preview.Pause();
    QVERIFY(!preview.findChild<QWidget*>("previewLayers")->isEnabled());
    const auto* status = preview.findChild<QLabel*>("previewStatus");
    const QString paused = status->text();
    QTest::qWait(400);
    QCOMPARE(status->text(), paused);
    preview.ShowInputs({}, {});
    preview.Resume();
    QVERIFY(preview.findChild<QWidget*>("previewLayers")->isEnabled());
    QTRY_VERIFY(status->text().isEmpty());
    QTRY_VERIFY(preview.IsDone());
  }
};

}  // namespace
}  // namespace tesselink

int main(int count, char** values) {
  QApplication application(count, values);
  tesselink::PreviewTest test;
  return QTest::qExec(&test, count, values);
}

#include "PreviewTest.moc"
