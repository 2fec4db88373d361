// SPDX-License-Identifier: MIT
#pragma once

#include <thread>

namespace qmx {

/// The core that the running thread has at this moment; -1 where the system does not say.
int RunningCore();

/// From now on the thread takes any core that the running thread may use but this one, if there is
/// another. Does nothing where the system has no such choice.
void KeepOff(int core, std::thread& thread);

}  // namespace qmx
