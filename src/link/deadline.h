#pragma once

#include "link/event_pump.h"

#include <chrono>
#include <set>

/// The time-out of one wait. Every wait has its own, so that a wait nested in another (a second button
/// during a reply) leaves the outer one's time-out as it was.
class Deadline {
 public:
  Deadline(EventPump& pump, std::chrono::milliseconds time_out);
  ~Deadline();
  Deadline(const Deadline&) = delete;
  Deadline& operator=(const Deadline&) = delete;

  [[nodiscard]] bool expired() const { return pump_.now() >= end_; }
  /// Counts the time-out anew from now.
  void restart();

 private:
  EventPump& pump_;
  std::chrono::milliseconds time_out_;
  EventPump::TimePoint end_;
  std::multiset<EventPump::TimePoint>::iterator entry_;
};
