#pragma once

#include "simulator/time_point.h"

#include <string>
#include <string_view>

namespace readersim {

/// A reader's own clock. It runs with the bench's time from the moment it was set. The day of the
/// week is kept as it was set, right or wrong for the date, and moves on at midnight.
class Clock {
 public:
  struct Reading {
    int year;  ///< 0 to 99, the last two digits
    int month, day, hour, minute, second;
    int weekday;  ///< 1 Monday to 7 Sunday

    /// Minutes since midnight, 0 to 1439.
    [[nodiscard]] int minute_of_day() const { return hour * 60 + minute; }
  };

  /// Sets it from YYMMDDhhmmssD, D from 1 Monday to 7 Sunday. Returns false and changes nothing
  /// when the text is no date or time.
  [[nodiscard]] bool set(std::string_view text, TimePoint now);
  [[nodiscard]] Reading read(TimePoint now) const;
  /// YYMMDDhhmmss, what a reader answers to "t" and stamps its records with.
  [[nodiscard]] std::string stamp(TimePoint now) const;

 private:
  // An unset clock starts where a reader's does after its battery was out: 1 January 2000, a Saturday.
  std::chrono::seconds base_{0};  // since 2000-01-01 00:00:00
  TimePoint set_at_{0};
  int weekday_shift_ = 0;
};

}  // namespace readersim
