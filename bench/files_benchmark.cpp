// Writing and reading matrix files. `items_per_second` counts numbers.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <string>

#include "files/matrix_file.h"
#include "workspace/slot_table.h"

namespace {

constexpr int kOrder = 1000;

enum Kind : std::int64_t { kReals, kIntegers };

qmx::Matrix Values(std::int64_t kind) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> real(-1000, 1000);
  std::uniform_int_distribution<int> integer(-1000, 1000);
  qmx::Matrix values(kOrder, kOrder);
  for (std::size_t i = 0; i < values.Size(); ++i)
    values.Data()[i] = kind == kReals ? real(random) : integer(random);
  return values;
}

void Count(benchmark::State& state, std::size_t bytes) {
  state.SetItemsProcessed(state.iterations() * kOrder * kOrder);
  state.counters["bytes"] = static_cast<double>(bytes);
}

void WriteMatrixFile(benchmark::State& state) {
  const qmx::Matrix values = Values(state.range(0));
  std::size_t bytes = 0;
  for (auto _ : state) {
    const std::string file = qmx::MatrixFile(qmx::kSlotA, values);
    bytes = file.size();
    benchmark::DoNotOptimize(file.data());
  }
  Count(state, bytes);
}

void ReadMatrixFile(benchmark::State& state) {
  const std::string file = qmx::MatrixFile(qmx::kSlotA, Values(state.range(0)));
  for (auto _ : state) {
    const auto reading = qmx::ReadMatrixFile(qmx::kSlotA, file);
    if (!reading.Ok()) state.SkipWithError(reading.problem.c_str());
    benchmark::DoNotOptimize(reading.content.Data());
  }
  Count(state, file.size());
}

}  // namespace

BENCHMARK(WriteMatrixFile)
    ->ArgName("integers")
    ->Arg(kReals)
    ->Arg(kIntegers)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ReadMatrixFile)
    ->ArgName("integers")
    ->Arg(kReals)
    ->Arg(kIntegers)
    ->Unit(benchmark::kMillisecond);
