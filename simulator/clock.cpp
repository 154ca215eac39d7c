#include "simulator/clock.h"

#include "simulator/digits.h"

#include <array>
#include <cstdio>

namespace readersim {
namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::seconds;
using std::chrono::sys_days;

constexpr sys_days epoch{std::chrono::year{2000} / 1 / 1};
constexpr int epoch_weekday = 5;  // a Saturday, counted from Monday 0
// The two-digit year comes round after a hundred years; 2000 to 2099 hold 36525 days.
constexpr days century{36525};

int natural_weekday(days since_epoch) {
  return static_cast<int>((since_epoch.count() + epoch_weekday) % 7);
}

}  // namespace

bool Clock::set(std::string_view text, TimePoint now) {
  if (text.size() != 13 || !all_digits(text) || text[12] < '1' || text[12] > '7') {
    return false;
  }
  const std::chrono::year_month_day date{std::chrono::year{2000 + two_digits(text, 0)},
                                         std::chrono::month{static_cast<unsigned>(two_digits(text, 2))},
                                         std::chrono::day{static_cast<unsigned>(two_digits(text, 4))}};
  if (!date.ok() || two_digits(text, 6) > 23 || two_digits(text, 8) > 59 || two_digits(text, 10) > 59) {
    return false;
  }
  const days since = sys_days{date} - epoch;
  base_ = since + std::chrono::hours{two_digits(text, 6)} + std::chrono::minutes{two_digits(text, 8)} +
          seconds{two_digits(text, 10)};
  set_at_ = now;
  weekday_shift_ = ((text[12] - '1') - natural_weekday(since) + 7) % 7;
  return true;
}

Clock::Reading Clock::read(TimePoint now) const {
  const seconds total = base_ + floor<seconds>(now - set_at_);
  const days whole = floor<days>(total);
  const std::chrono::year_month_day date{epoch + whole % century};
  const std::chrono::hh_mm_ss time{total - whole};
  return {static_cast<int>(date.year()) % 100,
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(time.hours().count()),
          static_cast<int>(time.minutes().count()),
          static_cast<int>(time.seconds().count()),
          (natural_weekday(whole) + weekday_shift_) % 7 + 1};
}

std::string Clock::stamp(TimePoint now) const {
  const Reading r = read(now);
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%02d%02d%02d%02d%02d%02d", r.year, r.month, r.day, r.hour,
                r.minute, r.second);
  return text.data();
}

}  // namespace readersim
