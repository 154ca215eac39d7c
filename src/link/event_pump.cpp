#include "link/event_pump.h"

#include <algorithm>

EventPump::TimePoint EventPump::end_of_yield() const {
  const TimePoint start = now();
  const TimePoint latest = start + longest_yield;
  // A deadline that has already come has woken its own wait; it must not turn other waits into spins.
  const auto next = deadlines_.upper_bound(start);
  return next == deadlines_.end() ? latest : std::min(*next, latest);
}

Deadline::Deadline(EventPump& pump, std::chrono::milliseconds time_out)
    : pump_(pump), time_out_(time_out), end_(pump.now() + time_out), entry_(pump.deadlines_.insert(end_)) {}

Deadline::~Deadline() {
  pump_.deadlines_.erase(entry_);
}

void Deadline::restart() {
  pump_.deadlines_.erase(entry_);
  end_ = pump_.now() + time_out_;
  entry_ = pump_.deadlines_.insert(end_);
}
