// SPDX-License-Identifier: MIT
#include "base/core_choice.h"

#ifdef __linux__
#include <pthread.h>
#include <sched.h>
#endif

namespace qmx {

#ifdef __linux__
int RunningCore() { return sched_getcpu(); }

void KeepOff(int core, std::thread& thread) {
  cpu_set_t cores;
  if (core < 0 || core >= CPU_SETSIZE || sched_getaffinity(0, sizeof(cores), &cores) != 0) return;
  CPU_CLR(core, &cores);
  if (CPU_COUNT(&cores) > 0) pthread_setaffinity_np(thread.native_handle(), sizeof(cores), &cores);
}
#else
int RunningCore() { return -1; }

void KeepOff(int /*core*/, std::thread& /*thread*/) {}
#endif

}  // namespace qmx
