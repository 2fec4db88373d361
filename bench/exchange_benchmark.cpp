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
#include "operands.h"
#include "table_reporter.h"

namespace qmx::bench {
namespace {

constexpr int kOrder = 2000;

void Read(benchmark::State& state, const ForeignChoice& choice) {
  const std::string bytes = WriteForeign(RandomMatrix(kOrder, kOrder), choice).content;
  for (auto round : state) {
    static_cast<void>(round);
    const auto contents = InspectForeign(bytes);
    const auto outcome = ReadForeign(bytes, contents.content, 0);
    if (!outcome.Ok()) state.SkipWithError(outcome.problem.c_str());
  }
}

void Write(benchmark::State& state, const ForeignChoice& choice) {
  const Matrix A = RandomMatrix(kOrder, kOrder);
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
    const auto bytes =
        qmx::WriteForeign(qmx::bench::RandomMatrix(qmx::bench::kOrder, qmx::bench::kOrder), {});
    std::ofstream(argv[1], std::ios::binary) << bytes.content;
    return 0;
  }
  qmx::bench::RegisterAll();
  qmx::bench::TableReporter table(qmx::bench::TableReporter::Layout::kTimes);
  benchmark::RunSpecifiedBenchmarks(&table);
  return 0;
}
