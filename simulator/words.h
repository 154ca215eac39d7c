#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace readersim {

/// A mistake in a line of text, told to whoever wrote it.
class Mistake : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The words of a line, parted by blanks. A line that begins with '#' has none.
[[nodiscard]] std::vector<std::string> split(std::string_view line);
/// The words from the given one on, with one blank between them.
[[nodiscard]] std::string join(const std::vector<std::string>& words, std::size_t from);
/// The word as a whole number from low to high; throws Mistake when it is none.
[[nodiscard]] int number(const std::string& word, int low, int high);
/// The text with \xHH as the byte of that code and \\ as one backslash; throws Mistake.
[[nodiscard]] std::string unescape(std::string_view text);
/// The word as one of the baud rates; throws Mistake when it is none.
[[nodiscard]] int baud_rate(const std::string& word);
/// "on" true, "off" false; throws Mistake for anything else.
[[nodiscard]] bool on_or_off(const std::string& word);

}  // namespace readersim
