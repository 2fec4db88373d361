// SPDX-License-Identifier: MIT
#include <windows.h>

#include "desktop/thread_priority.h"

namespace qmx {

void TakeLowestPriority() { SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_IDLE); }

}  // namespace qmx
