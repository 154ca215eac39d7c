#pragma once

#include <chrono>

namespace readersim {

/// Time on the bench: microseconds since the line was switched on. The core never looks at a clock
/// of its own; whoever drives it says what time it is, so that a test can do so in virtual time.
using TimePoint = std::chrono::microseconds;

}  // namespace readersim
