#include "access/columns.h"

#include "link/numbers.h"

#include <algorithm>
#include <cstdint>
#include <limits>

std::string_view cut_columns(std::string_view line, Columns columns) {
  const std::size_t start = columns.first - 1;
  return start < line.size() ? line.substr(start, columns.width) : std::string_view{};
}

std::string blank_padded(std::string_view text, std::size_t width) {
  std::string padded{text};
  padded.resize(std::max(width, text.size()), ' ');
  return padded;
}

void store_in_columns(std::string& line, Columns columns, std::string_view text) {
  const std::size_t start = columns.first - 1;
  line.resize(std::max(line.size(), start + columns.width), ' ');
  const std::string_view kept = text.substr(0, columns.width);
  line.replace(start, kept.size(), kept);
}

int numeric_value(std::string_view text) {
  constexpr std::int64_t largest = std::numeric_limits<std::int16_t>::max();
  return static_cast<int>(std::clamp<std::int64_t>(number_or_zero(text), 0, largest));
}

std::optional<std::string_view> LineReader::next_line() {
  if (position_ >= text_.size()) {
    return std::nullopt;
  }
  const std::size_t end = std::min(text_.find('\n', position_), text_.size());
  std::string_view line = std::string_view{text_}.substr(position_, end - position_);
  position_ = end + 1;
  if (line.ends_with('\r')) {
    line.remove_suffix(1);
  }
  return line;
}

std::string_view delimited_field(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  if (line.starts_with('"')) {
    line.remove_prefix(1);
    return line.substr(0, line.find('"'));
  }
  return line.substr(0, line.find(','));
}
