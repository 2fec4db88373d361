// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <thread>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace qmx {

/// So long a thread looks for what another one is about to do before it sleeps: a sleeper comes 35
/// to 50 us after it is woken.
inline constexpr std::chrono::microseconds kSpin(100);
/// Between two looks of a caller that sleeps while others work for it.
inline constexpr std::chrono::milliseconds kLook(2);

/// Lets the processor know that the thread does nothing but look.
inline void Pause() {
#if defined(__x86_64__)
  _mm_pause();
#else
  std::this_thread::yield();
#endif
}

/// Whether it became true while the thread looked.
template <class Condition>
bool SpinFor(Condition condition) {
  const auto until = std::chrono::steady_clock::now() + kSpin;
  constexpr int kLooksPerTime = 32;
  do {
    for (int look = 0; look < kLooksPerTime; ++look) {
      if (condition()) return true;
      Pause();
    }
    // Whoever it waits for may want the same core.
    std::this_thread::yield();
  } while (std::chrono::steady_clock::now() < until);
  return condition();
}

}  // namespace qmx
