#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// What a number must keep to, and the box that tells when it does not.
struct ValueRange {
  std::int16_t least;
  std::int16_t greatest;
  std::string_view refusal;
};

/// @throws ClickError with the refusal of a value out of range
void require(std::int16_t value, const ValueRange& range);

/// A pair of options that is sent as one of two payloads.
struct Switch {
  std::string_view on;       ///< the payload of the first option
  std::string_view off;      ///< the payload of the other
  std::string_view done_on;  ///< the success messages, their blanks included
  std::string_view done_off;
};

inline constexpr std::string_view parameters_set = "Parameters have been set";

/// "1" or "0".
[[nodiscard]] std::string flag(bool on);
