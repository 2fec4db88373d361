// SPDX-License-Identifier: MIT
#include <sys/resource.h>

#include "desktop/thread_priority.h"

namespace qmx {

// On Linux each thread has a nice value of its own, and the calling one is meant by 0.
void TakeLowestPriority() {
#ifdef __linux__
  constexpr int kLowest = 19;
  setpriority(PRIO_PROCESS, 0, kLowest);
#endif
}

}  // namespace qmx
