#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// How the text of a box becomes the characters that follow a command's letters.
enum class ParameterRule {
  none,          ///< the command has no parameter
  two_digits,    ///< filled up with leading zeros; an empty box is "00"
  three_digits,  ///< the same to three characters; an empty box is "000"
  prefix_code,   ///< the code of the box's one character in three digits; an empty box is refused
};

/// What a value must keep to, and the box that tells when it does not.
struct ParameterLimit {
  std::int64_t greatest = 0;  ///< of the number that the characters begin with; not tested for a prefix
  std::string_view refusal = {};
};

/// The characters for a box's text. Only the test for an empty box looks past blanks; lengths count them.
/// @throws ClickError with the limit's refusal
[[nodiscard]] std::string parameter_text(ParameterRule rule, std::string_view text,
                                         const ParameterLimit& limit);
