// SPDX-License-Identifier: MIT
// Many files in the window: the plan, the run and the report are those of the command line's program.
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include "formats/Formats.h"
#include "ui/Answers.h"
#include "ui/QueueModel.h"
#include "ui/QueueWindow.h"

namespace tesselink {
namespace {

// A window with a folder of drawings: one that is good, one below, one that is damaged, and a table without shapes.
struct Batch {
  explicit Batch(const char* program = TESSELINK_PROGRAM) : window(AllFormats(), program) {
    QDir(folder.path()).mkpath("in/north");
    const QString examples = TESSELINK_EXAMPLES "/";
    QFile::copy(examples + "quarter-section.asc", Path("in/plat.asc"));
    for (const char* end : {"shp", "shx", "dbf"}) {
      QFile::copy(examples + "wells." + end, Path(QString("in/north/its wells.") + end));
    }
    Put("in/damaged.dxf", "  0\nLINE\n");
    window.Preset("AutoCAD DXF File (*.dxf)", Dialect::Classic);
    Get<QLineEdit>("Into").setText(Path("out"));
    window.show();
  }
  ~Batch() { QCOMPARE(person.Complaint(), QString()); }
  QString Path(const QString& name) const { return folder.filePath(name); }
  void Put(const QString& name, const QByteArray& bytes) const {
    QFile file(Path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) < 0) qFatal("no room");
  }
  template <typename T>
  T& Get(const char* name) const {
    return Control<T>(window, name);
  }
  QPushButton& Start() const { return Get<QPushButton>("cmdStart"); }
  // Until the program has told its plan, or what stands against one.
  QString Plan(const QStringList& paths = {}) {
    window.Add(paths);
    QTest::qWait(300);
    const auto isTold = [this] {
      const QString notes = Get<QLabel>("lblNotes").text();
      return Start().isEnabled() || !(notes.isEmpty() || notes.startsWith("Looking"));
    };
    return QTest::qWaitFor(isTold, 10'000) ? Get<QLabel>("lblNotes").text() : "no plan came";
  }
  QString Run() {
    Start().click();
    const auto hasEnded = [this] { return Get<QLabel>("lblProgress").text().contains(':'); };
    return QTest::qWaitFor(hasEnded, 30'000) ? Get<QLabel>("lblProgress").text() : "no end came";
  }
  // Selects the row whose file's name ends so.
  void Mark(const QString& name) const {
    auto& list = Get<QTableView>("List");
    for (int row = 0; row < list.model()->rowCount(); ++row) {
      if (list.model()->index(row, 0).data().toString().endsWith(name)) return list.selectRow(row);
    }
    QFAIL("no such row");
  }
  // File, state, losses and result of each, in the order of files.
  QStringList Rows() const {
    const auto& model = *Get<QTableView>("List").model();
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
      QStringList cells;
      for (int column = 0; column < model.columnCount(); ++column) {
        cells.append(model.index(row, column).data().toString());
      }
      rows.append(cells.join(" | "));
    }
    rows.sort();
    return rows;
  }

  QTemporaryDir folder;
  QueueWindow window;
  Answers person;
};

}  // namespace

class QueueTest : public QObject {
  Q_OBJECT

 private slots:
  void ConvertsAFolderAndGoesOnOnTheShell() {
    Batch batch;
    QCOMPARE(batch.Plan({batch.Path("in")}), QString());
    QCOMPARE(batch.Rows(),
             (QStringList{"damaged.dxf | Waiting |  | damaged.dxf", "north/its wells.shp | Waiting |  | its wells.dxf",
                          "plat.asc | Waiting |  | plat.dxf"}));
    QCOMPARE(batch.Run(), QString("Done: 2 of 3 files converted, 1 failed"));
    const QStringList rows = batch.Rows();
    QVERIFY2(rows[0].startsWith("damaged.dxf | Failed | "), qPrintable(rows[0]));
    QVERIFY2(rows[0].contains("has no section"), qPrintable(rows[0]));
    QVERIFY2(rows[1].startsWith("north/its wells.shp | Done | 1 gone"), qPrintable(rows[1]));
    QCOMPARE(rows[2], QString("plat.asc | Done | 1 changed | plat.dxf"));
    QVERIFY(QFile::exists(batch.Path("out/north/its wells.dxf")));
    auto& list = batch.Get<QTableView>("List");
    batch.Mark("wells.shp");
    QVERIFY(batch.Get<QPlainTextEdit>("Details").toPlainText().contains("its wells.dxf"));
    for (const auto& [column, first] : {std::pair{1, "damaged.dxf"}, {2, "north/its wells.shp"}}) {
      list.sortByColumn(column, Qt::AscendingOrder);
      QCOMPARE(list.model()->index(0, 0).data().toString(), QString(first));
      QVERIFY(list.currentIndex().data().toString().endsWith("wells.shp"));
    }

    // The command goes on by the report: what is done is done.
    batch.person.Do("Save Report", [&](QWidget& window) {
      Control<QLineEdit>(window, "fileNameEdit").setText(batch.Path("r.jsonl"));
      QMetaObject::invokeMethod(&window, "accept");
    });
    batch.Get<QPushButton>("cmdSaveReport").click();
    batch.Get<QPushButton>("cmdCopyCommand").click();
    QProcess shell;
    const QString command = QApplication::clipboard()->text();
    QVERIFY2(command.startsWith("tesselink batch "), qPrintable(command));
    shell.start("sh", {"-c", "exec " TESSELINK_PROGRAM + command.mid(9)});
    QVERIFY(shell.waitForFinished());
    const QByteArray said = shell.readAllStandardOutput() + shell.readAllStandardError();
    QVERIFY2(said.contains("0 of 3 drawings converted, 2 done before, 1 failed"), said.constData());

    // So does the window, once the damaged drawing is mended.
    QFile::remove(batch.Path("in/damaged.dxf"));
    QFile::copy(batch.Path("out/plat.dxf"), batch.Path("in/damaged.dxf"));
    QCOMPARE(batch.Run(), QString("Done: 3 of 3 files converted, 0 failed"));
  }

