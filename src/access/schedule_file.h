#pragma once

#include "access/columns.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The schedule file: line n of 99 holds schedule n, with the times of seven days, Monday first.

inline constexpr int schedule_count = 99;
inline constexpr int days_in_week = 7;

/// The layout that reading and writing share; day 1 is Monday, day 7 Sunday.
struct ScheduleColumns {
  static constexpr Columns number{1, 2};
  static constexpr Columns associated{4, 2};
  [[nodiscard]] static constexpr Columns day(int d) { return {(static_cast<std::size_t>(d) - 1) * 8 + 7, 8}; }
  [[nodiscard]] static constexpr Columns start_time(int d) { return {day(d).first, 4}; }
  [[nodiscard]] static constexpr Columns end_time(int d) { return {day(d).first + 4, 4}; }
  static constexpr std::size_t line_width = 62;
};

/// One schedule as its boxes show it; element 0 of the times is Monday.
struct ScheduleTexts {
  std::array<std::string, days_in_week> start;
  std::array<std::string, days_in_week> end;
  std::string associated;

  bool operator==(const ScheduleTexts&) const = default;
};

/// The 99 lines of a schedule file in memory. Schedule numbers are 1 to 99.
class ScheduleTable {
 public:
  /// A fresh table: no associated schedules, all times zero.
  ScheduleTable();
  /// Exactly 99 whole lines, as they stand; lines after them are not looked at. Nothing where there are
  /// fewer.
  [[nodiscard]] static std::optional<ScheduleTable> read(std::string text);
  /// The whole file, every line with its end.
  [[nodiscard]] std::string write() const;

  [[nodiscard]] const std::string& line(int schedule) const;
  [[nodiscard]] ScheduleTexts texts(int schedule) const;
  /// Stores every text over its columns, character by character, and the numeric value of the associated
  /// schedule in two digits. What the texts hold is not checked.
  void store(int schedule, const ScheduleTexts& texts);

 private:
  [[nodiscard]] std::string& line_to_store(int schedule);

  std::array<std::string, schedule_count> lines_;
};

[[nodiscard]] constexpr bool is_schedule_number(std::int64_t number) {
  return number >= 1 && number <= schedule_count;
}

/// What a download sends of a line: texts exactly as they stand in their columns, nothing checked.
struct ScheduleRecord {
  std::string schedule;                        // "0" and the two characters of the number
  std::string associated;                      // "0" and the two characters; "000" means none
  std::array<std::string, days_in_week> days;  // hhmmhhmm, Monday first

  bool operator==(const ScheduleRecord&) const = default;
};

/// Unlike the editor, which reads whole lines, the download reads each line as one delimited field; that is
/// meant. A short line counts as padded with blanks.
[[nodiscard]] ScheduleRecord read_delimited_schedule(std::string_view line);
