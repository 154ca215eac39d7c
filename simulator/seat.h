#pragma once

#include "simulator/fault.h"
#include "simulator/reader.h"
#include "simulator/time_point.h"

#include <vector>

namespace readersim {

/// One reader in its place on the line.
struct Seat {
  Reader reader;
  std::vector<Fault> faults;
  bool present = true;   ///< false: unplugged, deaf and dumb
  TimePoint free_at{0};  ///< when it has finished its answers so far
};

}  // namespace readersim