  void TellsWhatStandsAgainstIt() {
    Batch batch;
    QVERIFY(batch.Plan().contains("Add drawings"));
    QDir(batch.folder.path()).mkpath("out");
    batch.Put("out/plat.dxf", "kept");
    const QString exists = batch.Plan({batch.Path("in/plat.asc")});
    QVERIFY2(exists.contains("plat.dxf: exists already") && !batch.Start().isEnabled(), qPrintable(exists));
    batch.Get<QAbstractButton>("chkReplace").click();
    QCOMPARE(batch.Plan(), QString());
    batch.Put("in/plat.shp", "");
    const QString collision = batch.Plan({batch.Path("in/plat.shp")});
    QVERIFY2(collision.contains("would both become"), qPrintable(collision));
    QVERIFY2(!(exists + collision).contains("--"), qPrintable(exists + collision));
    QVERIFY(batch.Get<QComboBox>("BatchFormat").count() >= 8);

    Batch without("");
    QVERIFY(without.Plan({without.Path("in")}).contains("not installed"));
    QVERIFY(!without.Start().isEnabled());
  }

  // What something stands against is left out and says why; the others are converted.
  void GoesOnWithoutWhatCannotBeConverted() {
    Batch batch;
    batch.Put("in/plat.shp", "");
    batch.Plan({batch.Path("in"), batch.Path("missing.dxf")});
    const QStringList rows = batch.Rows();
    QCOMPARE(rows.size(), 5);
    QVERIFY2(rows[3].contains("/plat.shp | Left out |  | ") && rows[3].contains("would both become"),
             qPrintable(rows[3]));
    QVERIFY2(rows[4].startsWith("missing.dxf | Left out |  | "), qPrintable(rows[4]));
    batch.Mark("damaged.dxf");
    batch.Get<QPushButton>("cmdRemove").click();
    QVERIFY(batch.Get<QPlainTextEdit>("Details").toPlainText().isEmpty());
    batch.Plan();
    QCOMPARE(batch.Rows().size(), 4);
    QCOMPARE(batch.Run(), QString("Done: 2 of 4 files converted, 0 failed, 2 left out"));
    batch.Get<QPushButton>("cmdCopyCommand").click();
    const QString command = QApplication::clipboard()->text();
    QCOMPARE(command.count("--exclude"), 2);
    QVERIFY2(!command.contains("missing.dxf"), qPrintable(command));

    for (const char* name : {"plat.shp", "missing.dxf"}) batch.Mark(name), batch.Get<QPushButton>("cmdRemove").click();
    QCOMPARE(batch.Plan(), QString());
    QCOMPARE(batch.Rows().size(), 2);
    // Named again it is taken again.
    batch.Plan({batch.Path("in/damaged.dxf")});
    QCOMPARE(batch.Rows().size(), 3);
  }

  // A drawing that would take hours.
  void EndsWhenItIsCancelled() {
    Batch batch;
    QByteArray drawing =
        "0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n2\nB0\n70\n0\n10\n0\n20\n0\n0\nLINE\n10\n0\n20\n0\n11\n5\n21\n5\n0\nENDBLK\n";
    for (int block = 1; block <= 9; ++block) {
      drawing += "0\nBLOCK\n2\nB" + QByteArray::number(block) + "\n70\n0\n10\n0\n20\n0\n";
      for (int i = 0; i < 9; ++i) drawing += "0\nINSERT\n2\nB" + QByteArray::number(block - 1) + "\n10\n5\n20\n0\n";
      drawing += "0\nENDBLK\n";
    }
    batch.Put("long.dxf",
              drawing + "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nINSERT\n2\nB9\n10\n0\n20\n0\n0\nENDSEC\n0\nEOF\n");
    batch.window.Preset("Landmark ASCII File (*.asc)", Dialect::Standard);
    QCOMPARE(batch.Plan({batch.Path("long.dxf")}), QString());
    batch.Start().click();
    QVERIFY(QTest::qWaitFor([&] { return batch.Rows()[0].startsWith("long.dxf | Converting"); }, 10'000));
    batch.person.Press("Are you sure you want to cancel?", "No");
    batch.Get<QPushButton>("cmdCancelBatch").click();
    QVERIFY(!batch.Start().isEnabled());
    batch.person.Press("Are you sure you want to cancel?", "Yes");
    batch.window.close();
    QVERIFY(batch.window.isVisible());  // until nothing is written any more
    QVERIFY(QTest::qWaitFor([&] { return !batch.window.isVisible(); }, 10'000));
    QVERIFY2(batch.Rows()[0].startsWith("long.dxf | Waiting"), qPrintable(batch.Rows()[0]));
    QCOMPARE(QDir(batch.Path("out")).entryList(QDir::Files | QDir::Hidden), QStringList());
  }
};

}  // namespace tesselink

QTEST_MAIN(tesselink::QueueTest)
#include "QueueTest.moc"
