#include "link/event_pump.h"

#include <algorithm>

EventPump::TimePoint EventPump::end_of_yield() const {
  const TimePoint start = now();
  const TimePoint latest = start + longest_yield;
  // A deadline that has already come has woken its own wait; it must not turn other waits into spins.
  const auto next = deadlines_.upper_bound(start);
  return next == deadlines_.end() ? latest : std::min(*next, latest);
}
