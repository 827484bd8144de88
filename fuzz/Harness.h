// SPDX-License-Identifier: MIT
// What the harnesses share: files in memory where the system has such a place, and a person who never answers.
#pragma once

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "core/io/Errors.h"
#include "core/run/FieldSelection.h"
#include "core/run/Filters.h"
#include "core/run/Nobody.h"
#include "core/run/Pump.h"
#include "core/run/Report.h"
#include "core/run/Settings.h"

namespace tesselink {

/// Leaves every file alone, chooses the first field for the layer, the last one for the text, and both for its look.
class SilentPerson final : public Nobody {
 public:
  void SelectFields(FieldSelection& selection) override {
    const auto choices = selection.Choices();
    selection.Choose(choices.empty() ? std::string() : choices.front());
    selection.Continue();
    selection.Choose(choices.empty() ? std::string() : choices.back());
    if (!choices.empty()) {
      const std::string first = "{" + choices.front() + "}", last = "{" + choices.back() + "}";
      selection.Choose(LabelLook{.height = last, .angle = first, .colour = last});
    }
    selection.Continue();
  }
};

class NoSettings final : public Settings {
 public:
  std::string Get(const std::string&, const std::string&, const std::string&, const std::string& d) override {
    return d;
  }
  void Set(const std::string&, const std::string&, const std::string&, const std::string&) override {}
  std::map<std::string, std::string> All(const std::string&, const std::string&) override { return {}; }
};

/// The folder of this process, in memory if the system has a file system there; it goes with the process.
inline const std::string& FuzzFolder() {
  struct Scratch {
    std::string path;
    Scratch() {
      const bool memory = std::filesystem::is_directory("/dev/shm");
      path = (memory ? std::string("/dev/shm") : std::filesystem::temp_directory_path().string()) + "/fuzzXXXXXX";
      if (mkdtemp(path.data()) == nullptr) std::abort();
    }
    ~Scratch() { std::filesystem::remove_all(path); }
  };
  static const Scratch kScratch;
  return kScratch.path;
}

inline std::string PutFile(const std::string& name, std::string_view bytes) {
  const std::string path = FuzzFolder() + "/" + name;
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr || std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size()) std::abort();
  std::fclose(file);
  return path;
}

/// Whether all that an element says of its place and size is a number.
inline bool IsFinite(const tEntity& element) {
  const auto finite = [](double value) { return std::isfinite(value); };
  const auto all = [&](std::span<const double> values) { return std::all_of(values.begin(), values.end(), finite); };
  const auto [radius, start, end] = element.Curve();
  return all(element.AllX()) && all(element.AllY()) && all(element.AllZ()) && all(element.Bulges) && finite(radius) &&
         finite(start) && finite(end) && finite(element.TextSize) && finite(element.TextAng);
}

/// Reads a file to its end. What is delivered must be finite, and in number too: an element may not come from nothing,
/// so more elements than the file has bytes, or than its blocks may draw besides, are a finding.
template <typename Reader>
void ReadToTheEnd(const std::string& path, std::size_t mostElements, const FilterOptions& options,
                  std::size_t mostVertices) {
  SilentPerson person;
  NoSettings settings;
  Report report;
  Reader reader({person, settings, report, options});
  Pump pump(options.dialect);
  try {
    reader.filename(path);
    while (!reader.Stalled() && pump.Next(reader)) {
      if (pump.Elements() > static_cast<std::int64_t>(mostElements)) std::abort();
      if (pump.Delivered() && !IsFinite(pump.Element())) std::abort();
      if (static_cast<std::size_t>(pump.Element().PointCount() + 1) > mostVertices) std::abort();
    }
  } catch (const Error&) {  // the right answer to most of what a fuzzer writes
  } catch (const OperationCanceled&) {
  }
}

template <typename Reader>
void ReadToTheEnd(const std::string& path, std::size_t bytes, const FilterOptions& options = {}) {
  ReadToTheEnd<Reader>(path, bytes, options, bytes);
}

}  // namespace tesselink
