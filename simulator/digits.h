#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace readersim {

/// Whether the text holds decimal digits and nothing else, or nothing at all.
[[nodiscard]] constexpr bool all_digits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}
/// The two decimal digits from that place on as a number.
[[nodiscard]] constexpr int two_digits(std::string_view text, std::size_t at) {
  return (text[at] - '0') * 10 + (text[at + 1] - '0');
}

}  // namespace readersim
