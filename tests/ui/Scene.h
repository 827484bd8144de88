// SPDX-License-Identifier: MIT
// Formats without files: a reader that delivers as long as a test wants, and a writer that fails when it wants.
#pragma once

#include <QThread>
#include <fstream>
#include <functional>
#include <limits>
#include <string>

#include "core/io/Errors.h"
#include "core/run/FormatTable.h"
#include "core/run/Interaction.h"
#include "core/run/Report.h"

namespace tesselink {

struct Scene {
  int elements = 10;
  int pause = 0;                         ///< milliseconds before every element
  std::function<void(int)> before = {};  ///< called with the number of each element, from 1, before it is delivered
  int readerFailsAt = -1, writerFailsAt = -1;
  int unhandledFrom = std::numeric_limits<int>::max();  ///< elements from here on are records that are not read
  bool endless = false;
  int scanSteps = 0;  ///< of 50 milliseconds each
  int read = 0, written = 0;
};

class SceneReader final : public InputFilter {
 public:
  SceneReader(const FilterContext& context, Scene& scene) : InputFilter(context), scene_(scene) {}
  int FileNumber() const override { return 0; }
  std::int64_t Loc() const override { return scene_.read; }
  double Progress() const override { return 100.0 * scene_.read / scene_.elements; }
  bool Eof() const override { return !scene_.endless && scene_.read >= scene_.elements; }
  bool Stalled() const override { return scene_.endless; }

 private:
  void Open(const std::string& path) override {
    filename_ = path;
    scene_.read = 0;
    for (int step = 0; step < scene_.scanSteps; ++step) {
      QThread::msleep(50);
      interaction().ShowScan("Scanning file for Layers...", step, scene_.scanSteps);
      interaction().Yield();
      if (interaction().CancelRequested()) throw OperationCanceled();
    }
    interaction().HideScan();
  }
  bool Next(tEntity& entity) override {
    const int number = ++scene_.read;
    if (scene_.pause > 0) QThread::msleep(static_cast<unsigned long>(scene_.pause));
    if (scene_.before) scene_.before(number);
    if (number == scene_.readerFailsAt) throw Error(filename_ + ", line 7: a number is expected");
    if (number >= scene_.unhandledFrom) {
      report().Undelivered("PointZ");
      interaction().ShowMessage({Topic::Unread, "Unhandled Data Type PointZ", "", MessageIcon::Information});
      return false;
    }
    entity.Reset();
    entity.bType = kPoint;
    entity.x(0, 1000.25 * number);
    entity.Y(0, -2.5 * number);
    return true;
  }

  Scene& scene_;
};

class SceneWriter final : public OutputFilter {
 public:
  SceneWriter(const FilterContext& context, Scene& scene) : OutputFilter(context), scene_(scene) {}
  ~SceneWriter() override { ReleaseQuietly(); }

 private:
  void Create(const std::string& path) override {
    scene_.written = 0;
    std::ofstream(path) << "x";
  }
  WriteResult Write(tEntity&) override {
    if (scene_.written + 1 == scene_.writerFailsAt) throw Error("no space left on the device");
    ++scene_.written;
    return WriteResult::Written;
  }
  void Complete() override {}
  void Drop() noexcept override {}

  Scene& scene_;
};

inline FormatTable SceneFormats(Scene& scene) {
  InputFormat input;
  input.entry = "Scene File (*.scn)";
  input.fallBack = true;
  input.create = [&scene](const FilterContext& context) { return std::make_unique<SceneReader>(context, scene); };
  OutputFormat output;
  output.entry = "Scene Copy (*.scn)";
  output.fallBack = true;
  output.create = [&scene](const FilterContext& context) { return std::make_unique<SceneWriter>(context, scene); };
  return FormatTable({input}, {output});
}

}  // namespace tesselink
