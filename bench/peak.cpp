// SPDX-License-Identifier: MIT
#include "peak.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <utility>

namespace qmx::bench {
namespace {

#if defined(__AVX512F__)
constexpr int kLanes = 8;
constexpr int kChains = 12;  // All in registers, and more than any operation takes.
#elif defined(__AVX__)
constexpr int kLanes = 4;
constexpr int kChains = 6;
#else
constexpr int kLanes = 2;
constexpr int kChains = 6;
#endif
typedef double Vector __attribute__((vector_size(kLanes * sizeof(double))));

#if defined(__AVX512F__)
// Hides where x comes from, so that the steps of a chain cannot be drawn together.
#define QMX_HIDE(x) asm volatile("" : "+v"(x))
#else
#define QMX_HIDE(x) asm volatile("" : "+x"(x))
#endif

constexpr int kRounds = 100000;

/// Chains that lie in registers.
struct Chain {
  Vector product;
  Vector sum;
};

[[gnu::always_inline]] inline void Step(Chain& chain, Vector factor, Vector step) {
  chain.product *= factor;
  chain.sum += step;
  QMX_HIDE(chain.product);
  QMX_HIDE(chain.sum);
}

template <class... Chains>
[[gnu::always_inline]] inline double Run(Chains... chains) {
  const Vector factor = Vector{} + 0.9999999;
  const Vector step = Vector{} + 1e-7;
  for (int round = 0; round < kRounds; ++round) (Step(chains, factor, step), ...);
  return ((chains.product[0] + chains.sum[0]) + ...);
}

template <std::size_t... kPlaces>
double SecondsOfOneRun(double& kept, std::index_sequence<kPlaces...>) {
  const Chain start{Vector{} + 1.0 + kept, Vector{} + kept};
  const auto begin = std::chrono::steady_clock::now();
  const double result = Run((static_cast<void>(kPlaces), start)...);
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
  kept += result * 1e-30;
  return seconds.count();
}

}  // namespace

double MeasurePeak() {
  double kept = 0;
  constexpr std::make_index_sequence<kChains> kAll;
  double best = SecondsOfOneRun(kept, kAll);
  for (int run = 0; run < 50; ++run) best = std::min(best, SecondsOfOneRun(kept, kAll));
  // Keeps the results alive.
  return 2.0 * kLanes * kChains * kRounds / best + kept;
}

}  // namespace qmx::bench
