#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace readersim {

/// The access list of a stand-alone reader: identifiers, each with the schedule it enters under, in
/// the order they were given.
class AccessList {
 public:
  struct Entry {
    std::string id;  ///< as long as the reader's record length, blank-padded
    int schedule;    ///< 0 to 255; 0 means at any time
  };
  static constexpr std::size_t capacity = 32000;

  /// Adds the entry, or gives an identifier already listed its new schedule. False when full.
  [[nodiscard]] bool put(std::string_view id, int schedule);
  /// The schedule of that identifier, nothing when it is not listed.
  [[nodiscard]] std::optional<int> schedule_of(std::string_view id) const;
  [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }
  void clear();

 private:
  std::vector<Entry> entries_;
  std::unordered_map<std::string, std::size_t> index_;
};

/// The weekly schedules of a stand-alone reader, numbered 1 to 99.
class Schedules {
 public:
  struct Schedule {
    /// Start and end of each day, Monday first, as hhmmhhmm; "00000000" is a day without entry.
    std::array<std::string, 7> days;
    int associated = 0;  ///< the schedule asked when this one refuses, 0 for none
  };

  Schedules() { clear(); }
  /// Stores a day, 1 Monday to 7 Sunday, as hhmmhhmm. False for a number, day or time that is none.
  [[nodiscard]] bool put_day(int number, int day, std::string_view times);
  /// False for a number that is none; `associated` may be 0.
  [[nodiscard]] bool put_associated(int number, int associated);
  /// The schedule of that number, which must be 1 to 99.
  [[nodiscard]] const Schedule& at(int number) const {
    return table_.at(static_cast<std::size_t>(number - 1));
  }
  /// Whether the schedule, or one associated with it, lets in at that minute since midnight, both
  /// ends of a window included. Schedule 0 always does. A window that ends before it starts is empty.
  [[nodiscard]] bool allows(int number, int weekday, int minute) const;
  void clear();

 private:
  std::array<Schedule, 99> table_;
};

}  // namespace readersim
