// SPDX-License-Identifier: MIT
// How long the files of other programs take. Without options a table of all formats; with a name,
// the text table that was read is written there, for other programs to read (see
// exchange_others.sh).

#include <benchmark/benchmark.h>

#include <cstdint>
#include <fstream>
#include <string>

#include "base/memory.h"
#include "exchange/foreign_file.h"
#include "table_reporter.h"

namespace qmx::bench {
namespace {

constexpr int kOrder = 2000;

/// Entries in [-1, 1) with all of their digits, the same in every run.
Matrix RandomMatrix(int n) {
  Matrix A(n, n);
  std::uint64_t state = 1;
  for (std::size_t k = 0; k < A.Size(); ++k) {
    state = state * 6364136223846793005U + 1442695040888963407U;
    A.Data()[k] = static_cast<double>(state >> 11) * 0x1p-52 - 1;
  }
  return A;
}

void Read(benchmark::State& state, const ForeignChoice& choice) {
  const std::string bytes = WriteForeign(RandomMatrix(kOrder), choice).content;
  for (auto round : state) {
    static_cast<void>(round);
    const auto contents = InspectForeign(bytes);
    const auto outcome = ReadForeign(bytes, contents.content, 0);
    if (!outcome.Ok()) state.SkipWithError(outcome.problem.c_str());
  }
}

void Write(benchmark::State& state, const ForeignChoice& choice) {
  const Matrix A = RandomMatrix(kOrder);
  for (auto round : state) {
    static_cast<void>(round);
    benchmark::DoNotOptimize(WriteForeign(A, choice));
  }
}

void Register(const std::string& title, const ForeignChoice& choice) {
  const std::string end = " (" + title + ")/" + std::to_string(kOrder) + "/program";
  // Wall time: a MAT file is read by another process.
  benchmark::RegisterBenchmark(("reading" + end).c_str(), Read, choice)->UseRealTime();
  benchmark::RegisterBenchmark(("writing" + end).c_str(), Write, choice)->UseRealTime();
}

void RegisterAll() {
  for (const ForeignFormatInfo& info : kForeignFormats)
    Register(std::string(info.title), {.format = info.format});
  Register("text table with decimal commas", {.separator = ';', .decimalSign = ','});
}

}  // namespace
}  // namespace qmx::bench

int main(int argc, char** argv) {
  qmx::KeepFreedMemory();  // As the program does.
  benchmark::Initialize(&argc, argv);
  if (argc > 1) {
    const auto bytes = qmx::WriteForeign(qmx::bench::RandomMatrix(qmx::bench::kOrder), {});
    std::ofstream(argv[1], std::ios::binary) << bytes.content;
    return 0;
  }
  qmx::bench::RegisterAll();
  qmx::bench::TableReporter table(qmx::bench::TableReporter::Layout::kTimes);
  benchmark::RunSpecifiedBenchmarks(&table);
  return 0;
}
