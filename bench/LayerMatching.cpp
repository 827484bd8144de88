// SPDX-License-Identifier: MIT
// Smart Assign of a full dialog against a long list of entity types.
#include "formats/cdf/LayerMatching.h"

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "core/run/Report.h"
#include "fuzz/Harness.h"
#include "support/Lookups.h"

namespace tesselink {
namespace {

std::string Words(std::mt19937& random, int count) {
  static const std::vector<std::string> kWords{"Road",   "Section", "Township", "Well",  "Pipeline", "River",
                                               "County", "Contour", "Boundary", "Lease", "Quarter",  "Railway"};
  std::string words;
  for (int i = 0; i < count; ++i) words += (i > 0 ? " " : "") + kWords[random() % kWords.size()];
  return words;
}

void SmartAssign(benchmark::State& state) {
  std::mt19937 random(1);
  std::vector<std::pair<std::string, std::string>> types;
  for (int i = 0; i < state.range(1); ++i) {
    types.emplace_back(std::to_string(1000000 + i), Words(random, 3) + " " + std::to_string(i));
  }
  std::vector<std::string> layers;
  for (int i = 0; i < state.range(0); ++i) layers.push_back(Words(random, 4) + " layer_" + std::to_string(i));
  SilentPerson person;
  NoSettings settings;
  Report report;
  FilterContext context{person, settings, report};
  context.options.own.Set("cdf-map", PutFile("$CDF.MAP", EntityTypes(types)));
  LayerMatching matching(context);
  for (auto _ : state) {
    state.PauseTiming();
    matching.Create(layers);
    state.ResumeTiming();
    matching.SmartAssign();
  }
}
BENCHMARK(SmartAssign)->ArgNames({"layers", "types"})->Args({50, 5000})->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tesselink
