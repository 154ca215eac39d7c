#include "tools/byte_text.h"

#include "shell/code_page.h"

#include <algorithm>

ByteText::Place ByteText::place_of(int offset) const {
  const int held = std::clamp(offset, 0, size());
  const auto next = std::upper_bound(starts_.begin(), starts_.end(), held);
  const int line = static_cast<int>(next - starts_.begin()) - 1;
  return {line, held - line_start(line)};
}

QString ByteText::text(int begin, int end) const {
  const Place first = place_of(begin);
  const Place last = place_of(std::max(begin, end));
  QString text;
  text.reserve(std::max(0, end - begin));
  for (int line = first.line; line <= last.line; ++line) {
    const int from = line == first.line ? first.column : 0;
    const int to = line == last.line ? last.column : length_of(line);
    text += code_page::from_dos_437(std::string_view(at(line)).substr(static_cast<std::size_t>(from),
                                                                      static_cast<std::size_t>(to - from)));
    if (line < last.line) {
      text += u'\n';
    }
  }
  return text;
}

void ByteText::append(const ReceivedLines& more) {
  for (std::size_t index = 0; index < more.size(); ++index) {
    if (index > 0) {
      starts_.push_back(size() + 1);
      lines_.emplace_back();
    }
    lines_.back() += more[index];
    longest_ = std::max(longest_, length_of(line_count() - 1));
  }
}

void ByteText::insert(int offset, std::string_view bytes) {
  const Place place = place_of(offset);
  at(place.line).insert(static_cast<std::size_t>(place.column), bytes);
  changed_from(place.line);
}

void ByteText::break_line(int offset) {
  const Place place = place_of(offset);
  std::string rest = at(place.line).substr(static_cast<std::size_t>(place.column));
  at(place.line).resize(static_cast<std::size_t>(place.column));
  lines_.insert(lines_.begin() + place.line + 1, std::move(rest));
  changed_from(place.line);
}

void ByteText::erase(int begin, int end) {
  const Place first = place_of(begin);
  const Place last = place_of(std::max(begin, end));
  std::string rest = at(last.line).substr(static_cast<std::size_t>(last.column));
  at(first.line).resize(static_cast<std::size_t>(first.column));
  at(first.line) += rest;
  lines_.erase(lines_.begin() + first.line + 1, lines_.begin() + last.line + 1);
  changed_from(first.line);
}

void ByteText::clear() {
  *this = ByteText();
}

/// Counts the lines' first characters anew from `line` on.
void ByteText::changed_from(int line) {
  starts_.resize(lines_.size());
  for (int next = line; next < line_count(); ++next) {
    if (next > 0) {
      starts_[static_cast<std::size_t>(next)] = line_start(next - 1) + length_of(next - 1) + 1;
    }
    longest_ = std::max(longest_, length_of(next));
  }
}
