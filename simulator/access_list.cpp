#include "simulator/access_list.h"

#include "simulator/digits.h"

namespace readersim {
namespace {

bool is_number(int number) {
  return number >= 1 && number <= 99;
}

bool is_time(std::string_view hhmm) {
  return two_digits(hhmm, 0) < 24 && two_digits(hhmm, 2) < 60;
}

int minutes(std::string_view hhmm) {
  return two_digits(hhmm, 0) * 60 + two_digits(hhmm, 2);
}

bool within(std::string_view times, int minute) {
  // All zeros is how a day without entry is written, not the one minute at midnight.
  return times != "00000000" && minute >= minutes(times.substr(0, 4)) &&
         minute <= minutes(times.substr(4, 4));
}

}  // namespace

bool AccessList::put(std::string_view id, int schedule) {
  const auto [place, is_new] = index_.try_emplace(std::string{id}, entries_.size());
  if (!is_new) {
    entries_[place->second].schedule = schedule;
    return true;
  }
  if (entries_.size() >= capacity) {
    index_.erase(place);
    return false;
  }
  entries_.push_back({std::string{id}, schedule});
  return true;
}

std::optional<int> AccessList::schedule_of(std::string_view id) const {
  const auto found = index_.find(std::string{id});
  return found == index_.end() ? std::nullopt : std::optional{entries_[found->second].schedule};
}

void AccessList::clear() {
  entries_.clear();
  index_.clear();
}

bool Schedules::put_day(int number, int day, std::string_view times) {
  if (!is_number(number) || day < 1 || day > 7 || times.size() != 8 || !all_digits(times) ||
      !is_time(times.substr(0, 4)) || !is_time(times.substr(4, 4))) {
    return false;
  }
  table_.at(static_cast<std::size_t>(number - 1)).days.at(static_cast<std::size_t>(day - 1)) = times;
  return true;
}

bool Schedules::put_associated(int number, int associated) {
  if (!is_number(number) || (associated != 0 && !is_number(associated))) {
    return false;
  }
  table_.at(static_cast<std::size_t>(number - 1)).associated = associated;
  return true;
}

bool Schedules::allows(int number, int weekday, int minute) const {
  if (number == 0) {
    return true;
  }
  // A chain of associated schedules may run in a circle: no more steps than there are schedules.
  for (std::size_t step = 0; step < table_.size() && is_number(number); ++step) {
    const Schedule& schedule = at(number);
    if (within(schedule.days.at(static_cast<std::size_t>(weekday - 1)), minute)) {
      return true;
    }
    number = schedule.associated;
  }
  return false;
}

void Schedules::clear() {
  for (Schedule& schedule : table_) {
    schedule.days.fill("00000000");
    schedule.associated = 0;
  }
}

}  // namespace readersim
