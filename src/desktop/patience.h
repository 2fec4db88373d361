// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace qmx {

/// So long nobody notices that no event is handled: what is done by then takes no turn of the event
/// loop and is not announced.
inline constexpr std::chrono::milliseconds kPatience(30);

}  // namespace qmx
