#include "config/orin_setup.h"

#include "link/numbers.h"

#include <array>

namespace {

constexpr ValueRange record_length_range{4, 40, "Record length must be between 4 and 40"};
constexpr ValueRange relay_time_range{1, 99, "Relay time must be between 1 and 99"};
constexpr ValueRange red_led_time_range{1, 15, "Red led time must be between 1 and 15"};

/// "Vell Mode", "Orin Mode", "Orinta Mode", "Accum Mode"; 2 is the mode of the Kesh readers.
constexpr std::array mode_digits{'1', '3', '4', '5'};

}  // namespace

OrinGeneral orin_general_values(std::string_view record_length, std::string_view relay_time,
                                std::string_view red_led_time) {
  const OrinGeneral values{to_int16_or_zero_when_empty(record_length),
                           to_int16_or_zero_when_empty(relay_time),
                           to_int16_or_zero_when_empty(red_led_time)};
  require(values.record_length, record_length_range);
  require(values.relay_time, relay_time_range);
  require(values.red_led_time, red_led_time_range);
  return values;
}

std::vector<std::string> orin_general_payloads(const OrinGeneral& values) {
  return {"\\" + with_leading_zeros(values.record_length, 2), "\"" + with_leading_zeros(values.relay_time, 2),
          "'" + with_leading_zeros(values.red_led_time, 2)};
}

std::string orin_mode_payload(int option) {
  std::string payload = "|";
  if (option >= 0) {
    payload += mode_digits.at(static_cast<std::size_t>(option));
  }
  return payload;
}
