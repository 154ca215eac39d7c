#pragma once

#include "config/setup_values.h"

#include <string>
#include <string_view>
#include <vector>

// What the Orin and Orinta readers are set up with.

/// The general parameters, converted and in range.
struct OrinGeneral {
  std::int16_t record_length = 0;
  std::int16_t relay_time = 0;
  std::int16_t red_led_time = 0;
};

/// An empty box counts as 0. All three are converted before the first is checked.
/// @throws ClickError: "Overflow", "Type mismatch" or the refusal of the first value out of range
[[nodiscard]] OrinGeneral orin_general_values(std::string_view record_length, std::string_view relay_time,
                                              std::string_view red_led_time);

/// One command a parameter.
[[nodiscard]] std::vector<std::string> orin_general_payloads(const OrinGeneral& values);

/// @param option 0 to 3 in the order of the screen; -1, no option chosen, gives the command alone: the
///     reader then gets no mode, and that is meant
[[nodiscard]] std::string orin_mode_payload(int option);

inline constexpr Switch orin_rs232_logging{
    .on = "s1",
    .off = "s0",
    .done_on = " RS232 Logging Option is On ",
    .done_off = " RS232 Logging Option is Off ",
};

inline constexpr Switch orinta_bad_logging{
    .on = ":1",
    .off = ":0",
    .done_on = " Bad Logging Option Set ",
    .done_off = " Bad Logging Option Reset ",
};
