#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The whole number that a text begins with: blanks are skipped, then come an optional sign and decimal
/// digits; what follows them is ignored ("1e3" is 1, "12ab" is 12). Values beyond the range of the result
/// are held at its ends.
/// @return nothing when no digit is there.
[[nodiscard]] std::optional<std::int64_t> leading_number(std::string_view text);

/// Loose conversion: the leading number, 0 when there is none.
[[nodiscard]] std::int64_t number_or_zero(std::string_view text);

/// Strict conversion to a 16-bit signed number: the whole text is one, but for blanks around it.
/// @throws ClickError "Type mismatch" when it is none ("", "1,000"), "Overflow" beyond -32768 to 32767.
[[nodiscard]] std::int16_t to_int16(std::string_view text);

/// As to_int16(), but a text that is empty or all blanks is 0.
[[nodiscard]] std::int16_t to_int16_or_zero_when_empty(std::string_view text);

/// The text without leading and trailing blanks.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// A number in at least `digits` decimal digits, with leading zeros: (5, 3) gives "005".
[[nodiscard]] std::string with_leading_zeros(std::int64_t number, int digits);
