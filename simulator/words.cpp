#include "simulator/words.h"

#include "simulator/reader.h"

#include <algorithm>
#include <charconv>

namespace readersim {

std::vector<std::string> split(std::string_view line) {
  std::vector<std::string> words;
  std::size_t at = line.find_first_not_of(" \t\r\n");
  while (at != std::string_view::npos) {
    const std::size_t end = std::min(line.find_first_of(" \t\r\n", at), line.size());
    words.emplace_back(line.substr(at, end - at));
    at = line.find_first_not_of(" \t\r\n", end);
  }
  if (!words.empty() && words.front().starts_with('#')) {
    words.clear();
  }
  return words;
}

std::string join(const std::vector<std::string>& words, std::size_t from) {
  std::string text;
  for (std::size_t i = from; i < words.size(); ++i) {
    text.append(i == from ? "" : " ").append(words[i]);
  }
  return text;
}

int number(const std::string& word, int low, int high) {
  int value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (error != std::errc{} || end != word.data() + word.size() || value < low || value > high) {
    throw Mistake("\"" + word + "\" is no number from " + std::to_string(low) + " to " +
                  std::to_string(high));
  }
  return value;
}

std::string unescape(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      result += text[i];
      continue;
    }
    if (text.substr(i + 1, 1) == "\\") {
      result += '\\';
      ++i;
      continue;
    }
    unsigned code = 0;
    const std::string_view digits = text.substr(i + 1, 3);
    if (digits.size() != 3 || digits[0] != 'x' ||
        std::from_chars(digits.data() + 1, digits.data() + 3, code, 16).ptr != digits.data() + 3) {
      throw Mistake(R"(a backslash is written \\, a byte \x41)");
    }
    result += static_cast<char>(code);
    i += 3;
  }
  return result;
}

int baud_rate(const std::string& word) {
  for (const int rate : baud_rates) {
    if (word == std::to_string(rate)) {
      return rate;
    }
  }
  throw Mistake("the baud rates are 1200, 2400, 4800, 9600 and 19200");
}

bool on_or_off(const std::string& word) {
  if (word != "on" && word != "off") {
    throw Mistake("\"" + word + "\" is neither on nor off");
  }
  return word == "on";
}

}  // namespace readersim
