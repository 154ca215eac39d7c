#include "link/numbers.h"

#include "link/click.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace {

bool is_digit(char character) {
  return character >= '0' && character <= '9';
}

}  // namespace

std::optional<std::int64_t> leading_number(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) {
    text.remove_prefix(1);
  }
  if (text.empty() || !is_digit(text.front())) {
    return std::nullopt;
  }
  using Limits = std::numeric_limits<std::int64_t>;
  std::int64_t value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    return negative ? Limits::min() : Limits::max();
  }
  return negative ? -value : value;
}

std::int64_t number_or_zero(std::string_view text) {
  return leading_number(text).value_or(0);
}

std::int16_t to_int16(std::string_view text) {
  const std::string_view number = trimmed(text);
  const std::optional<std::int64_t> value = leading_number(number);
  if (!value || !is_digit(number.back()) || number.find_first_not_of("0123456789", 1) != number.npos) {
    throw ClickError("Type mismatch");
  }
  if (*value < std::numeric_limits<std::int16_t>::min() ||
      *value > std::numeric_limits<std::int16_t>::max()) {
    throw ClickError("Overflow");
  }
  return static_cast<std::int16_t>(*value);
}

std::int16_t to_int16_or_zero_when_empty(std::string_view text) {
  return trimmed(text).empty() ? std::int16_t{0} : to_int16(text);
}

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string with_leading_zeros(std::int64_t number, int digits) {
  std::string text = std::to_string(number < 0 ? -number : number);
  if (text.size() < static_cast<std::size_t>(digits)) {
    text.insert(0, static_cast<std::size_t>(digits) - text.size(), '0');
  }
  return number < 0 ? "-" + text : text;
}
