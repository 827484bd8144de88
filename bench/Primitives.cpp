// SPDX-License-Identifier: MIT
// The hot primitives: number to text, text to number, line splitting, vertex append.
#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "core/element/tEntity.h"
#include "core/io/Files.h"
#include "core/io/Numbers.h"

namespace tesselink {
namespace {

// Coordinates like UTM metres, with three decimals or with all the digits that a computation leaves.
std::vector<double> Coordinates(bool rounded) {
  std::vector<double> values(4096);
  std::uint64_t state = 88172645463325252ULL;
  for (double& value : values) {
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    const auto thousandths = static_cast<double>(state % 9000000000ULL);
    value = rounded ? thousandths / 1000 : thousandths / 997;
  }
  return values;
}

void NumberToText(benchmark::State& state) {
  const std::vector<double> values = Coordinates(state.range(0) == 3);
  char text[kNumberTextSize];
  std::size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(FormatNumber(text, values[i++ % values.size()]));
}
BENCHMARK(NumberToText)->ArgName("decimals")->Arg(3)->Arg(15);

void NumberToTextByLibrary(benchmark::State& state) {
  const std::vector<double> values = Coordinates(state.range(0) == 3);
  char text[kNumberTextSize];
  std::size_t i = 0;
  for (auto _ : state) {
    const double value = values[i++ % values.size()];
    benchmark::DoNotOptimize(std::to_chars(text, text + sizeof text, value, std::chars_format::general, 15));
  }
}
BENCHMARK(NumberToTextByLibrary)->ArgName("decimals")->Arg(3)->Arg(15);

void TextToNumber(benchmark::State& state) {
  std::vector<std::string> texts;
  for (const double value : Coordinates(state.range(0) == 3)) texts.push_back(NumberText(value));
  std::size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(LenientNumber(texts[i++ % texts.size()]));
}
BENCHMARK(TextToNumber)->ArgName("decimals")->Arg(3)->Arg(15);

void LineSplitting(benchmark::State& state) {
  const std::string path = (std::filesystem::temp_directory_path() / "tesselink-bench-lines.txt").string();
  {
    std::ofstream file(path, std::ios::binary);
    for (int i = 0; i < 100000; ++i) file << "XY,512345.678,4512345.678\r\n";
  }
  std::int64_t lines = 0;
  for (auto _ : state) {
    LineReader reader(path);
    for (std::string_view line; reader.ReadLine(line); ++lines) benchmark::DoNotOptimize(line);
  }
  state.SetItemsProcessed(lines);
  std::filesystem::remove(path);
}
BENCHMARK(LineSplitting);

void VertexAppend(benchmark::State& state) {
  tEntity entity;
  for (auto _ : state) {
    entity.Clear();
    for (int i = 0; i < 50; ++i) entity.AddPoint(500000.5 + i, 4500000.5, 1);
    benchmark::DoNotOptimize(entity);
  }
  state.SetItemsProcessed(state.iterations() * 50);
}
BENCHMARK(VertexAppend);

}  // namespace
}  // namespace tesselink
